#pragma once
#include <array>

#include "criteria/criteria.h"
#include "prep/frmSSanteishikiSub.h"

namespace prep {

/// 算定方式指定: chooses the criterion and the 算定方式 whose inputs are typed in or corrected.
class frmSSanteishitei : public CriterionForm {
    Q_OBJECT
  public:
    frmSSanteishitei(shell::House& house, QWidget* parent);

  private:
    void DataList1_Click() override;
    void DataList2_Click() override;
    void Command1_Click() override;
    void hideOptions();
    void showOptions(const criteria::Kijun& kijun);
    void chooseOption(int index);
    void typeAmounts(criteria::Houshiki houshiki);
    void chooseItem(criteria::Houshiki houshiki);

    QWidget* options_;
    std::array<QRadioButton*, criteria::kHoushikiCount> option_{};
    criteria::Kijun kijun_;
};

}  // namespace prep
