#include "masters/frmMenuMasuta.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/guard.h"
#include "masters/master_report.h"
#include "reports/frmReport.h"
#include "reports/ui_list_title.h"
#include "widgets/theme.h"

namespace masters {
namespace {

constexpr int kPerColumn = 7;
constexpr int kReports = 21;  ///< Command21 prints what Command1 edits
const QString kName = QStringLiteral("frmMenuMasuta");

std::vector<forms::MenuEntry> frameEntries(forms::House& house) {
    return {{.control = QStringLiteral("Command40"),
             .caption = QStringLiteral("ヘルプ(&H)"),
             .action =
                 [&house] {
                     if (house.help) house.help(kName);
                 },
             .below = true},
            {.control = QStringLiteral("Command20"), .caption = QStringLiteral("ﾒﾆｭｰへ戻る(&B)")}};
}

QString buttonCaption(const MasterKind& kind, const QString& name) {
    if (kind.referent == personnel::Referent::Shikaku) return QStringLiteral("  資格・ 免許");
    return (kind.required ? QStringLiteral("★") : QString()) + name;
}

void hideInPlace(QWidget* control) {
    QSizePolicy policy = control->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    control->setSizePolicy(policy);
    control->hide();
}

}  // namespace

frmMenuMasuta::frmMenuMasuta(forms::House& house, QWidget* parent)
    : MenuForm(kName, QStringLiteral("マスタメニュー"), house, parent, frameEntries(house)) {
    auto* note = make<QLabel>(QStringLiteral("Label1"), QStringLiteral("★は必須登録項目"));
    widgets::setTone(note, widgets::Tone::Muted);
    headLayout()->addWidget(note);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(widgets::kGrid / 2);
    grid->setVerticalSpacing(widgets::kGrid);
    static_cast<QVBoxLayout*>(layout())->insertLayout(1, grid);
    forms::guarded(this, [&] {
        const std::vector<QString> attributes = attributeNames(*house_.global.cn_main);
        for (std::size_t i = 0; i < masterKinds().size(); ++i) {
            const MasterKind& kind = masterKinds()[i];
            const QString caption = captionOf(kind, attributes);
            addMaster(grid, static_cast<int>(i), caption, kind.attribute && caption == kSwitchedOff);
        }
    });
}

/// Downwards in three columns; the first seven hold what has to be filled first.
void frmMenuMasuta::addMaster(QGridLayout* grid, int index, const QString& caption, bool hidden) {
    const MasterKind& kind = masterKinds()[static_cast<std::size_t>(index)];
    QPushButton* edit = addButton({.control = QStringLiteral("Command%1").arg(index + 1),
                                   .caption = widgets::asCaption(buttonCaption(kind, caption)),
                                   .screen = kind.screen});
    QPushButton* list = addButton({.control = QStringLiteral("Command%1").arg(index + kReports),
                                   .caption = QStringLiteral("Report"),
                                   .action = [this, &kind] { print(kind); }});
    edit->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    list->setAccessibleName(caption + QStringLiteral("の一覧"));
    list->setToolTip(list->accessibleName());
    setOutput(list, Output::List);
    const int column = index / kPerColumn * 3;  // the third is a gap
    grid->addWidget(edit, index % kPerColumn, column);
    grid->addWidget(list, index % kPerColumn, column + 1);
    grid->setColumnStretch(column, 1);
    if (column > 0) grid->setColumnMinimumWidth(column - 1, 2 * widgets::kGrid);
    if (!hidden) return;
    hideInPlace(edit);
    hideInPlace(list);
}

void frmMenuMasuta::print(const MasterKind& kind) {
    auto report = makeMasterReport(*house_.global.cn_main, kind, house_.global.panels.company);
    const auto title = reports::titleOfCompany(house_.global, report.title());
    showChild(new reports::frmReport(std::move(report), title, this));
}

}  // namespace masters
