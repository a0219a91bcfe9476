#pragma once
#include <QAbstractTableModel>
#include <functional>
#include <optional>

#include "store/recordset.h"

namespace forms {

/// The rows of a record form as a model that owns them: what a list shows and what the form reads are the
/// same snapshot at every moment, and its exchange is announced. A row that is written or removed stays as it
/// was read until the rows are read anew.
class RecordRows : public QAbstractTableModel {
    Q_OBJECT
  public:
    using Text = std::function<QString(int row, int column)>;
    explicit RecordRows(QObject* parent) : QAbstractTableModel(parent) {}

    /// The columns of the list; `text` is asked for the cells in sight only.
    void setColumns(QStringList headings, Text text);
    void take(store::Recordset rows);
    bool known() const { return rows_.has_value(); }  ///< false until the first reading went through
    const store::Recordset& rows() const { return *rows_; }
    int count() const { return rows_ ? rows_->recordCount() : 0; }
    void refresh();  ///< the texts changed, the rows did not

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    std::optional<store::Recordset> rows_;
    QStringList headings_;
    Text text_;
};

}  // namespace forms
