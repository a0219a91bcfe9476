#pragma once
#include <QStringList>
#include <optional>

#include "store/error.h"
#include "store/recordset.h"

namespace support {

/// The error that the call throws; none when it throws nothing.
template <typename Call>
std::optional<store::Error> errorOf(Call&& call) {
    try {
        call();
    } catch (const store::Error& error) {
        return error;
    }
    return std::nullopt;
}
template <typename Call>
std::optional<store::Error::Reason> reasonOf(Call&& call) {
    const auto error = errorOf(call);
    return error ? std::optional(error->reason()) : std::nullopt;
}

/// The cells of the first `columns` columns (none given: of all) row by row, with blanks between.
inline QString texts(const store::Recordset& rows, std::optional<int> columns = {}) {
    QStringList all;
    for (int row = 0; row < rows.recordCount(); ++row)
        for (int column = 0; column < columns.value_or(rows.fieldCount()); ++column)
            all << rows.valueAt(row, column).toText();
    return all.join(u' ');
}

}  // namespace support
