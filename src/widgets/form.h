#pragma once
#include <QDialog>
#include <QList>
#include <QPointer>
#include <QString>
#include <array>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

class QAbstractButton;
class QLabel;
class QLineEdit;
class QPushButton;

namespace widgets {

class ContentsArea;
class LeaveCheck;

/// What every screen is made of: a modal dialog with the habits of the house. Its object name is the screen's
/// name (frmSDatatorikomi); each control bears its given name (Command1, Text1_0, Label3).
/// - Enter moves to the next control as Tab does (buttons are pressed by it); Escape presses `cancelButton`
/// if one is set,
///   and does nothing otherwise. No button is ever a default button: Enter in a field cannot start an action.
/// - A line edit selects its whole text on focus.
/// - F1 presses the screen's help button: the one whose caption begins with ヘルプ.
/// - On show it is centred at one third of the free screen (center_form); menu forms override `place()`.
/// - Layouts (widgets/layout.h), not coordinates; the told width and height are minimum sizes that the layout
/// may exceed.
/// - It stands on the screen as a whole and is no larger than it, frame included, also when it grows. The
/// last row of its column is the command bar; what stands above it scrolls where the screen is too small for
/// it (widgets/contents_area.h), so that the bar is always in sight.
/// - Its labels show text as it is, never as mark-up.
class Form : public QDialog {
    Q_OBJECT
  public:
    Form(const QString& name, const QString& caption, QWidget* parent);
    ~Form() override;

    void setVisible(bool visible) override;

    /// Hourglass and back.
    void setHourglass();
    void setDefaultPointer();

    /// Shows `child` modally over this form and returns when it is closed; hourglass before, default pointer
    /// after (the Activate rule). Deletes the child, then calls activated(). Null is answered with 0.
    int showChild(QDialog* child);

    /// What leaves a screen and has one key everywhere: its list (Ctrl+P), what goes to Excel (Ctrl+E).
    enum class Output { List, Excel };

    /// Says beside the buttons why something did not work, until it is said anew; empty takes it away.
    void showCause(const QString& sentence);

  protected:
    virtual void place();          ///< center_form unless overridden; called once, at the first show
    virtual void deactivated() {}  ///< a child is about to come up: menu forms go out of sight
    virtual void activated() {}    ///< a child was closed and control returned
    void setCancelButton(QAbstractButton* button);
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

    /// A validation run when the user leaves a line edit or a combo (Tab, mouse, mnemonic) and on Enter:
    /// false keeps the focus in it (the routine has shown its box), and what the user wanted to press is not
    /// pressed. Buttons listed in `exempt` (close, cancel) may be pressed without passing it. It does not run
    /// when another window or program comes to the front, when the form closes, when code moves the focus, or
    /// while the control is read-only, disabled or hidden. The edit of a combo box counts while its box has
    /// the focus. The help button is always exempt: help is asked for just when a field is wrong.
    void validateOnLeave(QWidget* control, std::function<bool()> check, QList<QPushButton*> exempt = {});
    /// Runs the check of the edit that has the focus, if any: for actions that are reached by other ways
    /// (function keys).
    bool passesLeaveCheck();

    /// The output's key presses the button, after the check of the field that is left, and is its tip. Of
    /// several buttons it goes to the next one.
    void setOutput(QPushButton* button, Output output);

    /// A label with `buddy` (so that "基準日(&D):" shows its mnemonic); the buddy's accessible name is the
    /// text without mnemonic and colon.
    QLabel* labelFor(const QString& name, const QString& text, QWidget* buddy);

    /// Makes a control with its object name.
    template <class W, class... Args>
    W* make(const QString& name, Args&&... args) {
        W* widget = new W(std::forward<Args>(args)..., this);
        widget->setObjectName(name);
        return widget;
    }
    /// A control array: Text3_0, Text3_1, …
    template <class W, std::size_t N>
    std::array<W*, N> makeArray(const QString& name, const std::array<QString, N>& texts) {
        std::array<W*, N> controls{};
        for (std::size_t i = 0; i < N; ++i) controls[i] = make<W>(name + u'_' + QString::number(i), texts[i]);
        return controls;
    }

  private:
    void moveOn(QWidget* from);
    QPushButton* helpButton() const;
    bool pressesOutput(const QKeyEvent* event);
    void keepOnScreen();
    void bringIntoSight(QWidget* control);
    QSize room() const;
    void giveRoom();

    QAbstractButton* cancel_ = nullptr;
    std::vector<std::pair<QPushButton*, Output>> outputs_;
    std::unique_ptr<LeaveCheck> watch_;
    QPointer<ContentsArea> contents_;
    QPointer<QLabel> cause_;
    bool arranged_ = false;
    bool placed_ = false;
};

/// Top and left are a third of what the screen leaves free.
void center_form(QWidget* form);
/// A text of the company (the name of an attribute) as a caption of a button, a label of a field, a group or
/// a tab: it shows as it is, and an & in it is no mnemonic.
QString asCaption(const QString& text);
/// Mark the whole text.
void select_all(QLineEdit* edit);

}  // namespace widgets
