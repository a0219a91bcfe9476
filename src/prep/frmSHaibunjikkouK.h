#pragma once
#include "design/criteria.h"
#include "forms/screens.h"
#include "prep/auto_input.h"
#include "store/work.h"
#include "widgets/form.h"

class QHBoxLayout;

namespace design {
class CriterionPicker;
class HoushikiOptions;
}  // namespace design

namespace prep {

/// 自動入力: fills what the design set-up of one criterion and 算定方式 declares automatic, for everybody of
/// the current 基準日, and lists what was found.
class frmSHaibunjikkouK : public widgets::Form {
    Q_OBJECT
  public:
    frmSHaibunjikkouK(forms::House& house, QWidget* parent);

  private:
    void makeControls();
    QHBoxLayout* makeButtons();
    void connectEvents();

    void DataList1_Click();
    void DataList2_Click();
    void Command1_Click();
    void Command4_Click();

    void dropCriterion();
    void tellState(bool employees, bool automatic);
    bool refused();
    bool confirmed(design::Houshiki houshiki);
    void fill(store::Work& work, design::Houshiki houshiki);
    void allowList(bool allowed);
    store::Connection& cn() const;

    forms::House& house_;
    design::CriterionPicker* picker_;
    design::HoushikiOptions* options_ = nullptr;
    QLabel* label3_ = nullptr;
    QLabel* image1_ = nullptr;
    QLabel* image2_ = nullptr;
    QLabel* image3_ = nullptr;
    QPushButton* command1_ = nullptr;
    QPushButton* command2_ = nullptr;
    QPushButton* command4_ = nullptr;

    /// What the guidance line says; Command1 tests it.
    enum class State { NothingChosen, Ready, NoEmployees, NothingAutomatic };
    State state_ = State::NothingChosen;
    AutoItems items_;  ///< what the last run filled: the list shows these columns
};

}  // namespace prep
