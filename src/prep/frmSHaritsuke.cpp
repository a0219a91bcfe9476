#include "prep/frmSHaritsuke.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "widgets/layout.h"
#include "widgets/table.h"
#include "widgets/theme.h"

namespace prep {
namespace {

using Fate = PastedPerson::Fate;

qsizetype countOf(const std::vector<PastedPerson>& people, Fate fate) {
    return std::count_if(people.begin(), people.end(),
                         [fate](const PastedPerson& person) { return person.fate == fate; });
}

QString resultOf(const PastedPerson& person) {
    switch (person.fate) {
        case Fate::Changes:
            return QStringLiteral("変わります");
        case Fate::Same:
            return QStringLiteral("いまの値と同じです");
        case Fate::Nobody:
            return QStringLiteral("この一覧にいない社員です。貼り付けません");
        case Fate::Refused:
            return person.why;
    }
    return {};
}

QString guidanceOf(qsizetype changes, qsizetype nobody, qsizetype refused) {
    if (refused > 0)
        return QStringLiteral("貼り付けられない値が %1行あります。直してから、もう一度貼り付けてください。")
            .arg(refused);
    const QString missing =
        nobody > 0 ? QStringLiteral("この一覧にいない社員が %1行あります（貼り付けません）。").arg(nobody)
                   : QString();
    if (changes == 0) return missing + QStringLiteral("値の変わる社員はいません。");
    return missing + QStringLiteral("%1人の値が変わります。［更新］を押すまで登録されません。").arg(changes);
}

}  // namespace

frmSHaritsuke::frmSHaritsuke(const std::vector<PastedPerson>& people, const CellRules& rules, QWidget* parent)
    : Form(QStringLiteral("frmSHaritsuke"), QStringLiteral("社員コードで貼り付け"), parent) {
    const qsizetype changes = countOf(people, Fate::Changes), refused = countOf(people, Fate::Refused),
                    nobody = countOf(people, Fate::Nobody);
    auto* title = make<QLabel>(QStringLiteral("lblTitle"), windowTitle());
    auto* guidance = make<QLabel>(QStringLiteral("lblGuidance"), guidanceOf(changes, nobody, refused));
    auto* header = widgets::headerBlock(title, guidance);
    if (refused + nobody > 0) widgets::setTone(guidance, widgets::Tone::Warning);

    auto* table = make<widgets::Table>(QStringLiteral("DataGrid1"));
    auto* rows = new widgets::RowsModel({{QStringLiteral("社員コード")},
                                         {QStringLiteral("氏名")},
                                         {QStringLiteral("いまの値"), rules.choices.isEmpty()},
                                         {QStringLiteral("貼り付ける値"), rules.choices.isEmpty()},
                                         {QStringLiteral("結果")}},
                                        this);
    rows->setRows(static_cast<int>(people.size()), [people, rules](int row, int column) {
        const PastedPerson& person = people[static_cast<std::size_t>(row)];
        switch (column) {
            case 0:
                return person.syainCode;
            case 1:
                return person.shimei;
            case 2:
                return rules.whole(person.before);
            case 3:
                return rules.whole(person.text);
            default:
                return resultOf(person);
        }
    });
    table->setModel(rows);
    table->setAccessibleName(windowTitle());
    table->selectRow(0);
    table->setGivingWay({1});
    table->setMinimumSize(110 * widgets::kGrid, 44 * widgets::kGrid);

    auto* paste = make<QPushButton>(QStringLiteral("Command1"), QStringLiteral("貼り付ける(&P)"));
    auto* cancel = make<QPushButton>(QStringLiteral("Command2"), QStringLiteral("キャンセル(&C)"));
    paste->setEnabled(refused == 0 && changes > 0);
    widgets::setPrimary(paste);
    setCancelButton(cancel);
    connect(paste, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* column = widgets::columnOf(this);
    column->addLayout(header);
    column->addWidget(table, 1);
    column->addLayout(widgets::buttonRow({}, {cancel, paste}));
    (paste->isEnabled() ? paste : cancel)->setFocus();
}

}  // namespace prep
