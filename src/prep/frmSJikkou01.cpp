#include "prep/frmSJikkou01.h"

#include "design/ui_criterion_picker.h"
#include "forms/global_record.h"

namespace prep {

frmSJikkou01::frmSJikkou01(forms::House& house, QWidget* parent)
    : InputGridForm(QStringLiteral("frmSJikkou01"), house, parent) {
    setWindowTitle(target().column);
    forms::guarded(this, [this] {
        load(typedAmountRules(), loadInputRows(cn(), design::currentRun(house_.global), target()));
    });
}

InputTarget frmSJikkou01::target() const {
    const bool kinIppuu = house_.global.santei_houshiki == design::houshikiCode(design::Houshiki::Kinippu);
    return {RunTable::TaiouSyain, kinIppuu ? QStringLiteral("金一封") : QStringLiteral("特別加算金")};
}

std::optional<QString> frmSJikkou01::store() {
    const domain::RunKey run = design::currentRun(house_.global);
    if (auto difference = writeInputRows(cn(), run, target(), rows())) return difference;
    storeTypedTotal(cn(), run, target().column);
    return {};
}

}  // namespace prep
