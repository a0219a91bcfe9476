#pragma once
#include <QAbstractTableModel>
#include <QStringList>
#include <QUndoCommand>
#include <functional>
#include <vector>

#include "domain/cell_rules.h"

namespace widgets {

/// A cell to fill in: its row, and which of the columns to fill it stands in, both from 0.
struct EditCell {
    int row = -1;
    int field = 0;
    bool operator==(const EditCell&) const = default;
};

/// What an EditTable shows: columns that say whose row it is, then the columns to fill in (its fields).
struct EditContent {
    struct Head {
        QString heading;
        bool right = false;  ///< amounts and numbers
    };
    std::vector<Head> heads;
    std::function<QString(int row, int head)> headText;  ///< asked for the cells in sight
    std::vector<domain::CellRules> fields;
    QStringList texts;  ///< of the fields, row by row
};

/// The rows of an edit table and what they come to. Texts are formatted for the cells in sight only.
class EditTableModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    using QAbstractTableModel::QAbstractTableModel;

    void reset(EditContent content);
    void setText(EditCell cell, const QString& text);
    const QString& text(EditCell cell) const { return content_.texts[place(cell)]; }
    QString shown(EditCell cell) const;     ///< in the field's format
    QString editable(EditCell cell) const;  ///< the same, with all the decimals that the format leaves out
    bool isChanged(EditCell cell) const;
    /// What the cell can't show: all decimals, and the value that it came with.
    QString further(EditCell cell) const;

    int fields() const { return static_cast<int>(content_.fields.size()); }
    const domain::CellRules& rules(int field) const;
    double total(int field) const { return totals_[static_cast<std::size_t>(field)]; }
    int changed() const { return changed_; }              ///< rows with a changed text
    int filled() const { return filled_; }                ///< rows with any text
    const EditCell& touched() const { return touched_; }  ///< the cell whose text was set last

    QModelIndex at(EditCell cell) const;
    /// The field of a column of the view; -1 for those that are not filled in.
    int fieldOf(int column) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    qsizetype place(EditCell cell) const { return qsizetype{cell.row} * fields() + cell.field; }
    int heads() const { return static_cast<int>(content_.heads.size()); }
    int alignment(int column) const;
    void count(int row, int sign);

    EditContent content_;
    QStringList original_;
    std::vector<double> totals_;
    int changed_ = 0;
    int filled_ = 0;
    EditCell touched_;
};

/// One step of undo: what was typed in one stay in a cell, or what was given to many at once.
class SetTexts : public QUndoCommand {
  public:
    struct Change {
        EditCell cell;
        QString before, after;
    };
    /// Steps of the same `stay` become one; 0 stays apart.
    SetTexts(EditTableModel* model, std::vector<Change> changes, int stay = 0);
    void undo() override;
    void redo() override;
    int id() const override { return stay_ ? 1 : -1; }
    bool mergeWith(const QUndoCommand* further) override;

  private:
    EditTableModel* model_;
    std::vector<Change> changes_;
    int stay_;
};

}  // namespace widgets
