#pragma once
#include <QString>

#include "personnel/person_lists.h"
#include "reports/list_title.h"

namespace reports {
class frmReport;
}
class QWidget;

namespace personnel {

/// What stands above a printed list of people and under it.
struct PrintHeads {
    reports::ListTitle title;
    QString dateLine;  ///< "基準日：2026年4月1日"
};

/// The preview of a list. The caller shows it.
reports::frmReport* personPreview(PersonList list, const store::Recordset& rows, const PrintHeads& heads,
                                  QWidget* parent);

/// "2026年4月1日" behind what the date means.
QString dateLine(QDate date);

}  // namespace personnel
