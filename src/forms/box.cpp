#include "forms/box.h"

#include <QMessageBox>
#include <QPushButton>
#include <utility>

#include "widgets/theme.h"

namespace forms {
namespace {

BoxHandler& handler() {
    static BoxHandler theHandler;
    return theHandler;
}

HeldBoxes*& holder() {
    static HeldBoxes* theHolder = nullptr;
    return theHolder;
}

QMessageBox::Icon toolkitIcon(BoxIcon icon) {
    switch (icon) {
        case BoxIcon::None:
            return QMessageBox::NoIcon;
        case BoxIcon::Information:
            return QMessageBox::Information;
        case BoxIcon::Warning:
            return QMessageBox::Warning;
        case BoxIcon::Critical:
            return QMessageBox::Critical;
        case BoxIcon::Question:
            return QMessageBox::Question;
    }
    return QMessageBox::NoIcon;
}

BoxAnswer askYesNo(QMessageBox& box, const BoxRequest& request) {
    const bool verbs = !request.yes.isEmpty();
    auto* yes = box.addButton(verbs ? request.yes : QStringLiteral("はい(&Y)"), QMessageBox::YesRole);
    auto* no = box.addButton(verbs ? request.no : QStringLiteral("いいえ(&N)"), QMessageBox::NoRole);
    box.setDefaultButton(request.loses ? no : yes);
    box.setEscapeButton(no);
    if (request.loses) {
        widgets::setDanger(yes);
    } else {
        widgets::setPrimary(yes);
    }
    box.exec();
    return box.clickedButton() == yes ? BoxAnswer::Yes : BoxAnswer::No;
}

}  // namespace

void setBoxHandler(BoxHandler newHandler) {
    handler() = std::move(newHandler);
}

HeldBoxes::HeldBoxes() : outer_(std::exchange(holder(), this)) {}

HeldBoxes::~HeldBoxes() {
    holder() = outer_;
}

BoxAnswer showBox(QWidget* parent, const BoxRequest& request) {
    if (HeldBoxes* held = holder()) {
        held->boxes_.push_back(request);
        return request.buttons == BoxButtons::YesNo ? BoxAnswer::No : BoxAnswer::Ok;
    }
    if (handler()) return handler()(request);
    QMessageBox box(parent);
    box.setTextFormat(Qt::PlainText);
    box.setText(request.text);
    box.setWindowTitle(request.title.isEmpty() ? QStringLiteral("ひなた堂ミント") : request.title);
    box.setIcon(toolkitIcon(request.icon));
    // A parent that works still shows the hourglass; the box waits for the user.
    box.setCursor(Qt::ArrowCursor);
    if (request.buttons == BoxButtons::YesNo) return askYesNo(box, request);
    box.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
    box.exec();
    return BoxAnswer::Ok;
}

}  // namespace forms
