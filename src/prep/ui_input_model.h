#pragma once
#include <QAbstractTableModel>
#include <QUndoCommand>
#include <vector>

#include "prep/run_input.h"

namespace prep {

/// The rows of an input grid and what they come to. Texts are formatted for the cells in sight only.
class InputModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    using QAbstractTableModel::QAbstractTableModel;

    void reset(CellRules rules, std::vector<InputRow> rows);
    void setText(int row, const QString& text);
    const QString& text(int row) const { return rows_[static_cast<std::size_t>(row)].text; }
    QString shown(int row) const;     ///< in the cell's format
    QString editable(int row) const;  ///< the same, with all the decimals that the format leaves out
    bool isChanged(int row) const;
    /// What the cell can't show: all decimals, and the value that it came with.
    QString further(int row) const;

    const CellRules& rules() const { return rules_; }
    const std::vector<InputRow>& rows() const { return rows_; }
    double total() const { return total_; }
    int changed() const { return changed_; }
    int filled() const { return filled_; }
    int touched() const { return touched_; }  ///< the row whose text was set last

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    bool roundsOff(int row) const;
    int alignment(int column) const;
    void count(const QString& text, int sign);

    CellRules rules_;
    std::vector<InputRow> rows_;
    QStringList original_;
    double total_ = 0;
    int changed_ = 0;
    int filled_ = 0;  ///< rows with any text
    int touched_ = 0;
};

/// One step of undo: what was typed in one stay in a cell, or one paste.
class SetTexts : public QUndoCommand {
  public:
    struct Change {
        int row;
        QString before, after;
    };
    /// Steps of the same `stay` become one; 0 stays apart.
    SetTexts(InputModel* model, std::vector<Change> changes, int stay = 0);
    void undo() override;
    void redo() override;
    int id() const override { return stay_ ? 1 : -1; }
    bool mergeWith(const QUndoCommand* further) override;

  private:
    InputModel* model_;
    std::vector<Change> changes_;
    int stay_;
};

}  // namespace prep
