#pragma once
#include "masters/master_kinds.h"
#include "shell/ui_menu_form.h"

class QGridLayout;

namespace masters {

/// The door to the masters: a button for each editor and beside it one that prints its list. Attributes that
/// are switched off leave their place empty.
class frmMenuMasuta : public shell::MenuForm {
    Q_OBJECT
  public:
    frmMenuMasuta(shell::House& house, QWidget* parent);

  private:
    void addMaster(QGridLayout* grid, int index, const QString& caption, bool hidden);
    void print(const MasterKind& kind);
};

}  // namespace masters
