#include "calc/sougaku.h"

#include "calc/decision_rows.h"
#include "schema/catalog.h"

namespace calc {
namespace {

namespace decision_t = schema::tables::S実行総額配分決定;

const QString kRunTable = QString::fromUtf16(schema::tables::S実行総額配分::kName);
constexpr auto kHoushiki = design::Houshiki::Sougaku;

}  // namespace

std::vector<PoolPoints> poolPoints(const std::vector<FrozenRow>& rows) {
    std::vector<PoolPoints> points;
    points.reserve(rows.size());
    const auto pointsOf = [](const FrozenRow& row) -> PoolPoints {
        const double a = checkedFinite(row.productA());
        const double b = checkedFinite(row.productB());
        return {a, b, store::Money::fromDouble(a + b)};
    };
    for (const FrozenRow& row : rows)
        points.push_back(store::named([&] { return row.syainCode + QStringLiteral("　支給対象額計"); },
                                      [&] { return pointsOf(row); }));
    return points;
}

PoolShares poolShares(const std::vector<FrozenRow>& rows, const std::vector<PoolPoints>& points,
                      store::Money budget, const Rounding& rounding) {
    store::Money all;
    for (const PoolPoints& one : points) all += one.total;
    if (all == store::Money())
        throw store::Error(store::Error::Reason::DivideByZero, QStringLiteral("0 で除算しました。"),
                           QStringLiteral("全員の支給対象額が0円です。基礎額と係数を確かめてください。"));
    PoolShares spread;
    spread.ratio = checkedFinite(budget.toDouble() / all.toDouble());
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const auto rounded = rounding(spread.ratio * points[row].total.toDouble());
        const auto share = rounded ? std::optional(store::Money::fromDouble(*rounded)) : std::nullopt;
        spread.shares.push_back(share);
        // Without a matching setting the run row keeps the 合計 of an earlier run, and that is what is paid.
        spread.amounts.push_back(share ? share : rows[row].earlierTotal);
    }
    return spread;
}

Sougaku::Sougaku(store::Connection& connection, const domain::RunKey& run)
    : connection_(connection), run_(run) {}

void Sougaku::keisan1_sougaku() {
    active_ = readActiveCoefficients(connection_, run_, kHoushiki);
    rows_ = freezeRunRows(connection_, kRunTable, run_, active_);
    deleteRunRows(connection_, decisionTable(kHoushiki), run_);
}

void Sougaku::keisan2_sougaku() {
    points_ = poolPoints(rows_);
}

CalculationResult Sougaku::keisan3_sougaku(store::Money budget) {
    if (rows_.empty()) return {};
    Assignees assignees(connection_, run_, QStringLiteral("総額配分"), rows_.size());
    const PoolShares spread = poolShares(rows_, points_, budget, readRounding(connection_, run_));
    writeRows(spread);
    const store::Value total = assignees.write(spread.amounts);
    writeBudgetTotal(connection_, run_, QStringLiteral("総額配分合計"), total);
    return {static_cast<int>(rows_.size()), total};
}

void Sougaku::writeRows(const PoolShares& spread) {
    auto update = connection_.prepare(
        QStringLiteral(
            "UPDATE %1 SET 賞与係数 = ?, Ａ計算額 = ?, Ｂ計算額 = ?, 支給対象額計 = ?, 合計 = ? WHERE ID = ?")
            .arg(kRunTable));
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        update.bind(1, spread.ratio)
            .bind(2, points_[row].a)
            .bind(3, points_[row].b)
            .bind(4, points_[row].total);
        bindOptional(update, 5, spread.amounts[row]);
        update.bind(6, rows_[row].id).run();
    }

    DecisionInsert decisions(connection_, kHoushiki, run_, active_);
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        store::Statement& insert = decisions.bind(rows_[row]);
        insert.bind(decision_t::賞与係数, spread.ratio)
            .bind(decision_t::Ａ計算額, points_[row].a)
            .bind(decision_t::Ｂ計算額, points_[row].b)
            .bind(decision_t::支給対象額計, points_[row].total);
        bindOptional(insert, decision_t::合計, spread.shares[row]);
        insert.run();
    }
}

}  // namespace calc
