#pragma once
#include <QDate>
#include <QString>
#include <vector>

#include "store/column_type.h"
#include "store/value.h"

struct sqlite3_stmt;

namespace store {

class Connection;

/// A prepared statement for the set-based steps: bind, step, read the columns by position, reset, bind again.
/// Move-only; finished on destruction. Reading a Null through a typed reader throws Error(Type).
class Statement {
  public:
    Statement(Statement&& other) noexcept;
    Statement& operator=(Statement&& other) noexcept;
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    ~Statement();

    /// Parameters count from 1, as SQL does. Not finite doubles throw Error(Overflow).
    Statement& bind(int parameter, const Value& value);
    Statement& bind(int parameter, double value);
    Statement& bind(int parameter, Money value);
    Statement& bind(int parameter, qint64 value);
    Statement& bind(int parameter, int value) { return bind(parameter, static_cast<qint64>(value)); }
    Statement& bind(int parameter, bool value) {
        return bind(parameter, static_cast<qint64>(value ? -1 : 0));
    }
    Statement& bind(int parameter, QDate value);  ///< an invalid date is Null
    Statement& bind(int parameter, const QString& value);
    Statement& bind(int parameter, const char16_t* value);
    Statement& bind(int parameter, const char* value) = delete;
    Statement& bindNull(int parameter);
    Statement& bindAll(const Binds& values);

    /// One row further; false at the end (the statement is then reset and may be bound anew).
    bool step();
    /// step to the end of a statement that returns no row, then reset: one write.
    void run();
    void reset();

    /// The typed readers convert from a column's declared type; a column without one (an expression) is read
    /// as stored: toMoney takes the integer of a sum as ten-thousandths, toDouble and toInteger take it as it
    /// is.
    int columnCount() const { return static_cast<int>(types_.size()); }
    bool isNull(int column) const;
    double toDouble(int column) const;
    Money toMoney(int column) const;
    qint64 toInteger(int column) const;
    bool toBool(int column) const;
    QString toText(int column) const;  ///< Null is ""
    QDate toDate(int column) const;
    /// The value by the declared type of the column (by storage class where the column is an expression).
    Value value(int column) const;
    ColumnType columnType(int column) const;
    QString columnName(int column) const;

  private:
    friend class Connection;
    Statement(Connection& connection, sqlite3_stmt* stmt);
    void requireValue(int column) const;
    void check(int code) const;
    Connection* connection_ = nullptr;
    sqlite3_stmt* stmt_ = nullptr;
    std::vector<ColumnType> types_;
};

}  // namespace store
