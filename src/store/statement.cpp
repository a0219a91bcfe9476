#include "store/statement.h"

#include <sqlite3.h>

#include <QStringConverter>
#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "store/connection.h"
#include "store/date_text.h"
#include "store/error.h"

namespace store {
namespace {

std::vector<ColumnType> declaredTypes(sqlite3_stmt* stmt) {
    std::vector<ColumnType> types;
    const int count = sqlite3_column_count(stmt);
    types.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const char* declared = sqlite3_column_decltype(stmt, i);
        types.push_back(declared ? typeOfDeclaration(QString::fromUtf8(declared)) : ColumnType{});
    }
    return types;
}

/// Two digits at `at`, or a number that no date takes.
int twoDigits(const char* at) {
    const bool digits = at[0] >= '0' && at[0] <= '9' && at[1] >= '0' && at[1] <= '9';
    return digits ? (at[0] - '0') * 10 + (at[1] - '0') : 9999;
}

/// The stored form YYYY-MM-DD without a detour; anything else through the parser.
QDate dateOf(const char* text, int bytes) {
    if (bytes == 10 && text[4] == '-' && text[7] == '-') {
        const QDate date(twoDigits(text) * 100 + twoDigits(text + 2), twoDigits(text + 5),
                         twoDigits(text + 8));
        if (date.isValid()) return date;
    }
    return requireDate(QString::fromUtf8(text, bytes));
}

}  // namespace

Statement::Statement(Connection& connection, sqlite3_stmt* stmt)
    : connection_(&connection), stmt_(stmt), types_(declaredTypes(stmt)) {}

Statement::Statement(Statement&& other) noexcept
    : connection_(other.connection_),
      stmt_(std::exchange(other.stmt_, nullptr)),
      types_(std::move(other.types_)),
      targets_(std::move(other.targets_)) {}

Statement& Statement::operator=(Statement&& other) noexcept {
    std::swap(connection_, other.connection_);
    std::swap(stmt_, other.stmt_);
    std::swap(types_, other.types_);
    std::swap(targets_, other.targets_);
    return *this;
}

Statement::~Statement() {
    sqlite3_finalize(stmt_);
}

void Statement::check(int code) const {
    if (code != SQLITE_OK) connection_->fail(code);
}

void Statement::requireValue(int column) const {
    if (isNull(column)) throwNull();
}

Statement& Statement::into(std::vector<ColumnType> columns) {
    Q_ASSERT(static_cast<int>(columns.size()) <= sqlite3_bind_parameter_count(stmt_));
    targets_ = std::move(columns);
    return *this;
}

Statement& Statement::bind(int parameter, const Value& value) {
    return bindKept(parameter, value);
}

void Statement::put(int parameter, const Value& value) {
    switch (value.kind()) {
        case Value::Kind::Null:
            bindNull(parameter);
            break;
        case Value::Kind::Boolean:
            return put(parameter, value.toBool());
        case Value::Kind::Integer:
            return put(parameter, value.toInteger());
        case Value::Kind::Double:
            return put(parameter, value.toDouble());
        case Value::Kind::Money:
            return put(parameter, value.toMoney());
        case Value::Kind::Date:
            return put(parameter, value.toDate());
        case Value::Kind::Text:
            return put(parameter, value.toText());
    }
}

void Statement::put(int parameter, double value) {
    if (!std::isfinite(value)) throwOverflow();
    check(sqlite3_bind_double(stmt_, parameter, value));
}

void Statement::put(int parameter, qint64 value) {
    check(sqlite3_bind_int64(stmt_, parameter, value));
}

void Statement::put(int parameter, QDate value) {
    if (!value.isValid()) {
        bindNull(parameter);
        return;
    }
    char text[11];
    int rest = requireStorable(value).year();
    for (int i = 3; i >= 0; --i, rest /= 10) text[i] = static_cast<char>('0' + rest % 10);
    const auto append = [&text](int at, int number) {
        text[at] = '-';
        text[at + 1] = static_cast<char>('0' + number / 10);
        text[at + 2] = static_cast<char>('0' + number % 10);
    };
    append(4, value.month());
    append(7, value.day());
    check(sqlite3_bind_text(stmt_, parameter, text, 10, SQLITE_TRANSIENT));
}

void Statement::put(int parameter, const QString& value) {
    // Names and codes are short: encode on the stack, the engine copies into its own buffer.
    constexpr qsizetype kShort = 128;
    if (value.size() <= kShort) {
        char buffer[3 * kShort + 8];
        QStringEncoder toUtf8(QStringEncoder::Utf8);
        const char* end = toUtf8.appendToBuffer(buffer, value);
        check(sqlite3_bind_text(stmt_, parameter, buffer, static_cast<int>(end - buffer), SQLITE_TRANSIENT));
        return;
    }
    const QByteArray utf8 = value.toUtf8();
    check(sqlite3_bind_text64(stmt_, parameter, utf8.constData(), static_cast<sqlite3_uint64>(utf8.size()),
                              SQLITE_TRANSIENT, SQLITE_UTF8));
}

Statement& Statement::bind(int parameter, const char16_t* value) {
    return bind(parameter, QString::fromUtf16(value));
}

Statement& Statement::bindNull(int parameter) {
    check(sqlite3_bind_null(stmt_, parameter));
    return *this;
}

Statement& Statement::bindAll(const Binds& values) {
    Q_ASSERT(static_cast<int>(values.size()) == sqlite3_bind_parameter_count(stmt_));
    int parameter = 0;
    for (const Value& value : values) bind(++parameter, value);
    return *this;
}

bool Statement::step() {
    // A write outside of any transaction is one of its own, and may fail in its commit as others do.
    std::optional<Connection::Changes> before;
    if (!sqlite3_stmt_readonly(stmt_) && !connection_->inTransaction()) {
        if (connection_->works_ > 0) throwEnded();
        before = connection_->changes();
    }
    const int code = sqlite3_step(stmt_);
    if (code == SQLITE_ROW) return true;
    if (code == SQLITE_DONE) {
        sqlite3_reset(stmt_);
        return false;
    }
    // The reset would overwrite the description.
    const Error error = connection_->errorOf(code);
    sqlite3_reset(stmt_);
    // Of all other failures the engine says itself that nothing was written.
    const int kind = code & 0xff;
    if (!before || (kind != SQLITE_IOERR && kind != SQLITE_FULL)) throw error;
    connection_->requireStands(*before, error);
    return false;
}

void Statement::run() {
    while (step()) {
    }
}

void Statement::reset() {
    sqlite3_reset(stmt_);
}

bool Statement::isNull(int column) const {
    return sqlite3_column_type(stmt_, column) == SQLITE_NULL;
}

double Statement::toDouble(int column) const {
    if (columnType(column).kind == TypeKind::Currency) return toMoney(column).toDouble();
    switch (sqlite3_column_type(stmt_, column)) {
        case SQLITE_INTEGER:
        case SQLITE_FLOAT:
            return sqlite3_column_double(stmt_, column);
        default:
            return value(column).toDouble();
    }
}

Money Statement::toMoney(int column) const {
    requireValue(column);
    const TypeKind kind = columnType(column).kind;
    if (kind != TypeKind::Currency && kind != TypeKind::Unknown) return value(column).toMoney();
    switch (sqlite3_column_type(stmt_, column)) {
        case SQLITE_INTEGER:
            return Money::fromRaw(sqlite3_column_int64(stmt_, column));
        case SQLITE_FLOAT:
            return Money::fromRaw(Value(sqlite3_column_double(stmt_, column)).toInteger());
        default:
            throwTypeMismatch();
    }
}

qint64 Statement::toInteger(int column) const {
    if (columnType(column).kind != TypeKind::Currency && sqlite3_column_type(stmt_, column) == SQLITE_INTEGER)
        return sqlite3_column_int64(stmt_, column);
    return value(column).toInteger();
}

bool Statement::toBool(int column) const {
    if (sqlite3_column_type(stmt_, column) == SQLITE_INTEGER) return sqlite3_column_int64(stmt_, column) != 0;
    return value(column).toBool();
}

QString Statement::toText(int column) const {
    const TypeKind kind = columnType(column).kind;
    if (kind != TypeKind::Text && kind != TypeKind::Unknown) return value(column).toText();
    return storedText(column);
}

QString Statement::storedText(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt_, column));
    return QString::fromUtf8(text, sqlite3_column_bytes(stmt_, column));
}

QDate Statement::toDate(int column) const {
    requireValue(column);
    if (sqlite3_column_type(stmt_, column) != SQLITE_TEXT) throwTypeMismatch();
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt_, column));
    return dateOf(text, sqlite3_column_bytes(stmt_, column));
}

Value Statement::value(int column) const {
    const int storage = sqlite3_column_type(stmt_, column);
    if (storage == SQLITE_NULL) return {};
    switch (columnType(column).kind) {
        case TypeKind::Text:
            return toText(column);
        case TypeKind::Currency:
            return toMoney(column);
        case TypeKind::DateTime:
            return toDate(column);
        case TypeKind::Boolean:  // other programs store "True" and 1
            if (storage == SQLITE_TEXT) return Value(storedText(column)).toBool();
            return sqlite3_column_double(stmt_, column) != 0;
        case TypeKind::Double:
            return sqlite3_column_double(stmt_, column);
        default:
            break;
    }
    if (storage == SQLITE_INTEGER) return static_cast<qint64>(sqlite3_column_int64(stmt_, column));
    if (storage == SQLITE_FLOAT) return sqlite3_column_double(stmt_, column);
    return storedText(column);
}

ColumnType Statement::columnType(int column) const {
    return types_[static_cast<std::size_t>(column)];
}

QString Statement::columnName(int column) const {
    return QString::fromUtf8(sqlite3_column_name(stmt_, column));
}

}  // namespace store
