#pragma once
#include <QStringView>
#include <optional>

namespace store {

/// A number's text taken apart; the views lie in the text it was read from.
struct NumberText {
    bool negative = false;
    QStringView whole;     ///< digits, with the separators as they stood; may be empty before a point
    QStringView fraction;  ///< digits behind the point
    QStringView exponent;  ///< what follows "e", with its sign; empty without one
};

/// The one grammar of numbers: blanks around it, a sign, digits, decimals, an exponent. A "," separates
/// thousands and counts only in its place: "1,275,000" is a number, "3,5", "12,34" and "0,123" are none,
/// because there it is somebody's decimal point. Nothing for any other text, an empty one included.
std::optional<NumberText> readNumber(QStringView text);
/// Whether each separator in what stands before the point (sign, digits) is in its place; true without any.
bool separatorsInPlace(QStringView whole);

}  // namespace store
