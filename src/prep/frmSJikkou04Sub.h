#pragma once
#include <array>
#include <optional>

#include "forms/screens.h"
#include "prep/evaluation_import.h"
#include "widgets/code_list.h"
#include "widgets/form.h"

class QGroupBox;
class QRadioButton;

namespace prep {

/// 評価結果取込: takes the grades of an evaluation date into the run, or leaves them as they are, and leads
/// to the screen that shows them for checking. What is taken in and what is saved there become permanent
/// together.
class frmSJikkou04Sub : public widgets::Form {
    Q_OBJECT
  public:
    frmSJikkou04Sub(forms::House& house, QWidget* parent);

  private:
    void makeControls();
    QWidget* makeOptions();
    void connectEvents();

    void Form_Load();
    void Option1_Click(bool takeIn);
    void Command2_Click();

    void showDates(bool shown);
    std::optional<QDate> chosenDate();
    void takeIn(QDate date);
    void takeIn(RunTable table, const QString& name, QDate date);
    store::Connection& cn() const;
    domain::RunKey run() const;

    forms::House& house_;
    GradeUses uses_;
    QGroupBox* frame1_ = nullptr;
    std::array<QRadioButton*, 2> option1_{};
    QLabel* label2_ = nullptr;
    QLabel* label3_ = nullptr;
    widgets::CodeList* list_ = nullptr;
    QPushButton* command1_ = nullptr;
    QPushButton* command2_ = nullptr;
    QPushButton* command3_ = nullptr;
};

}  // namespace prep
