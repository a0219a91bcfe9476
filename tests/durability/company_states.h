#pragma once
#include "personnel/code_references.h"
#include "store/connection.h"

/// The commands that change a company most, each between two known states, so that a broken run must show one
/// of both.
namespace durability {

struct Command {
    /// Goes towards state `side` (0 or 1), in transactions as its screen has them. Calculations differ in the
    /// rounding that they find, automatic input in its coefficients, grid, evaluation and correction in what
    /// is typed; dates and people of a sheet come (1) and go (0); somebody gets another code, or is taken out
    /// (1) who was put in (0).
    void (*runTowards)(store::Connection& cn, int side);
    bool reachesCompanions = false;  ///< through their files too, one by one
    bool goesBack = true;            ///< otherwise the way to 0 is none of the program's and not to be broken
};
inline constexpr int kCommandCount = 10;
extern const Command kCommands[kCommandCount];

/// The code on either side of the rename, of somebody whom every file knows.
inline const QString kRenamed[] = {QStringLiteral("000003"), QStringLiteral("900001")};
/// The company that the main connection is open on.
personnel::CompanyDatabases databasesOf(store::Connection& cn);

}  // namespace durability
