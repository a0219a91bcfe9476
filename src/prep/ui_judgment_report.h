#pragma once
#include <QString>
#include <vector>

#include "prep/auto_input.h"

class QDialog;
class QWidget;

namespace prep {

/// The preview of 自動入力判定: a column per item that was automatic, all others blank. `line` stands under
/// the title.
QDialog* judgmentPreview(const store::Recordset& rows, const std::vector<JudgmentColumn>& columns,
                         const QString& line, QWidget* parent);

}  // namespace prep
