#pragma once
#include <QDate>
#include <QString>
#include <vector>

namespace reports {

/// Whose list it is and of what. It names the file of a sheet or a PDF and stands at the foot of each printed
/// page and under the rows of a sheet: a list that was passed on still says what it is.
struct ListTitle {
    QString company;             ///< 会社名
    std::vector<QDate> kijunbi;  ///< of the run or runs, or the date at which people are shown; may be empty
    QString subject;             ///< 正社員賞与／一般社員; empty for a list of the whole company
    QString list;                ///< 賞与支給額
    QDate made;                  ///< the day on which it is printed or sent
    QString remark = {};         ///< what the reader has to know of it; told last
};

/// "2026-12-10_見本商事_正社員賞与／一般社員_賞与支給額", fit to be a file's name on every system. Several
/// dates are told by the first and the last.
QString fileStem(const ListTitle& title);
/// "基準日 2026/12/10　正社員賞与／一般社員　作成日 2026/11/23　見本商事".
QString originLine(const ListTitle& title);

}  // namespace reports
