#include "widgets/leave_check.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTimer>
#include <QWindow>
#include <utility>

#include "widgets/form.h"

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

}  // namespace

bool isHelp(const QPushButton* button) {
    return button->text().startsWith(QStringLiteral("ヘルプ"));
}

struct LeaveCheck::Check {
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

void LeaveCheck::add(QWidget* control, std::function<bool()> check, const QList<QPushButton*>& exempt) {
    auto entry = std::make_shared<Check>(Check{control, std::move(check), exempt});
    QWidget* const holder = control->focusProxy() ? control->focusProxy() : control;
    checks_.insert(holder, entry);
    const auto forget = [entry] { entry->passed = false; };
    if (auto* edit = qobject_cast<QLineEdit*>(control)) connect(edit, &QLineEdit::textChanged, this, forget);
    if (auto* combo = qobject_cast<QComboBox*>(control))
        connect(combo, &QComboBox::currentTextChanged, this, forget);
    connect(control, &QObject::destroyed, this, [this, holder] { checks_.remove(holder); });
}

bool LeaveCheck::mayLeaveFor(QWidget* target) {
    QWidget* focused = window_.focusWidget();
    const std::shared_ptr<Check> check = checks_.value(focused);
    if (!check || check->passed || !check->counts()) return true;
    if (target && (target == focused || focused->isAncestorOf(target))) return true;
    if (check->exempts(target)) {
        check->passed = true;
        return true;
    }
    return check->judge();
}

bool LeaveCheck::eventFilter(QObject* watched, QEvent* event) {
    if (watched->isWindowType()) {
        if (watched != window_.windowHandle() || event->type() != QEvent::MouseButtonPress) return false;
        return pressOnWindow(static_cast<QMouseEvent*>(event));
    }
    if (!watched->isWidgetType()) return false;
    auto* control = static_cast<QWidget*>(watched);
    const QEvent::Type type = event->type();
    const bool ofInterest = type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick ||
                            type == QEvent::MouseButtonRelease || type == QEvent::KeyPress ||
                            type == QEvent::Shortcut || type == QEvent::FocusIn || type == QEvent::FocusOut;
    if (!ofInterest || control->window() != &window_) return false;
    switch (type) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            return pressOnControl(control);
        case QEvent::MouseButtonRelease:
            finishClick(control);
            return false;
        case QEvent::KeyPress:
            return refusesTab(control, static_cast<QKeyEvent*>(event)) ||
                   (control == window_.focusWidget() && takesKey && takesKey(static_cast<QKeyEvent*>(event)));
        case QEvent::Shortcut:
            return refusesShortcut(control);
        case QEvent::FocusIn:
            markText(control, static_cast<QFocusEvent*>(event)->reason());
            if (onEnter) onEnter(control);
            return false;
        default:
            return refusesFocusOut(control, static_cast<QFocusEvent*>(event)->reason());
    }
}

// The window sees a press before the focus moves; a control sees it only after.
bool LeaveCheck::pressOnWindow(QMouseEvent* event) {
    pressRefused_ = false;
    QWidget* hit = window_.childAt(event->position().toPoint());
    QWidget* target = hit ? clickTarget(hit) : nullptr;
    if (target && target->focusProxy()) target = target->focusProxy();
    return target && !mayLeaveFor(target);
}

bool LeaveCheck::pressOnControl(QWidget* control) {
    if (std::exchange(pressRefused_, false)) return true;
    QWidget* target = clickTarget(control);
    return target && !mayLeaveFor(target);
}

bool LeaveCheck::refusesTab(QWidget* from, QKeyEvent* event) {
    const bool tab = event->key() == Qt::Key_Tab;
    if ((!tab && event->key() != Qt::Key_Backtab) || from != window_.focusWidget()) return false;
    if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) return false;
    return !mayLeaveFor(tabStop(from, tab && !(event->modifiers() & Qt::ShiftModifier)));
}

bool LeaveCheck::refusesShortcut(QWidget* control) {
    auto* label = qobject_cast<QLabel*>(control);
    QWidget* target = label && label->buddy() ? label->buddy() : control;
    return target->isEnabled() && !mayLeaveFor(target);
}

// Reached only when the focus moved in a way that was not judged before.
bool LeaveCheck::refusesFocusOut(QWidget* left, Qt::FocusReason reason) {
    const std::shared_ptr<Check> check = checks_.value(left);
    if (!check || std::exchange(check->passed, false) || !leavesByUser(reason)) return false;
    QWidget* entered = QApplication::focusWidget();
    if (!entered || entered->window() != &window_ || check->exempts(entered) || !check->counts())
        return false;
    if (check->judge()) {
        check->passed = false;
        return false;
    }
    left->setFocus(Qt::OtherFocusReason);
    pressRefused_ = reason == Qt::MouseFocusReason;
    if (pressRefused_) QTimer::singleShot(0, this, [this] { pressRefused_ = false; });
    return true;
}

void LeaveCheck::markText(QWidget* entered, Qt::FocusReason reason) {
    if (const auto check = checks_.value(entered)) check->passed = false;
    auto* edit = qobject_cast<QLineEdit*>(entered);
    entered_ = reason == Qt::MouseFocusReason ? edit : nullptr;
    // The window's own return to the front is no entering, unless the focus was moved meanwhile.
    const bool returned = reason != Qt::OtherFocusReason && !leavesByUser(reason) && last_ == entered;
    if (edit && !returned) select_all(edit);
    last_ = entered;
}

void LeaveCheck::finishClick(QWidget* control) {
    if (entered_ && entered_ == control && !entered_->hasSelectedText()) select_all(entered_);
    entered_ = nullptr;
}

}  // namespace widgets
