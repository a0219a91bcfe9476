#pragma once
#include <QString>

class QKeyEvent;
class QLineEdit;

namespace widgets {

/// Typing admits these characters only (editing keys always work). Pasted text is left to the field's check,
/// which tells what is wrong with it.
void admitOnly(QLineEdit* edit, const QString& characters);
/// Whether the key would type something else than these characters.
bool isRefusedKey(const QKeyEvent& key, const QString& characters);

}  // namespace widgets
