#pragma once
#include <array>

#include "forms/single_row_form.h"

class QCheckBox;
class QLineEdit;

namespace company {

/// 会社情報: name and address of the company, and the names under which the five free attributes appear
/// everywhere. An attribute without a name is "未設定", switched off; one whose master holds entries keeps
/// its name.
class frmKaisha : public forms::SingleRowForm {
    Q_OBJECT
  public:
    frmKaisha(forms::House& house, QWidget* parent);

  protected:
    void place() override;
    bool mayUpdate() override;
    void fill(store::RowEdit& row) override;
    void updated() override;

  private:
    static constexpr int kFields = 12;

    QLayout* arrangeFields();
    bool checkField(int index);
    bool masterInUse(int number);

    std::array<QLineEdit*, kFields> txtFields_{};
    QCheckBox* copies_ = nullptr;
};

}  // namespace company
