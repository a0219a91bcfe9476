#pragma once
#include <array>
#include <optional>

#include "forms/menu_form.h"
#include "prep/run_setting.h"

class QAbstractButton;
class QGroupBox;
class QRadioButton;

namespace prep {

/// 配分実行メニュー: the hub of one run, beneath every run screen. Its steps may be done in any order and
/// repeated. Holds the run's unit and rounding mode, which only 配分計算 stores.
class frmMenuSJikkou : public forms::MenuForm {
    Q_OBJECT
  public:
    frmMenuSJikkou(forms::House& house, QWidget* parent);
    /// Leaving the run clears its date from the status bar.
    void reject() override;

  private:
    using Options = std::vector<QRadioButton*>;

    static std::vector<forms::MenuEntry> entries(frmMenuSJikkou* menu);
    void build();
    QGroupBox* buildOptions(const QString& frame, const QString& title, const QString& option,
                            const QStringList& captions, Options& options);
    void loadSetting();
    void saveSetting();
    void Command7_Click();

    std::optional<RunSetting> setting_;
    Options Option1_;  ///< the units
    Options Option2_;  ///< the rounding modes
};

}  // namespace prep
