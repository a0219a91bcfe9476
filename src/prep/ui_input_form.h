#pragma once
#include <optional>
#include <vector>

#include "forms/guard.h"
#include "forms/screens.h"
#include "prep/run_input.h"
#include "widgets/form.h"

class QLabel;
class QPushButton;
class QVBoxLayout;

namespace prep {

class InputGrid;

/// The 算定方式 that the global record carries: 総額配分 for "2", else 個人別計算; its name and its run
/// table.
QString methodName(const forms::GlobalRecord& global);
RunTable methodTable(const forms::GlobalRecord& global);

/// What the screens with such a grid have in common: Label8 (criterion and number of employees), the grid,
/// Label5 (guidance), the running total, Command1 更新(&U), Command2 キャンセル(&C), Command3 help, a menu
/// with undo, copy and paste; Esc and Command2 ask before changes are thrown away. A screen calls load() and
/// says how it stores.
class InputGridForm : public widgets::Form {
    Q_OBJECT
  public:
    /// What exec() answers when a save failed and the screen was left without another one that went through.
    static constexpr int SaveFailed = 2;
    void reject() override;

  protected:
    InputGridForm(const QString& name, forms::House& house, QWidget* parent);

    /// Shows the rows and puts the focus into the first cell. Until then there is nothing to save.
    void load(CellRules rules, std::vector<InputRow> rows);
    /// Puts a panel between the grid and the buttons.
    void addPanel(QWidget* panel);
    /// Types a text into the cell of the current employee.
    void enter(const QString& text);
    /// Writes the rows; runs in a transaction of its own, a nested one where one stands open already. An
    /// answer names a difference between the grid's employees and a table's rows: all is rolled back and the
    /// box tells it; the screen stays with what was typed.
    virtual std::optional<QString> store() = 0;

    store::Connection& cn() const;
    std::vector<InputRow> rows() const;  ///< with what the cells hold now
    forms::House& house_;

  private:
    void build();
    QPushButton* makeEditMenu();
    void Command1_Click();
    bool refuses();
    void showTotal();

    InputGrid* grid_;
    QLabel* label8_;
    QLabel* label5_;
    QLabel* total_;
    QVBoxLayout* panels_;
    QPushButton* command1_ = nullptr;
    QPushButton* command2_ = nullptr;
    QPushButton* command3_ = nullptr;
    bool saveFailed_ = false;
};

}  // namespace prep
