#pragma once
#include <QString>
#include <QtGlobal>

class QWidget;

namespace forms {

/// fieldFault() told in a box with the title "入力のエラー" and the stop icon. True when the text may stand.
bool check_field(QWidget* parent, const QString& text, qint32 maxBytes, bool emptyAllowed,
                 const QString& label);

}  // namespace forms
