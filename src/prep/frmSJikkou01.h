#pragma once
#include "prep/ui_input_form.h"

namespace prep {

/// 金一封 or 特別加算金: one amount per employee, typed in at the run.
class frmSJikkou01 : public InputGridForm {
    Q_OBJECT
  public:
    frmSJikkou01(forms::House& house, QWidget* parent);

  private:
    std::optional<QString> store() override;
    InputTarget target() const;
};

}  // namespace prep
