#include "store/half_width.h"

namespace store {

QString halfWidth(QString text) {
    // One block of Unicode repeats the printing half-width characters in their order.
    constexpr char16_t kFirst = u'！', kLast = u'～', kDistance = u'！' - u'!';
    for (QChar& c : text) {
        if (c >= kFirst && c <= kLast) c = QChar(c.unicode() - kDistance);
        if (c == u'　') c = u' ';
    }
    return text;
}

}  // namespace store
