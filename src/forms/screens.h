#pragma once
#include <QHash>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "forms/help_topic.h"

class QDialog;
class QWidget;

namespace forms {

struct GlobalRecord;
class ScreenRegistry;

/// What a screen gets from the house: the global record and the way to other screens and to help.
struct House {
    GlobalRecord& global;
    ScreenRegistry& screens;
    /// Shows the help topic of a screen (frmSDatatorikomi) in the window of its area.
    std::function<void(const QString& screen)> help = {};
    /// Ends the process at once after a failure that forbids to go on; the process's own exit when empty.
    std::function<void()> endProcess = {};
};

/// Runs house.endProcess, or ends the process.
void endProcess(House& house);

/// From a screen's name to the screen. main fills it; menus and screens open by name and so include none of
/// each other.
class ScreenRegistry {
  public:
    using Factory = std::function<QDialog*(House&, QWidget* parent)>;
    /// The one line of a screen: what the house has to know of it. Without a factory it is not built: its
    /// menu entries are shown disabled.
    void add(const QString& name, Factory factory, std::optional<HelpTopic> help = {});
    bool has(const QString& name) const { return bool(lines_.value(name).factory); }
    QStringList names() const;  ///< of the screens that are built
    std::optional<HelpTopic> helpOn(const QString& name) const { return lines_.value(name).help; }
    /// What is done with a company that was just opened, before its menu shows; nothing unless set.
    std::function<void(House&, QWidget* parent)> companyOpened = {};
    QDialog* create(const QString& name, House& house, QWidget* parent) const;

  private:
    struct Line {
        Factory factory;
        std::optional<HelpTopic> help;
    };
    QHash<QString, Line> lines_;
};

}  // namespace forms
