#pragma once
#include "forms/screens.h"
#include "widgets/form.h"

class QPushButton;

namespace widgets {
class CodeList;
}

namespace company {

/// 会社指定: the list of companies; opens the chosen one. When a company was opened, exec() closes this
/// screen, hides MENUの表示 of the main window and shows frmMenu000 modally over the main window before it
/// returns: the caller only shows this screen.
class frmDBSentaku : public widgets::Form {
    Q_OBJECT
  public:
    frmDBSentaku(forms::House& house, QWidget* parent);
    int exec() override;

  private:
    void build();
    void loadCompanies();
    void Command2_Click();

    forms::House& house_;
    widgets::CodeList* List1_ = nullptr;
};

}  // namespace company
