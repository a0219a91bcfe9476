#include "store/error.h"

namespace store {

QString Error::cause() const {
    const QString& sentence = sentence_.isEmpty() ? text_ : sentence_;
    return subject_.isEmpty() ? sentence : subject_ + u'：' + sentence;
}

void Error::name(const QString& subject) {
    if (subject_.isEmpty()) subject_ = subject;
}

void throwNull() {
    throw Error(Error::Reason::Type, QString::fromUtf16(kNullText), QStringLiteral("値が入っていません。"));
}
void throwTypeMismatch() {
    throw Error(Error::Reason::Type, QString::fromUtf16(kTypeText),
                QStringLiteral("値の形が正しくありません。"));
}
void throwEnded() {
    throw Error(Error::Reason::Engine,
                QStringLiteral("処理の途中でデータベースが変更を取り消したため、登録できません。"));
}

void throwOverflow() {
    throw Error(Error::Reason::Overflow, QString::fromUtf16(kOverflowText),
                QStringLiteral("数が大きすぎて計算できません。"));
}
void throwDivideByZero() {
    throw Error(Error::Reason::DivideByZero, QStringLiteral("0 で除算しました。"));
}

}  // namespace store
