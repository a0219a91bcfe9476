#pragma once
#include <QString>

class QKeyEvent;
class QLineEdit;

namespace widgets {

/// The field of a number or a code: the input method is off while it has the focus, and typing admits these
/// characters only (editing keys always work). Full-width ones, typed, composed or pasted, become half-width
/// as they arrive, before any check of the field sees them. Other pasted or composed text is left to that
/// check, which tells what is wrong with it.
void admitOnly(QLineEdit* edit, const QString& characters);
/// Whether the key would type something else than these characters, in either width.
bool isRefusedKey(const QKeyEvent& key, const QString& characters);

}  // namespace widgets
