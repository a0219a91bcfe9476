#pragma once
#include <QString>
#include <array>

#include "design/setup.h"
#include "domain/run_key.h"
#include "store/connection.h"

/// What is to be typed in under one 算定方式 of a criterion: the four items 基礎額Ａ, 基礎額Ｂ, 係数,
/// 支給係数.
namespace prep {

enum class EntryPurpose {
    RunTimeInput,  ///< 実行時入力: items that the design set-up leaves to the run
    Correction,    ///< 修正: items that were filled automatically or uniformly
};

inline constexpr int kEntryItemCount = 4;

/// Which items are offered, in the order 基礎額Ａ, 基礎額Ｂ, 係数, 支給係数. 支給係数 exists for 個人別計算
/// only; a criterion without any coefficient offers nothing.
std::array<bool, kEntryItemCount> offeredItems(store::Connection& cn, const domain::RunKey& run,
                                               const QString& santeiHoushiki, EntryPurpose purpose);

using design::Base;

/// True when no coefficient acts on the base any more although the base is set up: its set-up is of no use.
bool baseIsOrphaned(store::Connection& cn, const domain::RunKey& run, const QString& santeiHoushiki,
                    Base base);
/// Removes the set-up of the base (S基礎額設定, S基礎額基本給, S基礎額手当), all or nothing.
void removeBaseSetup(store::Connection& cn, const domain::RunKey& run, const QString& santeiHoushiki,
                     Base base);

}  // namespace prep
