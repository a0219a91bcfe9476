#include "prep/auto_input.h"

#include <QStringList>

#include "design/run_filter.h"
#include "prep/auto_base_amounts.h"
#include "prep/auto_coefficients.h"
#include "prep/auto_plan.h"
#include "prep/criterion_snapshot.h"
#include "schema/catalog.h"

namespace prep {
namespace {

namespace judged = schema::tables::S実行自動入力判定;

const QString kJudgments = QString::fromUtf16(judged::kName);

std::vector<AutoRun::Row> readRows(store::Connection& cn, const QString& table, const domain::RunKey& run) {
    auto rows =
        cn.prepare(QStringLiteral("SELECT ID, 社員Code, 評価 FROM %1 WHERE %2 ORDER BY Clng(社員Code), ID")
                       .arg(table, design::kRunFilter));
    rows.bindAll(design::runBinds(run));
    std::vector<AutoRun::Row> read;
    while (rows.step()) read.push_back({rows.toInteger(0), rows.toText(1), rows.toText(2)});
    return read;
}

void bindCell(store::Statement& update, int parameter, const AutoCell& cell) {
    if (const auto* coefficient = std::get_if<double>(&cell.value))
        update.bind(parameter, *coefficient);
    else if (const auto* amount = std::get_if<store::Money>(&cell.value))
        update.bind(parameter, *amount);
    else
        update.bindNull(parameter);
}

/// All items of a row in one write; a Null parameter keeps what stands there.
void writeRun(const AutoRun& run, const std::vector<AutoItem>& items) {
    if (items.empty()) return;
    QStringList sets;
    for (const AutoItem& item : items)
        sets << QStringLiteral("%1 = coalesce(?, %1)").arg(design::columnName(run.table, item.target));
    auto update =
        run.cn.prepare(QStringLiteral("UPDATE %1 SET %2 WHERE ID = ?").arg(run.table, sets.join(u',')));
    for (std::size_t i = 0; i < run.rows.size(); ++i) {
        int parameter = 0;
        for (const AutoItem& item : items) bindCell(update, ++parameter, item.cells[i]);
        update.bind(++parameter, run.rows[i].id).run();
    }
}

void writeJudgments(const AutoRun& run, const std::vector<AutoItem>& items) {
    QStringList names{design::columnName(kJudgments, judged::社員Code)};
    for (const AutoItem& item : items) names << design::columnName(kJudgments, item.judgment);
    run.cn.execute(QStringLiteral("DELETE FROM ") + kJudgments);
    auto insert = run.cn.prepare(
        QStringLiteral("INSERT INTO %1(%2) VALUES(?%3)")
            .arg(kJudgments, names.join(u','), QStringLiteral(",?").repeated(names.size() - 1)));
    const QString found = QStringLiteral("○"), notFound = QStringLiteral("×");
    for (std::size_t i = 0; i < run.rows.size(); ++i) {
        int parameter = 1;
        insert.bind(parameter, run.rows[i].syainCode);
        for (const AutoItem& item : items) insert.bind(++parameter, item.cells[i].found ? found : notFound);
        insert.run();
    }
}

std::vector<AutoItem> fillItems(const AutoRun& run, bool payment) {
    std::vector<AutoItem> items;
    for (Base base : {Base::A, Base::B})
        if (auto item = kisogaku(run, base)) items.push_back(std::move(*item));
    for (AutoItem& item : keisuu(run)) items.push_back(std::move(item));
    if (payment)
        if (auto item = keisuu_shikyuu(run)) items.push_back(std::move(*item));
    return items;
}

}  // namespace

AutoPlan planAutoInput(store::Connection& cn, const domain::RunKey& run, design::Houshiki houshiki) {
    const bool individual = houshiki == design::Houshiki::Kojinbetsu;
    const RunTable table = individual ? RunTable::KojinBetsu : RunTable::SougakuHaibun;
    SelectIntoX3(cn, run, table);
    const QString name = runTableName(table);
    AutoRun filled{cn, run, houshiki, design::readSetup(cn, run), name, readRows(cn, name, run)};
    std::vector<AutoItem> items = fillItems(filled, individual);
    return {std::move(filled), std::move(items)};
}

AutoItems autoInput(store::Connection& cn, const domain::RunKey& run, design::Houshiki houshiki) {
    const auto [filled, items] = planAutoInput(cn, run, houshiki);
    writeRun(filled, items);
    writeJudgments(filled, items);
    AutoItems positions;
    for (const AutoItem& item : items) positions.insert(item.judgment);
    return positions;
}

store::Recordset judgmentRows(store::Connection& cn) {
    QStringList names;
    for (int position = judged::基礎額Ａ; position <= judged::支給係数; ++position)
        names << QStringLiteral("判定.") + design::columnName(kJudgments, position);
    return cn.query(QStringLiteral("SELECT 判定.社員Code, 履歴書テーブル.氏名, %1 FROM %2 AS 判定 INNER JOIN "
                                   "履歴書テーブル ON 判定.社員Code = 履歴書テーブル.社員Code "
                                   "ORDER BY Clng(判定.社員Code), 判定.ID")
                        .arg(names.join(u','), kJudgments));
}

std::vector<JudgmentColumn> judgmentColumns(store::Connection& cn, const AutoItems& items) {
    const auto own = cn.query(QStringLiteral("SELECT 係数名称 FROM S係数名称設定 ORDER BY Cint(Code)"));
    std::vector<JudgmentColumn> columns;
    const auto add = [&](int position, const QString& ownName = {}) {
        JudgmentColumn& column = columns.emplace_back();
        if (!items.contains(position)) return;
        column.column = column.heading = design::columnName(kJudgments, position);
        if (!ownName.isEmpty()) column.heading = ownName;
    };
    add(judged::基礎額Ａ);
    add(judged::基礎額Ｂ);
    for (const domain::CoefficientKind kind : domain::CoefficientKind::all()) {
        const int row = static_cast<int>(kind.index());
        if (kind.lookUp())
            add(kind.lookUp()->judgment, row < own.recordCount() ? own.valueAt(row, 0).toText() : QString());
    }
    add(judged::支給係数);
    return columns;
}

}  // namespace prep
