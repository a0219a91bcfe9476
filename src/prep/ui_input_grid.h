#pragma once
#include <functional>
#include <optional>
#include <vector>

#include "forms/guard.h"
#include "forms/screens.h"
#include "prep/pasted_people.h"
#include "prep/ui_input_model.h"
#include "widgets/form.h"
#include "widgets/table.h"

class QLabel;
class QMenu;
class QPushButton;
class QUndoStack;
class QVBoxLayout;

namespace prep {

/// A list of employees with one column to fill in: typed text, or a choice from a list. The current row's
/// cell is open, so that typing starts at once; only rows in sight cost anything. Enter, Tab and Down go a
/// row down, Backtab and Up a row up (Enter and Tab leave the last row as in every form); with Shift held
/// they choose a block. One column from a spreadsheet fills downwards from the current row or is refused
/// whole; two and more go to their employees by 社員コード, after a preview. What was typed in one stay in a
/// cell, and each paste, is one step of undo. No cell is left before its text is admitted. Object name
/// Picture1, its scroll bar VScroll1, the open cell Text1_<row> or DataCombo1_<row>.
class InputGrid : public widgets::Table {
    Q_OBJECT
  public:
    enum Column { Code, Shimei, Syozoku, Yakusyoku, Value };
    /// How many rows are in sight at least; above that there is a scroll bar.
    static constexpr int kRowsInSight = 10;

    explicit InputGrid(QWidget* parent);
    ~InputGrid() override;

    void setContent(CellRules rules, std::vector<InputRow> rows);
    const std::vector<InputRow>& rows() const;
    const CellRules& rules() const;
    int filledRows() const;   ///< rows with any text
    int changedRows() const;  ///< rows whose text differs from the one they came with
    double total() const;     ///< the sum of what the rules count

    /// Makes the row current and puts the focus into its cell.
    void focusRow(int row);
    /// Types a text into the current row's cell.
    void enter(const QString& text);
    QUndoStack* undoStack() const { return undo_; }
    void undo();
    void redo();
    void copy();           ///< the values of the chosen block
    void copyWithHeads();  ///< the chosen block, or all rows, with employees and headings
    void paste();
    /// Judges the open cell's text as it is left: a box and the focus stays when it may not stand.
    bool judgeCell();

    /// Asked before the current row changes by keys; set by the form (its check on leaving).
    std::function<bool()> mayLeave;
    /// Told about each cell that opens: the form attaches its checks to it.
    std::function<void(QWidget* editor)> cellOpened;

  Q_SIGNALS:
    void changed();  ///< a text changed

  protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void updateGeometries() override;
    void changeEvent(QEvent* event) override;

  private:
    class Delegate;
    friend class Delegate;
    QWidget* makeEditor(QWidget* parent, int row);
    QWidget* makeTextCell(QWidget* parent, int row);
    QWidget* makeChoiceCell(QWidget* parent, int row);
    QWidget* editor() const;
    void showText(const QString& text);
    void openCell(int row);
    void closeCell(int row);
    void take(const QString& text);
    void markCell();
    bool moves(const QKeyEvent& key);
    bool goTo(int row, bool extend = false);
    bool stepOn(bool forward);
    std::vector<int> block() const;
    void showUndone();
    void pasteDown(const QStringList& column);
    void pasteByCode(const std::vector<PastedPerson>& people);
    void give(std::vector<SetTexts::Change> changes);
    std::optional<QString> pasteFault(const QStringList& texts) const;
    void keepRowsInSight();

    InputModel* model_;
    QUndoStack* undo_;
    int stay_ = 0;  // counts the stays in cells: what is typed in one of them is one step
    int open_ = -1;
    bool typed_ = false;   // the open cell holds what was typed since it was opened or left
    bool moving_ = false;  // the current row is changing
};

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
    void enter(const QString& text) { grid_->enter(text); }
    /// Writes the rows; runs in a transaction of its own, a nested one where one stands open already. An
    /// answer names a difference between the grid's employees and a table's rows: all is rolled back and the
    /// box tells it; the screen stays with what was typed.
    virtual std::optional<QString> store() = 0;

    store::Connection& cn() const;
    const std::vector<InputRow>& rows() const { return grid_->rows(); }
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
