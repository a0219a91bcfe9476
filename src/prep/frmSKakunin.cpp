#include "prep/frmSKakunin.h"

#include <QHeaderView>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/global_record.h"
#include "widgets/layout.h"
#include "widgets/table.h"
#include "widgets/theme.h"

namespace prep {

frmSKakunin::frmSKakunin(std::vector<Suspicion> found, const QString& act, QWidget* parent)
    : Form(QStringLiteral("frmSKakunin"), QStringLiteral("入力の確認"), parent), found_(std::move(found)) {
    auto* title = make<QLabel>(QStringLiteral("lblTitle"), QStringLiteral("入力を確かめてください"));
    auto* guidance = make<QLabel>(QStringLiteral("lblGuidance"),
                                  QStringLiteral("このまま進むと、意図しない金額になることがあります。"
                                                 "問題のない場合は、そのまま進めてください。"));
    table_ = make<widgets::Table>(QStringLiteral("DataGrid1"));
    auto* rows = new widgets::RowsModel(
        {{QStringLiteral("確かめること")}, {QStringLiteral("社員")}, {QStringLiteral("画面")}}, this);
    rows->setRows(static_cast<int>(found_.size()), [this](int row, int column) {
        const Suspicion& item = found_[static_cast<std::size_t>(row)];
        return column == 0 ? item.text : column == 1 ? item.people.join(QStringLiteral("、")) : item.place;
    });
    table_->setModel(rows);
    table_->setAccessibleName(QStringLiteral("確かめることの一覧"));
    table_->selectRow(0);
    // Long sentences and names break into lines instead of leading out of sight.
    table_->setWordWrap(true);
    auto* header = table_->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::Stretch);
    header->setSectionResizeMode(2, QHeaderView::ResizeToContents);
    table_->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table_->setMinimumSize(120 * widgets::kGrid, 36 * widgets::kGrid);
    const auto button = [this](const QString& name, const QString& caption, Answer answer) {
        auto* made = make<QPushButton>(name, caption);
        connect(made, &QPushButton::clicked, this, [this, answer] {
            answer_ = answer;
            accept();
        });
        return made;
    };
    auto* back = button(QStringLiteral("Command2"), QStringLiteral("戻る(&B)"), Answer::Back);
    auto* open = button(QStringLiteral("Command3"), QStringLiteral("選んだ行の画面を開く(&O)"), Answer::Open);
    auto* go = button(QStringLiteral("Command1"), act, Answer::GoOn);
    widgets::setDanger(go);
    connect(table_, &QAbstractItemView::doubleClicked, open, &QPushButton::click);
    setCancelButton(back);
    auto* column = widgets::columnOf(this);
    column->addLayout(widgets::headerBlock(title, guidance));
    column->addWidget(table_, 1);
    column->addLayout(widgets::buttonRow({go}, {open, back}));
    widgets::tabOrder({table_, open, back, go});
    back->setFocus();
}

const Suspicion& frmSKakunin::chosen() const {
    return found_[static_cast<std::size_t>(std::max(0, table_->currentIndex().row()))];
}

bool frmSKakunin::mayGoOn(widgets::Form* opener, forms::House& house, std::vector<Suspicion> found,
                          const QString& act) {
    if (found.empty()) return true;
    Answer answer = Answer::Back;
    QString screen;
    {
        frmSKakunin question(std::move(found), act, opener);
        question.exec();
        answer = question.answer();
        screen = question.chosen().screen;
    }
    if (answer == Answer::Open && house.screens.has(screen)) {
        // As the run menu opens its steps.
        house.global.haibun_sekkei_mode = false;
        house.global.haibun_jikkou_mode = true;
        house.global.jikkou_syuusei_mode = false;
        opener->showChild(house.screens.create(screen, house, opener));
    }
    return answer == Answer::GoOn;
}

}  // namespace prep
