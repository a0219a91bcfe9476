#include "widgets/form.h"

#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QScreen>
#include <algorithm>
#include <utility>

#include "widgets/contents_area.h"
#include "widgets/leave_check.h"
#include "widgets/theme.h"

namespace widgets {
namespace {

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

bool isPushed(QWidget* w) {
    return qobject_cast<QAbstractButton*>(w) && !qobject_cast<QRadioButton*>(w) &&
           !qobject_cast<QCheckBox*>(w);
}

}  // namespace

Form::Form(const QString& name, const QString& caption, QWidget* parent)
    : QDialog(parent), watch_(std::make_unique<LeaveCheck>(*this)) {
    setObjectName(name);
    setWindowTitle(caption);
    // Modal over the windows it stands on, not over the help windows, which stay usable beside it.
    setWindowModality(Qt::WindowModal);
    watch_->takesKey = [this](const QKeyEvent* event) { return pressesOutput(event); };
    watch_->onEnter = [this](QWidget* control) { bringIntoSight(control); };
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
