#pragma once
#include <QString>
#include <functional>
#include <vector>

class QWidget;

/// The one way to say something in a box.
namespace forms {

enum class BoxIcon { None, Information, Warning, Critical, Question };
enum class BoxButtons { Ok, YesNo };
enum class BoxAnswer { Ok, Yes, No };

struct BoxRequest {
    QString text;
    QString title;
    BoxIcon icon = BoxIcon::None;
    BoxButtons buttons = BoxButtons::Ok;
    /// Yes/No only: verbs in place of はい and いいえ.
    QString yes = {};
    QString no = {};
    /// Yes/No only: Yes loses what was typed or stored. No is the default then.
    bool loses = false;
};

/// Shows a modal box and waits. An empty title is the program's name. Escape on a Yes/No box is No.
BoxAnswer showBox(QWidget* parent, const BoxRequest& request);

inline void tell(QWidget* parent, const QString& text, const QString& title, BoxIcon icon = BoxIcon::None) {
    showBox(parent, {text, title, icon, BoxButtons::Ok});
}
inline bool ask(QWidget* parent, const QString& text, const QString& title) {
    return showBox(parent, {text, title, BoxIcon::Question, BoxButtons::YesNo}) == BoxAnswer::Yes;
}

/// A told question whose はい loses something: it deletes or overwrites. いいえ is the default.
inline bool askLoss(QWidget* parent, const QString& text, const QString& title) {
    return showBox(parent, {.text = text,
                            .title = title,
                            .icon = BoxIcon::Question,
                            .buttons = BoxButtons::YesNo,
                            .loses = true}) == BoxAnswer::Yes;
}

/// A question of our own that can lose something, under verbs: true when the user chose `act`
/// ("登録せずに閉じる"). `stay`
/// ("入力に戻る") is the default and what Escape answers.
inline bool confirmLoss(QWidget* parent, const QString& text, const QString& title, const QString& act,
                        const QString& stay) {
    return showBox(parent, {text, title, BoxIcon::Warning, BoxButtons::YesNo, act, stay, true}) ==
           BoxAnswer::Yes;
}

/// confirmLoss() of what was entered and is not yet stored.
inline bool confirmInputLoss(QWidget* parent, const QString& act) {
    return confirmLoss(parent, QStringLiteral("入力した内容はまだ更新されていません。"),
                       QStringLiteral("入力の確認"), act, QStringLiteral("入力に戻る(&B)"));
}

/// While one lives, boxes are not shown: they count as answered with OK or No, and are kept here. For checks
/// that are asked whether they would refuse.
class HeldBoxes {
  public:
    HeldBoxes();
    ~HeldBoxes();
    HeldBoxes(const HeldBoxes&) = delete;
    HeldBoxes& operator=(const HeldBoxes&) = delete;
    const std::vector<BoxRequest>& boxes() const { return boxes_; }

  private:
    friend BoxAnswer showBox(QWidget* parent, const BoxRequest& request);
    std::vector<BoxRequest> boxes_;
    HeldBoxes* outer_;
};

/// Tests take the boxes over: the handler answers in place of the user. An empty function gives the boxes
/// back.
using BoxHandler = std::function<BoxAnswer(const BoxRequest&)>;
void setBoxHandler(BoxHandler handler);

}  // namespace forms
