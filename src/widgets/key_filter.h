#pragma once
#include <QString>

class QKeyEvent;
class QLineEdit;

namespace widgets {

/// The field of a date, a number or a code: what is typed is meant as it stands, so the input method is off
/// while it has the focus. Fields of Japanese text leave it as the user has it.
void typeDirectly(QLineEdit* edit);
/// typeDirectly() for a number or a code of these characters only (editing keys always work). Full-width
/// ones, typed, composed or pasted, become half-width as they arrive, before any check of the field sees
/// them. Other pasted or composed text is left to that check, which tells what is wrong with it.
void admitOnly(QLineEdit* edit, const QString& characters);
/// Whether the key would type something else than these characters, in either width.
bool isRefusedKey(const QKeyEvent& key, const QString& characters);

}  // namespace widgets
