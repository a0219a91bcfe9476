#include "store/number_text.h"

namespace store {
namespace {

qsizetype skipDigits(QStringView text, qsizetype at) {
    while (at < text.size() && text[at] >= u'0' && text[at] <= u'9') ++at;
    return at;
}

bool isSigned(QStringView text) {
    return text.startsWith(u'-') || text.startsWith(u'+');
}

/// Where the digits before the point end; -1 when a separator is out of place.
qsizetype skipWhole(QStringView text, qsizetype first) {
    constexpr qsizetype kGroup = 3;
    qsizetype at = skipDigits(text, first);
    if (at == text.size() || text[at] != u',') return at;
    if (at == first || at - first > kGroup || text[first] == u'0') return -1;
    while (at < text.size() && text[at] == u',') {
        const qsizetype end = skipDigits(text, at + 1);
        if (end - at - 1 != kGroup) return -1;
        at = end;
    }
    return at;
}

}  // namespace

bool separatorsInPlace(QStringView whole) {
    const qsizetype end = skipWhole(whole, isSigned(whole) ? 1 : 0);
    return end >= 0 && !whole.sliced(end).contains(u',');
}

std::optional<NumberText> readNumber(QStringView text) {
    text = text.trimmed();
    NumberText number;
    number.negative = text.startsWith(u'-');
    const qsizetype first = isSigned(text) ? 1 : 0;
    qsizetype at = skipWhole(text, first);
    if (at < 0) return {};
    number.whole = text.sliced(first, at - first);
    if (at < text.size() && text[at] == u'.') {
        const qsizetype end = skipDigits(text, at + 1);
        number.fraction = text.sliced(at + 1, end - at - 1);
        at = end;
    }
    if (number.whole.isEmpty() && number.fraction.isEmpty()) return {};
    if (at < text.size() && (text[at] == u'e' || text[at] == u'E')) {
        const qsizetype start = ++at;
        if (at < text.size() && (text[at] == u'-' || text[at] == u'+')) ++at;
        const qsizetype end = skipDigits(text, at);
        if (end == at) return {};
        number.exponent = text.sliced(start, end - start);
        at = end;
    }
    if (at != text.size()) return {};
    return number;
}

}  // namespace store
