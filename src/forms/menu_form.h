#pragma once
#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "forms/global_record.h"
#include "forms/screens.h"
#include "widgets/form.h"

class QLabel;
class QPushButton;
class QVBoxLayout;

namespace forms {

/// One button of a menu. With a `screen` it opens that screen (disabled while the screen is not registered);
/// with an `action` it runs that; with neither it closes the menu. `prepare` sets the modes of the global
/// record first.
struct MenuEntry {
    QString control = {};
    QString caption = {};
    std::function<void(GlobalRecord&)> prepare = {};
    QString screen = {};
    std::function<void()> action = {};
    bool below = false;  ///< stands apart at the bottom, as Command11 always does
    std::optional<widgets::Form::Output> output = {};  ///< its key, where the caption has none
};

/// A menu: large buttons under a heading, in two columns where there are many; the closing entry and help
/// (Command11) stand apart at the bottom, and Escape closes. It stands at a fixed place under the main
/// window, is not seen while a child is up, and comes back where it stood when control returns.
class MenuForm : public widgets::Form {
    Q_OBJECT
  public:
    MenuForm(const QString& name, const QString& caption, House& house, QWidget* parent,
             std::vector<MenuEntry> entries = {});

  protected:
    void place() override;
    void deactivated() override;
    void activated() override;
    void setHeading(const QString& text);  ///< the caption until it is set
    /// Above the buttons, for what a menu adds to them (its labels).
    QVBoxLayout* headLayout() const { return head_; }
    /// A button that runs its entry, for menus with an arrangement of their own. Tab comes to the buttons in
    /// the order of making, and to the bottom row last.
    QPushButton* addButton(const MenuEntry& entry);

    House& house_;

  private:
    void addEntries();
    void run(const MenuEntry& entry);

    std::vector<MenuEntry> entries_;
    QList<QPushButton*> bottom_;  ///< in the order of Tab: the way back, then what stands beside it
    QVBoxLayout* head_;
    QLabel* heading_;
};

/// Stands a screen where the menus stand, under the top of the main window; center_form without one.
void placeAsMenu(widgets::Form* screen);
/// The main window above a screen, or null (in a test without one).
QWidget* mainWindowOf(const QWidget* screen);
/// A control of the main window itself, by its name; null when there is no main window. Screens over it may
/// bear controls of the same name and are not searched.
QWidget* mainControl(const QWidget* screen, const QString& name);

}  // namespace forms
