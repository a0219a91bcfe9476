#include "store/recordset.h"

#include <QHash>
#include <algorithm>
#include <map>
#include <optional>

#include "store/connection.h"
#include "store/error.h"

namespace store {
namespace {

using Values = std::vector<Value>;

struct Row {
    qint64 rowid = 0;  ///< the engine's key; only of updatable rows that are stored
    bool isNew = false;
    Values values;
    std::optional<Values> stored;  ///< what the file holds, while the values differ from it
};

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

QString quoted(const QString& column) {
    return u'"' + QString(column).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

[[noreturn]] void throwNoRecord() {
    throw Error(Error::Reason::Type, QStringLiteral("現在のレコードがありません。"));
}

[[noreturn]] void throwConflict() {
    throw Error(Error::Reason::Conflict,
                QStringLiteral("読み込んだ後に他で変更または削除されたため、更新できません。"));
}

}  // namespace

struct Recordset::Data {
    Connection* connection = nullptr;
    QString table;  ///< empty when the recordset is read-only
    QString sql;
    Binds binds;
    QStringList names;
    std::vector<ColumnType> types;
    QHash<QString, int> positions;
    int counter = -1;

    std::vector<Row> rows;
    int position = 0;

    enum class EditMode { None, Edit, Add };
    EditMode mode = EditMode::None;
    Values backup;           ///< the row before the pending edit
    int positionBefore = 0;  ///< where the recordset stood before addNew
    std::map<QString, Statement> prepared;

    int count() const { return static_cast<int>(rows.size()); }
    bool onRow() const { return position >= 0 && position < count(); }
    Row& current() {
        if (!onRow()) throwNoRecord();
        return rows[at(position)];
    }

    void read();
    void describe(const Statement& statement, int hidden);
    void beginEdit(Row& row);
    void finishEdit();
    void leaveRow() {
        if (mode != EditMode::None) finishEdit();
    }
    void moveTo(int target) {
        leaveRow();
        position = std::clamp(target, -1, count());
    }
    Statement& statement(const QString& text);
    qint64 insertRow(const Row& row);
    void rewriteRow(const Row& row);
    void deleteRow(const Row& row);
    void settle(Row& row, qint64 rowid);
};

void Recordset::Data::describe(const Statement& statement, int hidden) {
    for (int i = hidden; i < statement.columnCount(); ++i) {
        const QString name = statement.columnName(i);
        if (!positions.contains(name)) positions.insert(name, i - hidden);
        names << name;
        types.push_back(statement.columnType(i));
        if (types.back().kind == TypeKind::Counter) counter = i - hidden;
    }
}

void Recordset::Data::read() {
    const int hidden = table.isEmpty() ? 0 : 1;
    Statement statement = connection->prepare(sql);
    if (names.isEmpty()) describe(statement, hidden);
    statement.bindAll(binds);
    std::vector<Row> fresh;
    while (statement.step()) {
        Row row;
        if (hidden) row.rowid = statement.toInteger(0);
        row.values.reserve(types.size());
        for (int i = hidden; i < statement.columnCount(); ++i) row.values.push_back(statement.value(i));
        fresh.push_back(std::move(row));
    }
    // Only a complete reading replaces what was there: a function may fail after some rows.
    rows = std::move(fresh);
    mode = EditMode::None;
    position = 0;
}

void Recordset::Data::beginEdit(Row& row) {
    if (mode != EditMode::None) return;
    backup = row.values;
    if (!row.isNew && !row.stored) row.stored = row.values;
    mode = EditMode::Edit;
}

/// The end of update().
void Recordset::Data::finishEdit() {
    Row& row = current();
    qint64 rowid = row.rowid;
    if (row.isNew)
        rowid = insertRow(row);
    else
        rewriteRow(row);
    settle(row, rowid);
    mode = EditMode::None;
}

Statement& Recordset::Data::statement(const QString& text) {
    auto found = prepared.find(text);
    if (found == prepared.end()) found = prepared.emplace(text, connection->prepare(text)).first;
    found->second.reset();
    return found->second;
}

qint64 Recordset::Data::insertRow(const Row& row) {
    QStringList columns, marks;
    for (const QString& name : names) {
        columns << quoted(name);
        marks << QStringLiteral("?");
    }
    statement(
        QStringLiteral("insert into %1(%2) values(%3)").arg(table, columns.join(u','), marks.join(u',')))
        .bindAll(row.values)
        .run();
    return connection->lastInsertId();
}

void Recordset::Data::rewriteRow(const Row& row) {
    QStringList assignments, checks;
    Binds written, expected;
    for (int i = 0; row.stored && i < names.size(); ++i) {
        if (row.values[at(i)] == (*row.stored)[at(i)]) continue;
        assignments << quoted(names[i]) + QStringLiteral("=?");
        checks << quoted(names[i]) + QStringLiteral(" is ?");
        written.push_back(row.values[at(i)]);
        expected.push_back((*row.stored)[at(i)]);
    }
    if (assignments.isEmpty()) return;
    written.push_back(row.rowid);
    written.insert(written.end(), expected.begin(), expected.end());
    // Returning tells whether a row matched, and whether a check failed, in one statement.
    Statement& update =
        statement(QStringLiteral("update %1 set %2 where rowid=? and %3 returning rowid")
                      .arg(table, assignments.join(u','), checks.join(QStringLiteral(" and "))));
    update.bindAll(written);
    bool matched = false;
    while (update.step()) matched = true;
    if (!matched) throwConflict();
}

void Recordset::Data::deleteRow(const Row& row) {
    Statement& remove = statement(QStringLiteral("delete from %1 where rowid=? returning rowid").arg(table));
    remove.bind(1, row.rowid);
    bool matched = false;
    while (remove.step()) matched = true;
    if (!matched) throwConflict();
}

/// The row stands in the file now, under this key.
void Recordset::Data::settle(Row& row, qint64 rowid) {
    row.rowid = rowid;
    row.isNew = false;
    row.stored.reset();
    if (counter >= 0) {
        if (row.values[at(counter)].isNull()) row.values[at(counter)] = rowid;
        row.rowid = row.values[at(counter)].toInteger();
    }
}

Recordset::Recordset(std::unique_ptr<Data> data) : d_(std::move(data)) {}
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;
Recordset::~Recordset() = default;

Recordset Connection::query(const QString& sql, const Binds& binds) {
    auto data = std::make_unique<Recordset::Data>();
    data->connection = this;
    data->sql = sql;
    data->binds = binds;
    data->read();
    return Recordset(std::move(data));
}

Recordset Connection::open(const TableQuery& query) {
    auto data = std::make_unique<Recordset::Data>();
    data->connection = this;
    data->table = query.table;
    data->sql = QStringLiteral("select rowid,* from ") + query.table;
    if (!query.where.isEmpty()) data->sql += QStringLiteral(" where ") + query.where;
    if (!query.orderBy.isEmpty()) data->sql += QStringLiteral(" order by ") + query.orderBy;
    data->binds = query.binds;
    data->read();
    return Recordset(std::move(data));
}

int Recordset::recordCount() const {
    return d_->count();
}
int Recordset::fieldCount() const {
    return static_cast<int>(d_->types.size());
}
QString Recordset::fieldName(int position) const {
    return d_->names.at(position);
}
int Recordset::fieldIndex(const QString& name) const {
    const auto found = d_->positions.constFind(name);
    if (found != d_->positions.constEnd()) return *found;
    for (qsizetype i = 0; i < d_->names.size(); ++i)
        if (d_->names[i].compare(name, Qt::CaseInsensitive) == 0) return static_cast<int>(i);
    throw Error(Error::Reason::Type, QStringLiteral("項目「%1」が見つかりません。").arg(name));
}

bool Recordset::eof() const {
    return d_->position >= d_->count();
}
void Recordset::setAbsolutePosition(int position) {
    if (position < 1 || position > d_->count()) throwNoRecord();
    d_->moveTo(position - 1);
}

const Value& Recordset::value(int position) const {
    Q_ASSERT(position >= 0 && position < fieldCount());
    return d_->current().values[at(position)];
}

const Value& Recordset::value(const QString& name) const {
    return value(fieldIndex(name));
}

const Value& Recordset::valueAt(int row, int position) const {
    Q_ASSERT(row >= 0 && row < recordCount() && position >= 0 && position < fieldCount());
    return d_->rows[at(row)].values[at(position)];
}

void Recordset::requery() {
    d_->read();
}

void Recordset::addNew() {
    Q_ASSERT(!d_->table.isEmpty());
    d_->leaveRow();
    Row row;
    row.isNew = true;
    row.values.resize(d_->types.size());
    d_->positionBefore = d_->position;
    d_->rows.push_back(std::move(row));
    d_->position = d_->count() - 1;
    d_->mode = Data::EditMode::Add;
}

void Recordset::setValue(int position, const Value& value) {
    Q_ASSERT(!d_->table.isEmpty() && position >= 0 && position < fieldCount());
    Row& row = d_->current();
    Value converted = convertTo(d_->types[at(position)], value);
    d_->beginEdit(row);
    row.values[at(position)] = std::move(converted);
}

void Recordset::setValue(const QString& name, const Value& value) {
    setValue(fieldIndex(name), value);
}

void Recordset::update() {
    d_->leaveRow();
}

void Recordset::cancelUpdate() {
    if (d_->mode == Data::EditMode::Add) {
        d_->rows.pop_back();
        d_->position = std::min(d_->positionBefore, d_->count());
    } else if (d_->mode == Data::EditMode::Edit) {
        Row& row = d_->current();
        row.values = d_->backup;
        if (row.stored == row.values) row.stored.reset();
    }
    d_->mode = Data::EditMode::None;
}

void Recordset::remove() {
    Q_ASSERT(!d_->table.isEmpty());
    Row& row = d_->current();
    if (d_->mode == Data::EditMode::Add) return cancelUpdate();
    d_->deleteRow(row);
    d_->mode = Data::EditMode::None;
    d_->rows.erase(d_->rows.begin() + d_->position);
}

}  // namespace store
