#pragma once
#include <QString>

#include "store/value.h"

namespace store {

enum class TypeKind { Unknown, Counter, Text, Currency, Double, DateTime, Boolean, Integer };

/// The declared type of a column. On disk: Currency is an INTEGER count of ten-thousandths, DateTime TEXT
/// YYYY-MM-DD, Boolean -1 or 0, Double REAL, Counter the row's own integer key.
struct ColumnType {
    TypeKind kind = TypeKind::Unknown;
    int width = 0;  ///< characters of a Text column

    bool operator==(const ColumnType&) const = default;
};

/// The declaration as it stands in the table's definition: "Text(6)", "CURRENCY", "DOUBLE", "DATETIME",
/// "BOOLEAN", "LONG", "INTEGER PRIMARY KEY" for a counter; and back.
QString declarationOf(ColumnType type);
ColumnType typeOfDeclaration(const QString& declaration);

/// The value as the column holds it: 1.5 into Currency is Money, "2003/4/1" into DateTime a date, 12 into
/// Text "12". Throws Error(Type) where it does not fit (no number, no date, text longer than the column),
/// Error(Overflow) where the number is too large or not finite.
Value convertTo(ColumnType type, const Value& value);

}  // namespace store
