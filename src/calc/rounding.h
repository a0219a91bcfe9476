#pragma once
#include <QString>
#include <optional>

namespace calc {

/// Truncation toward zero: 2.9 -> 2, -2.9 -> -2.
double fix(double value);

/// The rounding of an amount by the run's setting of Tanka_hasuu. `tanka` "0" to "4" is the unit of 1, 10,
/// 100, 1000 or 10000 yen; `hasuu` "0" 四捨五入, "1" 切り上げ, "2" 切り捨て. 切り上げ adds a thousandth less
/// than the unit, so that a fraction below 0.001 yen is not raised. All modes truncate toward zero, negative
/// amounts too. nullopt when the setting is none of these fifteen: the caller then leaves the amount as it
/// is.
std::optional<double> roundByTable(double s, const QString& tanka, const QString& hasuu);

}  // namespace calc
