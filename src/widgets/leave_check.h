#pragma once
#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>

class QKeyEvent;
class QLineEdit;
class QMouseEvent;
class QPushButton;
class QWidget;

namespace widgets {

/// The validation of a form's fields as the user leaves them. It sees the events of the form's controls while
/// it is installed on the application, which the form does while it is on screen. A move out of a checked
/// edit is judged before it happens, so that a refused one leaves no trace (no flicker, no input method bound
/// to the wrong control).
class LeaveCheck : public QObject {
  public:
    explicit LeaveCheck(QWidget& window) : window_(window) {}

    void add(QWidget* control, std::function<bool()> check, const QList<QPushButton*>& exempt);
    /// May the focus leave for `target` (null: wherever)? Runs the check of the focused edit unless `target`
    /// is exempt.
    bool mayLeaveFor(QWidget* target);

    /// Seen before the control that has the focus; true keeps the key from it.
    std::function<bool(const QKeyEvent* event)> takesKey;
    std::function<void(QWidget* control)> onEnter;  ///< the focus came, by whatever way

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Check;
    bool pressOnWindow(QMouseEvent* event);
    bool pressOnControl(QWidget* control);
    bool refusesTab(QWidget* from, QKeyEvent* event);
    bool refusesShortcut(QWidget* control);
    bool refusesFocusOut(QWidget* left, Qt::FocusReason reason);
    void markText(QWidget* entered, Qt::FocusReason reason);
    void finishClick(QWidget* control);

    QWidget& window_;
    QHash<QWidget*, std::shared_ptr<Check>> checks_;
    QPointer<QLineEdit> entered_;  // by the mouse: its text is marked when the button comes up
    QPointer<QWidget> last_;       // had the focus last
    bool pressRefused_ = false;  // the focus change of a press was refused, the press itself is still to come
};

/// A form's help button: help is asked for just when a field is wrong, so it is pressed past every check.
bool isHelp(const QPushButton* button);

}  // namespace widgets
