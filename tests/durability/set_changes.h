#pragma once
#include <QString>

namespace durability {

/// What replaces a company's set of files as a whole, or its backup.
enum class SetChange { Create, Remove, BackUp, Restore, Compact };
inline constexpr int kSetChanges = 5;
inline const QString kSetCompany = QStringLiteral("甲社");

/// Does it once in a program's folder, as a user's command does.
void runSetChange(SetChange change, const QString& programDir);

}  // namespace durability
