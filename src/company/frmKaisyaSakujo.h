#pragma once
#include <optional>

#include "company/company_files.h"
#include "forms/screens.h"
#include "widgets/form.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace widgets {
class CodeList;
}

namespace company {

/// 会社削除: shows what is going to vanish, wants the company's name typed, makes a last backup and removes
/// the company as a whole.
class frmKaisyaSakujo : public widgets::Form {
    Q_OBJECT
  public:
    frmKaisyaSakujo(forms::House& house, QWidget* parent);

  private:
    void build();
    void loadCompanies();
    void showChosen();
    bool mayRemove(const QString& name);
    void Command1_Click();

    forms::House& house_;
    widgets::CodeList* list1_ = nullptr;
    QLabel* about_ = nullptr;
    QLineEdit* typed_ = nullptr;
    QCheckBox* backup_ = nullptr;
    QPushButton* remove_ = nullptr;
};

}  // namespace company
