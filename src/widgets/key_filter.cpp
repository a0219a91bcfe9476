#include "widgets/key_filter.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>

namespace widgets {

bool isRefusedKey(const QKeyEvent& key, const QString& characters) {
    const QString text = key.text();
    const bool command = key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    // Half of a pair (an emoji is two units) is no printing character, but no control character either.
    const bool typed = !text.isEmpty() && text.at(0).category() != QChar::Other_Control;
    return !command && typed && !(text.size() == 1 && characters.contains(text.at(0)));
}

namespace {

class KeyFilter : public QObject {
  public:
    KeyFilter(QLineEdit* edit, const QString& characters) : QObject(edit), characters_(characters) {
        edit->installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) return false;
        return isRefusedKey(*static_cast<QKeyEvent*>(event), characters_);
    }

  private:
    QString characters_;
};

}  // namespace

void admitOnly(QLineEdit* edit, const QString& characters) {
    new KeyFilter(edit, characters);
}

}  // namespace widgets
