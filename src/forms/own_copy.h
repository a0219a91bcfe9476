#pragma once
#include "forms/screens.h"
#include "widgets/form.h"

namespace forms {

/// Before a command that can lose much: the program's own copy of the open company (company/backup.h), at
/// most one for a reason within ten minutes. Where it can't be made the user decides whether to go on; with
/// いいえ it throws store::Error. Called within a guard and outside of any work.
void keepOwnCopy(widgets::Form* screen, House& house, const QString& reason);

}  // namespace forms
