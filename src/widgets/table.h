#pragma once
#include <QAbstractTableModel>
#include <QString>
#include <QTableView>
#include <functional>
#include <vector>

namespace widgets {

/// The look of every table: readable row height, fixed header, right-aligned amounts, whole rows selected, an empty
/// state that says what to do next. Only visible rows cost anything.
class Table : public QTableView {
    Q_OBJECT
  public:
    explicit Table(QWidget* parent = nullptr);
    void setPlaceholder(const QString& text);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString placeholder_;
};

/// A read-only model over rows that live elsewhere: a count and a text per cell. `sortKey` (optional) makes a
/// QSortFilterProxyModel sort by value instead of by text.
class RowsModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    struct Column {
        QString heading;
        bool right = false;
    };
    static constexpr int SortRole = Qt::UserRole + 1;

    RowsModel(std::vector<Column> columns, QObject* parent = nullptr);
    void setRows(int count, std::function<QString(int row, int column)> text,
                 std::function<QVariant(int row, int column)> sortKey = {});
    void refresh();  ///< the texts changed, the count did not

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    std::vector<Column> columns_;
    int count_ = 0;
    std::function<QString(int, int)> text_;
    std::function<QVariant(int, int)> sortKey_;
};

}  // namespace widgets
