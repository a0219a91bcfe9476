#include "store/column_type.h"

#include <cmath>
#include <limits>

#include "store/date_text.h"
#include "store/error.h"

namespace store {
namespace {

Value intoText(int width, const Value& value) {
    const QString text = value.toText();
    if (text.size() > width)
        throw Error(Error::Reason::Type,
                    QStringLiteral("フィールドが小さすぎて、入力したデータを格納できません。"));
    return text;
}

double finite(double number) {
    if (!std::isfinite(number)) throwOverflow();
    return number;
}

qint64 inLongRange(qint64 number) {
    if (number != static_cast<qint64>(static_cast<qint32>(number))) throwOverflow();
    return number;
}

}  // namespace

QString declarationOf(ColumnType type) {
    switch (type.kind) {
        case TypeKind::Counter:
            return QStringLiteral("INTEGER PRIMARY KEY");
        case TypeKind::Text:
            return QStringLiteral("Text(%1)").arg(type.width);
        case TypeKind::Currency:
            return QStringLiteral("CURRENCY");
        case TypeKind::Double:
            return QStringLiteral("DOUBLE");
        case TypeKind::DateTime:
            return QStringLiteral("DATETIME");
        case TypeKind::Boolean:
            return QStringLiteral("BOOLEAN");
        case TypeKind::Integer:
            return QStringLiteral("LONG");
        case TypeKind::Unknown:
            break;
    }
    return {};
}

ColumnType typeOfDeclaration(const QString& declaration) {
    const QString upper = declaration.trimmed().toUpper();
    if (upper.startsWith(u"TEXT(") && upper.endsWith(u')')) {
        bool ok = false;
        const int width = QStringView(upper).mid(5).chopped(1).toInt(&ok);
        if (ok && width > 0) return {TypeKind::Text, width};
        return {};
    }
    // A counter reads back as the plain INTEGER of the row key; numbers of our own are LONG.
    if (upper.startsWith(u"INTEGER") || upper == u"COUNTER") return {TypeKind::Counter, 0};
    if (upper == u"CURRENCY") return {TypeKind::Currency, 0};
    if (upper == u"DOUBLE") return {TypeKind::Double, 0};
    if (upper == u"DATETIME") return {TypeKind::DateTime, 0};
    if (upper == u"BOOLEAN") return {TypeKind::Boolean, 0};
    if (upper == u"LONG") return {TypeKind::Integer, 0};
    return {};
}

Value convertTo(ColumnType type, const Value& value) {
    if (value.isNull()) return value;
    switch (type.kind) {
        case TypeKind::Unknown:
            return value;
        case TypeKind::Counter:
        case TypeKind::Integer:
            return inLongRange(value.toInteger());
        case TypeKind::Text:
            return intoText(type.width, value);
        case TypeKind::Currency:
            return value.toMoney();
        case TypeKind::Double:
            return finite(value.toDouble());
        case TypeKind::DateTime:
            return requireStorable(value.toDate());
        case TypeKind::Boolean:
            return value.toBool();
    }
    return value;
}

}  // namespace store
