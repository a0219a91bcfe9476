#pragma once
#include <array>

#include "forms/single_row_form.h"

class QCheckBox;

namespace personnel {

/// 入力項目の設定: which optional items the company keeps. An item without a check mark is grey on its screen
/// and not asked for. A free attribute that the company has not named cannot be kept.
class frmJinjiCheck : public forms::SingleRowForm {
    Q_OBJECT
  public:
    frmJinjiCheck(forms::House& house, QWidget* parent);

  protected:
    void fill(store::RowEdit& row) override;

  private:
    static constexpr int kChecks = 26;  ///< the columns of 入力可・不可テーブル

    void nameAttributes();
    QLayout* arrangeFrames();
    QWidget* frame(const QString& title, int first, int count, int columns);

    std::array<QCheckBox*, kChecks> check1_{};
};

}  // namespace personnel
