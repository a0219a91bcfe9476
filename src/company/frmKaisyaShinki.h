#pragma once
#include <array>
#include <functional>
#include <vector>

#include "company/create.h"
#include "forms/screens.h"
#include "widgets/form.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;

namespace widgets {
class CodeList;
}

namespace company {

/// 新規作成: leads through what a new company begins with, step by step (they stand at the left), creates it
/// and opens it. Like frmDBSentaku its exec() shows frmMenu000 before it returns.
class frmKaisyaShinki : public widgets::Form {
    Q_OBJECT
  public:
    frmKaisyaShinki(forms::House& house, QWidget* parent);
    int exec() override;

  private:
    enum Step { Name, Profile, Attributes, Items, Masters, Files, Password, Confirm, Steps };

    QWidget* makeName();
    QWidget* makeProfile(int from, int to);
    QWidget* makeAttributes();
    QWidget* makeItems();
    QWidget* makeMasters();
    QWidget* makeFiles();
    QWidget* makePassword();
    QWidget* makeConfirm();
    void connectEvents();

    void go(int step);
    /// Tells what is wrong with a step and leaves the focus there.
    bool passes(int step);
    bool checkName();
    bool checkProfile(int from, int to);
    bool checkSince();
    bool checkPassword();
    /// Makes the company's own key where its files are to be locked, and shows the recovery code. False: the
    /// user goes back.
    bool makeOwnKey(NewCompany& made);
    NewCompany choices() const;
    QString toldChoices() const;
    void Command3_Click();

    forms::House& house_;
    QStackedWidget* pages_ = nullptr;
    widgets::CodeList* list1_ = nullptr;
    QLineEdit *name_ = nullptr, *since_ = nullptr, *password_ = nullptr, *again_ = nullptr;
    QCheckBox* lock_ = nullptr;
    std::array<QLineEdit*, 12> profile_{};
    std::vector<QCheckBox*> items_, masters_;
    std::array<QCheckBox*, 3> files_{};
    QLabel *title_ = nullptr, *guide_ = nullptr, *told_ = nullptr;
    QPushButton *back_ = nullptr, *next_ = nullptr, *create_ = nullptr;
    bool opened_ = false;
};

}  // namespace company
