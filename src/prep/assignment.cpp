#include "prep/assignment.h"

#include <QHash>
#include <set>

#include "domain/coefficients.h"
#include "personnel/position_in_force.h"
#include "prep/snapshot.h"
#include "schema/catalog.h"

namespace prep {
namespace {

namespace t = schema::tables;

/// Of several rows of a person (two transfers on one day) the first one shows.
const QString kAssigneeSql = QStringLiteral(
    "WITH 対応 AS (SELECT 社員Code, min(ID) AS 先頭 FROM S配分基準対応社員 WHERE 基準日 = ?1 GROUP BY "
    "社員Code), "
    "在籍 AS (SELECT 社員Code, min(rowid) AS 先頭 FROM IdoChuusyutsuMax2 GROUP BY 社員Code), "
    "全員 AS (SELECT 社員Code FROM 在籍 UNION SELECT 社員Code FROM 対応) "
    "SELECT 全員.社員Code, 履歴書テーブル.氏名, 所属大マスタ.所属大, 所属小マスタ.所属小, 役職マスタ.役職, "
    "位置.等級, 行.配分区分, 行.配分基準, 在籍.社員Code IS NULL "
    "FROM 全員 LEFT JOIN 在籍 ON 在籍.社員Code = 全員.社員Code "
    "LEFT JOIN IdoChuusyutsuMax2 AS 位置 ON 位置.rowid = 在籍.先頭 "
    "LEFT JOIN 対応 ON 対応.社員Code = 全員.社員Code "
    "LEFT JOIN S配分基準対応社員 AS 行 ON 行.ID = 対応.先頭 "
    "LEFT JOIN 履歴書テーブル ON 履歴書テーブル.社員Code = 全員.社員Code "
    "LEFT JOIN 所属大マスタ ON 所属大マスタ.Code = 位置.所属大 "
    "LEFT JOIN 所属小マスタ ON 所属小マスタ.所属大 = 位置.所属大 AND 所属小マスタ.Code = 位置.所属小 "
    "LEFT JOIN 役職マスタ ON 役職マスタ.Code = 位置.役職 ORDER BY Clng(全員.社員Code)");

/// "a.x <> ?2 OR …": true where one of the columns holds something else than the bound default; a Null is no
/// entry.
QString differs(const QStringList& columns, int parameter) {
    QStringList terms;
    for (const QString& column : columns)
        terms << QStringLiteral("coalesce(%1 <> ?%2, 0)").arg(column).arg(parameter);
    return terms.join(QStringLiteral(" OR "));
}

QStringList columnNames(const QString& table, int first, int last) {
    QStringList names;
    for (int i = first; i <= last; ++i) names << schema::tableNamed(table).columns[std::size_t(i)].name;
    return names;
}

/// One ordered read a table. The factors stand in the same order in both: base amounts, coefficients, grade.
QHash<QString, Entered> enteredAt(store::Connection& cn, QDate kijunbi) {
    namespace k = t::S実行個人別計算;
    namespace a = t::S配分基準対応社員;
    const QString amountTable = runTableName(RunTable::TaiouSyain);
    QHash<QString, Entered> all;
    auto amounts =
        cn.prepare(QStringLiteral("SELECT 社員Code, max(%1) FROM %2 WHERE 基準日 = ?1 GROUP BY 社員Code")
                       .arg(differs(columnNames(amountTable, a::個人別計算, a::特別加算金), 2), amountTable));
    amounts.bindAll({kijunbi, store::Money()});
    while (amounts.step()) all[amounts.toText(0)].amounts = amounts.toInteger(1) != 0;
    for (const RunTable kind : {RunTable::KojinBetsu, RunTable::SougakuHaibun}) {
        const QString table = runTableName(kind);
        QStringList coefficients;
        for (const domain::CoefficientKind each : domain::CoefficientKind::all()) coefficients << each.name();
        if (kind == RunTable::KojinBetsu) coefficients << QStringLiteral("支給係数");
        auto row = cn.prepare(
            QStringLiteral(
                "SELECT 社員Code, max(%1), max(%2), max(%3) FROM %4 WHERE 基準日 = ?1 GROUP BY 社員Code")
                .arg(differs(columnNames(table, k::基礎額Ａ, k::基礎額Ｂ), 2), differs(coefficients, 3),
                     differs({QStringLiteral("評価")}, 4), table));
        row.bindAll({kijunbi, store::Money::fromYen(10000), 1.0, QString()});
        while (row.step()) {
            Entered& entered = all[row.toText(0)];
            entered.baseAmounts |= row.toInteger(1) != 0;
            entered.coefficients |= row.toInteger(2) != 0;
            entered.grade |= row.toInteger(3) != 0;
        }
    }
    return all;
}

/// The criteria under which these employees stand at the date.
std::set<Assignment> criteriaOf(store::Connection& cn, QDate kijunbi, const QString& codes) {
    std::set<Assignment> all;
    auto row = cn.prepare(QStringLiteral(
        "SELECT DISTINCT 配分区分, 配分基準 FROM S配分基準対応社員 WHERE 基準日 = ? AND 社員Code IN "
        "(SELECT value FROM json_each(?))"));
    row.bindAll({kijunbi, codes});
    while (row.step()) all.insert({row.toText(0), row.toText(1)});
    return all;
}

/// Rows with the defaults for those who have none under the criterion yet.
void addMissingRows(store::Connection& cn, QDate kijunbi, const QString& codes,
                    const Assignment& assignment) {
    for (const RunTable table : kRunTables) {
        QStringList newcomers;
        store::Statement missing = cn.prepare(
            QStringLiteral(
                "SELECT DISTINCT value FROM json_each(?4) WHERE value NOT IN (SELECT 社員Code FROM %1 "
                "WHERE 基準日 = ?1 AND 配分区分 = ?2 AND 配分基準 = ?3 AND 社員Code IS NOT NULL) ORDER BY "
                "Clng(value)")
                .arg(runTableName(table)));
        missing.bindAll({kijunbi, assignment.kubun, assignment.kijun, codes});
        while (missing.step()) newcomers << missing.toText(0);
        RunRowWriter writer(cn, table, kijunbi);
        for (const QString& code : newcomers) writer.add(code, assignment.kubun, assignment.kijun);
    }
}

void renewTotals(store::Connection& cn, QDate kijunbi, const std::set<Assignment>& touched) {
    auto renew = cn.prepare(QStringLiteral(
        "UPDATE S実行予算 SET (個人別計算合計, 総額配分合計, 金一封合計, 特別加算金合計) = (SELECT "
        "coalesce(Sum(個人別計算), 0), coalesce(Sum(総額配分), 0), coalesce(Sum(金一封), 0), "
        "coalesce(Sum(特別加算金), 0) FROM S配分基準対応社員 WHERE 基準日 = ?1 AND 配分区分 = ?2 AND "
        "配分基準 = ?3) WHERE 基準日 = ?1 AND 配分区分 = ?2 AND 配分基準 = ?3"));
    for (const Assignment& criterion : touched) {
        renew.bindAll({kijunbi, criterion.kubun, criterion.kijun});
        renew.run();
    }
}

}  // namespace

std::vector<Assignee> assignees(store::Connection& cn, QDate kijunbi) {
    enum { Code, Shimei, Dai, Syou, Yakusyoku, Toukyuu, Kubun, Kijun, Left };
    const QHash<QString, Entered> entered = enteredAt(cn, kijunbi);
    std::vector<Assignee> list;
    store::Statement row = cn.prepare(kAssigneeSql);
    row.bind(1, store::Value(kijunbi));
    while (row.step()) {
        const QStringList places{row.toText(Dai), row.toText(Syou)};
        Assignee a{row.toText(Code),      row.toText(Shimei),  places.join(u' ').trimmed(),
                   row.toText(Yakusyoku), row.toText(Toukyuu), {}};
        a.assignment = {row.toText(Kubun), row.toText(Kijun)};
        a.entered = entered.value(a.syainCode);
        a.hasLeft = row.toInteger(Left) != 0;
        list.push_back(std::move(a));
    }
    return list;
}

void assign(store::Connection& cn, QDate kijunbi, const QStringList& syainCodes,
            const Assignment& assignment) {
    const QString codes = personnel::jsonArray(syainCodes);
    std::set<Assignment> touched = criteriaOf(cn, kijunbi, codes);
    if (!assignment.none()) touched.insert(assignment);
    for (const char16_t* table : {u"S実行個人別計算", u"S実行個人別計算決定", u"S実行総額配分",
                                  u"S実行総額配分決定", u"S配分基準対応社員"})
        cn.execute(
            QStringLiteral("DELETE FROM %1 WHERE 基準日 = ? AND NOT (配分区分 IS ? AND 配分基準 IS ?) AND "
                           "社員Code IN (SELECT value FROM json_each(?))")
                .arg(QString::fromUtf16(table)),
            {kijunbi, assignment.kubun, assignment.kijun, codes});
    if (!assignment.none()) addMissingRows(cn, kijunbi, codes, assignment);
    renewTotals(cn, kijunbi, touched);
}

}  // namespace prep
