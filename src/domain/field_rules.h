#pragma once
#include <QString>
#include <QtGlobal>
#include <optional>

namespace domain {

/// How many bytes the text takes in Windows-31J, the unit of every length limit: a half-width character
/// counts 1, a full-width one 2. A character that the code page lacks counts 2, as its replacement does.
qint32 byteCount(const QString& text);

/// The one check of a text field: what is wrong with it, or nothing. In this order: empty where that is not
/// allowed, a double quote, a single quote, longer than `maxBytes`. An allowed empty text is not checked
/// further. `label` names the field ("･･･会社名") and ends every message.
std::optional<QString> fieldFault(const QString& text, qint32 maxBytes, bool emptyAllowed,
                                  const QString& label);

}  // namespace domain
