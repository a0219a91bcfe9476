#include "widgets/code_combo.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QSignalBlocker>

#include "widgets/mint_style.h"

namespace widgets {

CodeCombo::CodeCombo(QWidget* parent) : QComboBox(parent) {
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(10);
    connect(this, &QComboBox::activated, this, [this](int index) {
        code_ = itemData(index).toString();
        Q_EMIT chosen();
    });
}

void CodeCombo::setItems(const std::vector<CodeList::Item>& items) {
    const QSignalBlocker quiet(this);
    clear();
    for (const CodeList::Item& item : items) addItem(item.text, item.code);
    setCode(code_);
}

void CodeCombo::setCode(const QString& code) {
    const QSignalBlocker quiet(this);
    code_ = code;
    setCurrentIndex(code.isEmpty() ? -1 : findData(code));
    update();
}

void CodeCombo::setLocked(bool locked) {
    locked_ = locked;
    setFocusPolicy(locked ? Qt::NoFocus : Qt::WheelFocus);
    setProperty(kLockedProperty, locked);
    update();
}

void CodeCombo::focusInEvent(QFocusEvent* event) {
    QComboBox::focusInEvent(event);
    const bool returned = event->reason() == Qt::PopupFocusReason ||
                          event->reason() == Qt::ActiveWindowFocusReason ||
                          event->reason() == Qt::MenuBarFocusReason;
    if (!locked_ && !returned) Q_EMIT entered();
}

void CodeCombo::keyPressEvent(QKeyEvent* event) {
    if (locked_) {
        event->ignore();
    } else if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace) {
        setCode({});
        Q_EMIT chosen();
    } else {
        QComboBox::keyPressEvent(event);
    }
}

void CodeCombo::mousePressEvent(QMouseEvent* event) {
    if (!locked_) QComboBox::mousePressEvent(event);
}

// A wheel over a long form scrolls; it must not change a code by the way.
void CodeCombo::wheelEvent(QWheelEvent* event) {
    if (!locked_ && hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

}  // namespace widgets
