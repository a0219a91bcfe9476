#pragma once
#include "forms/screens.h"
#include "widgets/form.h"

class QLabel;
class QRadioButton;

namespace design {
class CriterionPicker;
struct Kijun;
}  // namespace design

namespace prep {

/// What both selection screens of a run share: the two lists, the guidance line, 次へ and 閉じる, and the
/// refusals.
class CriterionForm : public widgets::Form {
    Q_OBJECT
  protected:
    CriterionForm(const QString& name, const QString& caption, forms::House& house, QWidget* parent);
    /// Loads the lists; called at the end of the constructor of the screen.
    void load(QWidget* between = nullptr);

    virtual void DataList1_Click();
    virtual void DataList2_Click() = 0;
    virtual void Command1_Click() = 0;

    /// The employees of the criterion at the date: none is told in the guidance line (`otherwise` stands
    /// there if any), and refused by requireWork.
    void tellEmployees(const QString& otherwise);
    void showGuidance(const QString& text, bool warning);
    /// The selection is complete and there is something to do; otherwise it was told why not.
    bool requireWork();
    bool confirm(const QString& what, const QString& title);
    void showScreen(const QString& name);
    /// 次へ is open unless it could only lead to a screen that is not there.
    void allowNext(bool allowed);

    forms::House& house_;
    design::CriterionPicker* picker_;
    QLabel* label3_;
    bool nothingToDo_ = false;

  private:
    QPushButton* command1_ = nullptr;
    QPushButton* command2_ = nullptr;
};

/// 配分基準指定: chooses the criterion whose evaluation results are taken in.
class frmSSanteishikiSub : public CriterionForm {
    Q_OBJECT
  public:
    frmSSanteishikiSub(forms::House& house, QWidget* parent);

  private:
    void DataList2_Click() override;
    void Command1_Click() override;
};

}  // namespace prep
