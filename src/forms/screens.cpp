#include "forms/screens.h"

#include <QDialog>
#include <cstdlib>

namespace forms {

QDialog* ScreenRegistry::create(const QString& name, House& house, QWidget* parent) const {
    const auto factory = factories_.constFind(name);
    return factory == factories_.constEnd() ? nullptr : (*factory)(house, parent);
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
