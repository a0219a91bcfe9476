#pragma once
#include <QDate>
#include <QString>
#include <optional>
#include <variant>
#include <vector>

#include "store/money.h"

namespace store {

/// One cell of a table, or one value on its way into a statement.
/// The number accessors convert between number kinds and from numeric text, and throw Error(Type) for Null
/// ("Null の使い方が不正です。") and for text that is no number ("型が一致しません。").
class Value {
  public:
    enum class Kind { Null, Boolean, Integer, Double, Money, Date, Text };

    Value() = default;
    Value(bool v) : v_(v) {}
    Value(int v) : v_(static_cast<qint64>(v)) {}
    Value(qint64 v) : v_(v) {}
    Value(double v) : v_(v) {}
    Value(Money v) : v_(v) {}
    /// An invalid date is Null.
    Value(QDate v);
    Value(const QString& v) : v_(v) {}
    Value(const char16_t* v) : v_(QString::fromUtf16(v)) {}
    /// Any other pointer would silently become a Boolean.
    template <typename T>
    Value(T*) = delete;

    Kind kind() const { return static_cast<Kind>(v_.index()); }
    bool isNull() const { return kind() == Kind::Null; }

    bool toBool() const;       ///< Boolean, or a number other than 0
    qint64 toInteger() const;  ///< doubles and money are rounded to even, as an integer conversion does
    double toDouble() const;
    Money toMoney() const;
    QDate toDate() const;  ///< a date, or text that parseDate takes
    /// As a text box shows it: Null is "", a date yyyy/m/d, an amount or a double without superfluous zeros,
    /// a Boolean "True" or "False".
    QString toText() const;

    bool operator==(const Value&) const = default;

  private:
    std::variant<std::monostate, bool, qint64, double, Money, QDate, QString> v_;
};

/// What readNumber() takes, as a number; too large a one is infinite. Nothing for any other text.
std::optional<double> parseNumber(const QString& text);

/// The values of a statement's parameters, in the order of its question marks.
using Binds = std::vector<Value>;

}  // namespace store
