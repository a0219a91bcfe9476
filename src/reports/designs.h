#pragma once
#include <QString>

#include "reports/design.h"
#include "reports/report.h"

namespace reports {

/// The design of that name from the catalogue ("DataReportSHyou03", "DataReportHData"). A name that is not
/// there is a bug.
Design designNamed(const QString& name);

/// A report of that design, with no title, no rows and no binding yet.
Report makeReport(const QString& designName);

/// The heading in Section2 of DataReportSHyou02 over its field Text<number> (1 to 19).
QString headingOfSHyou02(int number);

}  // namespace reports
