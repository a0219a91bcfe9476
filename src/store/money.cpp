#include "store/money.h"

#include <QLocale>
#include <cmath>
#include <limits>

#include "store/error.h"
#include "store/number_text.h"

namespace store {
namespace {

constexpr qint64 kMax = std::numeric_limits<qint64>::max();
constexpr qint64 kMin = std::numeric_limits<qint64>::min();

/// "1234567" as "1,234,567".
QString grouped(const QString& digits) {
    QString text;
    for (qsizetype i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0) text += u',';
        text += digits[i];
    }
    return text;
}

/// Adds one to a string of digits.
QString incremented(QString digits) {
    for (qsizetype i = digits.size(); i-- > 0;) {
        if (digits[i] != u'9') {
            digits[i] = QChar(digits[i].unicode() + 1);
            return digits;
        }
        digits[i] = u'0';
    }
    return u'1' + digits;
}

/// Digits behind the fourth decimal: whether they round a count up, ties to even.
bool roundsUp(QStringView rest, bool odd) {
    if (rest.isEmpty() || rest[0] < u'5') return false;
    if (rest[0] > u'5') return true;
    for (const QChar c : rest.mid(1))
        if (c != u'0') return true;
    return odd;
}

}  // namespace

Money Money::fromYen(qint64 yen) {
    if (yen > kMax / kScale || yen < kMin / kScale) throwOverflow();
    return Money(yen * kScale);
}

Money Money::fromDouble(double yen) {
    const double count = std::nearbyint(yen * kScale);
    constexpr double kLimit = 9223372036854775808.0;  // 2^63
    if (!(count >= -kLimit && count < kLimit)) throwOverflow();
    return Money(static_cast<qint64>(count));
}

Money Money::fromText(const QString& text) {
    const std::optional<NumberText> parts = readNumber(text);
    if (!parts || !parts->exponent.isEmpty()) throwTypeMismatch();
    const QString digits =
        parts->whole.toString().remove(u',') + parts->fraction.left(4).toString().leftJustified(4, u'0');
    qint64 raw = 0;  // counted downwards: the negative range is the larger one
    for (const QChar c : digits) {
        const int digit = c.unicode() - u'0';
        if (raw < (kMin + digit) / 10) throwOverflow();
        raw = raw * 10 - digit;
    }
    if (roundsUp(parts->fraction.mid(4), raw % 2 != 0)) {
        if (raw == kMin) throwOverflow();
        --raw;
    }
    if (parts->negative) return Money(raw);
    if (raw == kMin) throwOverflow();
    return Money(-raw);
}

Money Money::operator+(Money other) const {
    if (other.raw_ > 0 ? raw_ > kMax - other.raw_ : raw_ < kMin - other.raw_) throwOverflow();
    return Money(raw_ + other.raw_);
}

Money Money::operator-(Money other) const {
    if (other.raw_ < 0 ? raw_ > kMax + other.raw_ : raw_ < kMin + other.raw_) throwOverflow();
    return Money(raw_ - other.raw_);
}

QString formatGrouped(Money amount) {
    qint64 yen = amount.raw() / Money::kScale;
    const qint64 rest = amount.raw() % Money::kScale;
    if (rest >= Money::kScale / 2) ++yen;
    if (rest <= -Money::kScale / 2) --yen;
    const QString text = grouped(QString::number(yen < 0 ? -yen : yen));
    return yen < 0 ? u'-' + text : text;
}

QString formatCoefficient(double coefficient) {
    if (!std::isfinite(coefficient)) throwOverflow();
    // The shortest decimal text is what the user typed: 1.0005 is half, although its double lies below.
    const QString text = QString::number(std::fabs(coefficient), 'f', QLocale::FloatingPointShortest);
    QString digits = text.section(u'.', 0, 0);
    const QString fraction = text.section(u'.', 1).leftJustified(4, u'0');
    digits += fraction.left(3);
    if (fraction[3] >= u'5') digits = incremented(digits);
    const QString whole = digits.chopped(3);
    const bool zero = digits.count(u'0') == digits.size();
    return (coefficient < 0 && !zero ? QStringLiteral("-") : QString()) + grouped(whole) + u'.' +
           digits.right(3);
}

}  // namespace store
