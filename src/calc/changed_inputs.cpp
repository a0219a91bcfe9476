#include "calc/changed_inputs.h"

#include "calc/annual.h"
#include "calc/decision_rows.h"
#include "calc/run_budget.h"
#include "calc/shikyuu_store.h"
#include "calc/sougaku.h"
#include "schema/catalog.h"
#include "store/date_text.h"

namespace calc {
namespace {

using design::Houshiki;

namespace t = schema::tables;

/// A later payment stands: what is changed in the set-up since then belongs to that one.
bool isHistory(store::Connection& cn, const domain::RunKey& run) {
    const std::vector<QDate> dates = nenkanChoices(cn);
    return !dates.empty() && dates.back() > run.kijunbi;
}

/// The corrected payment coefficients that the run's last calculation stored, as the panel shows them again.
PaymentSimulation storedSimulation(store::Connection& cn, const domain::RunKey& run) {
    const PaymentDecision decision = decidePaymentPanel(cn, run);
    PaymentSimulation stored;
    stored.hyougoType = decision.hyougoType.value_or(QString());
    if (const auto* uniform = std::get_if<UniformPanel>(&decision.outcome)) {
        stored.mode = PaymentSimulation::Mode::Uniform;
        stored.uniformRegistered = uniform->registered;
        stored.uniformCorrected = uniform->corrected;
    } else if (const auto* grades = std::get_if<GradePanel>(&decision.outcome);
               grades && !grades->rows.empty()) {
        stored.mode = PaymentSimulation::Mode::Grades;
        std::copy(grades->rows.begin(), grades->rows.end(), stored.grades.begin());
    }
    return stored;
}

bool individualFits(store::Connection& cn, const domain::RunKey& run) {
    const KojinbetsuInputs inputs = readKojinbetsuInputs(cn, run);
    const Rounding rounding = readRounding(cn, run);
    const auto payments = effectivePayments(inputs, storedSimulation(cn, run));
    return Assignees(cn, run, QStringLiteral("個人別計算"), inputs.rows.size())
        .hold(totalsOf(kojinbetsuAmounts(inputs.rows, payments, rounding)));
}

bool poolFits(store::Connection& cn, const domain::RunKey& run) {
    const auto rows = freezeRunRows(cn, QString::fromUtf16(t::S実行総額配分::kName), run,
                                    readActiveCoefficients(cn, run, Houshiki::Sougaku));
    const store::Money budget = readRunBudget(cn, run).sougakuHaibunYosan;
    return Assignees(cn, run, QStringLiteral("総額配分"), rows.size())
        .hold(poolShares(rows, poolPoints(rows), budget, readRounding(cn, run)).amounts);
}

}  // namespace

bool inputsChangedSince(store::Connection& cn, const domain::RunKey& run, Houshiki houshiki) {
    using Reason = store::Error::Reason;
    const bool pool = houshiki == Houshiki::Sougaku;
    if (!isDecided(cn, run, houshiki) || isHistory(cn, run)) return false;
    try {
        return !(pool ? poolFits(cn, run) : individualFits(cn, run));
    } catch (const store::Error& error) {
        const Reason reason = error.reason();
        if (reason != Reason::Type && reason != Reason::Overflow && reason != Reason::DivideByZero) throw;
        return true;
    }
}

bool inputsChangedSince(store::Connection& cn, const domain::RunKey& run, const design::Kijun& kijun) {
    return (kijun.uses[0] && inputsChangedSince(cn, run, Houshiki::Kojinbetsu)) ||
           (kijun.uses[1] && inputsChangedSince(cn, run, Houshiki::Sougaku));
}

QStringList changedRuns(store::Connection& cn, const std::vector<QDate>& dates) {
    struct Found {
        domain::RunKey run;
        QString name;
    };
    std::vector<Found> runs;
    auto row = cn.prepare(
        QStringLiteral("SELECT DISTINCT 行.配分区分, 行.配分基準, 区.配分区分, 基.配分基準 FROM "
                       "S配分基準対応社員 AS 行 JOIN S配分区分 AS 区 ON 区.Code = 行.配分区分 JOIN S配分基準 "
                       "AS 基 ON 基.配分区分 = 行.配分区分 AND 基.Code = 行.配分基準 WHERE 行.基準日 = ? "
                       "ORDER BY 1, 2"));
    for (const QDate date : dates) {
        row.bindAll({date});
        while (row.step())
            runs.push_back(
                {{date, row.toText(0), row.toText(1)},
                 QStringLiteral("%1 %2／%3").arg(store::formatDate(date), row.toText(2), row.toText(3))});
    }
    QStringList changed;
    for (const auto& [run, name] : runs)
        if (inputsChangedSince(cn, run, Houshiki::Kojinbetsu) ||
            inputsChangedSince(cn, run, Houshiki::Sougaku))
            changed << name;
    return changed;
}

}  // namespace calc
