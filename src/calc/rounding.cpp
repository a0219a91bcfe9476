#include "calc/rounding.h"

#include <array>
#include <cmath>

namespace calc {
namespace {

/// The constants that are added before truncation; by unit.
struct Unit {
    double yen, half, raise;
};
constexpr std::array<Unit, 5> kUnits{
    {{1, 0.5, 0.999}, {10, 5, 9.999}, {100, 50, 99.999}, {1000, 500, 999.999}, {10000, 5000, 9999.999}}};

/// The digit that a setting of one character stands for, if it lies in [0, count).
std::optional<std::size_t> choice(const QString& text, std::size_t count) {
    if (text.size() != 1 || text[0] < u'0') return std::nullopt;
    const auto digit = static_cast<std::size_t>(text[0].unicode() - u'0');
    return digit < count ? std::optional(digit) : std::nullopt;
}

}  // namespace

double fix(double value) {
    return std::trunc(value);
}

std::optional<double> roundByTable(double s, const QString& tanka, const QString& hasuu) {
    const auto unitIndex = choice(tanka, kUnits.size());
    const auto mode = choice(hasuu, 3);
    if (!unitIndex || !mode) return std::nullopt;
    const Unit& unit = kUnits[*unitIndex];
    const std::array added{unit.half, unit.raise, 0.0};
    return fix((s + added[*mode]) / unit.yen) * unit.yen;
}

}  // namespace calc
