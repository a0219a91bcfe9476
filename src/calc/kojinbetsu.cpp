#include "calc/kojinbetsu.h"

#include "store/catalog.h"

namespace calc {
namespace {

namespace decision_t = store::tables::S実行個人別計算決定;

const QString kRunTable = QString::fromUtf16(store::tables::S実行個人別計算::kName);
const QString kDecisionTable = QString::fromUtf16(decision_t::kName);
const QString kSanteiHoushiki = QStringLiteral("1");

}  // namespace

Kojinbetsu::Kojinbetsu(store::Connection& connection, const shell::RunKey& run, PaymentSimulation simulation)
    : connection_(connection), run_(run), simulation_(std::move(simulation)) {}

void Kojinbetsu::keisan1_kojinbetsu() {
    active_ = readActiveCoefficients(connection_, run_, kSanteiHoushiki);
    rows_ = freezeRunRows(connection_, kRunTable, run_, active_);
    deleteRunRows(connection_, kDecisionTable, run_);

    EffectiveCoefficient effective(connection_, run_, simulation_);
    payment_.clear();
    payment_.reserve(rows_.size());
    for (const FrozenRow& row : rows_) {
        if (!row.payment) store::throwNull();
        payment_.push_back(effective.of(row.hyouka.value_or(QString()), *row.payment));
    }
}

Kojinbetsu::Result Kojinbetsu::compute(std::size_t row, const Rounding& rounding) const {
    Result result{checkedFinite(rows_[row].productA() * payment_[row]),
                  checkedFinite(rows_[row].productB() * payment_[row]),
                  {}};
    const double sum = result.a + result.b;
    // The unrounded sum passes through the currency column too, so it has to fit there.
    result.total = store::Money::fromDouble(sum);
    if (const auto rounded = rounding(sum)) result.total = store::Money::fromDouble(*rounded);
    return result;
}

CalculationResult Kojinbetsu::keisan2_kojinbetsu() {
    if (rows_.empty()) return {};
    const Rounding rounding = readRounding(connection_, run_);
    Assignees assignees(connection_, run_, QStringLiteral("個人別計算"), rows_.size());

    std::vector<Result> results;
    std::vector<std::optional<store::Money>> amounts;
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        results.push_back(compute(row, rounding));
        amounts.push_back(results.back().total);
    }
    writeRows(results);
    const store::Value total = assignees.write(amounts);
    writeBudgetTotal(connection_, run_, QStringLiteral("個人別計算合計"), total);
    return {static_cast<int>(rows_.size()), total};
}

void Kojinbetsu::writeRows(const std::vector<Result>& results) {
    auto update = connection_.prepare(
        QStringLiteral("UPDATE %1 SET Ａ計算額 = ?, Ｂ計算額 = ?, 合計 = ? WHERE ID = ?").arg(kRunTable));
    for (std::size_t row = 0; row < rows_.size(); ++row)
        update.bind(1, results[row].a)
            .bind(2, results[row].b)
            .bind(3, results[row].total)
            .bind(4, rows_[row].id)
            .run();

    DecisionInsert decisions(connection_, kDecisionTable, run_, active_);
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        store::Statement& insert = decisions.bind(rows_[row]);
        insert.bind(decision_t::支給係数, payment_[row])
            .bind(decision_t::Ａ計算額, results[row].a)
            .bind(decision_t::Ｂ計算額, results[row].b)
            .bind(decision_t::合計, results[row].total)
            .run();
    }
}

}  // namespace calc
