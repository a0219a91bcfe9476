#pragma once
#include <QDate>
#include <QStringList>
#include <vector>

#include "domain/run_key.h"
#include "prep/snapshot.h"
#include "store/connection.h"

/// Grades (評価) as an input of a run: where a criterion needs them, which words they may be, and taking
/// them over from the evaluation results of a date.
namespace prep {

/// Which uses of a criterion need each employee's grade.
struct GradeUses {
    bool shikyuu = false;     ///< 支給係数 by grade
    bool kojinbetsu = false;  ///< 評価係数 of 個人別計算, filled automatically
    bool sougaku = false;     ///< the same of 総額配分

    /// The tables that hold grades: S実行個人別計算 for the first two uses, S実行総額配分 for the last. The
    /// first one is the one that is shown.
    std::vector<RunTable> tables() const;
    bool holds(RunTable table) const;
};
GradeUses gradeUses(store::Connection& cn, const domain::RunKey& run);

/// The words of the criterion's grade vocabulary, best first as the company lists them. The vocabulary of
/// 評価係数 goes before that of 支給係数. Throws Error(Type) when the set-up names none.
QStringList gradeWords(store::Connection& cn, const domain::RunKey& run, const GradeUses& uses);

/// The dates of evaluation results before `kijunbi`, ascending. A date with nothing but raises (分類Code 03)
/// is none.
std::vector<QDate> evaluationDates(store::Connection& cn, QDate kijunbi);

/// A result of an employee of the run.
struct EvaluationResult {
    qint64 id;  ///< of the employee's row in the run's table
    QString syainCode;
    store::Value hyouka;
};
/// All results of one date for the employees of the run, in the order of Clng(社員Code), then as they were
/// recorded; results of a raise on that date are among them.
std::vector<EvaluationResult> evaluationResults(store::Connection& cn, const domain::RunKey& run,
                                                RunTable table, QDate date);
/// Writes the grades into the rows of the run. Of several results of an employee the last one counts; who
/// stands in the run more than once keeps his grade. Runs in the caller's transaction.
void storeResults(store::Connection& cn, RunTable table, const std::vector<EvaluationResult>& results);

}  // namespace prep
