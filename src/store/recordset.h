#pragma once
#include <QString>
#include <QStringList>
#include <memory>

#include "store/column_type.h"
#include "store/value.h"

namespace store {

class Connection;

/// Rows of one table that may be edited (store/row_edit.h). `where` and `orderBy` are fixed texts of the
/// program; values go into `binds`.
struct TableQuery {
    QString table;
    QString where;  ///< without the word; empty for all rows
    Binds binds;
    QString orderBy;  ///< without the words; empty for the order of the store
};

/// The rows of one query, read whole when it is asked: a snapshot that nothing changes, neither a write of
/// its owner nor one of others. Columns and rows count from 0. A copy is cheap and shares the rows. It needs
/// its connection no longer.
class Recordset {
  public:
    int recordCount() const;
    bool isEmpty() const { return recordCount() == 0; }
    int fieldCount() const;
    const QString& fieldName(int position) const;
    int fieldIndex(const QString& name) const;  ///< throws Error(Type) when there is no such column

    const Value& valueAt(int row, int position) const;
    const Value& valueAt(int row, const QString& name) const { return valueAt(row, fieldIndex(name)); }
    /// Of the first row; throws Error(Type) "現在のレコードがありません。" where there is none.
    const Value& value(int position) const;
    const Value& value(const QString& name) const { return value(fieldIndex(name)); }

  private:
    friend class Connection;
    friend class RowEdit;
    struct Data;
    explicit Recordset(std::shared_ptr<const Data> data) : d_(std::move(data)) {}
    std::shared_ptr<const Data> d_;
};

}  // namespace store
