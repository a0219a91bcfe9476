#include "forms/screens.h"

#include <QDialog>
#include <cstdlib>

namespace forms {

QDialog* ScreenRegistry::create(const QString& name, House& house, QWidget* parent) const {
    const Factory factory = lines_.value(name).factory;
    return factory ? factory(house, parent) : nullptr;
}

void ScreenRegistry::add(const QString& name, Factory factory, std::optional<HelpTopic> help) {
    lines_.insert(name, {std::move(factory), help});
}

QStringList ScreenRegistry::names() const {
    QStringList names;
    for (auto line = lines_.begin(); line != lines_.end(); ++line)
        if (line->factory) names << line.key();
    return names;
}

void endProcess(House& house) {
    if (house.endProcess) {
        house.endProcess();
        return;
    }
    // Inside modal screens no loop may run on and no destructor of a screen may touch the company any more.
    std::_Exit(EXIT_FAILURE);
}

}  // namespace forms
