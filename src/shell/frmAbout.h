#pragma once
#include "forms/screens.h"
#include "widgets/form.h"

namespace shell {

/// ﾊﾞｰｼﾞｮﾝ情報: the version, the libraries with their licences, and where the data lie.
class frmAbout : public widgets::Form {
    Q_OBJECT
  public:
    frmAbout(forms::House& house, QWidget* parent);

  private:
    QWidget* libraries();
    QWidget* dataFolder(const QString& path);
};

}  // namespace shell
