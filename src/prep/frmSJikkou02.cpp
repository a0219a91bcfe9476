#include "prep/frmSJikkou02.h"

#include "design/ui_criterion_picker.h"
#include "forms/global_record.h"

namespace prep {

frmSJikkou02::frmSJikkou02(forms::House& house, QWidget* parent)
    : InputGridForm(QStringLiteral("frmSJikkou02"), house, parent) {
    setWindowTitle(methodName(house.global) + u'／' + target().column);
    forms::guarded(this, [this] {
        load(baseAmountRules(), loadInputRows(cn(), design::currentRun(house_.global), target()));
    });
}

InputTarget frmSJikkou02::target() const {
    const bool onA = house_.global.santei_koumoku == QStringLiteral("1");
    return {methodTable(house_.global), onA ? QStringLiteral("基礎額Ａ") : QStringLiteral("基礎額Ｂ")};
}

std::optional<QString> frmSJikkou02::store() {
    return writeInputRows(cn(), design::currentRun(house_.global), target(), rows());
}

}  // namespace prep
