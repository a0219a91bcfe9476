#pragma once
#include <QHash>
#include <QString>
#include <QStringList>
#include <functional>

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
    void add(const QString& name, Factory factory) { factories_.insert(name, std::move(factory)); }
    /// False for a screen that is not built: its entries are shown disabled.
    bool has(const QString& name) const { return factories_.contains(name); }
    QStringList names() const { return factories_.keys(); }
    /// What is done with a company that was just opened, before its menu shows; nothing unless set.
    std::function<void(House&, QWidget* parent)> companyOpened = {};
    QDialog* create(const QString& name, House& house, QWidget* parent) const;

  private:
    QHash<QString, Factory> factories_;
};

}  // namespace forms
