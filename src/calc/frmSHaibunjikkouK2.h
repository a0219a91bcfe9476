#pragma once
#include <QPointer>
#include <array>

#include "calc/payment_preview.h"
#include "calc/run_budget.h"
#include "calc/shikyuu_store.h"
#include "design/criteria.h"
#include "forms/guard.h"
#include "forms/screens.h"
#include "widgets/form.h"

class QFrame;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QRadioButton;
class QStackedLayout;

namespace design {
class CriterionPicker;
}
namespace reports {
struct ListTitle;
class SentSheet;
class SheetFolder;
}  // namespace reports

namespace calc {

class PaymentPanel;

/// 配分計算: one criterion of the current 基準日, its budget and totals, the choice of the 算定方式, the run,
/// and what shows its result: the printed list and the sheet.
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
    QWidget* makeOptions();
    QWidget* makeBudget();
    QHBoxLayout* makeResults();
    QHBoxLayout* makeClosing();
    QLineEdit* moneyBox(const QString& name);
    void dressTotals(std::initializer_list<QLabel*> heads);
    void connectEvents();
    void Form_Load();

    // Events, each told by the control's name.
    void DataList1_Click();
    void DataList2_Click();
    void Option1_Click(int index);
    bool Text_Validate(QLineEdit* box);
    QString problemOf(const QLineEdit* box) const;
    void Command1_Click();
    void Command4_Click();
    void Command5_Click();
    void Command6_Click();
    void Command7_Click();

    void dropCriterion();

    // Steps of DataList2_Click.
    void showOptions(const design::Kijun& kijun);
    void tellEmployees(bool any);
    void bindBudget(const design::Kijun& kijun);

    // Steps of Command1_Click.
    bool refused();
    bool inputsAgreed(design::Houshiki houshiki);
    void showChange();
    reports::ListTitle listTitle() const;
    bool run(store::Work& work, design::Houshiki houshiki);
    void confirmHoushiki(design::Houshiki houshiki);
    void tellFinished(design::Houshiki houshiki);

    bool act(const PaymentOutcome& outcome);
    void letRun();
    void openPanel();
    void closePanel();
    void showEffect();
    void fitWindow(int leastWidth);
    void showResults(bool show);
    void storeTypedBudget();
    void showTotals();
    void refresh_totals();
    void markOverBudget(const RunTotals& totals);
    RunBudget shownBudget() const;
    PaymentSimulation simulation() const;
    std::optional<design::Houshiki> chosenHoushiki() const;
    void chooseOption(int index);
    bool optionOffered(int index) const;
    store::Connection& cn() const;

    forms::House& house_;
    const reports::SheetFolder& sheets_;
    design::CriterionPicker* picker_ = nullptr;
    PaymentPanel* panel_ = nullptr;
    int panelRoom_ = 0;                ///< by how much the window grew for the panel
    QStackedLayout* stack_ = nullptr;  ///< the hint, and what a chosen criterion shows
    QFrame* frame1_ = nullptr;
    QFrame* frame3_ = nullptr;
    std::array<QRadioButton*, 4> option_{};
    std::array<QLabel*, 6> total_{};      ///< Label6
    std::array<QLabel*, 3> totalHead_{};  ///< Label7
    std::array<QLabel*, 2> notUsed_{};    ///< in the place of a hidden totalHead_: whose 0 stands there
    QLabel* overBudget_ = nullptr;
    std::array<QLabel*, 3> marker_{};  ///< Image1 to Image3
    QLabel* label3_ = nullptr;
    reports::SentSheet* sent_ = nullptr;
    QLabel* changed_ = nullptr;
    QLineEdit* text1_ = nullptr;
    QLineEdit* text2_ = nullptr;
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
    std::array<bool, design::kHoushikiCount> summed_{};  ///< the payments whose total is shown
    std::optional<domain::RunKey> run_;                  ///< the run whose budget row the screen holds
    QString hyougo_type_;
    std::optional<PaymentPreview> preview_;  ///< the run as it was when the panel opened
};

}  // namespace calc
