#include "calc/result_list.h"

#include "calc/run_rows.h"
#include "design/run_filter.h"
#include "store/work.h"

namespace calc {
namespace {

/// The words around the coefficients; the list and the sheet differ in them.
struct LineWords {
    QString mark;
    QString equals;
};

QString coefficientLine(const PaymentSimulation& panel, const LineWords& words) {
    if (panel.mode == PaymentSimulation::Mode::Closed) return {};
    if (panel.mode == PaymentSimulation::Mode::Uniform)
        return words.mark + QStringLiteral("支給係数 = ") + panel.uniformCorrected;
    QString line = words.mark + QStringLiteral("支給係数");
    for (const PanelGrade& grade : panel.grades)
        if (!grade.corrected.isEmpty())
            line += QStringLiteral("  ") + grade.hyouka + words.equals + grade.corrected;
    return line;
}

/// A sum of integers that does not fit becomes a fraction in the engine: such a total must not stand.
void refuseOverflow(store::Connection& connection, const domain::RunKey& run) {
    auto row = connection.prepare(
        QStringLiteral("SELECT Count(*) FROM S配分基準対応社員 WHERE %1 AND typeof(合計) = 'real'")
            .arg(design::kRunFilter));
    row.bindAll(design::runBinds(run));
    if (row.step() && row.toInteger(0) > 0) store::throwOverflow();
}

}  // namespace

void updateGrandTotals(store::Connection& connection, const domain::RunKey& run) {
    store::Work work(connection);
    connection.execute(
        QStringLiteral(
            "UPDATE S配分基準対応社員 SET 合計 = 個人別計算 + 総額配分 + 金一封 + 特別加算金 WHERE %1")
            .arg(design::kRunFilter),
        design::runBinds(run));
    refuseOverflow(connection, run);
    work.commit();
}

const QStringList& resultHeadings() {
    static const QStringList headings{QStringLiteral("社員Code"),   QStringLiteral("氏名"),
                                      QStringLiteral("個人別計算"), QStringLiteral("総額配分"),
                                      QStringLiteral("金一封"),     QStringLiteral("特別加算金"),
                                      QStringLiteral("合計")};
    return headings;
}

std::vector<ResultRow> resultRows(store::Connection& connection, const domain::RunKey& run) {
    auto statement = connection.prepare(
        QStringLiteral("SELECT S配分基準対応社員.社員Code, 履歴書テーブル.氏名, "
                       "S配分基準対応社員.個人別計算, S配分基準対応社員.総額配分,"
                       " S配分基準対応社員.金一封, S配分基準対応社員.特別加算金, S配分基準対応社員.合計"
                       " FROM 履歴書テーブル INNER JOIN S配分基準対応社員 ON 履歴書テーブル.社員Code = "
                       "S配分基準対応社員.社員Code"
                       " WHERE %1 ORDER BY Clng(S配分基準対応社員.社員Code), S配分基準対応社員.ID")
            .arg(design::kRunFilter));
    statement.bindAll(design::runBinds(run));
    std::vector<ResultRow> rows;
    while (statement.step()) {
        ResultRow row{statement.toText(0), statement.toText(1), {}};
        for (int i = 0; i < static_cast<int>(row.amounts.size()); ++i)
            if (!statement.isNull(2 + i)) row.amounts[static_cast<std::size_t>(i)] = statement.toMoney(2 + i);
        rows.push_back(row);
    }
    return rows;
}

QString coefficientLineForReport(const PaymentSimulation& panel) {
    return coefficientLine(panel, {QString(), QStringLiteral("=")});
}

QString coefficientLineForSheet(const PaymentSimulation& panel) {
    return coefficientLine(panel, {QStringLiteral("★"), QStringLiteral(" = ")});
}

void addResultRows(reports::SheetGrid& grid, const std::vector<ResultRow>& rows) {
    int at = reports::kFirstListRow;
    for (const ResultRow& row : rows) {
        grid.setTexts(at, {row.syainCode, row.simei});
        for (std::size_t i = 0; i < row.amounts.size(); ++i) grid.setAmount(at, int(i) + 3, row.amounts[i]);
        ++at;
    }
}

reports::SheetGrid resultSheet(const QString& kubunMei, const QString& kijunMei, const QString& line,
                               const std::vector<ResultRow>& rows) {
    reports::SheetGrid grid;
    grid.setText(1, 1, QStringLiteral("◆") + kubunMei + QStringLiteral("／") + kijunMei);
    grid.setText(2, 1, line);
    grid.setTexts(reports::kFirstListRow - 1, resultHeadings());
    addResultRows(grid, rows);
    return grid;
}

}  // namespace calc
