#pragma once
#include "design/criteria.h"
#include "prep/frmSSanteishikiSub.h"

namespace design {
class HoushikiOptions;
}

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
    void typeAmounts(design::Houshiki houshiki);
    void chooseItem(design::Houshiki houshiki);

    design::HoushikiOptions* options_;
    design::Kijun kijun_;
};

}  // namespace prep
