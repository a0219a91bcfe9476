#include "widgets/key_filter.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>

#include "store/half_width.h"
#include "store/number_text.h"

namespace widgets {

bool isRefusedKey(const QKeyEvent& key, const QString& characters) {
    const QString text = key.text();
    const bool command = key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    // Half of a pair (an emoji is two units) is no printing character, but no control character either.
    const bool typed = !text.isEmpty() && text.at(0).category() != QChar::Other_Control;
    return !command && typed && !(text.size() == 1 && characters.contains(store::halfWidth(text)));
}

namespace {

class DirectTyping : public QObject {
  public:
    explicit DirectTyping(QLineEdit* edit) : QObject(edit) {
        edit->installEventFilter(this);
        edit->setAttribute(Qt::WA_InputMethodEnabled, false);
    }
    bool eventFilter(QObject* edit, QEvent* event) override {
        // Whoever unlocks a field switches its input method on again.
        if (event->type() == QEvent::FocusIn || event->type() == QEvent::ReadOnlyChange)
            static_cast<QLineEdit*>(edit)->setAttribute(Qt::WA_InputMethodEnabled, false);
        return false;
    }
};

class KeyFilter : public DirectTyping {
  public:
    KeyFilter(QLineEdit* edit, const QString& characters) : DirectTyping(edit), characters_(characters) {
        connect(edit, &QLineEdit::textEdited, this, &KeyFilter::narrow);
        const auto count = [this, edit] { separators_ = edit->text().count(u','); };
        connect(edit, &QLineEdit::textChanged, this, count);
        count();
    }
    bool eventFilter(QObject* edit, QEvent* event) override {
        DirectTyping::eventFilter(edit, event);
        if (event->type() != QEvent::KeyPress) return false;
        return isRefusedKey(*static_cast<QKeyEvent*>(event), characters_);
    }

  private:
    /// Who takes a digit out of "12,345" means 1,234: separators that stood there and no longer fit go.
    /// Pasted ones stay for the check to judge.
    void narrow(const QString& text) {
        auto* edit = static_cast<QLineEdit*>(parent());
        QString before = store::halfWidth(text.first(edit->cursorPosition()));
        QString narrowed = store::halfWidth(text);
        if (narrowed.count(u',') <= separators_ && !store::separatorsInPlace(narrowed.section(u'.', 0, 0))) {
            narrowed.remove(u',');
            before.remove(u',');
        }
        if (narrowed == text) return;
        edit->setText(narrowed);
        edit->setCursorPosition(static_cast<int>(before.size()));
    }

    QString characters_;
    qsizetype separators_ = 0;  ///< before the edit: textChanged comes after textEdited
};

}  // namespace

void typeDirectly(QLineEdit* edit) {
    new DirectTyping(edit);
}

void admitOnly(QLineEdit* edit, const QString& characters) {
    new KeyFilter(edit, characters);
}

}  // namespace widgets
