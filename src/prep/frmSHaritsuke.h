#pragma once
#include "prep/pasted_people.h"
#include "widgets/form.h"

namespace prep {

/// 社員コードで貼り付け: what a pasted block would give to whom, before anything changes. Accepted where the
/// user wants it; offered only where no line is refused and somebody's value changes.
class frmSHaritsuke : public widgets::Form {
    Q_OBJECT
  public:
    frmSHaritsuke(const std::vector<PastedPerson>& people, const CellRules& rules, QWidget* parent);
};

}  // namespace prep
