#pragma once
#include <QDate>

#include "calc/run_budget.h"
#include "prep/snapshot.h"
#include "sample_company.h"
#include "store/connection.h"

/// The commands that change a company most, each between two known states, so that a broken run must show one
/// of both.
namespace durability {

enum class Command { Individual, Pool, Dates, AutoInput, Grid, Evaluation, PaymentStore, Rename, Remove };
inline constexpr Command kCommands[] = {Command::Individual,   Command::Pool,   Command::Dates,
                                        Command::AutoInput,    Command::Grid,   Command::Evaluation,
                                        Command::PaymentStore, Command::Rename, Command::Remove};

/// A date that the sample company does not have.
inline QDate extraDate() {
    return QDate(2027, 7, 10);
}

/// Runs the command towards state `side` (0 or 1), one transaction as its screen has it. Calculations differ
/// in the rounding that they find; Dates imports the extra date (1) or deletes it (0); AutoInput finds other
/// coefficients, Grid other amounts, Evaluation other results and choices, PaymentStore another correction,
/// Rename another code for the first employee; Remove takes somebody out (1) who was put in (0).
void runTowards(store::Connection& cn, Command command, int side);

}  // namespace durability
