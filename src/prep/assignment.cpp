#include "prep/assignment.h"

#include "personnel/position_in_force.h"
#include "prep/snapshot.h"

namespace prep {
namespace {

/// Of several rows of a person (two transfers on one day) the first one shows.
const QString kAssigneeSql = QStringLiteral(
    "WITH 対応 AS (SELECT 社員Code, min(ID) AS 先頭, max(abs(coalesce(個人別計算,0)) + "
    "abs(coalesce(総額配分,0)) + "
    "abs(coalesce(金一封,0)) + abs(coalesce(特別加算金,0))) > 0 AS 金額あり FROM S配分基準対応社員 WHERE "
    "基準日 = ?1 GROUP BY "
    "社員Code), "
    "在籍 AS (SELECT 社員Code, min(rowid) AS 先頭 FROM IdoChuusyutsuMax2 GROUP BY 社員Code), "
    "全員 AS (SELECT 社員Code FROM 在籍 UNION SELECT 社員Code FROM 対応) "
    "SELECT 全員.社員Code, 履歴書テーブル.氏名, 所属大マスタ.所属大, 所属小マスタ.所属小, 役職マスタ.役職, "
    "位置.等級, 行.配分区分, 行.配分基準, 対応.金額あり, 在籍.社員Code IS NULL "
    "FROM 全員 LEFT JOIN 在籍 ON 在籍.社員Code = 全員.社員Code "
    "LEFT JOIN IdoChuusyutsuMax2 AS 位置 ON 位置.rowid = 在籍.先頭 "
    "LEFT JOIN 対応 ON 対応.社員Code = 全員.社員Code "
    "LEFT JOIN S配分基準対応社員 AS 行 ON 行.ID = 対応.先頭 "
    "LEFT JOIN 履歴書テーブル ON 履歴書テーブル.社員Code = 全員.社員Code "
    "LEFT JOIN 所属大マスタ ON 所属大マスタ.Code = 位置.所属大 "
    "LEFT JOIN 所属小マスタ ON 所属小マスタ.所属大 = 位置.所属大 AND 所属小マスタ.Code = 位置.所属小 "
    "LEFT JOIN 役職マスタ ON 役職マスタ.Code = 位置.役職 ORDER BY Clng(全員.社員Code)");

}  // namespace

std::vector<Assignee> assignees(store::Connection& cn, QDate kijunbi) {
    enum { Code, Shimei, Dai, Syou, Yakusyoku, Toukyuu, Kubun, Kijun, Amounts, Left };
    std::vector<Assignee> list;
    store::Statement row = cn.prepare(kAssigneeSql);
    row.bind(1, store::Value(kijunbi));
    while (row.step()) {
        const QStringList places{row.toText(Dai), row.toText(Syou)};
        Assignee a{row.toText(Code),      row.toText(Shimei),  places.join(u' ').trimmed(),
                   row.toText(Yakusyoku), row.toText(Toukyuu), {}};
        a.assignment = {row.toText(Kubun), row.toText(Kijun)};
        a.hasAmounts = !row.isNull(Amounts) && row.toInteger(Amounts) != 0;
        a.hasLeft = row.toInteger(Left) != 0;
        list.push_back(std::move(a));
    }
    return list;
}

void assign(store::Connection& cn, QDate kijunbi, const QStringList& syainCodes,
            const Assignment& assignment) {
    const QString codes = personnel::jsonArray(syainCodes);
    for (const char16_t* table : {u"S実行個人別計算", u"S実行個人別計算決定", u"S実行総額配分",
                                  u"S実行総額配分決定", u"S配分基準対応社員"})
        cn.execute(
            QStringLiteral("DELETE FROM %1 WHERE 基準日 = ? AND NOT (配分区分 IS ? AND 配分基準 IS ?) AND "
                           "社員Code IN (SELECT value FROM json_each(?))")
                .arg(QString::fromUtf16(table)),
            {kijunbi, assignment.kubun, assignment.kijun, codes});
    if (assignment.none()) return;

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

}  // namespace prep
