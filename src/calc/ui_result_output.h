#pragma once
#include <QString>

#include <vector>

#include "calc/result_list.h"
#include "reports/list_title.h"
#include "reports/report.h"
#include "reports/workbook.h"

class QWidget;

namespace reports {
class frmReport;
}

namespace calc {

/// "◆正社員賞与／一般社員", the line under the title of the list and the first one of the sheet.
QString resultTitle(const QString& kubunMei, const QString& kijunMei);

/// What DataReportSHyou03 prints: code, name and five amounts with their sums and averages.
struct AmountList {
    QString title;         ///< of the report
    QString caption;       ///< above the list
    QString subtitle;      ///< under the caption; may be empty
    QStringList columns;   ///< names of the seven columns
    QStringList headings;  ///< above them; an empty one leaves its column without
};
reports::Report amountReport(const AmountList& list, const std::vector<ResultRow>& rows);

/// Brings the grand totals up to date and reads the list.
std::vector<ResultRow> freshResultRows(store::Connection& cn, const domain::RunKey& run);

/// The preview of 賞与支給額. `coefficientLine` is printed when the simulation panel is open.
reports::frmReport* resultPreview(const std::vector<ResultRow>& rows, const reports::ListTitle& whose,
                                  const QString& coefficientLine, bool panelOpen, QWidget* parent);

}  // namespace calc
