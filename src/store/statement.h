#pragma once
#include <QDate>
#include <QString>
#include <QStringList>
#include <vector>

#include "store/column_type.h"
#include "store/value.h"

struct sqlite3_stmt;

namespace store {

class Connection;

/// A prepared statement for the set-based steps: bind, step, read the columns by position, reset, bind again.
/// Move-only; finished on destruction, which must come before
/// that of its connection. Reading a Null through a typed reader throws Error(Type).
class Statement {
  public:
    Statement(Statement&& other) noexcept;
    Statement& operator=(Statement&& other) noexcept;
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    ~Statement();

    /// The first parameters go, in this order, to these columns of the table: from now on each value that is
    /// bound to one of them is kept to the column's type and width as Recordset::setValue keeps it
    /// (convertTo, with its errors). Every write of a text that comes from a screen, a file or a companion's
    /// table is bound so (schema::typesOf names the columns).
    Statement& into(std::vector<ColumnType> columns);

    /// Parameters count from 1, as SQL does. Not finite doubles throw Error(Overflow).
    Statement& bind(int parameter, const Value& value);
    Statement& bind(int parameter, double value) { return bindKept(parameter, value); }
    Statement& bind(int parameter, Money value) { return bindKept(parameter, value); }
    Statement& bind(int parameter, qint64 value) { return bindKept(parameter, value); }
    Statement& bind(int parameter, int value) { return bind(parameter, static_cast<qint64>(value)); }
    Statement& bind(int parameter, bool value) { return bindKept(parameter, value); }
    Statement& bind(int parameter, QDate value) { return bindKept(parameter, value); }  ///< invalid is Null
    Statement& bind(int parameter, const QString& value) { return bindKept(parameter, value); }
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
    QString storedText(int column) const;
    void check(int code) const;
    /// Into the parameter, by way of its column where it has one.
    template <typename T>
    Statement& bindKept(int parameter, const T& value) {
        const auto at = static_cast<std::size_t>(parameter) - 1;
        if (at < targets_.size())
            put(parameter, convertTo(targets_[at], Value(value)));
        else
            put(parameter, value);
        return *this;
    }
    void put(int parameter, const Value& value);
    void put(int parameter, double value);
    void put(int parameter, Money value) { put(parameter, value.raw()); }
    void put(int parameter, qint64 value);
    void put(int parameter, bool value) { put(parameter, static_cast<qint64>(value ? -1 : 0)); }
    void put(int parameter, QDate value);
    void put(int parameter, const QString& value);
    Connection* connection_ = nullptr;
    sqlite3_stmt* stmt_ = nullptr;
    std::vector<ColumnType> types_;
    std::vector<ColumnType> targets_;  ///< of the first parameters, where they are bound into columns
};

}  // namespace store
