#include "prep/frmSJikkou04.h"

#include <tuple>

#include "design/ui_criterion_picker.h"
#include "forms/global_record.h"

namespace prep {
namespace {

const QString kGrade = QStringLiteral("評価");

}  // namespace

frmSJikkou04::frmSJikkou04(forms::House& house, QWidget* parent)
    : InputGridForm(QStringLiteral("frmSJikkou04"), house, parent) {
    setWindowTitle(QStringLiteral("評価結果の入力"));
    forms::guarded(this, [this] { Form_Load(); });
}

void frmSJikkou04::Form_Load() {
    forms::GlobalRecord& global = house_.global;
    const domain::RunKey run = design::currentRun(global);
    uses_ = gradeUses(cn(), run);
    std::tie(global.hyouka_shikyuu, global.hyouka_kojinbetsu, global.hyouka_sougaku) =
        std::tie(uses_.shikyuu, uses_.kojinbetsu, uses_.sougaku);
    CellRules rules;
    rules.heading = kGrade;
    rules.hint = QStringLiteral("評価を一覧から選んでください");
    rules.choices = gradeWords(cn(), run, uses_);
    rules.save = refuseEmpty;
    load(std::move(rules), loadInputRows(cn(), run, {uses_.tables().front(), kGrade}));
}

std::optional<QString> frmSJikkou04::store() {
    const domain::RunKey run = design::currentRun(house_.global);
    for (RunTable table : uses_.tables())
        if (auto difference = writeInputRows(cn(), run, {table, kGrade}, rows())) return difference;
    return {};
}

}  // namespace prep
