#include "store/row_edit.h"

#include "store/connection.h"
#include "store/error.h"
#include "store/recordset_data.h"
#include "store/work.h"

namespace store {
namespace {

QString quoted(const QString& column) {
    return u'"' + QString(column).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

[[noreturn]] void throwConflict() {
    throw Error(Error::Reason::Conflict,
                QStringLiteral("読み込んだ後に他で変更または削除されたため、更新できません。"));
}

}  // namespace

RowEdit::RowEdit(Connection& connection, const Recordset& rows)
    : connection_(connection), rows_(rows), values_(static_cast<std::size_t>(rows.fieldCount())) {
    Q_ASSERT(!rows_.d_->table.isEmpty());
}

RowEdit::RowEdit(Connection& connection, const Recordset& rows, int row)
    : connection_(connection), rows_(rows), row_(row) {
    Q_ASSERT(!rows_.d_->table.isEmpty() && row >= 0 && row < rows.recordCount());
    values_ = rows_.d_->rows[static_cast<std::size_t>(row)].values;
}

void RowEdit::set(int position, const Value& value) {
    Q_ASSERT(position >= 0 && position < rows_.fieldCount());
    const auto at = static_cast<std::size_t>(position);
    values_[at] = convertTo(rows_.d_->types[at], value);
}

void RowEdit::write() {
    if (row_)
        rewrite();
    else
        insert();
}

void RowEdit::insert() {
    QStringList columns, marks;
    for (const QString& name : rows_.d_->names) {
        columns << quoted(name);
        marks << QStringLiteral("?");
    }
    connection_.execute(QStringLiteral("insert into %1(%2) values(%3)")
                            .arg(rows_.d_->table, columns.join(u','), marks.join(u',')),
                        values_);
}

void RowEdit::rewrite() {
    const Recordset::Data::Row& read = rows_.d_->rows[static_cast<std::size_t>(*row_)];
    QStringList columns, assignments;
    Binds written, expected;
    for (std::size_t i = 0; i < values_.size(); ++i) {
        if (values_[i] == read.values[i]) continue;
        columns << quoted(rows_.fieldName(static_cast<int>(i)));
        assignments << columns.back() + QStringLiteral("=?");
        written.push_back(values_[i]);
        expected.push_back(read.values[i]);
    }
    if (columns.isEmpty()) return;
    Work work(connection_);
    requireUnchanged(columns, expected);
    written.push_back(read.rowid);
    connection_.execute(
        QStringLiteral("update %1 set %2 where rowid=?").arg(rows_.d_->table, assignments.join(u',')),
        written);
    work.commit();
}

/// As values, not as they are stored: another program writes True as 1 and dates in forms of its own.
void RowEdit::requireUnchanged(const QStringList& columns, const Binds& expected) {
    const qint64 rowid = rows_.d_->rows[static_cast<std::size_t>(*row_)].rowid;
    const Recordset now = connection_.query(
        QStringLiteral("select %1 from %2 where rowid=?").arg(columns.join(u','), rows_.d_->table), {rowid});
    if (now.isEmpty()) throwConflict();
    for (int i = 0; i < now.fieldCount(); ++i)
        if (now.value(i) != expected[static_cast<std::size_t>(i)]) throwConflict();
}

void RowEdit::remove() {
    Q_ASSERT(row_);
    const qint64 rowid = rows_.d_->rows[static_cast<std::size_t>(*row_)].rowid;
    if (connection_.execute(QStringLiteral("delete from %1 where rowid=?").arg(rows_.d_->table), {rowid}) ==
        0)
        throwConflict();
}

}  // namespace store
