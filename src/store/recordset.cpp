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
    qint64 id = 0;     ///< the bookmark
    qint64 rowid = 0;  ///< the engine's key; only of updatable rows that are stored
    bool isNew = false;
    Values values;
    std::optional<Values> stored;  ///< what the file holds, while the values differ from it
};

struct RemovedRow {
    Row row;
    int index;
};

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

QString quoted(const QString& column) {
    return u'"' + QString(column).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

bool isNumber(const Value& value) {
    return value.kind() >= Value::Kind::Boolean && value.kind() <= Value::Kind::Money;
}

bool sameValue(const Value& a, const Value& b) {
    return isNumber(a) && isNumber(b) ? a.toDouble() == b.toDouble() : a == b;
}

bool lessThan(const Value& a, const Value& b) {
    if (isNumber(a) && isNumber(b)) {
        if (a.kind() == b.kind() && a.kind() == Value::Kind::Money) return a.toMoney() < b.toMoney();
        return a.toDouble() < b.toDouble();
    }
    if (a.kind() != b.kind()) return a.kind() < b.kind();
    if (a.kind() == Value::Kind::Date) return a.toDate() < b.toDate();
    return a.kind() == Value::Kind::Text && a.toText() < b.toText();
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
    std::vector<RemovedRow> removed;
    qint64 nextId = 1;
    int position = 0;

    EditMode mode = EditMode::None;
    Values backup;           ///< the row before the pending edit
    int positionBefore = 0;  ///< where the recordset stood before addNew
    bool batch = false;
    std::map<QString, Statement> prepared;

    int count() const { return static_cast<int>(rows.size()); }
    bool onRow() const { return position >= 0 && position < count(); }
    Row& current() {
        if (!onRow()) throwNoRecord();
        return rows[at(position)];
    }

    void read();
    void describe(const Statement& statement, int hidden);
    int positionOf(qint64 id) const;
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
    void writeBatch(std::vector<qint64>& rowids);
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
        row.id = nextId + static_cast<qint64>(fresh.size());
        if (hidden) row.rowid = statement.toInteger(0);
        row.values.reserve(types.size());
        for (int i = hidden; i < statement.columnCount(); ++i) row.values.push_back(statement.value(i));
        fresh.push_back(std::move(row));
    }
    // Only a complete reading replaces what was there: a function may fail after some rows.
    nextId += static_cast<qint64>(fresh.size());
    rows = std::move(fresh);
    removed.clear();
    mode = EditMode::None;
    position = 0;
}

int Recordset::Data::positionOf(qint64 id) const {
    const auto found = std::find_if(rows.begin(), rows.end(), [id](const Row& row) { return row.id == id; });
    return found == rows.end() ? -1 : static_cast<int>(found - rows.begin());
}

void Recordset::Data::beginEdit(Row& row) {
    if (mode != EditMode::None) return;
    backup = row.values;
    if (!row.isNew && !row.stored) row.stored = row.values;
    mode = EditMode::Edit;
}

/// The end of update(): writes the current row, or leaves it for the batch.
void Recordset::Data::finishEdit() {
    Row& row = current();
    if (!batch) {
        qint64 rowid = row.rowid;
        if (row.isNew)
            rowid = insertRow(row);
        else
            rewriteRow(row);
        settle(row, rowid);
    }
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

void Recordset::Data::writeBatch(std::vector<qint64>& rowids) {
    for (const RemovedRow& gone : removed) deleteRow(gone.row);
    for (const Row& row : rows) {
        if (!row.isNew) rewriteRow(row);
        rowids.push_back(row.isNew ? insertRow(row) : row.rowid);
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
ColumnType Recordset::fieldType(int position) const {
    return d_->types.at(at(position));
}

int Recordset::fieldIndex(const QString& name) const {
    const auto found = d_->positions.constFind(name);
    if (found != d_->positions.constEnd()) return *found;
    for (qsizetype i = 0; i < d_->names.size(); ++i)
        if (d_->names[i].compare(name, Qt::CaseInsensitive) == 0) return static_cast<int>(i);
    throw Error(Error::Reason::Type, QStringLiteral("項目「%1」が見つかりません。").arg(name));
}

bool Recordset::bof() const {
    return d_->rows.empty() || d_->position < 0;
}
bool Recordset::eof() const {
    return d_->position >= d_->count();
}
void Recordset::moveFirst() {
    d_->moveTo(0);
}
void Recordset::moveLast() {
    d_->moveTo(d_->count() - 1);
}
void Recordset::moveNext() {
    d_->moveTo(d_->position + 1);
}
void Recordset::movePrevious() {
    d_->moveTo(d_->position - 1);
}
int Recordset::absolutePosition() const {
    return d_->onRow() ? d_->position + 1 : -1;
}

void Recordset::setAbsolutePosition(int position) {
    if (position < 1 || position > d_->count()) throwNoRecord();
    d_->moveTo(position - 1);
}

qint64 Recordset::bookmark() const {
    return d_->current().id;
}

void Recordset::setBookmark(qint64 bookmark) {
    const int position = d_->positionOf(bookmark);
    if (position < 0) throwNoRecord();
    d_->moveTo(position);
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

bool Recordset::find(const QString& field, const Value& value) {
    const int column = fieldIndex(field);
    d_->leaveRow();
    Value wanted;
    try {
        wanted = convertTo(fieldType(column), value);
    } catch (const Error&) {
        d_->position = d_->count();  // what no field of this type can hold stands in no row
        return false;
    }
    int row = std::max(d_->position, 0);
    while (row < d_->count() && !sameValue(valueAt(row, column), wanted)) ++row;
    d_->position = row;
    return row < d_->count();
}

void Recordset::sort(const QString& field, bool ascending) {
    const std::size_t column = at(fieldIndex(field));
    d_->leaveRow();
    std::stable_sort(d_->rows.begin(), d_->rows.end(), [column, ascending](const Row& a, const Row& b) {
        return ascending ? lessThan(a.values[column], b.values[column])
                         : lessThan(b.values[column], a.values[column]);
    });
    d_->position = 0;
}

void Recordset::requery() {
    d_->read();
}

Recordset::EditMode Recordset::editMode() const {
    return d_->mode;
}
bool Recordset::updatable() const {
    return !d_->table.isEmpty();
}

void Recordset::addNew() {
    Q_ASSERT(updatable());
    d_->leaveRow();
    Row row;
    row.id = d_->nextId++;
    row.isNew = true;
    row.values.resize(d_->types.size());
    d_->positionBefore = d_->position;
    d_->rows.push_back(std::move(row));
    d_->position = d_->count() - 1;
    d_->mode = EditMode::Add;
}

void Recordset::setValue(int position, const Value& value) {
    Q_ASSERT(updatable() && position >= 0 && position < fieldCount());
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
    if (d_->mode == EditMode::Add) {
        d_->rows.pop_back();
        d_->position = std::min(d_->positionBefore, d_->count());
    } else if (d_->mode == EditMode::Edit) {
        Row& row = d_->current();
        row.values = d_->backup;
        if (row.stored == row.values) row.stored.reset();
    }
    d_->mode = EditMode::None;
}

void Recordset::remove() {
    Q_ASSERT(updatable());
    Row& row = d_->current();
    if (d_->mode == EditMode::Add) return cancelUpdate();
    if (!d_->batch) d_->deleteRow(row);
    d_->mode = EditMode::None;
    if (d_->batch && !row.isNew) d_->removed.push_back({std::move(row), d_->position});
    d_->rows.erase(d_->rows.begin() + d_->position);
}

void Recordset::setBatch(bool on) {
    Q_ASSERT(updatable());
    d_->batch = on;
}

namespace {

/// A failed write may have rolled back everything already; then there is no savepoint to go back to. The
/// first error is the one to tell.
void undoBatch(Connection& connection, bool outermost) {
    try {
        if (outermost)
            connection.rollbackTrans();
        else if (connection.inTransaction())
            connection.executeScript(QStringLiteral("ROLLBACK TO batch; RELEASE batch"));
    } catch (const Error&) {
        // The caller's rollback, or the closing of the connection, undoes the rest.
    }
}

}  // namespace

void Recordset::updateBatch() {
    d_->leaveRow();
    Connection& connection = *d_->connection;
    std::vector<qint64> rowids;
    rowids.reserve(d_->rows.size());
    const bool outermost = !connection.inTransaction();
    connection.executeScript(QStringLiteral("SAVEPOINT batch"));
    try {
        d_->writeBatch(rowids);
        if (outermost)
            connection.finish("RELEASE batch");
        else
            connection.executeScript(QStringLiteral("RELEASE batch"));
    } catch (...) {
        d_->prepared.clear();
        undoBatch(connection, outermost);
        throw;
    }
    d_->prepared.clear();
    d_->removed.clear();
    for (std::size_t i = 0; i < rowids.size(); ++i) d_->settle(d_->rows[i], rowids[i]);
}

void Recordset::cancelBatch() {
    cancelUpdate();
    const qint64 id = d_->onRow() ? d_->current().id : 0;
    std::erase_if(d_->rows, [](const Row& row) { return row.isNew; });
    for (Row& row : d_->rows)
        if (row.stored) row.values = *std::exchange(row.stored, std::nullopt);
    while (!d_->removed.empty()) {
        RemovedRow& gone = d_->removed.back();
        if (gone.row.stored) gone.row.values = *std::exchange(gone.row.stored, std::nullopt);
        d_->rows.insert(d_->rows.begin() + std::min(gone.index, d_->count()), std::move(gone.row));
        d_->removed.pop_back();
    }
    d_->position = std::max(d_->positionOf(id), 0);
}

}  // namespace store
