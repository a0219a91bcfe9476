#pragma once
#include "widgets/form.h"

class QListWidget;
class QPlainTextEdit;

namespace shell {

/// The texts of the licences, one at a time.
class frmLicence : public widgets::Form {
    Q_OBJECT
  public:
    explicit frmLicence(QWidget* parent);

  private:
    void showText(int row);

    QListWidget* list_;
    QPlainTextEdit* text_;
};

}  // namespace shell
