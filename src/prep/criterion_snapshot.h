#pragma once
#include "domain/run_key.h"
#include "prep/snapshot.h"
#include "store/connection.h"

namespace prep {

/// Rebuilds IdoChuusyutsuMax3: the employees of one criterion with their position in force at the date and
/// their names, in the order of Clng(社員Code), for the grids and the automatic input. `table` holds the rows
/// of the run. Who has a row there but stands no longer in the snapshot is left out; an employee counts once.
/// Codes that their master does not know leave the name empty. All or nothing: in a transaction of its own,
/// or in the caller's when one is open. The snapshot (IdoChuusyutsuMax2) must be that of the run's date.
void SelectIntoX3(store::Connection& cn, const domain::RunKey& run, RunTable table = RunTable::KojinBetsu);

}  // namespace prep
