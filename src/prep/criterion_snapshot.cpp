#include "prep/criterion_snapshot.h"

#include "store/work.h"

namespace prep {
namespace {

/// Of several rows of a person (two transfers on one day, two rows of a run) and of a master code the first
/// one counts. Each side is read once; the engine joins them over temporary indexes.
const QString kFillSql = QStringLiteral(
    "WITH 行 AS (SELECT 社員Code, 配分区分, 配分基準, min(ID) FROM %1 "
    "WHERE 基準日 = ? AND 配分区分 = ? AND 配分基準 = ? GROUP BY 社員Code), "
    "位置 AS (SELECT *, min(rowid) FROM IdoChuusyutsuMax2 GROUP BY 社員Code), "
    "大 AS (SELECT Code, 所属大 AS 名, min(rowid) FROM 所属大マスタ GROUP BY Code), "
    "役 AS (SELECT Code, 役職 AS 名, min(rowid) FROM 役職マスタ GROUP BY Code) "
    "INSERT INTO IdoChuusyutsuMax3(社員Code, MAXIdoubi, 社員区分, 所属大, 所属小, 役職, 職種, コース, 年齢, "
    "勤続年数, 等級, 号俸, 評語, 社員区分名, 所属大名, 所属小名, 役職名, 職種名, コース名, 配分区分Code, "
    "配分基準Code, 氏名) "
    "SELECT 位置.社員Code, MAXIdoubi, 社員区分, 位置.所属大, 所属小, 位置.役職, 職種, コース, 年齢, "
    "勤続年数, "
    "等級, 号俸, 評語, 社員区分名, 大.名, 所属小名, 役.名, 職種名, コース名, 行.配分区分, 行.配分基準, "
    "(SELECT 氏名 FROM 履歴書テーブル WHERE 履歴書テーブル.社員Code = 位置.社員Code ORDER BY rowid LIMIT 1) "
    "FROM 行 JOIN 位置 ON 位置.社員Code = 行.社員Code LEFT JOIN 大 ON 大.Code = 位置.所属大 "
    "LEFT JOIN 役 ON 役.Code = 位置.役職 ORDER BY Clng(行.社員Code)");

}  // namespace

void SelectIntoX3(store::Connection& cn, const domain::RunKey& run, RunTable table) {
    store::Work work(cn);
    cn.execute(QStringLiteral("DELETE FROM IdoChuusyutsuMax3"));
    cn.execute(kFillSql.arg(runTableName(table)), {run.kijunbi, run.haibunKubun, run.haibunKijun});
    work.commit();
}

}  // namespace prep
