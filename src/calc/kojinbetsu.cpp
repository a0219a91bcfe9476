#include "calc/kojinbetsu.h"

#include "calc/decision_rows.h"
#include "schema/catalog.h"

namespace calc {
namespace {

namespace decision_t = schema::tables::S実行個人別計算決定;

const QString kRunTable = QString::fromUtf16(schema::tables::S実行個人別計算::kName);
constexpr auto kHoushiki = design::Houshiki::Kojinbetsu;

}  // namespace

KojinbetsuInputs readKojinbetsuInputs(store::Connection& connection, const domain::RunKey& run) {
    KojinbetsuInputs inputs;
    inputs.active = readActiveCoefficients(connection, run, kHoushiki);
    inputs.rows = freezeRunRows(connection, kRunTable, run, inputs.active);
    inputs.grades = readRegisteredGrades(connection, run);
    return inputs;
}

std::vector<double> effectivePayments(const KojinbetsuInputs& inputs, const PaymentSimulation& simulation) {
    EffectiveCoefficient effective(inputs.grades, simulation);
    std::vector<double> payments;
    payments.reserve(inputs.rows.size());
    for (const FrozenRow& row : inputs.rows) {
        payments.push_back(store::named([&] { return row.syainCode + QStringLiteral("　支給係数"); },
                                        [&] {
                                            if (!row.payment) store::throwNull();
                                            return effective.of(row.hyouka.value_or(QString()), *row.payment);
                                        }));
    }
    return payments;
}

std::vector<KojinbetsuAmount> kojinbetsuAmounts(const std::vector<FrozenRow>& rows,
                                                const std::vector<double>& payments,
                                                const Rounding& rounding) {
    std::vector<KojinbetsuAmount> amounts;
    amounts.reserve(rows.size());
    const auto amountOf = [&](std::size_t i) {
        KojinbetsuAmount amount{checkedFinite(rows[i].productA() * payments[i]),
                                checkedFinite(rows[i].productB() * payments[i]),
                                {}};
        const double sum = amount.a + amount.b;
        // The unrounded sum passes through the currency column too, so it has to fit there.
        amount.total = store::Money::fromDouble(sum);
        if (const auto rounded = rounding(sum)) amount.total = store::Money::fromDouble(*rounded);
        return amount;
    };
    for (std::size_t i = 0; i < rows.size(); ++i)
        amounts.push_back(store::named([&] { return rows[i].syainCode + QStringLiteral("　支給額"); },
                                       [&] { return amountOf(i); }));
    return amounts;
}

std::vector<std::optional<store::Money>> totalsOf(const std::vector<KojinbetsuAmount>& amounts) {
    std::vector<std::optional<store::Money>> totals;
    totals.reserve(amounts.size());
    for (const KojinbetsuAmount& amount : amounts) totals.push_back(amount.total);
    return totals;
}

Kojinbetsu::Kojinbetsu(store::Connection& connection, const domain::RunKey& run, PaymentSimulation simulation)
    : connection_(connection), run_(run), simulation_(std::move(simulation)) {}

void Kojinbetsu::keisan1_kojinbetsu() {
    inputs_ = readKojinbetsuInputs(connection_, run_);
    deleteRunRows(connection_, decisionTable(kHoushiki), run_);
    payment_ = effectivePayments(inputs_, simulation_);
}

CalculationResult Kojinbetsu::keisan2_kojinbetsu() {
    const std::size_t employees = inputs_.rows.size();
    if (employees == 0) return {};
    const Rounding rounding = readRounding(connection_, run_);
    Assignees assignees(connection_, run_, QStringLiteral("個人別計算"), employees);
    const auto results = kojinbetsuAmounts(inputs_.rows, payment_, rounding);
    writeRows(results);
    const store::Value total = assignees.write(totalsOf(results));
    writeBudgetTotal(connection_, run_, QStringLiteral("個人別計算合計"), total);
    return {static_cast<int>(employees), total};
}

void Kojinbetsu::writeRows(const std::vector<KojinbetsuAmount>& results) {
    auto update = connection_.prepare(
        QStringLiteral("UPDATE %1 SET Ａ計算額 = ?, Ｂ計算額 = ?, 合計 = ? WHERE ID = ?").arg(kRunTable));
    for (std::size_t row = 0; row < results.size(); ++row)
        update.bind(1, results[row].a)
            .bind(2, results[row].b)
            .bind(3, results[row].total)
            .bind(4, inputs_.rows[row].id)
            .run();

    DecisionInsert decisions(connection_, kHoushiki, run_, inputs_.active);
    for (std::size_t row = 0; row < results.size(); ++row) {
        store::Statement& insert = decisions.bind(inputs_.rows[row]);
        insert.bind(decision_t::支給係数, payment_[row])
            .bind(decision_t::Ａ計算額, results[row].a)
            .bind(decision_t::Ｂ計算額, results[row].b)
            .bind(decision_t::合計, results[row].total)
            .run();
    }
}

}  // namespace calc
