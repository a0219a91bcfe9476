#pragma once
#include <QString>
#include <functional>

class QWidget;

/// The one way to say something in a box.
namespace shell {

enum class BoxIcon { None, Information, Warning, Critical, Question };
enum class BoxButtons { Ok, YesNo };
enum class BoxAnswer { Ok, Yes, No };

struct BoxRequest {
    QString text;
    QString title;
    BoxIcon icon = BoxIcon::None;
    BoxButtons buttons = BoxButtons::Ok;
};

/// Shows a modal box and waits. An empty title is the program's name. Escape on a Yes/No box is No; No is the
/// default button of a question that deletes.
BoxAnswer showBox(QWidget* parent, const BoxRequest& request);

inline void tell(QWidget* parent, const QString& text, const QString& title, BoxIcon icon = BoxIcon::None) {
    showBox(parent, {text, title, icon, BoxButtons::Ok});
}
inline bool ask(QWidget* parent, const QString& text, const QString& title) {
    return showBox(parent, {text, title, BoxIcon::Question, BoxButtons::YesNo}) == BoxAnswer::Yes;
}

/// Tests take the boxes over: the handler answers in place of the user. An empty function gives the boxes
/// back.
using BoxHandler = std::function<BoxAnswer(const BoxRequest&)>;
void setBoxHandler(BoxHandler handler);

}  // namespace shell
