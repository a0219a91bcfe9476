#pragma once
#include <QStringList>

#include "forms/menu_form.h"

namespace shell {

/// The help button of a menu: Command11.
forms::MenuEntry helpEntry(forms::House& house, const QString& screen);

/// The menus under frmMenu000 are one class and a table: frmMenuSSyouyo, frmMenuJinji, frmMenuJinjiSub,
/// frmMenuJinjiTaisyoku.
class frmMenus : public forms::MenuForm {
    Q_OBJECT
  public:
    /// `name` is one of these four.
    frmMenus(const QString& name, forms::House& house, QWidget* parent);
};

}  // namespace shell
