#pragma once
#include "masters/master_kinds.h"
#include "reports/report.h"

namespace masters {

/// The printed list of a master, in the order of its codes. `company` stands under the title.
reports::Report makeMasterReport(store::Connection& cn, const MasterKind& kind, const QString& company);

}  // namespace masters
