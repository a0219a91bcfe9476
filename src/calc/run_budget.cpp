#include "calc/run_budget.h"

#include "calc/run_rows.h"
#include "design/run_filter.h"

namespace calc {
namespace {

// The numbered parameters are the three of the run. Each sum is renewed only if its source has rows of the
// run.
const QString kRefresh = QStringLiteral(
    "WITH 対応 AS (SELECT Sum(個人別計算) AS 個, Sum(総額配分) AS 総, Sum(金一封) AS 金, Sum(特別加算金) AS "
    "特, Count(*) AS 人数"
    "  FROM S配分基準対応社員 WHERE 基準日 = ?1 AND 配分区分 = ?2 AND 配分基準 = ?3)"
    " UPDATE S実行予算 SET"
    " 個人別計算合計 = CASE WHEN EXISTS(SELECT 1 FROM S実行個人別計算 WHERE 基準日 = ?1 AND 配分区分 = ?2 "
    "AND 配分基準 = ?3)"
    "  THEN (SELECT 個 FROM 対応) ELSE 個人別計算合計 END,"
    " 総額配分合計 = CASE WHEN EXISTS(SELECT 1 FROM S実行総額配分 WHERE 基準日 = ?1 AND 配分区分 = ?2 AND "
    "配分基準 = ?3)"
    "  THEN (SELECT 総 FROM 対応) ELSE 総額配分合計 END,"
    " 金一封合計 = CASE WHEN (SELECT 人数 FROM 対応) > 0 THEN (SELECT 金 FROM 対応) ELSE 金一封合計 END,"
    " 特別加算金合計 = CASE WHEN (SELECT 人数 FROM 対応) > 0 THEN (SELECT 特 FROM 対応) ELSE 特別加算金合計 "
    "END"
    " WHERE 基準日 = ?1 AND 配分区分 = ?2 AND 配分基準 = ?3");

store::Money orZero(const store::Statement& row, int column) {
    return row.isNull(column) ? store::Money() : row.toMoney(column);
}

}  // namespace

RunBudget readRunBudget(store::Connection& connection, const domain::RunKey& run) {
    auto row = connection.prepare(QStringLiteral("SELECT 予算総額, 総額配分予算, 個人別計算合計, "
                                                 "総額配分合計, 金一封合計, 特別加算金合計 FROM S実行予算"
                                                 " WHERE %1 ORDER BY ID LIMIT 1")
                                      .arg(design::kRunFilter));
    row.bindAll(design::runBinds(run));
    if (!row.step()) return {};
    return {orZero(row, 0), orZero(row, 1), orZero(row, 2), orZero(row, 3), orZero(row, 4), orZero(row, 5)};
}

RunBudget openRunBudget(store::Connection& connection, const domain::RunKey& run) {
    if (connection.execute(kRefresh, design::runBinds(run)) == 0)
        connection.execute(
            QStringLiteral("INSERT INTO S実行予算(基準日, 配分区分, 配分基準) VALUES(?, ?, ?)"),
            design::runBinds(run));
    return readRunBudget(connection, run);
}

void storeBudgets(store::Connection& connection, const domain::RunKey& run, store::Money yosanSougaku,
                  store::Money sougakuHaibunYosan) {
    store::Binds binds{yosanSougaku, sougakuHaibunYosan};
    for (const store::Value& value : design::runBinds(run)) binds.push_back(value);
    if (connection.execute(QStringLiteral("UPDATE S実行予算 SET 予算総額 = ?, 総額配分予算 = ? WHERE %1")
                               .arg(design::kRunFilter),
                           binds) == 0)
        throwNoBudgetRow();
}

RunTotals refreshTotals(const RunBudget& shown) {
    const store::Money typed = shown.kinIppuuGoukei + shown.tokubetsuKasankinGoukei;
    return {shown.yosanSougaku - shown.kojinbetsuGoukei - typed,
            shown.kojinbetsuGoukei + shown.sougakuGoukei + typed};
}

}  // namespace calc
