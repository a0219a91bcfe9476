#pragma once
#include <array>
#include <functional>

#include "forms/guard.h"
#include "forms/screens.h"
#include "personnel/position_in_force.h"
#include "prep/snapshot.h"
#include "widgets/code_list.h"
#include "widgets/form.h"

class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;
class QStackedWidget;

namespace prep {

/// 人事データ取込: opens the date of a run, a new one (snapshot and carrying forward) or an existing one
/// (snapshot only), and deletes dates. Works for the side whose flag is set; on the run side it hands over to
/// frmMenuSJikkou. There it also keeps 賞与の内容, the bonus's name on the lists: stored with a new date, and
/// for an existing one as soon as its field is left.
class frmSDatatorikomi : public widgets::Form {
    Q_OBJECT
  public:
    frmSDatatorikomi(forms::House& house, QWidget* parent);
    /// On the run side the run menu follows over the opener, once this screen has closed on a date.
    int exec() override;

  private:
    enum class State { Opening, NewDate, ExistingDate };

    void build();
    QWidget* buildChoice();
    QWidget* buildDates();
    QWidget* buildList();
    QLayout* buildButtons();
    void connectEvents();
    void setState(State state);

    void startNewDate();
    void startExistingDate();
    void cancel();
    void importNewDate();
    void loadExistingDate();
    void deleteDate();

    bool checkDate(int index);
    QString duplicateProblem(QDate kijunbi) const;
    bool checkAllDates();
    /// The chosen date; invalid, after the box, when none is chosen.
    QDate requireChosenDate();
    void fillList();
    /// 賞与の内容 of the run side: typed beside a new date, or changed beside the chosen one.
    QLineEdit* makeBonusText(int index);
    bool checkBonusText(int index);
    bool storeChosenText();
    void showChosenText();
    /// What goes with the date is told before it goes.
    bool confirmContents(QDate kijunbi);
    void setDates(const personnel::PositionDates& dates);
    void rebuildSnapshot(const personnel::PositionDates& dates);
    void leave(const personnel::PositionDates& dates);
    void showRunMenu();

    forms::House& house_;
    const Side side_;
    bool shinki_mode_ = false;  ///< a new date is being entered
    bool dateOpened_ = false;   ///< closed on a date: the run may go on

    QPushButton* Command1_ = nullptr;
    QPushButton* Command2_ = nullptr;
    std::array<QPushButton*, 2> Command3_{};
    std::array<QPushButton*, 2> Command4_{};
    QPushButton* Command5_ = nullptr;
    QPushButton* Command6_ = nullptr;
    QPushButton* Command7_ = nullptr;
    std::array<QLineEdit*, 3> Text1_{};
    std::array<QLineEdit*, 2> Text2_{};  ///< 賞与の内容 of a new date, of the chosen one
    std::array<QLabel*, 2> Label5_{};
    QLabel* Label4_ = nullptr;
    widgets::CodeList* DataList1_ = nullptr;
    QStackedWidget* pages_ = nullptr;
};

}  // namespace prep
