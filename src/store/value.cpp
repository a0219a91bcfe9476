#include "store/value.h"

#include <cmath>

#include "store/date_text.h"
#include "store/error.h"
#include "store/number_text.h"

namespace store {
namespace {

double numberOf(const QString& text) {
    const std::optional<double> number = parseNumber(text);
    if (!number) throwTypeMismatch();
    return *number;
}

qint64 rounded(double number) {
    const double even = std::nearbyint(number);
    constexpr double kLimit = 9223372036854775808.0;  // 2^63
    if (!(even >= -kLimit && even < kLimit)) throwOverflow();
    return static_cast<qint64>(even);
}

qint64 rounded(Money amount) {
    const qint64 yen = amount.raw() / Money::kScale;
    const qint64 twice = 2 * (amount.raw() % Money::kScale);
    const bool odd = yen % 2 != 0;
    if (twice > Money::kScale || (twice == Money::kScale && odd)) return yen + 1;
    if (twice < -Money::kScale || (twice == -Money::kScale && odd)) return yen - 1;
    return yen;
}

QString plainText(Money amount) {
    QString text = QString::number(amount.raw() / Money::kScale);
    qint64 rest = amount.raw() % Money::kScale;
    if (rest == 0) return text;
    if (rest < 0) {
        rest = -rest;
        if (amount.raw() > -Money::kScale) text.prepend(u'-');
    }
    QString decimals = QString::number(rest).rightJustified(4, u'0');
    while (decimals.endsWith(u'0')) decimals.chop(1);
    return text + u'.' + decimals;
}

}  // namespace

std::optional<double> parseNumber(const QString& text) {
    if (!readNumber(text)) return std::nullopt;
    const QStringView trimmed = QStringView(text).trimmed();
    bool ok = false;
    const double number =
        trimmed.contains(u',') ? trimmed.toString().remove(u',').toDouble(&ok) : trimmed.toDouble(&ok);
    // Too small for a double is 0. Too large: the callers' range checks must see it.
    if (ok || number == 0) return number;
    return trimmed.startsWith(u'-') ? -HUGE_VAL : HUGE_VAL;
}

Value::Value(QDate v) {
    if (v.isValid()) v_ = v;
}

bool Value::toBool() const {
    if (const auto* text = std::get_if<QString>(&v_)) {
        if (text->compare(u"True", Qt::CaseInsensitive) == 0) return true;
        if (text->compare(u"False", Qt::CaseInsensitive) == 0) return false;
    }
    return toDouble() != 0;
}

qint64 Value::toInteger() const {
    if (const auto* integer = std::get_if<qint64>(&v_)) return *integer;
    if (const auto* money = std::get_if<Money>(&v_)) return rounded(*money);
    return rounded(toDouble());
}

double Value::toDouble() const {
    switch (kind()) {
        case Kind::Null:
            throwNull();
        case Kind::Boolean:
            return std::get<bool>(v_) ? -1 : 0;
        case Kind::Integer:
            return static_cast<double>(std::get<qint64>(v_));
        case Kind::Double:
            return std::get<double>(v_);
        case Kind::Money:
            return std::get<Money>(v_).toDouble();
        case Kind::Date:
            throwTypeMismatch();
        case Kind::Text:
            return numberOf(std::get<QString>(v_));
    }
    throwTypeMismatch();
}

Money Value::toMoney() const {
    switch (kind()) {
        case Kind::Integer:
            return Money::fromYen(std::get<qint64>(v_));
        case Kind::Money:
            return std::get<Money>(v_);
        case Kind::Text:
            return Money::fromText(std::get<QString>(v_));
        default:
            return Money::fromDouble(toDouble());
    }
}

QDate Value::toDate() const {
    if (const auto* date = std::get_if<QDate>(&v_)) return *date;
    if (const auto* text = std::get_if<QString>(&v_)) return requireDate(*text);
    if (isNull()) throwNull();
    throwTypeMismatch();
}

QString Value::toText() const {
    switch (kind()) {
        case Kind::Null:
            return {};
        case Kind::Boolean:
            return std::get<bool>(v_) ? QStringLiteral("True") : QStringLiteral("False");
        case Kind::Integer:
            return QString::number(std::get<qint64>(v_));
        case Kind::Double:
            return QString::number(std::get<double>(v_), 'g', 15);
        case Kind::Money:
            return plainText(std::get<Money>(v_));
        case Kind::Date:
            return formatDate(std::get<QDate>(v_));
        case Kind::Text:
            return std::get<QString>(v_);
    }
    return {};
}

}  // namespace store
