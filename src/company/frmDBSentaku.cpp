#include "company/frmDBSentaku.h"

#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "company/company_open.h"
#include "company/ui_company_opening.h"
#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/guard.h"
#include "widgets/code_list.h"
#include "widgets/theme.h"

namespace company {
namespace {

const QString kConfirmTitle = QStringLiteral("会社指定の確認");

}  // namespace

frmDBSentaku::frmDBSentaku(forms::House& house, QWidget* parent)
    : Form(QStringLiteral("frmDBSentaku"), QStringLiteral("会社指定"), parent), house_(house) {
    build();
    forms::guarded(this, [this] { loadCompanies(); });
}

void frmDBSentaku::build() {
    auto* title = make<QLabel>(QStringLiteral("Label1"), QStringLiteral("処理する会社を指定します。"));
    widgets::setTone(title, widgets::Tone::Heading);
    auto* guide =
        make<QLabel>(QStringLiteral("Label2"), QStringLiteral("会社名を選択し、［指定］を押してください。"));
    List1_ = make<widgets::CodeList>(QStringLiteral("List1"));
    List1_->setAccessibleName(QStringLiteral("会社名"));
    List1_->setMinimumSize(54 * widgets::kGrid, 24 * widgets::kGrid);
    guide->setBuddy(List1_);

    auto* help = make<QPushButton>(QStringLiteral("Command4"), QStringLiteral("ヘルプ(&H)"));
    auto* back = make<QPushButton>(QStringLiteral("Command1"), QStringLiteral("< 戻る(&B)"));
    back->hide();
    auto* open = make<QPushButton>(QStringLiteral("Command2"), QStringLiteral("指定(&S)"));
    widgets::setPrimary(open);
    auto* cancel = make<QPushButton>(QStringLiteral("Command3"), QStringLiteral("キャンセル(&C)"));
    setCancelButton(cancel);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(help);
    buttons->addStretch();
    for (auto* button : {back, open, cancel}) buttons->addWidget(button);
    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(3 * widgets::kGrid, 3 * widgets::kGrid, 3 * widgets::kGrid, 2 * widgets::kGrid);
    root->setSpacing(widgets::kGrid);
    root->addWidget(title);
    root->addWidget(guide);
    root->addWidget(List1_, 1);
    root->addSpacing(widgets::kGrid);
    root->addLayout(buttons);

    for (auto [before, after] : {std::pair<QWidget*, QWidget*>{List1_, open}, {open, cancel}, {cancel, help}})
        setTabOrder(before, after);
    List1_->setFocus();
    connect(open, &QPushButton::clicked, this, [this] { Command2_Click(); });
    connect(List1_, &widgets::CodeList::opened, open, &QPushButton::click);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });
}

void frmDBSentaku::loadCompanies() {
    const QString folder = house_.global.dataDir();
    List1_->setPlaceholder(
        QStringLiteral(
            "Data フォルダに会社がありません。\n［ﾌｧｲﾙ］の「新規作成」で会社を作るか、会社のフォルダ"
            "を次の場所に\n置いてから、もう一度「会社指定」を選んでください。\n") +
        QDir::toNativeSeparators(folder));
    const QStringList companies = companyFolders(folder);
    QDir::setCurrent(folder);
    std::vector<widgets::CodeList::Item> items;
    for (const QString& name : companies) items.push_back({name, name});
    List1_->setItems(items);
    if (companies.size() == 1)
        List1_->choose(0);
    else
        List1_->chooseCode(lastCompany(house_.global.places()));
}

void frmDBSentaku::Command2_Click() {
    const QString name = List1_->text();
    if (name.isEmpty()) {
        forms::tell(this, QStringLiteral("処理する会社を指定してください。"), kConfirmTitle);
        return;
    }
    if (!forms::ask(this, QStringLiteral("『") + name + QStringLiteral("』を指定します。"), kConfirmTitle))
        return;
    forms::guarded(this, [&] {
        if (openForHouse(house_, this, name)) accept();
    });
}

int frmDBSentaku::exec() {
    const int result = Form::exec();
    if (result == Accepted) showCompanyMenu(house_, this);
    return result;
}

}  // namespace company
