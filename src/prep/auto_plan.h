#pragma once
#include <vector>

#include "design/criteria.h"
#include "prep/auto_item.h"

namespace prep {

/// What automatic input would write, item by item; rebuilds IdoChuusyutsuMax3 and writes nothing else.
struct AutoPlan {
    AutoRun run;
    std::vector<AutoItem> items;
};
AutoPlan planAutoInput(store::Connection& cn, const domain::RunKey& run, design::Houshiki houshiki);

}  // namespace prep
