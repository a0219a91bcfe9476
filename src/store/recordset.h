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

/// The rows of one query, read whole when it is opened: a private snapshot. The count is exact, moving is
/// free, a change elsewhere is not seen until requery(). Optimistic: a row is written with update() (or all
/// together with updateBatch()) and refused with Error(Conflict) when the written columns no longer hold what
/// was read.
///
/// Position: a new recordset stands on its first row; with no row both bof() and eof() are true. Columns
/// count from 0. Moves stop at bof() and eof(). Leaving a row with a pending edit (a move, a search, a sort,
/// addNew) updates it first. A pending new row counts in recordCount() and stands last. Reading or writing a
/// field while bof() or eof() throws Error(Type) "現在のレコードがありません。".
class Recordset {
  public:
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;
    ~Recordset();

    int recordCount() const;
    int fieldCount() const;
    QString fieldName(int position) const;
    int fieldIndex(const QString& name) const;  ///< throws Error(Type) when there is no such column
    ColumnType fieldType(int position) const;

    bool bof() const;
    bool eof() const;
    void moveFirst();
    void moveLast();
    void moveNext();
    void movePrevious();
    int absolutePosition() const;  ///< 1 for the first row; -1 for bof/eof
    void setAbsolutePosition(int position);
    /// A bookmark names a row for the life of the recordset, over sorting and deletion of others.
    qint64 bookmark() const;
    void setBookmark(qint64 bookmark);

    const Value& value(int position) const;
    const Value& value(const QString& name) const;
    /// Random access for models and walks; the row counts from 0. No move.
    const Value& valueAt(int row, int position) const;

    /// Searches from the current row forward (the current one included) for a field equal to the value,
    /// numbers and dates by value, text by text. Stands at eof() when there is none.
    bool find(const QString& field, const Value& value);
    /// Stable; Null first, text by code points. Stands on the first row afterwards.
    void sort(const QString& field, bool ascending = true);
    void
    requery();  ///< reads again, drops what is pending and stands on the first row; bookmarks become void

    enum class EditMode { None, Edit, Add };
    EditMode editMode() const;
    bool updatable() const;
    void addNew();  ///< a new row, current; all fields Null until set
    void setValue(int position,
                  const Value& value);  ///< converted to the column's type; Error(Type) leaves the field
    void setValue(const QString& name, const Value& value);
    void update();        ///< writes the current row; without a pending edit does nothing
    void cancelUpdate();  ///< drops the pending edit; a new row disappears
    void remove();        ///< deletes the current row; the next one becomes current

    /// Batch mode: update() and remove() keep their change in memory until updateBatch() writes all of them.
    void setBatch(bool on);
    void updateBatch();  ///< all or nothing: after an error the file holds none and the recordset still all
                         ///< of them
    void cancelBatch();

  private:
    friend class Connection;
    struct Data;
    explicit Recordset(std::unique_ptr<Data> data);
    std::unique_ptr<Data> d_;
};

}  // namespace store
