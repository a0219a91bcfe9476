#include "widgets/form.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QHash>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QScopedValueRollback>
#include <QScreen>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "widgets/contents_area.h"
#include "widgets/theme.h"

namespace widgets {
namespace {

/// Where the focus goes from `from` by Tab (or Backtab); null when there is no other place.
QWidget* tabStop(QWidget* from, bool forward) {
    QWidget* w = from;
    do {
        w = forward ? w->nextInFocusChain() : w->previousInFocusChain();
        const bool stops = w != from && w->isVisible() && w->isEnabled() && (w->focusPolicy() & Qt::TabFocus);
        if (stops && w->window() == from->window()) return w;
    } while (w != from);
    return nullptr;
}

/// What a mouse press on `hit` would press or focus; null for a dead spot (labels, backgrounds).
QWidget* clickTarget(QWidget* hit) {
    for (QWidget* w = hit; w; w = w->parentWidget()) {
        const bool takesFocus = (w->focusPolicy() & Qt::ClickFocus) == Qt::ClickFocus;
        if (w->isEnabled() && (takesFocus || qobject_cast<QAbstractButton*>(w))) return w;
        if (w->isWindow()) break;
    }
    return nullptr;
}

bool leavesByUser(Qt::FocusReason reason) {
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
           reason == Qt::MouseFocusReason || reason == Qt::ShortcutFocusReason;
}

QChar mnemonicOf(const QString& text) {
    for (qsizetype at = text.indexOf(u'&'); at >= 0 && at + 1 < text.size(); at = text.indexOf(u'&', at + 2))
        if (text.at(at + 1) != u'&') return text.at(at + 1);
    return {};
}

/// "閉じる(&Ｃ)": no key gives the full-width letter, so Alt with the plain one presses the button, unless
/// another button of the screen has it.
void mendWideMnemonics(const QList<QPushButton*>& buttons) {
    const auto isWide = [](QChar c) { return c.unicode() >= 0xff21 && c.unicode() <= 0xff3a; };
    for (QPushButton* button : buttons) {
        const QChar wide = mnemonicOf(button->text());
        if (!isWide(wide)) continue;
        const QChar letter(wide.unicode() - 0xff21 + u'A');
        const bool taken = std::any_of(buttons.begin(), buttons.end(), [&](QPushButton* b) {
            return mnemonicOf(b->text()).toUpper() == letter;
        });
        if (!taken) button->setShortcut(QKeySequence(Qt::ALT | Qt::Key(letter.unicode())));
    }
}

/// Title and frame of a window, where the window system has not told them yet.
constexpr QSize kFrame(16, 40);

bool isHelp(const QPushButton* button) {
    return button->text().startsWith(QStringLiteral("ヘルプ"));
}

bool isPushed(QWidget* w) {
    return qobject_cast<QAbstractButton*>(w) && !qobject_cast<QRadioButton*>(w) &&
           !qobject_cast<QCheckBox*>(w);
}

}  // namespace

/// Sees the events of the form's controls while the form is on screen. A move out of a checked edit is judged
/// before it happens, so that a refused one leaves no trace (no flicker, no input method bound to the wrong
/// control).
class Form::Watch : public QObject {
  public:
    explicit Watch(Form& form) : form_(form) {}

    void add(QWidget* control, std::function<bool()> check, const QList<QPushButton*>& exempt);
    /// May the focus leave for `target` (null: wherever)? Runs the check of the focused edit unless `target`
    /// is exempt.
    bool mayLeaveFor(QWidget* target);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Check {
        QWidget* control;
        std::function<bool()> run;
        QList<QPushButton*> exempt;
        bool running = false;
        bool passed = false;  // judged for the move under way; forgotten when it happened or the text changes

        bool counts() const {
            const auto* edit = qobject_cast<QLineEdit*>(control);
            return !running && control->isEnabled() && control->isVisible() && !(edit && edit->isReadOnly());
        }
        bool exempts(QWidget* w) const {
            auto* button = qobject_cast<QPushButton*>(w);
            return button && (exempt.contains(button) || isHelp(button));
        }
        bool judge() {
            QScopedValueRollback<bool> guard(running, true);
            passed = run();
            return passed;
        }
    };

    bool pressOnWindow(QMouseEvent* event);
    bool pressOnControl(QWidget* control);
    bool refusesTab(QWidget* from, QKeyEvent* event);
    bool refusesShortcut(QWidget* control);
    bool refusesFocusOut(QWidget* left, Qt::FocusReason reason);
    void markText(QWidget* entered, Qt::FocusReason reason);
    void finishClick(QWidget* control);

    Form& form_;
    QHash<QWidget*, std::shared_ptr<Check>> checks_;
    QPointer<QLineEdit> entered_;  // by the mouse: its text is marked when the button comes up
    QPointer<QWidget> last_;       // had the focus last
    bool pressRefused_ = false;  // the focus change of a press was refused, the press itself is still to come
};

void Form::Watch::add(QWidget* control, std::function<bool()> check, const QList<QPushButton*>& exempt) {
    auto entry = std::make_shared<Check>(Check{control, std::move(check), exempt});
    QWidget* const holder = control->focusProxy() ? control->focusProxy() : control;
    checks_.insert(holder, entry);
    const auto forget = [entry] { entry->passed = false; };
    if (auto* edit = qobject_cast<QLineEdit*>(control)) connect(edit, &QLineEdit::textChanged, this, forget);
    if (auto* combo = qobject_cast<QComboBox*>(control))
        connect(combo, &QComboBox::currentTextChanged, this, forget);
    connect(control, &QObject::destroyed, this, [this, holder] { checks_.remove(holder); });
}

bool Form::Watch::mayLeaveFor(QWidget* target) {
    QWidget* focused = form_.focusWidget();
    const std::shared_ptr<Check> check = checks_.value(focused);
    if (!check || check->passed || !check->counts()) return true;
    if (target && (target == focused || focused->isAncestorOf(target))) return true;
    if (check->exempts(target)) {
        check->passed = true;
        return true;
    }
    return check->judge();
}

bool Form::Watch::eventFilter(QObject* watched, QEvent* event) {
    if (watched->isWindowType()) {
        if (watched != form_.windowHandle() || event->type() != QEvent::MouseButtonPress) return false;
        return pressOnWindow(static_cast<QMouseEvent*>(event));
    }
    if (!watched->isWidgetType()) return false;
    auto* control = static_cast<QWidget*>(watched);
    const QEvent::Type type = event->type();
    const bool ofInterest = type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick ||
                            type == QEvent::MouseButtonRelease || type == QEvent::KeyPress ||
                            type == QEvent::Shortcut || type == QEvent::FocusIn || type == QEvent::FocusOut;
    if (!ofInterest || control->window() != &form_) return false;
    switch (type) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            return pressOnControl(control);
        case QEvent::MouseButtonRelease:
            finishClick(control);
            return false;
        case QEvent::KeyPress:
            return refusesTab(control, static_cast<QKeyEvent*>(event)) ||
                   (control == form_.focusWidget() && form_.pressesOutput(static_cast<QKeyEvent*>(event)));
        case QEvent::Shortcut:
            return refusesShortcut(control);
        case QEvent::FocusIn:
            markText(control, static_cast<QFocusEvent*>(event)->reason());
            form_.bringIntoSight(control);
            return false;
        default:
            return refusesFocusOut(control, static_cast<QFocusEvent*>(event)->reason());
    }
}

// The window sees a press before the focus moves; a control sees it only after.
bool Form::Watch::pressOnWindow(QMouseEvent* event) {
    pressRefused_ = false;
    QWidget* hit = form_.childAt(event->position().toPoint());
    QWidget* target = hit ? clickTarget(hit) : nullptr;
    if (target && target->focusProxy()) target = target->focusProxy();
    return target && !mayLeaveFor(target);
}

bool Form::Watch::pressOnControl(QWidget* control) {
    if (std::exchange(pressRefused_, false)) return true;
    QWidget* target = clickTarget(control);
    return target && !mayLeaveFor(target);
}

bool Form::Watch::refusesTab(QWidget* from, QKeyEvent* event) {
    const bool tab = event->key() == Qt::Key_Tab;
    if ((!tab && event->key() != Qt::Key_Backtab) || from != form_.focusWidget()) return false;
    if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) return false;
    return !mayLeaveFor(tabStop(from, tab && !(event->modifiers() & Qt::ShiftModifier)));
}

bool Form::Watch::refusesShortcut(QWidget* control) {
    auto* label = qobject_cast<QLabel*>(control);
    QWidget* target = label && label->buddy() ? label->buddy() : control;
    return target->isEnabled() && !mayLeaveFor(target);
}

// Reached only when the focus moved in a way that was not judged before.
bool Form::Watch::refusesFocusOut(QWidget* left, Qt::FocusReason reason) {
    const std::shared_ptr<Check> check = checks_.value(left);
    if (!check || std::exchange(check->passed, false) || !leavesByUser(reason)) return false;
    QWidget* entered = QApplication::focusWidget();
    if (!entered || entered->window() != &form_ || check->exempts(entered) || !check->counts()) return false;
    if (check->judge()) {
        check->passed = false;
        return false;
    }
    left->setFocus(Qt::OtherFocusReason);
    pressRefused_ = reason == Qt::MouseFocusReason;
    if (pressRefused_) QTimer::singleShot(0, this, [this] { pressRefused_ = false; });
    return true;
}

void Form::Watch::markText(QWidget* entered, Qt::FocusReason reason) {
    if (const auto check = checks_.value(entered)) check->passed = false;
    auto* edit = qobject_cast<QLineEdit*>(entered);
    entered_ = reason == Qt::MouseFocusReason ? edit : nullptr;
    // The window's own return to the front is no entering, unless the focus was moved meanwhile.
    const bool returned = reason != Qt::OtherFocusReason && !leavesByUser(reason) && last_ == entered;
    if (edit && !returned) select_all(edit);
    last_ = entered;
}

void Form::Watch::finishClick(QWidget* control) {
    if (entered_ && entered_ == control && !entered_->hasSelectedText()) select_all(entered_);
    entered_ = nullptr;
}

Form::Form(const QString& name, const QString& caption, QWidget* parent)
    : QDialog(parent), watch_(std::make_unique<Watch>(*this)) {
    setObjectName(name);
    setWindowTitle(caption);
    // Modal over the windows it stands on, not over the help windows, which stay usable beside it.
    setWindowModality(Qt::WindowModal);
}

Form::~Form() = default;

void Form::setHourglass() {
    setCursor(Qt::WaitCursor);
}

void Form::setDefaultPointer() {
    unsetCursor();
}

int Form::showChild(QDialog* child) {
    if (!child) return 0;
    setHourglass();
    deactivated();
    const QPointer<QDialog> shown(child);
    const int result = child->exec();
    delete shown.data();
    setDefaultPointer();
    activated();
    keepOnScreen();
    return result;
}

void Form::place() {
    center_form(this);
}

void Form::setCancelButton(QAbstractButton* button) {
    cancel_ = button;
}

/// Before the first show takes the size from the layout.
void Form::setVisible(bool visible) {
    if (visible && !std::exchange(arranged_, true)) {
        ensurePolished();
        auto* column = qobject_cast<QVBoxLayout*>(layout());
        contents_ = column ? ContentsArea::above(column) : nullptr;
        giveRoom();
    }
    QDialog::setVisible(visible);
}

/// The contents get what the rest of the column leaves of the screen.
void Form::giveRoom() {
    if (!contents_) return;
    const QSize others = layout()->totalMinimumSize() - contents_->minimumSizeHint();
    const QMargins margins = layout()->contentsMargins();
    contents_->setRoom(
        {room().width() - margins.left() - margins.right(), room().height() - others.height()});
}

void Form::showCause(const QString& sentence) {
    auto* column = qobject_cast<QVBoxLayout*>(layout());
    if (!column || (!cause_ && sentence.isEmpty())) return;
    if (!cause_) {
        cause_ = make<QLabel>(QStringLiteral("lblCause"));
        cause_->setTextFormat(Qt::PlainText);
        cause_->setWordWrap(true);
        setTone(cause_, Tone::Warning);
        column->insertWidget(column->count() - 1, cause_);
    }
    if (cause_->text() == sentence) return;
    cause_->setText(sentence);
    cause_->setVisible(!sentence.isEmpty());
    giveRoom();
    layout()->activate();
    if (isVisible()) resize(size().expandedTo(layout()->totalMinimumSize()));
}

/// What the screen has for the form without its frame.
QSize Form::room() const {
    const QSize frame = (frameGeometry().size() - size()).expandedTo(kFrame);
    return screen()->availableGeometry().size() - frame;
}

void Form::showEvent(QShowEvent* event) {
    const QList<QPushButton*> buttons = findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
        button->setAutoDefault(false);
        button->setDefault(false);
    }
    mendWideMnemonics(buttons);
    // A told minimum size must not let a small screen squeeze the controls under what their texts need.
    if (layout()) setMinimumSize(minimumSize().expandedTo(layout()->totalMinimumSize()).boundedTo(room()));
    qApp->installEventFilter(watch_.get());
    // Names of the company's data stand in labels: they are text and never mark-up.
    for (QLabel* label : findChildren<QLabel*>())
        if (label->textFormat() == Qt::AutoText) label->setTextFormat(Qt::PlainText);
    if (!std::exchange(placed_, true)) {
        place();
        keepOnScreen();
    }
    QDialog::showEvent(event);
}

/// A form that grew by itself (a panel, a larger font) may reach over the edge.
void Form::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    if (placed_ && isVisible() && !event->spontaneous()) keepOnScreen();
}

void Form::keepOnScreen() {
    const QRect room = screen()->availableGeometry();
    if (!room.intersects(frameGeometry())) return;  // moved away on purpose, under a child
    resize(size().boundedTo(this->room()));
    const QRect now = frameGeometry();
    const QPoint last = room.bottomRight() - QPoint(now.width() - 1, now.height() - 1);
    move(std::max(room.left(), std::min(now.x(), last.x())),
         std::max(room.top(), std::min(now.y(), last.y())));
}

/// By whatever way the focus came: Tab, a mnemonic, a refused check.
void Form::bringIntoSight(QWidget* control) {
    if (contents_ && contents_->widget()->isAncestorOf(control)) contents_->ensureWidgetVisible(control);
}

void Form::hideEvent(QHideEvent* event) {
    qApp->removeEventFilter(watch_.get());
    QDialog::hideEvent(event);
}

void Form::keyPressEvent(QKeyEvent* event) {
    const bool plain = !(event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
    if (event->key() == Qt::Key_F1 && event->modifiers() == Qt::NoModifier) {
        if (QPushButton* help = helpButton(); help && !event->isAutoRepeat()) help->click();
        return event->accept();
    }
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!plain || (!enter && event->key() != Qt::Key_Escape)) {
        QDialog::keyPressEvent(event);
        return;
    }
    event->accept();
    if (event->isAutoRepeat()) return;  // a key held down must not run through several screens
    if (!enter) {
        if (cancel_ && cancel_->isVisible()) cancel_->click();
    } else if (QWidget* from = focusWidget(); isPushed(from)) {
        static_cast<QAbstractButton*>(from)->click();
    } else {
        moveOn(from);
    }
}

QPushButton* Form::helpButton() const {
    const QList<QPushButton*> buttons = findChildren<QPushButton*>();
    const auto help = std::find_if(buttons.begin(), buttons.end(), isHelp);
    return help == buttons.end() || !(*help)->isVisible() || !(*help)->isEnabled() ? nullptr : *help;
}

void Form::setOutput(QPushButton* button, Output output) {
    const QString key = output == Output::List ? QStringLiteral("Ctrl+P") : QStringLiteral("Ctrl+E");
    button->setToolTip(button->toolTip().isEmpty() ? key : button->toolTip() + u'　' + key);
    outputs_.emplace_back(button, output);
}

/// Seen before the field that has the focus: some text fields have a meaning of their own for Ctrl+E.
bool Form::pressesOutput(const QKeyEvent* event) {
    if (event->modifiers() != Qt::ControlModifier || event->isAutoRepeat()) return false;
    if (event->key() != Qt::Key_P && event->key() != Qt::Key_E) return false;
    const Output asked = event->key() == Qt::Key_P ? Output::List : Output::Excel;
    QList<QWidget*> ready;
    for (const auto& [button, output] : outputs_)
        if (output == asked && button->isVisible() && button->isEnabled()) ready << button;
    if (ready.isEmpty()) return false;
    QWidget* next = focusWidget();
    do next = next->nextInFocusChain();
    while (!ready.contains(next));
    if (!watch_->mayLeaveFor(next)) return true;
    if (ready.size() == 1)
        static_cast<QPushButton*>(next)->click();
    else
        next->setFocus(Qt::ShortcutFocusReason);
    return true;
}

void Form::moveOn(QWidget* from) {
    if (!watch_->mayLeaveFor(nullptr)) return;
    if (focusWidget() == from) focusNextPrevChild(true);  // unless the check itself has moved the focus
}

void Form::validateOnLeave(QWidget* control, std::function<bool()> check, QList<QPushButton*> exempt) {
    watch_->add(control, std::move(check), exempt);
}

bool Form::passesLeaveCheck() {
    return watch_->mayLeaveFor(nullptr);
}

QLabel* Form::labelFor(const QString& name, const QString& text, QWidget* buddy) {
    static const QRegularExpression mnemonic(QStringLiteral(R"(\s*\(&[^&]\)|&(&?))"));
    static const QRegularExpression colon(QStringLiteral("[:：]\\s*$"));
    auto* label = make<QLabel>(name, text);
    label->setBuddy(buddy);
    buddy->setAccessibleName(QString(text).replace(mnemonic, QStringLiteral("\\1")).remove(colon).trimmed());
    return label;
}

void center_form(QWidget* form) {
    const QRect room = form->screen()->availableGeometry();
    const QSize size = form->frameGeometry().size();
    form->move(room.left() + std::max(0, (room.width() - size.width()) / 3),
               room.top() + std::max(0, (room.height() - size.height()) / 3));
}

QString asCaption(const QString& text) {
    return QString(text).replace(u'&', QStringLiteral("&&"));
}

void select_all(QLineEdit* edit) {
    edit->selectAll();
}

}  // namespace widgets
