#pragma once
#include "reports/list_title.h"

namespace forms {
struct GlobalRecord;
}

namespace reports {

/// A list of the whole company, made today.
ListTitle titleOfCompany(const forms::GlobalRecord& global, const QString& list);
/// A list of the run that is open: its 基準日, 配分区分 and 配分基準 as they stand in the global record.
ListTitle titleOfRun(const forms::GlobalRecord& global, const QString& list);

}  // namespace reports
