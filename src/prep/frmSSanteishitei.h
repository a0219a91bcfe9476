#pragma once
#include <array>

#include "design/criteria.h"
#include "prep/frmSSanteishikiSub.h"

namespace prep {

/// 算定方式指定: chooses the criterion and the 算定方式 whose inputs are typed in or corrected.
class frmSSanteishitei : public CriterionForm {
    Q_OBJECT
  public:
    frmSSanteishitei(forms::House& house, QWidget* parent);

  private:
    void DataList1_Click() override;
    void DataList2_Click() override;
    void Command1_Click() override;
    void hideOptions();
    void showOptions(const design::Kijun& kijun);
    void chooseOption(int index);
    void typeAmounts(design::Houshiki houshiki);
    void chooseItem(design::Houshiki houshiki);

    QWidget* options_;
    std::array<QRadioButton*, design::kHoushikiCount> option_{};
    design::Kijun kijun_;
};

}  // namespace prep
