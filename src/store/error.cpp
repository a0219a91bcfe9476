#include "store/error.h"

namespace store {

void throwNull() {
    throw Error(Error::Reason::Type, QString::fromUtf16(kNullText));
}
void throwTypeMismatch() {
    throw Error(Error::Reason::Type, QString::fromUtf16(kTypeText));
}
void throwOverflow() {
    throw Error(Error::Reason::Overflow, QString::fromUtf16(kOverflowText));
}
void throwDivideByZero() {
    throw Error(Error::Reason::DivideByZero, QStringLiteral("0 で除算しました。"));
}

}  // namespace store
