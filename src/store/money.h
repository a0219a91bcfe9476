#pragma once
#include <QString>
#include <QtGlobal>
#include <compare>

namespace store {

/// An amount of money: a 64-bit count of ten-thousandths of a yen, as a currency column holds it.
/// Arithmetic is exact and checked: an overflow throws Error(Overflow) and never wraps.
class Money {
  public:
    static constexpr qint64 kScale = 10000;

    constexpr Money() = default;
    static constexpr Money fromRaw(qint64 tenThousandths) { return Money(tenThousandths); }
    static Money fromYen(qint64 yen);
    /// The one rule from double to currency: the nearest ten-thousandth, ties to even.
    /// Throws Error(Overflow) outside the 64-bit range and for NaN and infinities.
    static Money fromDouble(double yen);
    /// Reads what readNumber() takes, without an exponent. Throws Error(Type) on anything else.
    static Money fromText(const QString& text);

    constexpr qint64 raw() const { return raw_; }
    double toDouble() const { return static_cast<double>(raw_) / kScale; }

    Money operator+(Money other) const;
    Money operator-(Money other) const;
    Money& operator+=(Money other) { return *this = *this + other; }
    constexpr auto operator<=>(const Money&) const = default;

  private:
    constexpr explicit Money(qint64 raw) : raw_(raw) {}
    qint64 raw_ = 0;
};

/// An amount as an office writes it, format "##,##0": grouped by threes, no decimals, half a yen rounded away
/// from zero; zero is "0".
QString formatGrouped(Money amount);
/// A coefficient, format "##,##0.000", half rounded away from zero.
QString formatCoefficient(double coefficient);

}  // namespace store
