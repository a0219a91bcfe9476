#include "shell/frmMenu000.h"

#include <QBoxLayout>
#include <QDir>
#include <QLabel>
#include <QPushButton>

#include "forms/global_record.h"
#include "forms/guard.h"
#include "shell/frmMenus.h"
#include "shell/ui_first_steps.h"
#include "widgets/theme.h"

namespace shell {

namespace {

std::vector<forms::MenuEntry> entriesOfMenu000(forms::House& house) {
    const auto entry = [](const char* control, const char* caption, const char* screen) {
        return forms::MenuEntry{.control = QString::fromUtf8(control),
                                .caption = QString::fromUtf8(caption),
                                .screen = QString::fromUtf8(screen)};
    };
    return {entry("Command1", "会社情報(&P)", "frmKaisha"),
            entry("Command2", "各種マスタ(&M)", "frmMenuMasuta"),
            entry("Command3", "人事情報(&J)", "frmMenuJinji"),
            entry("Command4", "賞与配分(&S)", "frmMenuSSyouyo"),
            entry("Command6", "配分計算", "frmHDataPrint"),
            entry("Command9", "終了(&E)", ""),
            helpEntry(house, QStringLiteral("frmMenu000"))};
}

void showMenuButton(const QWidget* screen, bool visible) {
    if (QWidget* button = forms::mainControl(screen, QStringLiteral("Command1"))) button->setVisible(visible);
}

}  // namespace

frmMenu000::frmMenu000(forms::House& house, QWidget* parent)
    : forms::MenuForm(QStringLiteral("frmMenu000"), QStringLiteral("メニュー"), house, parent,
                      entriesOfMenu000(house)) {
    layOut();
    forms::guarded(this, [this] { Form_Load(); });
}

/// The list of snapshots is no working screen: it stands apart below, beside its label.
void frmMenu000::layOut() {
    auto* menu = make<QLabel>(QStringLiteral("Label1"), QStringLiteral("MENU"));
    widgets::setTone(menu, widgets::Tone::Muted);
    headLayout()->insertWidget(0, menu);

    steps_ = new FirstSteps(house_, this);
    headLayout()->addWidget(steps_);

    auto* label = make<QLabel>(QStringLiteral("Label3"), QStringLiteral("取込日付一覧表示"));
    auto* print = findChild<QPushButton*>(QStringLiteral("Command6"));
    print->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    print->setMinimumHeight(0);
    print->setAccessibleDescription(label->text());
    setOutput(print, Output::List);
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(print);
    row->addStretch();
    auto* column = static_cast<QVBoxLayout*>(layout());
    column->insertLayout(column->count() - 1, row);
}

void frmMenu000::Form_Load() {
    showMenuButton(this, false);
    const auto company = house_.global.cn_main->query(QStringLiteral("select 会社名 from 会社テーブル"));
    const QString registered = company.isEmpty() ? QString() : company.value(0).toText();
    house_.global.setCompanyPanel(registered.isEmpty() ? house_.global.panels.folder : registered);
    steps_->refresh();
}

void frmMenu000::activated() {
    forms::MenuForm::activated();
    forms::guarded(this, [this] { steps_->refresh(); });
}

void frmMenu000::done(int result) {
    QDir::setCurrent(house_.global.dataDir() + u'/' + house_.global.kaisha_folder);
    showMenuButton(this, true);
    forms::MenuForm::done(result);
}

}  // namespace shell
