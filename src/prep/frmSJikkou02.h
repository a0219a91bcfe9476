#pragma once
#include "prep/ui_input_form.h"

namespace prep {

/// 基礎額Ａ or 基礎額Ｂ of 個人別計算 or 総額配分, one amount per employee.
class frmSJikkou02 : public InputGridForm {
    Q_OBJECT
  public:
    frmSJikkou02(forms::House& house, QWidget* parent);

  private:
    std::optional<QString> store() override;
    InputTarget target() const;
};

}  // namespace prep
