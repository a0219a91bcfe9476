#pragma once
#include <QListView>
#include <QString>
#include <vector>

class QStandardItemModel;

namespace widgets {

/// A list of (code, shown text), as a bound list: `boundText()` is the code of the chosen line, `text()` what
/// it shows, both empty when none is chosen. chosen() comes once per choice, for the mouse (when the button
/// comes up) and for the keyboard (arrow keys, typed first letters) alike; a click on the line already chosen
/// chooses it again. Enter and a double-click open the chosen line; where nobody takes opened(), Enter moves
/// on as in a field.
class CodeList : public QListView {
    Q_OBJECT
  public:
    struct Item {
        QString code;
        QString text;
    };
    explicit CodeList(QWidget* parent = nullptr);

    void setItems(const std::vector<Item>& items);  ///< drops the choice, silently
    void clearItems() { setItems({}); }
    int count() const;
    int row() const;  ///< the chosen line from 0, -1 for none
    QString boundText() const;
    QString text() const;
    /// Chooses a line as a click does (chosen() is emitted); -1 drops the choice silently.
    void choose(int row);
    /// The same by code; false, and nothing changes, when no line has it.
    bool chooseCode(const QString& code);
    void setPlaceholder(const QString& text);  ///< shown while the list is empty

  Q_SIGNALS:
    void chosen();
    void opened();

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;

  private:
    QStandardItemModel* model_;
    QString placeholder_;
    bool silent_ = false;
    bool pressed_ = false;  // between press and release the choice is not final
};

}  // namespace widgets
