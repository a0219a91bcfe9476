#pragma once
#include "prep/evaluation_import.h"
#include "prep/ui_input_form.h"

namespace prep {

/// 評価結果の入力: each employee's grade, chosen from the criterion's vocabulary. One grade goes to every
/// table that needs it.
class frmSJikkou04 : public InputGridForm {
    Q_OBJECT
  public:
    frmSJikkou04(forms::House& house, QWidget* parent);

  private:
    void Form_Load();
    std::optional<QString> store() override;

    GradeUses uses_;
};

}  // namespace prep
