#pragma once
#include <QSize>
#include <QWidget>
#include <vector>

#include "personnel/people_search.h"

class QLabel;
class QLineEdit;

namespace widgets {
class RowsModel;
class Table;
}  // namespace widgets

namespace personnel {

/// The list of people beside the employee record: a search box (Text1), the table DataGrid1 of 社員Code, 氏名
/// and フリガナ, and how many there are (lblFound). The table shows the people that meet what is typed; the
/// moves go through these. A person who is not among them any more gives way to the first one found.
class PeopleList : public QWidget {
    Q_OBJECT
  public:
    explicit PeopleList(QWidget* form);

    /// Rows count from 0, as those of the form. What is typed in the search box stays in force.
    void setPeople(int count, PeopleSearch::Text text);
    /// The form shows this row; silent. -1 for none.
    void select(int row);
    QWidget* table() const;
    QLineEdit* searchBox() const { return search_; }
    bool findsNobody() const { return found_.empty(); }
    QSize sizeHint() const override;  ///< wide enough for the longest names and readings

    enum class Move { First, Previous, Next, Last };
    void go(Move to);  ///< beeps where there is nobody further

  Q_SIGNALS:
    void chosen(int row);
    void opened();    ///< the chosen row, by Enter or a double-click
    void searched();  ///< what is typed changed, and with it perhaps who is found

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;  ///< of the search box: Escape empties it

  private:
    void layOut();
    void search();
    void showFound(std::vector<int> found);
    int widthOf(int characters) const;
    int placeOf(int row) const;  ///< in the table; -1 when the row is not among the found

    PeopleSearch people_;
    PeopleSearch::Text text_;
    std::vector<int> found_;  ///< ascending
    int row_ = -1;
    QLineEdit* search_;
    widgets::Table* table_;
    widgets::RowsModel* model_;
    QLabel* count_;
};

}  // namespace personnel
