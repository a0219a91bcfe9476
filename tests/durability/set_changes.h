#pragma once
#include <QString>

namespace durability {

/// What replaces a company's set of files as a whole, or its backup.
enum class SetChange { Create, Remove, BackUp, Restore, Compact, Lock, Unlock, Move };
inline constexpr int kSetChanges = 8;
inline const QString kSetPassword = QStringLiteral("ひみつの言葉");
inline const QString kSetCompany = QStringLiteral("甲社");

/// Does it once in a program's folder, as a user's command does.
void runSetChange(SetChange change, const QString& programDir);

}  // namespace durability
