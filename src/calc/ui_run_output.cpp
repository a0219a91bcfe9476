#include "calc/ui_run_output.h"

#include "calc/changed_inputs.h"
#include "calc/pay_charts.h"
#include "calc/ui_result_output.h"
#include "forms/global_record.h"
#include "reports/frmChart.h"
#include "reports/frmReport.h"
#include "reports/ui_list_title.h"

namespace calc {
namespace {

store::Connection& cn(const ShownRun& shown) {
    return *shown.global.cn_main;
}

reports::ListTitle titleOf(const ShownRun& shown) {
    reports::ListTitle title = reports::titleOfRun(shown.global, QStringLiteral("賞与支給額"));
    if (inputsChangedSince(cn(shown), shown.run, shown.kijun)) title.remark = kInputsChanged;
    return title;
}

}  // namespace

reports::frmReport* listOfRun(const ShownRun& shown, QWidget* parent) {
    const auto rows = freshResultRows(cn(shown), shown.run);
    auto* preview =
        resultPreview(rows, titleOf(shown), coefficientLineForReport(shown.panel), shown.panelOpen, parent);
    preview->offerCharts([&connection = cn(shown), run = shown.run] { return chartsOfRun(connection, run); });
    return preview;
}

QString sendRun(const ShownRun& shown, const reports::SheetFolder& sheets) {
    const auto rows = freshResultRows(cn(shown), shown.run);
    const auto sheet = resultSheet(shown.global.haibun_kubun_mei, shown.global.haibun_kijun_mei,
                                   coefficientLineForSheet(shown.panel), rows);
    return sheets.send(sheet, titleOf(shown));
}

reports::frmChart* chartScreenOfRun(const ShownRun& shown, QWidget* parent) {
    const auto& global = shown.global;
    QString subject = QStringLiteral("%1　基準日 %2")
                          .arg(resultTitle(global.haibun_kubun_mei, global.haibun_kijun_mei), global.kijunbi);
    if (inputsChangedSince(cn(shown), shown.run, shown.kijun)) subject += u'　' + kInputsChanged;
    return new reports::frmChart(chartsOfRun(cn(shown), shown.run), subject, parent);
}

}  // namespace calc
