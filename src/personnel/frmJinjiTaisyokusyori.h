#pragma once
#include <optional>

#include "forms/screens.h"
#include "store/recordset.h"
#include "widgets/form.h"

class QLineEdit;
class QPushButton;

namespace personnel {

/// 退職処理: the person of syain_code retires on the entered day. Only the flag and the day are set; history,
/// family and allocations stay, and so does the person in runs up to that day.
class frmJinjiTaisyokusyori : public widgets::Form {
    Q_OBJECT
  public:
    frmJinjiTaisyokusyori(forms::House& house, QWidget* parent);

  private:
    void makeButtons();
    void layOut();
    void Form_Load();
    void Command1_Click();
    bool checkDate();
    QString stored(const QString& column) const;

    forms::House& house_;
    std::optional<store::Recordset> person_;
    QLineEdit* text1_;
    QPushButton *command1_ = nullptr, *command2_ = nullptr, *command3_ = nullptr;
};

}  // namespace personnel
