#pragma once
#include <QDialog>
#include <QString>
#include <array>
#include <functional>

class QLabel;
class QLineEdit;
class QPushButton;

namespace widgets {

/// What every screen is made of: a modal dialog with the habits of the house. Its object name is the screen's name
/// (frmSDatatorikomi); each control bears its given name (Command1, Text1_0, Label3).
/// - Enter moves to the next control as Tab does (buttons are pressed by it); Escape presses `cancelButton` if one is set.
/// - A line edit selects its whole text on focus.
/// - On show it is centred at one third of the free screen (center_form); menu forms override `place()`.
/// - Layouts, not coordinates; the told width and height are minimum sizes that the layout may exceed.
class Form : public QDialog {
    Q_OBJECT
  public:
    Form(const QString& name, const QString& caption, QWidget* parent);

    /// Hourglass and back.
    void setHourglass();
    void setDefaultPointer();

    /// Shows `child` modally over this form and returns when it is closed; hourglass before, default pointer after
    /// (the Activate rule). Menu forms move off screen meanwhile. Deletes the child.
    int showChild(QDialog* child);

  protected:
    virtual void place();                  ///< center_form unless overridden
    virtual void childOpening() {}         ///< showChild is about to show a child
    virtual void activated() {}            ///< a child was closed and control returned
    void setCancelButton(QPushButton* button);
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    /// A validation run on leaving a line edit and on Enter: false keeps the focus in it (the routine has shown its box).
    /// Buttons listed in `exempt` (close, cancel) may be pressed without passing it.
    void validateOnLeave(QLineEdit* edit, std::function<bool()> check, QList<QPushButton*> exempt = {});

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
        for (std::size_t i = 0; i < N; ++i)
            controls[i] = make<W>(name + u'_' + QString::number(i), texts[i]);
        return controls;
    }

  private:
    struct LeaveCheck;
    QPushButton* cancel_ = nullptr;
    std::vector<std::shared_ptr<LeaveCheck>> checks_;
    bool placed_ = false;
};

/// Top and left are a third of what the screen leaves free.
void center_form(QWidget* form);
/// Mark the whole text.
void select_all(QLineEdit* edit);

}  // namespace widgets
