#include "company/ui_company_opening.h"

#include <QDialog>
#include <QDir>
#include <memory>

#include "company/company_open.h"
#include "company/frmPassword.h"
#include "company/key.h"
#include "company/opening_password.h"
#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/menu_form.h"

namespace company {
namespace {

void tellFailure(widgets::Form* screen, const OpenedCompany& opened, const QString& name) {
    const QString kConfirmTitle = QStringLiteral("会社指定の確認");
    switch (opened.outcome) {
        case OpenedCompany::Outcome::Opened:
            break;
        case OpenedCompany::Outcome::InUse:
            forms::tell(
                screen,
                QStringLiteral("『%"
                               "1』は、ほかの人またはほかの画面が使用しています。\n使用が終わってから、もう"
                               "一度指定してください。")
                    .arg(name),
                kConfirmTitle, forms::BoxIcon::Warning);
            break;
        case OpenedCompany::Outcome::LinkFailed:
            forms::tell(screen, QStringLiteral("リンク更新できませんでした。\n") + opened.link_error_text,
                        QStringLiteral("リンク更新エラー"), forms::BoxIcon::Critical);
            break;
        case OpenedCompany::Outcome::CompanionMissing:
            forms::tell(screen,
                        QStringLiteral("「") + name +
                            QStringLiteral("」は『報酬図鑑ZEN』を利用しています。\n『報酬図鑑ZEN』を"
                                           "インストールしないと処理できません。"),
                        QStringLiteral("処理不能"), forms::BoxIcon::Critical);
            break;
    }
}

void keep(forms::GlobalRecord& global, OpenedCompany opened) {
    if (opened.outcome == OpenedCompany::Outcome::InUse) return;
    global.link_error_text = opened.link_error_text;
    global.link_chingin_pass = false;
    global.link_kihon_pass = true;
    if (!opened.cn_main) return;
    // The connection of an earlier try goes before its lock does.
    global.cn_main = std::move(opened.cn_main);
    global.company_lock = std::move(opened.lock);
}

}  // namespace

namespace {

bool askForKey(const forms::House& house, widgets::Form* screen, const QString& folder,
               const QString& company) {
    const auto attempt = [&](const QString& typed, const QDateTime& now) {
        return tryKey(house.global.places(), folder, typed, now);
    };
    return screen->showChild(new frmPasswordKakunin(screen, company, true, attempt)) == QDialog::Accepted;
}

bool mayOpen(const forms::House& house, widgets::Form* screen, OpenedCompany& opened,
             const QString& company) {
    store::Connection& cn = *opened.cn_main;
    if (filesLocked(house.global.dataDir() + u'/' + company) || !hasOpeningPassword(cn)) return true;
    const auto attempt = [&cn](const QString& typed, const QDateTime& now) {
        return tryOpeningPassword(cn, typed, now);
    };
    return screen->showChild(new frmPasswordKakunin(screen, company, false, attempt)) == QDialog::Accepted;
}

}  // namespace

bool unlockForHouse(forms::House& house, widgets::Form* screen, const QString& folder,
                    const QString& company) {
    return keyKnown(folder) || askForKey(house, screen, folder, company);
}

bool openForHouse(forms::House& house, widgets::Form* screen, const QString& company, bool passwordKnown) {
    using Outcome = OpenedCompany::Outcome;
    auto& global = house.global;
    const QString folder = global.dataDir() + u'/' + company;
    // Whoever opens a company knows its password, even where this process does.
    if (!passwordKnown && filesLocked(folder) && !askForKey(house, screen, folder, company)) return false;
    screen->setHourglass();
    global.setFolderPanel(company);
    QDir::setCurrent(folder);
    OpenedCompany opened = openCompany(global.places(), company, global.company_lock);
    const Outcome outcome = opened.outcome;
    if (outcome != Outcome::LinkFailed) QDir::setCurrent(global.dataDir());
    if (outcome != Outcome::Opened) tellFailure(screen, opened, company);
    if (outcome == Outcome::Opened && !passwordKnown && !mayOpen(house, screen, opened, company))
        return false;
    keep(global, std::move(opened));
    if (outcome == Outcome::LinkFailed) forms::endProcess(house);
    if (outcome != Outcome::Opened) return false;
    forgetKeys(folder);
    rememberCompany(global.places(), company);
    if (house.screens.companyOpened) house.screens.companyOpened(house, screen);
    return true;
}

void showCompanyMenu(forms::House& house, const widgets::Form* screen) {
    if (auto* command1 = forms::mainControl(screen, QStringLiteral("Command1"))) command1->hide();
    const std::unique_ptr<QDialog> menu(
        house.screens.create(QStringLiteral("frmMenu000"), house, screen->parentWidget()));
    if (menu) menu->exec();
    house.global.link_chingin_pass = false;
    house.global.link_kihon_pass = false;
}

void closeForHouse(forms::House& house, const widgets::Form* screen) {
    house.global.closeCompany();
    house.global.setCompanyPanel(forms::kNoCompanyPrompt);
    if (auto* command1 = forms::mainControl(screen, QStringLiteral("Command1"))) command1->hide();
}

void letGoOfUnopened(forms::House& house) {
    if (house.global.cn_main && !house.global.companyOpen()) house.global.closeCompany();
}

QString openCompanyName(const forms::House& house) {
    const auto& global = house.global;
    return global.companyOpen() && global.company_lock ? global.company_lock->company() : QString();
}

}  // namespace company
