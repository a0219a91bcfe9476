#pragma once
#include <array>
#include <optional>

#include "calc/run_budget.h"
#include "design/criteria.h"
#include "widgets/layout.h"

class QGridLayout;
class QLabel;
class QLineEdit;

namespace calc {

/// The two budgets of a run and what its payments come to: the budgets are typed in here, the totals shown.
/// It knows its texts and the rules of the amounts, nothing of tables. Controls Frame3, Text1 (予算総額),
/// Text2 (総額配分予算), Label4 to Label9, Label19, Label22 to Label25.
class BudgetBox : public widgets::Card {
    Q_OBJECT
  public:
    explicit BudgetBox(QWidget* parent);

    /// The budgets of a criterion and what of them it uses; the totals follow with showTotals().
    void bind(const RunBudget& row, const design::Kijun& kijun);
    /// The four sums as the row holds them; 0 where the criterion does not use that payment and none was run.
    /// Throws Error(Overflow) beyond the money range.
    void showTotals(const RunBudget& row);
    /// From now on the total of this payment is shown, whether the criterion uses it or not.
    void showTotalOf(design::Houshiki houshiki) { summed_[static_cast<std::size_t>(houshiki)] = true; }
    /// What is reckoned from the amounts in sight, after one of the budgets was typed; all in "##,##0".
    /// Throws as showTotals().
    void refreshTotals();
    /// Says that the inputs changed after the calculation.
    void showChange(bool changed);

    std::array<QLineEdit*, 2> boxes() const { return {budget_, poolBudget_}; }
    /// The check of a box that is left: empty becomes "0", what is wrong is told and false returned.
    bool admits(QLineEdit* box);

    struct Budgets {
        store::Money all, pool;
    };
    /// The budgets that may be stored; none while the criterion has no pool or one of them is wrong.
    std::optional<Budgets> budgets() const;
    store::Money poolBudget() const;

  private:
    QLabel* label(const QString& name, const QString& text = {});
    QLabel* labelOf(QLineEdit* box, const QString& name, const QString& text, const QString& mnemonic);
    QLineEdit* moneyBox(const QString& name);
    QGridLayout* makeGrid();
    void makeNotes(QGridLayout* grid);
    void dress(std::initializer_list<QLabel*> heads);
    void markOverBudget(const RunTotals& totals);
    QString problemOf(const QLineEdit* box) const;
    RunBudget shown() const;

    QLineEdit* budget_ = nullptr;
    QLineEdit* poolBudget_ = nullptr;
    std::array<QLabel*, 6> total_{};      ///< Label6
    std::array<QLabel*, 3> totalHead_{};  ///< Label7
    std::array<QLabel*, 2> notUsed_{};    ///< in the place of a hidden totalHead_: whose 0 stands there
    QLabel* overBudget_ = nullptr;
    QLabel* changed_ = nullptr;
    design::PaymentFlags summed_{};  ///< the payments whose total is shown
};

}  // namespace calc
