#pragma once
#include <QAbstractTableModel>
#include <QString>
#include <QTableView>
#include <functional>
#include <vector>

namespace widgets {

/// The look of every table: readable row height, fixed header, right-aligned amounts, whole rows selected
/// (one; callers that allow more set the selection mode), an empty state that says what to do next. Tab
/// leaves the table, Ctrl+C copies the selection as tab-separated text. Enter and a double-click open the
/// current row; where nobody takes opened(), Enter moves on as in a field. Only visible rows cost anything.
class Table : public QTableView {
    Q_OBJECT
  public:
    explicit Table(QWidget* parent = nullptr);
    void setPlaceholder(const QString& text);
    /// Widths from the headings and the rows in sight. Happens by itself at the first show and when a model
    /// is set or reset; callers that set widths of their own switch that off.
    void fitColumns();
    void setAutoFit(bool on) { autoFit_ = on; }
    /// The columns that become narrower, the first one first, before the last column leaves the sight. What
    /// is cut off there shows as a tool tip.
    void setGivingWay(std::vector<int> columns) { givingWay_ = std::move(columns); }

    void setModel(QAbstractItemModel* model) override;

  Q_SIGNALS:
    void opened();

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void refit();
    void giveWay(int lack);
    void setRowHeight();
    QString selectedText() const;

    QString placeholder_;
    std::vector<int> givingWay_;
    QMetaObject::Connection resets_;
    bool autoFit_ = true;
    bool fitting_ = false;
};

/// A read-only model over rows that live elsewhere: a count and a text per cell. `sortKey` (optional) makes a
/// QSortFilterProxyModel sort by value (its sort role set to SortRole) instead of by text.
class RowsModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    struct Column {
        QString heading;
        bool right = false;  ///< amounts and numbers
    };
    static constexpr int SortRole = Qt::UserRole + 1;

    explicit RowsModel(std::vector<Column> columns, QObject* parent = nullptr);
    /// `text` is called for the cells in sight, as long as the model lives or until the next setRows().
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
