#pragma once
#include <QDate>
#include <QString>
#include <optional>

namespace store {

/// The one date parser of the program. Takes 2003/4/1, 2003-4-1, 2003年4月1日 and Japanese eras
/// (平成15年4月1日, 平成元年…, H15.4.1, H15/4/1, H15-4-1; 明治 大正 昭和 平成 令和, M T S H R) within the
/// limits of each era; digits, letters and signs in half or full width, letters in either case. Surrounding
/// blanks are ignored. Anything else, a two-digit year without an era or a year of five digits included, is
/// no date.
std::optional<QDate> parseDate(const QString& text);
/// parseDate or Error(Type) "日付の形式が正しくありません。".
QDate requireDate(const QString& text);

/// yyyy/m/d, the form of a date on a screen and in the global record: 2003/4/1.
QString formatDate(QDate date);
/// The long form of the status bar and of reports: 2003年4月1日.
QString formatLongDate(QDate date);

/// The date as it may be stored; throws Error(Type) for a year that four digits do not hold, which would be
/// read back as another one.
QDate requireStorable(QDate date);

}  // namespace store
