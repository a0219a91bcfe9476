#include "calc/ui_result_output.h"

#include "reports/designs.h"
#include "reports/frmReport.h"

namespace calc {
namespace {

using reports::Section;

constexpr int kFirstAmount = 2;  // columns of the list: 社員Code, 氏名, then five amounts

/// The labels of Section2 above the seven fields Text1 to Text7.
const QStringList kHeads{QStringLiteral("Label1"), QStringLiteral("Label2"), QStringLiteral("Label3"),
                         QStringLiteral("Label7"), QStringLiteral("Label8"), QStringLiteral("Label10"),
                         QStringLiteral("Label11")};

std::vector<reports::Report::Row> reportRows(const std::vector<ResultRow>& rows) {
    std::vector<reports::Report::Row> data;
    data.reserve(rows.size());
    for (const ResultRow& row : rows) {
        reports::Report::Row cells{row.syainCode, row.simei};
        for (const auto& amount : row.amounts) {
            store::Value& cell = cells.emplace_back();
            if (amount) cell = *amount;
        }
        data.push_back(std::move(cells));
    }
    return data;
}

}  // namespace

QString resultTitle(const QString& kubunMei, const QString& kijunMei) {
    return QStringLiteral("◆%1／%2").arg(kubunMei, kijunMei);
}

std::vector<ResultRow> freshResultRows(store::Connection& cn, const domain::RunKey& run) {
    updateGrandTotals(cn, run);
    return resultRows(cn, run);
}

reports::Report amountReport(const AmountList& list, const std::vector<ResultRow>& rows) {
    reports::Report report = reports::makeReport(QStringLiteral("DataReportSHyou03"));
    report.setTitle(list.title);
    report.setData(list.columns, reportRows(rows));
    for (int i = 0; i < list.columns.size(); ++i) {
        report.bind(Section::Section1, QStringLiteral("Text%1").arg(i + 1), list.columns[i]);
        report.setCaption(Section::Section2, kHeads[i], list.headings[i]);
    }
    for (int i = kFirstAmount; i < list.columns.size(); ++i) {
        const int n = i - kFirstAmount + 1;
        report.bind(Section::Section5, QStringLiteral("Function%1").arg(n), list.columns[i]);
        report.bind(Section::Section5, QStringLiteral("Function%1").arg(n + 5), list.columns[i]);
    }
    report.setCaption(Section::Section4, QStringLiteral("Label4"), list.caption);
    report.setCaption(Section::Section4, QStringLiteral("Label6"), list.subtitle);
    return report;
}

reports::frmReport* resultPreview(const std::vector<ResultRow>& rows, const reports::ListTitle& whose,
                                  const QString& coefficientLine, bool panelOpen, QWidget* parent) {
    const QString& name = whose.list;
    const QString title = u'◆' + whose.subject;
    reports::Report report = amountReport({name, name, title, resultHeadings(), resultHeadings()}, rows);
    if (panelOpen) {
        report.setCaption(Section::Section4, QStringLiteral("Label9"), coefficientLine);
        report.setVisible(Section::Section4, QStringLiteral("Label9"), true);
    }
    return new reports::frmReport(std::move(report), whose, parent);
}

}  // namespace calc
