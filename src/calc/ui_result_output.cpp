#include "calc/ui_result_output.h"

#include "reports/designs.h"
#include "reports/frmReport.h"
#include "reports/ui_open_document.h"

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

std::vector<ResultRow> freshResultRows(store::Connection& cn, const shell::RunKey& run) {
    updateGrandTotals(cn, run);
    return resultRows(cn, run);
}

QDialog* resultPreview(const std::vector<ResultRow>& rows, const QString& title,
                       const QString& coefficientLine, bool panelOpen, QWidget* parent) {
    const QString name = QStringLiteral("賞与支給額");
    const QStringList& headings = resultHeadings();
    reports::Report report = reports::makeReport(QStringLiteral("DataReportSHyou03"));
    report.setTitle(name);
    report.setData(headings, reportRows(rows));
    for (int i = 0; i < headings.size(); ++i) {
        report.bind(Section::Section1, QStringLiteral("Text%1").arg(i + 1), headings[i]);
        report.setCaption(Section::Section2, kHeads[i], headings[i]);
    }
    for (int i = kFirstAmount; i < headings.size(); ++i) {
        const int n = i - kFirstAmount + 1;
        report.bind(Section::Section5, QStringLiteral("Function%1").arg(n), headings[i]);
        report.bind(Section::Section5, QStringLiteral("Function%1").arg(n + 5), headings[i]);
    }
    report.setCaption(Section::Section4, QStringLiteral("Label4"), name);
    report.setCaption(Section::Section4, QStringLiteral("Label6"), title);
    if (panelOpen) {
        report.setCaption(Section::Section4, QStringLiteral("Label9"), coefficientLine);
        report.setVisible(Section::Section4, QStringLiteral("Label9"), true);
    }
    return new reports::frmReport(std::move(report), parent);
}

QString sendResultSheet(reports::ExportSession& session, const std::vector<ResultRow>& rows,
                        const QString& kubunMei, const QString& kijunMei, const QString& coefficientLine) {
    reports::SheetGrid grid;
    const auto lines = resultSheet(kubunMei, kijunMei, coefficientLine, rows);
    for (std::size_t line = 0; line < lines.size(); ++line)
        for (int column = 0; column < lines[line].size(); ++column)
            grid.setText(static_cast<int>(line) + 1, column + 1, lines[line][column]);
    for (int column = kFirstAmount; column < resultHeadings().size(); ++column)
        grid.setRightAligned(column + 1);
    const QString path = session.send(grid, kijunMei);
    reports::openDocument(path);
    return path;
}

}  // namespace calc
