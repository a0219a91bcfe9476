#pragma once
#include <QString>
#include <optional>

namespace domain {

/// What a field of a number takes. Bounds and decimals are those of the item, in its own unit.
struct NumberRule {
    QString label;  ///< ends every message: "･･･単価"
    double least = 0;
    double most = 999999999;
    int decimals = 0;  ///< at most so many digits behind the point
    bool emptyAllowed = false;
};

/// What is wrong with the text, or nothing. In this order: empty where that is not allowed, no number, too
/// many decimals, out of bounds.
std::optional<QString> numberFault(const QString& text, const NumberRule& rule);

/// The text of a number with its thousands separated ("1234.5" is "1,234.5") and without; another text stays
/// as it is.
QString withSeparators(const QString& text);
QString withoutSeparators(const QString& text);

}  // namespace domain
