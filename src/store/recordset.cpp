#include "store/recordset.h"

#include "store/connection.h"
#include "store/error.h"
#include "store/recordset_data.h"

namespace store {

void Recordset::Data::describe(const Statement& statement, int hidden) {
    for (int i = hidden; i < statement.columnCount(); ++i) {
        const QString name = statement.columnName(i);
        if (!positions.contains(name)) positions.insert(name, i - hidden);
        names << name;
        types.push_back(statement.columnType(i));
    }
}

/// In rows of a table the first column is the engine's key.
void Recordset::Data::read(Statement& statement) {
    const int hidden = table.isEmpty() ? 0 : 1;
    describe(statement, hidden);
    while (statement.step()) {
        Row row;
        if (hidden) row.rowid = statement.toInteger(0);
        row.values.reserve(types.size());
        for (int i = hidden; i < statement.columnCount(); ++i) row.values.push_back(statement.value(i));
        rows.push_back(std::move(row));
    }
}

Recordset Connection::query(const QString& sql, const Binds& binds) {
    auto data = std::make_shared<Recordset::Data>();
    Statement statement = prepare(sql);
    data->read(statement.bindAll(binds));
    return Recordset(std::move(data));
}

Recordset Connection::open(const TableQuery& query) {
    auto data = std::make_shared<Recordset::Data>();
    data->table = query.table;
    QString sql = QStringLiteral("select rowid,* from ") + query.table;
    if (!query.where.isEmpty()) sql += QStringLiteral(" where ") + query.where;
    if (!query.orderBy.isEmpty()) sql += QStringLiteral(" order by ") + query.orderBy;
    Statement statement = prepare(sql);
    data->read(statement.bindAll(query.binds));
    return Recordset(std::move(data));
}

int Recordset::recordCount() const {
    return static_cast<int>(d_->rows.size());
}

int Recordset::fieldCount() const {
    return static_cast<int>(d_->types.size());
}

const QString& Recordset::fieldName(int position) const {
    return d_->names.at(position);
}

int Recordset::fieldIndex(const QString& name) const {
    const auto found = d_->positions.constFind(name);
    if (found != d_->positions.constEnd()) return *found;
    for (qsizetype i = 0; i < d_->names.size(); ++i)
        if (d_->names[i].compare(name, Qt::CaseInsensitive) == 0) return static_cast<int>(i);
    throw Error(Error::Reason::Type, QStringLiteral("項目「%1」が見つかりません。").arg(name));
}

const Value& Recordset::valueAt(int row, int position) const {
    Q_ASSERT(row >= 0 && row < recordCount() && position >= 0 && position < fieldCount());
    return d_->rows[static_cast<std::size_t>(row)].values[static_cast<std::size_t>(position)];
}

const Value& Recordset::value(int position) const {
    if (isEmpty()) throw Error(Error::Reason::Type, QStringLiteral("現在のレコードがありません。"));
    return valueAt(0, position);
}

}  // namespace store
