#pragma once
#include "forms/menu_form.h"
#include "masters/master_kinds.h"

class QGridLayout;

namespace masters {

/// The door to the masters: a button for each editor and beside it one that prints its list. Attributes that
/// are switched off leave their place empty.
class frmMenuMasuta : public forms::MenuForm {
    Q_OBJECT
  public:
    frmMenuMasuta(forms::House& house, QWidget* parent);

  private:
    void addMaster(QGridLayout* grid, int index, const QString& caption, bool hidden);
    void print(const MasterKind& kind);
};

}  // namespace masters
