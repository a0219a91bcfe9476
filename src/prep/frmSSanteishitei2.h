#pragma once
#include <array>

#include "forms/screens.h"
#include "prep/entry_items.h"
#include "widgets/form.h"

class QLabel;
class QRadioButton;

namespace prep {

/// 算定方式: chooses what is typed in or corrected under the chosen 算定方式.
class frmSSanteishitei2 : public widgets::Form {
    Q_OBJECT
  public:
    frmSSanteishitei2(forms::House& house, QWidget* parent);

  protected:
    void done(int result) override;

  private:
    void makeControls();
    void Form_Load();
    void Command1_Click();
    /// Set-up of a base on which no coefficient acts is of no use: asks and removes it.
    void tidy(Base base, const QString& name);

    forms::House& house_;
    std::array<QRadioButton*, kEntryItemCount> option_{};
    QLabel* label1_ = nullptr;
    QPushButton* command1_ = nullptr;
};

}  // namespace prep
