#pragma once
#include "shell/ui_screens.h"
#include "widgets/code_list.h"
#include "widgets/form.h"

namespace prep {

/// Chooses the coefficient to type in (実行時入力) or to correct (修正).
class frmSJikkou03Sub : public widgets::Form {
    Q_OBJECT
  public:
    frmSJikkou03Sub(shell::House& house, QWidget* parent);

  private:
    void makeControls();
    void Form_Load();
    void Command1_Click();

    shell::House& house_;
    widgets::CodeList* list_ = nullptr;
};

}  // namespace prep
