#include "calc/decision_rows.h"

#include "design/run_filter.h"
#include "domain/coefficients.h"
#include "schema/catalog.h"

namespace calc {
namespace {

using domain::Base;
using domain::CoefficientKind;
namespace decision_t = schema::tables::S実行個人別計算決定;
namespace pool_decision_t = schema::tables::S実行総額配分決定;

// Both tables have the same place for what is written and read here.
static_assert(int{decision_t::評価} == int{pool_decision_t::評価} &&
              int{decision_t::支給係数} == int{pool_decision_t::賞与係数});

/// "INSERT INTO <table>(…) VALUES(?,…)" over all columns but the counter: parameter p is position p.
QString insertStatement(const QString& table) {
    QStringList names;
    QStringList marks;
    const auto& columns = schema::tableNamed(table).columns;
    for (std::size_t position = 1; position < columns.size(); ++position) {
        names << columns[position].name;
        marks << QStringLiteral("?");
    }
    return QStringLiteral("INSERT INTO %1(%2) VALUES(%3)").arg(table, names.join(u','), marks.join(u','));
}

/// Some columns of a run's decision rows, in the order in which they were written.
store::Statement select(store::Connection& connection, const domain::RunKey& run, design::Houshiki houshiki,
                        const QString& columns) {
    auto rows = connection.prepare(QStringLiteral("SELECT %1 FROM %2 WHERE %3 ORDER BY ID")
                                       .arg(columns, decisionTable(houshiki), design::kRunFilter));
    rows.bindAll(design::runBinds(run));
    return rows;
}

}  // namespace

const QString& decisionTable(design::Houshiki houshiki) {
    static const QString individual = QString::fromUtf16(decision_t::kName);
    static const QString pool = QString::fromUtf16(pool_decision_t::kName);
    return houshiki == design::Houshiki::Sougaku ? pool : individual;
}

std::vector<DecisionRow> decisionRows(store::Connection& connection, const domain::RunKey& run,
                                      design::Houshiki houshiki) {
    auto row = select(
        connection, run, houshiki,
        QStringLiteral("社員Code, ") + design::columnName(decisionTable(houshiki), decision_t::支給係数));
    std::vector<DecisionRow> rows;
    while (row.step())
        rows.push_back({row.toText(0), row.isNull(1) ? std::nullopt : std::optional(row.toDouble(1))});
    return rows;
}

bool isDecided(store::Connection& connection, const domain::RunKey& run, design::Houshiki houshiki) {
    return select(connection, run, houshiki, QStringLiteral("ID")).step();
}

DecisionInsert::DecisionInsert(store::Connection& connection, design::Houshiki houshiki,
                               const domain::RunKey& run, const ActiveCoefficients& active)
    : insert_(connection.prepare(insertStatement(decisionTable(houshiki)))) {
    // A parameter keeps its value from row to row until it is bound anew.
    insert_.bind(decision_t::配分区分, run.haibunKubun)
        .bind(decision_t::配分基準, run.haibunKijun)
        .bind(decision_t::基準日, run.kijunbi);
    for (const CoefficientKind kind : CoefficientKind::all()) {
        const std::size_t k = kind.index();
        if (active.a[k]) actingA_.push_back({k, kind.decisionPosition(Base::A)});
        if (active.b[k]) actingB_.push_back({k, kind.decisionPosition(Base::B)});
        for (const Base base : {Base::A, Base::B}) insert_.bind(kind.decisionPosition(base), 1.0);
    }
}

store::Statement& DecisionInsert::bind(const FrozenRow& row) {
    insert_.bind(decision_t::社員Code, row.syainCode)
        .bind(decision_t::基礎額Ａ, row.kisoA)
        .bind(decision_t::基礎額Ｂ, row.kisoB);
    for (const auto& [k, parameter] : actingA_) insert_.bind(parameter, row.keisuuA[k]);
    for (const auto& [k, parameter] : actingB_) insert_.bind(parameter, row.keisuuB[k]);
    return row.hyouka ? insert_.bind(decision_t::評価, *row.hyouka) : insert_.bindNull(decision_t::評価);
}

}  // namespace calc
