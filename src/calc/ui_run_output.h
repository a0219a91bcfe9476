#pragma once
#include <QString>

#include "calc/payment_simulation.h"
#include "design/criteria.h"
#include "domain/run_key.h"

class QWidget;

namespace forms {
struct GlobalRecord;
}
namespace reports {
class frmChart;
class frmReport;
class SheetFolder;
}  // namespace reports

namespace calc {

/// A run whose result is shown, and what stands on the calculation screen beside it.
struct ShownRun {
    const forms::GlobalRecord& global;
    domain::RunKey run;
    design::Kijun kijun;
    PaymentSimulation panel;
    bool panelOpen = false;
};

/// The three ways to see a result: the printed list with its charts, the sheet, the charts on the screen.
/// List and sheet bring the grand totals up to date first; all say where the inputs changed after the
/// calculation. May throw store::Error.
reports::frmReport* listOfRun(const ShownRun& shown, QWidget* parent);
/// The path of the sheet.
QString sendRun(const ShownRun& shown, const reports::SheetFolder& sheets);
reports::frmChart* chartScreenOfRun(const ShownRun& shown, QWidget* parent);

}  // namespace calc
