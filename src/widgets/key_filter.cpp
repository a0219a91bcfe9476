#include "widgets/key_filter.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>

namespace widgets {
namespace {

class KeyFilter : public QObject {
  public:
    KeyFilter(QLineEdit* edit, const QString& characters) : QObject(edit), characters_(characters) {
        edit->installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) return false;
        const auto* key = static_cast<QKeyEvent*>(event);
        const QString text = key->text();
        const bool command = key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
        return !command && text.size() == 1 && text.at(0).isPrint() && !characters_.contains(text.at(0));
    }

  private:
    QString characters_;
};

}  // namespace

void admitOnly(QLineEdit* edit, const QString& characters) {
    new KeyFilter(edit, characters);
}

}  // namespace widgets
