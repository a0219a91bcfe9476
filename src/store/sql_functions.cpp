#include "store/sql_functions.h"

#include <sqlite3.h>

#include <QString>
#include <limits>

#include "store/date_text.h"
#include "store/error.h"
#include "store/value.h"

namespace store {
namespace {

/// Codes are a few digits: reads them without a string of our own. -1 for anything else.
int shortNumber(sqlite3_value* argument) {
    if (sqlite3_value_type(argument) != SQLITE_TEXT) return -1;
    const unsigned char* text = sqlite3_value_text(argument);
    const int bytes = sqlite3_value_bytes(argument);
    if (bytes < 1 || bytes > 9) return -1;
    int number = 0;
    for (int i = 0; i < bytes; ++i) {
        if (text[i] < '0' || text[i] > '9') return -1;
        number = number * 10 + (text[i] - '0');
    }
    return number;
}

Value valueOf(sqlite3_value* argument) {
    switch (sqlite3_value_type(argument)) {
        case SQLITE_NULL:
            return {};
        case SQLITE_INTEGER:
            return static_cast<qint64>(sqlite3_value_int64(argument));
        case SQLITE_FLOAT:
            return sqlite3_value_double(argument);
        default:
            return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_value_text(argument)),
                                     sqlite3_value_bytes(argument));
    }
}

/// Runs a conversion; its error becomes the statement's error. Nothing may be thrown through the engine.
template <typename Conversion>
void answer(sqlite3_context* context, Conversion&& conversion) {
    try {
        conversion();
    } catch (const Error& error) {
        const QByteArray text = error.text().toUtf8();
        sqlite3_result_error(context, text.constData(), static_cast<int>(text.size()));
    } catch (...) {
        sqlite3_result_error_nomem(context);
    }
}

template <typename Integer>
void toNumber(sqlite3_context* context, int, sqlite3_value** arguments) {
    answer(context, [&] {
        const int code = shortNumber(arguments[0]);
        const qint64 number = code >= 0 ? code : valueOf(arguments[0]).toInteger();
        if (number < std::numeric_limits<Integer>::min() || number > std::numeric_limits<Integer>::max())
            throwOverflow();
        sqlite3_result_int64(context, number);
    });
}

/// The number of a code; the text itself where it is none, which sorts behind all numbers.
void toCodeKey(sqlite3_context* context, int, sqlite3_value** arguments) {
    const int code = shortNumber(arguments[0]);
    if (code >= 0)
        sqlite3_result_int64(context, code);
    else if (const auto number = parseNumber(valueOf(arguments[0]).toText()))
        sqlite3_result_double(context, *number);
    else
        sqlite3_result_value(context, arguments[0]);
}

void toDate(sqlite3_context* context, int, sqlite3_value** arguments) {
    answer(context, [&] {
        const QByteArray text = valueOf(arguments[0]).toDate().toString(Qt::ISODate).toLatin1();
        sqlite3_result_text(context, text.constData(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
    });
}

}  // namespace

void registerSqlFunctions(sqlite3* db) {
    constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    sqlite3_create_function_v2(db, "Clng", 1, kFlags, nullptr, toNumber<qint32>, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(db, "Cint", 1, kFlags, nullptr, toNumber<qint16>, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(db, "CodeKey", 1, kFlags, nullptr, toCodeKey, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(db, "CDate", 1, kFlags, nullptr, toDate, nullptr, nullptr, nullptr);
}

}  // namespace store
