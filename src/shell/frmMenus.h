#pragma once
#include <QStringList>

#include "shell/ui_menu_form.h"

namespace shell {

/// The help button of a menu: Command11.
MenuEntry helpEntry(House& house, const QString& screen);

/// The menus under frmMenu000 are one class and a table: frmMenuSSyouyo, frmMenuJinji, frmMenuJinjiSub,
/// frmMenuJinjiTaisyoku.
class frmMenus : public MenuForm {
    Q_OBJECT
  public:
    /// `name` is one of names().
    frmMenus(const QString& name, House& house, QWidget* parent);
    static QStringList names();
};

}  // namespace shell
