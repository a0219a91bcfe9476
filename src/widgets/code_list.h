#pragma once
#include <QListView>
#include <QString>
#include <vector>

class QStandardItemModel;

namespace widgets {

/// A list of (code, shown text), as a bound list: `boundText()` is the code of the chosen line, `text()` what it shows,
/// both empty when none is chosen. `clicked` comes for the mouse and for the keyboard alike.
class CodeList : public QListView {
    Q_OBJECT
  public:
    struct Item {
        QString code;
        QString text;
    };
    explicit CodeList(QWidget* parent = nullptr);

    void setItems(const std::vector<Item>& items);  ///< drops the choice
    void clearItems() { setItems({}); }
    int count() const;
    QString boundText() const;
    QString text() const;
    /// Chooses a line as a click does (chosen() is emitted); -1 drops the choice silently.
    void choose(int row);
    bool chooseCode(const QString& code);
    void setPlaceholder(const QString& text);  ///< shown while the list is empty

  Q_SIGNALS:
    void chosen();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

  private:
    QStandardItemModel* model_;
    QString placeholder_;
    bool silent_ = false;
};

}  // namespace widgets
