#pragma once
#include <QProgressDialog>

#include "store/database_copy.h"

namespace forms {

/// What goes on, for work that takes longer than half a second: how far it is, and 中止. The user can do
/// nothing else meanwhile.
class ProgressBox {
  public:
    ProgressBox(QWidget* parent, const QString& text);
    /// To be called while the work goes on; false when the user wants it to stop.
    store::Progress step();

  private:
    QProgressDialog dialog_;
};

}  // namespace forms
