#pragma once
#include <array>
#include <optional>

#include "design/criteria.h"
#include "forms/screens.h"
#include "widgets/form.h"

class QLabel;

namespace design {
class CriterionPicker;
class HoushikiOptions;
}  // namespace design
namespace reports {
class SentSheet;
class SheetFolder;
}  // namespace reports

namespace calc {

/// 基礎額・係数の入力状況チェック: one criterion and one 算定方式 of the current 基準日, sent as a sheet with
/// every base amount and coefficient that the criterion uses.
class frmSJCheck : public widgets::Form {
    Q_OBJECT
  public:
    frmSJCheck(forms::House& house, const reports::SheetFolder& sheets, QWidget* parent);

  private:
    void makeControls();
    QWidget* makeButtons();
    void Form_Load();

    void DataList1_Click();
    void DataList2_Click();
    void Command1_Click();

    void kojinbetsu() { send(design::Houshiki::Kojinbetsu); }
    void sougaku() { send(design::Houshiki::Sougaku); }
    void send(design::Houshiki method);

    void showMethod(bool show);
    void tellEmployees(bool any);
    bool refused();

    forms::House& house_;
    const reports::SheetFolder& sheets_;
    design::CriterionPicker* picker_ = nullptr;
    std::array<QLabel*, 2> marker_{};  ///< Image1, Image2
    design::HoushikiOptions* options_ = nullptr;
    QLabel* label3_ = nullptr;
    reports::SentSheet* sent_ = nullptr;
    bool nothingToDo_ = false;
};

}  // namespace calc
