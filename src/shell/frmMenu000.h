#pragma once
#include "forms/menu_form.h"

namespace shell {

class FirstSteps;

/// メニュー: the top menu of an open company. Its load registers the company's name in the status bar, which
/// is the moment from which the company counts as open. Closing it leaves the company open: the main window
/// then offers the way back.
class frmMenu000 : public forms::MenuForm {
    Q_OBJECT
  public:
    frmMenu000(forms::House& house, QWidget* parent);
    void done(int result) override;

  protected:
    void activated() override;

  private:
    void layOut();
    void Form_Load();

    FirstSteps* steps_ = nullptr;
};

}  // namespace shell
