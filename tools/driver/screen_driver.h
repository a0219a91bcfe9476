#pragma once
#include <QDialog>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <deque>
#include <functional>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

#include "forms/box.h"

/// Operates real screens without sleeping: steps run inside the event loop of each modal screen as it shows,
/// boxes are answered from a queue, and whatever was not foreseen is a failure that is closed at once, so
/// that nothing hangs.
namespace support {

class ScreenDriver : public QObject {
    Q_OBJECT
  public:
    /// Where failures go; the main of the screen tests sets it to the test framework.
    using FailureSink = std::function<void(const QString&)>;
    static void setFailureSink(FailureSink sink);

    ScreenDriver();
    ~ScreenDriver() override;  ///< verify()

    using Step = std::function<void(QDialog& form)>;
    /// The next modal screen to show must be `name` (its object name, or its class for a toolkit dialog);
    /// `step` operates it and leaves it closed: a screen still open after its step is a failure.
    void onScreen(const QString& name, Step step);
    /// Shows `form` modally, operates it by `step` and returns its result.
    int run(QDialog& form, Step step);
    /// Runs `step` for a screen that is not modal (the main window), failures of helpers told as in a step.
    void attempt(const std::function<void()>& step);

    /// The next box must say this. A missing icon is not compared.
    void expectBox(const QString& text, const QString& title, forms::BoxAnswer answer = forms::BoxAnswer::Ok,
                   std::optional<forms::BoxIcon> icon = {});
    /// Answers each box that no expectation waits for, instead of failing (a tour, not a test).
    void answerFreely(std::function<forms::BoxAnswer(const forms::BoxRequest&)> answer);
    /// Boxes show as real message boxes and are operated with onScreen("QMessageBox", …).
    void useRealBoxes();

    /// What was said and shown so far, in order.
    const std::vector<forms::BoxRequest>& boxes() const { return boxes_; }
    const QStringList& screens() const { return screens_; }
    /// Fails for every expectation that is left over; false then. Empties the queues.
    bool verify();

    static void fail(const QString& text);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Awaited {
        QString name;
        Step step;
    };
    struct AwaitedBox {
        forms::BoxRequest request;
        std::optional<forms::BoxIcon> icon;
        forms::BoxAnswer answer{};
    };
    /// What is awaited, in order. What a step adds while it runs comes before what was awaited already: its
    /// own screens and boxes show first.
    template <class T>
    class Queue {
      public:
        void add(T item) { items_.insert(items_.begin() + (running_ ? added_++ : std::ssize(items_)), item); }
        bool empty() const { return items_.empty(); }
        const T& front() const { return items_.front(); }
        std::optional<T> take() {
            if (items_.empty()) return {};
            std::optional<T> first(std::move(items_.front()));
            items_.pop_front();
            added_ = std::max<std::ptrdiff_t>(0, added_ - 1);
            return first;
        }
        std::ptrdiff_t enter() {
            ++running_;
            return std::exchange(added_, 0);
        }
        void leave(std::ptrdiff_t outer) {
            --running_;
            added_ = outer;
        }

      private:
        std::deque<T> items_;
        std::ptrdiff_t added_ = 0;
        int running_ = 0;
    };
    forms::BoxAnswer answerBox(const forms::BoxRequest& request);
    void operate(const QPointer<QDialog>& form);

    Queue<Awaited> screenSteps_;
    Queue<AwaitedBox> boxAnswers_;
    std::vector<forms::BoxRequest> boxes_;
    QStringList screens_;
    std::function<forms::BoxAnswer(const forms::BoxRequest&)> free_;
};

// Helpers for steps. `form` is the screen (a dialog or the main window), `name` the control's object name. A
// control that is not there, is hidden, disabled or covered by a modal screen is a failure that ends the
// step.

QWidget& control(QWidget& form, const QString& name);
template <class W>
W& control(QWidget& form, const QString& name);

/// A mouse click on a button, option, check box or other widget; an action (menu entry) is triggered.
void click(QWidget& form, const QString& name);
/// Replaces the text of an input by key strokes, then presses `leave` (Qt::Key_Return, Qt::Key_Tab) if given.
void type(QWidget& form, const QString& name, const QString& text, Qt::Key leave = Qt::Key_unknown);
/// One key stroke at the control that has the focus (mnemonics and shortcuts work).
void press(QWidget& form, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Chooses a row of a list, table or combo box as the user does; `extend` adds it to the selection.
void choose(QWidget& form, const QString& name, int row, bool extend = false);
/// The row whose first column (or combo text) reads so is chosen.
void chooseText(QWidget& form, const QString& name, const QString& text);

/// What a label, input, button, combo or list shows (a list: its current row).
QString text(QWidget& form, const QString& name);
/// The texts of one column of a list, table or combo box.
QStringList rows(QWidget& form, const QString& name, int column = 0);
bool visible(QWidget& form, const QString& name);
bool enabled(QWidget& form, const QString& name);
bool checked(QWidget& form, const QString& name);
/// The object name of the control that has the focus.
QString focused(QWidget& form);
/// Writes a picture of the widget; folders are made.
bool shot(QWidget& widget, const QString& path);

template <class W>
W& control(QWidget& form, const QString& name) {
    if (auto* found = qobject_cast<W*>(&control(form, name))) return *found;
    throw std::runtime_error((name + QStringLiteral(" is a control of another kind")).toStdString());
}

}  // namespace support
