#pragma once
#include <functional>
#include <optional>
#include <vector>

#include "widgets/edit_table_model.h"
#include "widgets/table.h"

class QUndoStack;

namespace widgets {

/// A table with one column to fill in, or several: typed text, or a choice from a list. The current cell is
/// open, so that typing starts at once; only rows in sight cost anything.
///
/// Enter goes a row down, Up, Down, Page Up, Page Down, Ctrl+Home and Ctrl+End move in the column; with Shift
/// held they choose a block of rows. Tab and Backtab go through the fields of a row and on to the next row.
/// Enter and Tab leave the last cell as in every form. Left, Right, Home and End are the cell's own.
///
/// A column from a spreadsheet fills downwards from the current cell, several columns fill a block to its
/// right; either goes in whole or not at all. What was typed in one stay in a cell, and each change of many
/// cells, is one step of undo. No cell is left before its text is admitted. The open cell is named
/// Text<field from 1>_<row> or DataCombo<field from 1>_<row>.
class EditTable : public Table {
    Q_OBJECT
  public:
    /// How many rows are in sight at least; above that there is a scroll bar.
    static constexpr int kRowsInSight = 10;

    explicit EditTable(QWidget* parent);
    ~EditTable() override;

    void setContent(EditContent content);
    int rowCount() const { return model_->rowCount(); }
    const QString& text(int row, int field = 0) const { return model_->text({row, field}); }
    const domain::CellRules& rules(int field = 0) const { return model_->rules(field); }
    int filledRows() const { return model_->filled(); }
    int changedRows() const {
        return model_->changed();
    }  ///< rows with a text that differs from the one they came with
    double total(int field = 0) const { return model_->total(field); }  ///< the sum of what the rules count

    /// Makes the cell current and puts the focus into it.
    void focusCell(EditCell cell);
    /// The same in the column that is open.
    void focusRow(int row) { focusCell({row, open_.field}); }
    /// Types a text into the current cell.
    void enter(const QString& text);
    struct Given {
        EditCell cell;
        QString text;
    };
    /// Gives texts to many cells in one step of undo; what makes no difference stays as it is. Nothing is
    /// judged.
    void give(const std::vector<Given>& texts);

    QUndoStack* undoStack() const { return undo_; }
    void undo();
    void redo();
    void copy();  ///< the texts of the chosen rows
    void
    copyWithHeads();  ///< the chosen rows, or all of them, with what stands before the fields and headings
    void paste();
    /// Judges the open cell's text as it is left: a box and the focus stays when it may not stand.
    bool judgeCell();

    /// Asked before the current cell changes by keys; set by the form (its check on leaving).
    std::function<bool()> mayLeave;
    /// Told about each cell that opens: the form attaches its checks to it.
    std::function<void(QWidget* editor)> cellOpened;
    /// Shows why a text is refused; a paste that does not happen is a warning.
    std::function<void(const QString& text, const QString& title, bool warning)> tell;

  Q_SIGNALS:
    void changed();  ///< a text changed

  protected:
    /// Whose row it is, for messages and for those who can't see it.
    virtual QString rowName(int row) const;
    /// Takes a clipboard text in a way of its own; false leaves it to the table.
    virtual bool takesPaste(const QString& clipboard);

    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void updateGeometries() override;
    void changeEvent(QEvent* event) override;

  private:
    class Delegate;
    friend class Delegate;
    QWidget* makeEditor(QWidget* parent, EditCell cell);
    QWidget* makeTextCell(QWidget* parent, EditCell cell);
    QWidget* makeChoiceCell(QWidget* parent, EditCell cell);
    QWidget* editor() const;
    bool isOpen() const { return open_.row >= 0; }
    bool offersChoices() const { return !rules(open_.field).choices.isEmpty(); }
    void showText(const QString& text);
    void showOpenCell();
    void openCell(EditCell cell);
    void closeCell(EditCell cell);
    void take(const QString& text);
    void markCell();
    bool moves(const QKeyEvent& key);
    bool goTo(EditCell cell, bool extend = false);
    bool goDown(int row, bool extend);
    bool stepOn(bool forward, bool alongRow);
    std::vector<int> block() const;
    void showUndone();
    std::optional<QString> pasteFault(const QList<QStringList>& lines) const;
    void keepRowsInSight();

    EditTableModel* model_;
    QUndoStack* undo_;
    int stay_ = 0;  // counts the stays in cells: what is typed in one of them is one step
    EditCell open_;
    bool typed_ = false;   // the open cell holds what was typed since it was opened or left
    bool moving_ = false;  // the current cell is changing
};

}  // namespace widgets
