#pragma once
#include <optional>

#include "prep/auto_item.h"

namespace prep {

using design::Base;

/// 基礎額Ａ or 基礎額Ｂ of everybody as the design set-up declares it: the sum of the employee's wage items
/// (設定方法 "3"), or one amount for all (設定方法 "2"), which wins when both are set up. None when the base
/// is typed in. At most five items of each kind; a sixth is an error. The latest base pay up to the reference
/// date decides the wage date, for the allowances too. An item counts when exactly one row has it at that
/// date. Who has nothing gets 0 and ×: the earlier value is gone.
std::optional<AutoItem> kisogaku(const AutoRun& run, Base base);

}  // namespace prep
