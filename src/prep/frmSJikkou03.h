#pragma once
#include "prep/ui_input_form.h"

class QGroupBox;
class QLineEdit;

namespace prep {

/// A coefficient of 個人別計算 or 総額配分, or 支給係数, one per employee; beside it a calculator for ratios
/// (days present ÷ days due), whose result goes into the current cell.
class frmSJikkou03 : public InputGridForm {
    Q_OBJECT
  public:
    frmSJikkou03(forms::House& house, QWidget* parent);

  private:
    std::optional<QString> store() override;
    /// Offers the same values to the other 算定方式 where it types in the same coefficient.
    std::optional<QString> copy();
    InputTarget target() const;
    bool isPayment() const;

    QGroupBox* makeCalculator();
    QLineEdit* makeOperand(const QString& name, const QString& meaning);
    void operandChanged(QLineEdit* edit);
    void keisan();

    QLineEdit* text2_ = nullptr;
    QLineEdit* text3_ = nullptr;
    QLabel* label6_ = nullptr;
};

}  // namespace prep
