#pragma once
#include <QDate>
#include <QString>

namespace domain {

/// Whole years from one date to another; negative when `to` lies before `from`. The anniversary of 29
/// February is 1 March in a common year. Both dates must be valid.
int wholeYears(QDate from, QDate to);

/// Age: wholeYears from 生年月日 to 年齢算出年月日, as text without decimals.
QString nenrei_nensuu(QDate d1, QDate d2);
/// Length of service: wholeYears from 入社日 to 勤続年数算出年月日, as text without decimals.
QString kinzoku_nensuu(QDate d1, QDate d2);

}  // namespace domain
