#pragma once
#include <functional>

#include "store/work.h"
#include "widgets/form.h"

namespace forms {

/// Every event procedure that touches data runs in here: the program's one failure style.
///
/// A failure (store::Error or another exception) is told once: with its plain description, or, where it took
/// back a labelled store::Work, with "処理中にエラーが発生しました。処理を取り消します。" under the title
/// "取消". In the latter case, and wherever the failure names somebody, the form says the cause beside its
/// buttons until the next procedure begins. Before any box the work is rolled back and `bringBack` has
/// brought the screen in step with the tables again: behind a box everything is painted. Then the form's
/// pointer goes back to default.
///
/// A procedure that leaves a work open, or forgets to end a labelled one, is a fault of the program: what it
/// wrote is taken back and told as "取消", so that it can't swallow the works that follow.
///
/// True when the procedure ended without failure. Never throws.
bool guarded(widgets::Form* form, const std::function<void()>& procedure,
             const std::function<void()>& bringBack = {});
/// The same for what brings a screen back after a failure: the cause that stands there stays.
bool restored(widgets::Form* form, const std::function<void()>& procedure);

}  // namespace forms
