#pragma once
#include <QDate>

#include "calc/run_budget.h"
#include "personnel/code_references.h"
#include "prep/snapshot.h"
#include "sample_company.h"
#include "store/connection.h"

/// The commands that change a company most, each between two known states, so that a broken run must show one
/// of both.
namespace durability {

enum class Command {
    Individual,
    Pool,
    Dates,
    AutoInput,
    Grid,
    Evaluation,
    PaymentStore,
    Import,
    Rename,
    Remove
};
inline constexpr Command kCommands[] = {
    Command::Individual, Command::Pool,         Command::Dates,  Command::AutoInput, Command::Grid,
    Command::Evaluation, Command::PaymentStore, Command::Import, Command::Rename,    Command::Remove};
/// These go through the companions' files too, one by one.
inline bool reachesCompanions(Command command) {
    return command == Command::Rename || command == Command::Remove;
}

/// A date that the sample company does not have.
inline QDate extraDate() {
    return QDate(2027, 7, 10);
}

/// Runs the command towards state `side` (0 or 1), one transaction as its screen has it. Calculations differ
/// in the rounding that they find; Dates imports the extra date (1) or deletes it (0); AutoInput finds other
/// coefficients, Grid other amounts, Evaluation other results and choices, PaymentStore another correction,
/// Import brings people in from a sheet and changes others; Rename gives somebody another code;
/// Remove takes somebody out (1) who was put in (0), of which the putting in is none of the program's
/// commands and not to be broken.
void runTowards(store::Connection& cn, Command command, int side);

/// The code on either side of Rename, of somebody whom every file knows.
inline const QString kRenamed[] = {QStringLiteral("000003"), QStringLiteral("900001")};
/// The company that the main connection is open on.
personnel::CompanyDatabases databasesOf(store::Connection& cn);

}  // namespace durability
