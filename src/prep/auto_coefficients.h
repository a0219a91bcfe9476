#pragma once
#include <optional>

#include "prep/auto_item.h"

namespace prep {

/// The coefficients that the criterion declares automatic (入力区分Code "2") on base A, base B or both, each
/// looked up in its table by the employee's own value. The look-up is exact: a table holds single values, no
/// ranges. Without a value or a row of it the employee keeps the coefficient and gets ×.
/// 評価係数 goes by the grade, of several rows the last one; once somebody was matched, everybody after in
/// the order of the run is: who has no known grade takes over the coefficient of the last match before.
/// Throws store::Error for an employee who is missing in IdoChuusyutsuMax3 (or 履歴書テーブル), where the key
/// comes from there.
std::vector<AutoItem> keisuu(const AutoRun& run);

/// 支給係数 by grade (設定方法 "3", with the same rule), or one for all (設定方法 "2"), which wins. None when
/// it is typed in. Exists in S実行個人別計算 only.
std::optional<AutoItem> keisuu_shikyuu(const AutoRun& run);

}  // namespace prep
