#pragma once
#include <QString>
#include <vector>

#include "prep/auto_input.h"

namespace forms {
struct GlobalRecord;
}
class QDialog;
class QWidget;

namespace prep {

/// The preview of 自動入力判定 of the open run: a column per item that was automatic, all others blank.
QDialog* judgmentPreview(const store::Recordset& rows, const std::vector<JudgmentColumn>& columns,
                         const forms::GlobalRecord& global, QWidget* parent);

}  // namespace prep
