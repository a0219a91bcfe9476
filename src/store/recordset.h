#pragma once
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "store/column_type.h"
#include "store/value.h"

namespace store {

class Connection;

/// What an updatable recordset opens. `where` and `orderBy` are fixed texts of the program; values go into
/// `binds`.
struct TableQuery {
    QString table;
    QString where;  ///< without the word; empty for all rows
    Binds binds;
    QString orderBy;  ///< without the words; empty for the order of the store
};

/// The rows of one query, read whole when it is opened: a private snapshot. The count is exact; a change
/// elsewhere is not seen until requery(). Optimistic: a row is written with update() and refused with
/// Error(Conflict) when the written columns no longer hold what was read.
///
/// Position: a new recordset stands on its first row, and at eof() without one. Columns count from 0. Leaving
/// a row with a pending edit (a move, addNew) updates it first. A pending new row counts in recordCount() and
/// stands last. Reading or writing a field at eof() throws Error(Type) "現在のレコードがありません。".
class Recordset {
  public:
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;
    ~Recordset();

    int recordCount() const;
    int fieldCount() const;
    QString fieldName(int position) const;
    int fieldIndex(const QString& name) const;  ///< throws Error(Type) when there is no such column

    bool eof() const;
    void setAbsolutePosition(int position);  ///< 1 for the first row

    const Value& value(int position) const;
    const Value& value(const QString& name) const;
    /// Random access for models and walks; the row counts from 0. No move.
    const Value& valueAt(int row, int position) const;

    void requery();  ///< reads again, drops what is pending and stands on the first row

    void addNew();  ///< a new row, current; all fields Null until set
    void setValue(int position,
                  const Value& value);  ///< converted to the column's type; Error(Type) leaves the field
    void setValue(const QString& name, const Value& value);
    void update();        ///< writes the current row; without a pending edit does nothing
    void cancelUpdate();  ///< drops the pending edit; a new row disappears
    void remove();        ///< deletes the current row; the next one becomes current

  private:
    friend class Connection;
    struct Data;
    explicit Recordset(std::unique_ptr<Data> data);
    std::unique_ptr<Data> d_;
};

}  // namespace store
