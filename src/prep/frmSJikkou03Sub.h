#pragma once
#include "forms/screens.h"
#include "widgets/code_list.h"
#include "widgets/form.h"

namespace prep {

/// Chooses the coefficient to type in (実行時入力) or to correct (修正).
class frmSJikkou03Sub : public widgets::Form {
    Q_OBJECT
  public:
    frmSJikkou03Sub(forms::House& house, QWidget* parent);

  private:
    void makeControls();
    void Form_Load();
    void Command1_Click();

    forms::House& house_;
    widgets::CodeList* list_ = nullptr;
};

}  // namespace prep
