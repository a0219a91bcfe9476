#pragma once
#include <array>
#include <optional>

#include "calc/ui_payment_side.h"
#include "design/criteria.h"
#include "forms/screens.h"
#include "widgets/form.h"

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedLayout;

namespace design {
class CriterionPicker;
class HoushikiOptions;
}  // namespace design
namespace reports {
class SentSheet;
class SheetFolder;
}  // namespace reports

namespace calc {

class BudgetBox;
class RunCalculation;
struct ShownRun;

/// 配分計算: one criterion of the current 基準日, the choice of the 算定方式, the run, and what shows its
/// result. The screen leads from step to step; its parts are the choice (design::HoushikiOptions), budgets
/// and totals (BudgetBox), 支給係数修正 (PaymentSide) and the outputs (ui_run_output).
class frmSHaibunjikkouK2 : public widgets::Form {
    Q_OBJECT
  public:
    frmSHaibunjikkouK2(forms::House& house, const reports::SheetFolder& sheets, QWidget* parent);

  protected:
    void place() override;
    void activated() override;
    void done(int result) override;

  private:
    // The screen's parts, made once.
    void makeControls();
    QWidget* makeRun();
    QHBoxLayout* makeResults();
    QHBoxLayout* makeClosing();
    void connectEvents();
    void Form_Load();

    // Events, each told by the control's name.
    void DataList1_Click();
    void DataList2_Click();
    void Option1_Click(design::Houshiki houshiki);
    bool Text_Validate(QLineEdit* box);
    void Command1_Click();
    void Command4_Click();
    void Command5_Click();
    void Command6_Click();
    void Command7_Click();

    void dropCriterion();
    void tellEmployees(bool any, bool computes);
    void showResults(bool show);
    void storeTypedBudget();
    void showTotals();
    ShownRun shownRun();

    // Steps of Command1_Click.
    bool refused();
    bool inputsAgreed(design::Houshiki houshiki);
    bool run(RunCalculation& calculation, design::Houshiki houshiki);
    void confirmHoushiki(design::Houshiki houshiki);
    void tellFinished(design::Houshiki houshiki);

    store::Connection& cn() const;

    forms::House& house_;
    const reports::SheetFolder& sheets_;
    design::CriterionPicker* picker_ = nullptr;
    QStackedLayout* stack_ = nullptr;  ///< the hint, and what a chosen criterion shows
    design::HoushikiOptions* options_ = nullptr;
    BudgetBox* budget_ = nullptr;
    std::optional<PaymentSide> payment_;  ///< there as soon as the controls are
    std::array<QLabel*, 3> marker_{};     ///< Image1 to Image3
    QLabel* label3_ = nullptr;
    reports::SentSheet* sent_ = nullptr;
    QPushButton* command1_ = nullptr;
    QPushButton* command2_ = nullptr;
    QPushButton* command4_ = nullptr;
    QPushButton* command5_ = nullptr;
    QPushButton* command6_ = nullptr;
    QPushButton* command7_ = nullptr;

    /// What the second list stands on; the status line shows it and Command1 tests it.
    enum class State { NothingChosen, Ready, NoEmployees, NothingToCompute };
    State state_ = State::NothingChosen;
    design::Kijun kijun_;
    std::optional<domain::RunKey> run_;  ///< the run whose budget row the screen holds
};

}  // namespace calc
