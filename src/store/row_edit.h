#pragma once
#include <QString>
#include <optional>
#include <vector>

#include "store/recordset.h"

namespace store {

/// The edit of one row of a table: a new one, or one that was read. The rows that it starts from stay as they
/// are; who shows them reads them again when the write stands. Optimistic: a row is refused with
/// Error(Conflict) when the written columns no longer hold what was read, and so is the removal of a row that
/// is gone. Must not outlive its connection.
class RowEdit {
  public:
    /// A new row of the table of `rows`; all fields Null until set.
    RowEdit(Connection& connection, const Recordset& rows);
    /// Row `row` of `rows`, which are a table's (Connection::open).
    RowEdit(Connection& connection, const Recordset& rows, int row);

    /// Converted to the column's type; Error(Type) leaves the field.
    void set(int position, const Value& value);
    void set(const QString& name, const Value& value) { set(rows_.fieldIndex(name), value); }
    const Value& value(int position) const { return values_[static_cast<std::size_t>(position)]; }
    const Value& value(const QString& name) const { return value(rows_.fieldIndex(name)); }

    void write();   ///< the new row, or the columns that differ from what was read
    void remove();  ///< deletes the row that was read

  private:
    void insert();
    void rewrite();
    void requireUnchanged(const QStringList& columns, const Binds& expected);
    Connection& connection_;
    Recordset rows_;
    std::optional<int> row_;
    std::vector<Value> values_;
};

}  // namespace store
