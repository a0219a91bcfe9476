#pragma once
#include <QString>

#include "calc/result_list.h"
#include "reports/workbook.h"

class QDialog;
class QWidget;

namespace calc {

/// "◆正社員賞与／一般社員", the line under the title of the list and the first one of the sheet.
QString resultTitle(const QString& kubunMei, const QString& kijunMei);

/// Brings the grand totals up to date and reads the list.
std::vector<ResultRow> freshResultRows(store::Connection& cn, const shell::RunKey& run);

/// The preview of 賞与支給額. `coefficientLine` is printed when the simulation panel is open.
QDialog* resultPreview(const std::vector<ResultRow>& rows, const QString& title,
                       const QString& coefficientLine, bool panelOpen, QWidget* parent);

/// Writes the sheet as the next file of the session, opens it where there is a desktop, and returns its path.
QString sendResultSheet(reports::ExportSession& session, const std::vector<ResultRow>& rows,
                        const QString& kubunMei, const QString& kijunMei, const QString& coefficientLine);

}  // namespace calc
