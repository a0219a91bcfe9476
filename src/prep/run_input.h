#pragma once
#include <QString>
#include <optional>
#include <vector>

#include "domain/cell_rules.h"
#include "domain/run_key.h"
#include "prep/snapshot.h"
#include "store/connection.h"

/// What is typed in per employee at a run: which column a grid fills, what a cell admits, reading and
/// writing.
namespace prep {

/// One employee in a grid. `text` is what the cell holds: the stored value as plain text ("" for none) until
/// something is typed over it.
struct InputRow {
    QString text;
    QString shimei;
    QString syozoku;    ///< 所属大 by name
    QString yakusyoku;  ///< by name
    QString syainCode;
    store::Value value = {};  ///< as it was read, with all its digits
    QString read = {};        ///< the text that it was shown as
};

/// The column that a grid shows and writes.
struct InputTarget {
    RunTable table = RunTable::KojinBetsu;
    QString column;
};

/// Rebuilds the employees of the criterion and reads them with their value, in the order of Clng(社員Code).
std::vector<InputRow> loadInputRows(store::Connection& cn, const domain::RunKey& run,
                                    const InputTarget& target);

/// Writes row i's text to row i of the table: where it was not typed over, the value as it was read, and only
/// where the table holds something else. Beforehand the employees of both are compared: where they do not
/// agree nothing is written and the answer names the difference. An empty text is written as it is to a text
/// column and is an Error(Type) for a number. Runs in the caller's transaction.
std::optional<QString> writeInputRows(store::Connection& cn, const domain::RunKey& run,
                                      const InputTarget& target, const std::vector<InputRow>& rows);

/// Brings 金一封合計 or 特別加算金合計 of S実行予算 up to the column's sum over the criterion; makes the
/// run's row when there is none. Runs in the caller's transaction.
void storeTypedTotal(store::Connection& cn, const domain::RunKey& run, const QString& column);

// ---- Coefficients ----------------------------------------------------------------------------------------

/// The column of a coefficient kind "01" to "18". Throws Error(Type) for any other code.
QString coefficientColumn(const QString& setteiMeisyou);

struct Coefficient {
    QString setteiMeisyou;
    QString name;  ///< as the company calls it
};
/// The coefficients of a criterion that are typed in at the run, or (correction) all others.
std::vector<Coefficient> listCoefficients(store::Connection& cn, const domain::RunKey& run,
                                          const QString& santeiHoushiki, bool correction);
/// Whether the other 算定方式 types in the same coefficient as well: exactly one row of the set-up says so.
bool sisterTypesIn(store::Connection& cn, const domain::RunKey& run, const QString& otherHoushiki,
                   const QString& setteiMeisyou);

// ---- Cells -----------------------------------------------------------------------------------------------

using domain::CellRules;
using domain::Refusal;

/// 金一封 and 特別加算金: 0 to 99,999,999 yen.
CellRules typedAmountRules();
/// 基礎額Ａ and 基礎額Ｂ: 1 to 99,999,999 yen.
CellRules baseAmountRules();
/// Coefficients: above 0, below 1000. The cell keeps the decimals that it does not show.
CellRules coefficientRules();

/// "未入力ヶ所があります" (title "未入力") for an empty text.
std::optional<Refusal> refuseEmpty(const QString& text);

/// The calculator: first ÷ second as whole numbers, 0 when one of the texts is "0"; formatted "##,##0.000".
/// Throws Error(Overflow) for numbers beyond 32 bits, Error(Type) for no number, Error(DivideByZero) where
/// the divisor is 0 in another spelling.
QString keisan(const QString& dividend, const QString& divisor);

}  // namespace prep
