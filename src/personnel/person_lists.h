#pragma once
#include <QDate>
#include <QString>

#include "reports/workbook.h"
#include "store/connection.h"
#include "store/recordset.h"

/// What the printed lists and the sheets show of the people in 社員絞込.
namespace personnel {

enum class PersonList {
    Staff,  ///< 社員台帳, 退職予定者一覧: current staff with the names of the position in force
    Retired,  ///< 退職者一覧, and 退職予定者一覧 of who is registered: the same of retired people, 退職日 in
              ///< the place of 入社日
    StaffSheet,      ///< every item of current staff, codes as names
    Family,          ///< a row a relative
    Qualifications,  ///< a row a qualification
};

/// True when the list shows positions: SelectIntoZ comes before it.
bool showsPosition(PersonList list);

/// The rows by the number of the code. Names of codes come by inner joins, so a row without one of them
/// (性別, a position in force, for the sheet 婚姻区分 and 世帯主区分, for families and qualifications every
/// code) is left out; the other codes of the sheet may be empty.
store::Recordset personRows(store::Connection& cn, PersonList list);

/// Headings in row 1, a person (relative, qualification) a row from row 2 on. The free attributes are headed
/// as the company names them. A row beyond the counter's limit throws Error(Overflow).
reports::SheetGrid personSheet(store::Connection& cn, PersonList list, const store::Recordset& rows);

/// How many of the people in 社員絞込 have no row; of a list of their relatives or qualifications, how many
/// of these.
int leftOut(store::Connection& cn, PersonList list, const store::Recordset& rows);

}  // namespace personnel
