#include "prep/evaluation_import.h"

#include <QMap>
#include <algorithm>
#include <optional>

#include "design/run_filter.h"
#include "design/setup.h"
#include "prep/auto_item.h"
#include "schema/catalog.h"

namespace prep {
namespace {

bool automaticGrade(const design::MethodSetup& setup) {
    return setup.anyCoefficient([](const auto& use) { return use.isAutomaticGrade(); });
}

}  // namespace

std::vector<RunTable> GradeUses::tables() const {
    std::vector<RunTable> used;
    if (shikyuu || kojinbetsu) used.push_back(RunTable::KojinBetsu);
    if (sougaku) used.push_back(RunTable::SougakuHaibun);
    return used;
}

bool GradeUses::holds(RunTable table) const {
    const auto used = tables();
    return std::find(used.begin(), used.end(), table) != used.end();
}

GradeUses gradeUses(store::Connection& cn, const domain::RunKey& run) {
    const design::Setup setup = design::readSetup(cn, run);
    return {!setup.paymentsBy(design::Method::Derived).empty(),
            automaticGrade(setup.of(design::Houshiki::Kojinbetsu)),
            automaticGrade(setup.of(design::Houshiki::Sougaku))};
}

QStringList gradeWords(store::Connection& cn, const domain::RunKey& run, const GradeUses& uses) {
    const design::Setup setup = design::readSetup(cn, run);
    std::optional<QString> type;
    if (uses.kojinbetsu || uses.sougaku) type = setup.gradeScale;
    if (!type && uses.shikyuu)
        if (const auto byGrade = setup.paymentsBy(design::Method::Derived); !byGrade.empty())
            type = byGrade.front().gradeScale;
    auto row = cn.prepare(QStringLiteral("SELECT 評語 FROM S評価2テーブル WHERE 評語タイプ = ? ORDER BY ID"));
    row.bind(1, type.value_or(QString()));
    QStringList words;
    while (row.step()) words << row.toText(0);
    if (words.isEmpty())
        throw store::Error(store::Error::Reason::Type,
                           QStringLiteral("この配分基準で使う評語が設定されていません。"));
    return words;
}

std::vector<QDate> evaluationDates(store::Connection& cn, QDate kijunbi) {
    auto row =
        cn.prepare(QStringLiteral("SELECT 基準日 FROM Ｈ評価実績 WHERE 分類Code <> '03' AND 基準日 < ? GROUP "
                                  "BY 基準日 ORDER BY 基準日"));
    row.bind(1, kijunbi);
    std::vector<QDate> dates;
    while (row.step()) dates.push_back(row.toDate(0));
    return dates;
}

std::vector<EvaluationResult> evaluationResults(store::Connection& cn, const domain::RunKey& run,
                                                RunTable table, QDate date) {
    auto row = cn.prepare(QStringLiteral("SELECT 行.ID, 行.社員Code, 実績.評価 FROM "
                                         "(SELECT ID, 社員Code FROM %1 WHERE %2) AS 行 INNER JOIN Ｈ評価実績 "
                                         "AS 実績 ON 実績.社員Code = 行.社員Code WHERE 実績.基準日 = ? "
                                         "ORDER BY Clng(行.社員Code), 実績.rowid, 行.ID")
                              .arg(runTableName(table), design::kRunFilter));
    store::Binds binds = design::runBinds(run);
    binds.push_back(date);
    row.bindAll(binds);
    std::vector<EvaluationResult> results;
    while (row.step()) results.push_back({row.toInteger(0), row.toText(1), row.value(2)});
    return results;
}

void storeResults(store::Connection& cn, RunTable table, const std::vector<EvaluationResult>& results) {
    struct Last {
        qint64 id;
        const store::Value* hyouka;
        bool single = true;
    };
    QMap<QString, Last> people;
    for (const EvaluationResult& result : results) {
        const auto known = people.find(result.syainCode);
        if (known == people.end()) {
            people.insert(result.syainCode, {result.id, &result.hyouka});
            continue;
        }
        known->single &= known->id == result.id;
        known->hyouka = &result.hyouka;
    }
    // The companion that recorded the results keeps widths of its own.
    const QString name = runTableName(table);
    auto update = cn.prepare(QStringLiteral("UPDATE %1 SET 評価 = ? WHERE ID = ?").arg(name));
    update.into(schema::typesOf(schema::tableNamed(name), {QStringLiteral("評価")}));
    for (const Last& last : people)
        if (last.single) update.bind(1, *last.hyouka).bind(2, last.id).run();
}

}  // namespace prep
