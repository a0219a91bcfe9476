#include "main_screens.h"

#include "calc/frmSHaibunjikkouK2.h"
#include "calc/frmSJCheck.h"
#include "calc/frmSNenkan.h"
#include "company/frmBackup.h"
#include "company/frmDBSentaku.h"
#include "company/frmHikkosi.h"
#include "company/frmKaisha.h"
#include "company/frmKaisyaSakujo.h"
#include "company/frmKaisyaShinki.h"
#include "company/frmPassword.h"
#include "company/frmSaiteki.h"
#include "masters/frmMasta.h"
#include "masters/frmMenuMasuta.h"
#include "personnel/frmJinjiCheck.h"
#include "personnel/frmJinjiIdou2.h"
#include "personnel/frmJinjiKazoku.h"
#include "personnel/frmJinjiSiborikomi.h"
#include "personnel/frmJinjiSiborikomi2.h"
#include "personnel/frmJinjiSikaku.h"
#include "personnel/frmJinjiTaisyokusyori.h"
#include "personnel/frmJinjiTorikomi.h"
#include "personnel/frmRireki.h"
#include "personnel/ui_code_change.h"
#include "prep/frmMenuSJikkou.h"
#include "prep/frmSDatatorikomi.h"
#include "prep/frmSHaibunjikkouK.h"
#include "prep/frmSJikkou01.h"
#include "prep/frmSJikkou02.h"
#include "prep/frmSJikkou03.h"
#include "prep/frmSJikkou03Sub.h"
#include "prep/frmSJikkou04.h"
#include "prep/frmSJikkou04Sub.h"
#include "prep/frmSSanteishikiSub.h"
#include "prep/frmSSanteishitei.h"
#include "prep/frmSSanteishitei2.h"
#include "prep/frmSTaisyousya.h"
#include "reports/ui_snapshot_report.h"
#include "reports/workbook.h"
#include "shell/frmAbout.h"
#include "shell/frmMenu000.h"
#include "shell/frmMenus.h"

namespace {

using Factory = forms::ScreenRegistry::Factory;
using Sheets = std::shared_ptr<reports::SheetFolder>;
using enum forms::HelpFile;

template <class Screen>
Factory make() {
    return [](forms::House& house, QWidget* parent) -> QDialog* { return new Screen(house, parent); };
}
/// A screen that sends spreadsheets.
template <class Screen>
Factory make(const Sheets& sheets) {
    return [sheets](forms::House& house, QWidget* parent) -> QDialog* {
        return new Screen(house, *sheets, parent);
    };
}
Factory menu(const char* name) {
    return [name](forms::House& house, QWidget* parent) -> QDialog* {
        return new shell::frmMenus(QString::fromLatin1(name), house, parent);
    };
}

void addMasters(forms::ScreenRegistry& screens) {
    for (const masters::MasterKind& kind : masters::masterKinds())
        screens.add(
            kind.screen,
            [&kind](forms::House& house, QWidget* parent) -> QDialog* {
                return new masters::frmMasta(kind, house, parent);
            },
            forms::HelpTopic{Jhelp, kind.help});
}

}  // namespace

void registerScreens(forms::ScreenRegistry& screens, const QString& sheetFolder) {
    screens.companyOpened = personnel::askCutOffChange;
    const auto sheets = std::make_shared<reports::SheetFolder>(reports::SheetFolder::Options{
        sheetFolder.isEmpty() ? reports::SheetFolder::defaultFolder() : sheetFolder});
    const struct {
        const char* name;
        Factory factory;
        std::optional<forms::HelpTopic> help;
    } lines[] = {
        {"frmMenu000", make<shell::frmMenu000>(), {{Mhelp, 1000}}},
        {"frmMenuMasuta", make<masters::frmMenuMasuta>(), {{Mhelp, 1001}}},
        {"frmMenuJinji", menu("frmMenuJinji"), {{Mhelp, 1002}}},
        {"frmMenuJinjiSub", menu("frmMenuJinjiSub"), {{Mhelp, 1003}}},
        {"frmMenuJinjiTaisyoku", menu("frmMenuJinjiTaisyoku"), {{Mhelp, 1004}}},
        {"frmMenuSSyouyo", menu("frmMenuSSyouyo"), {{Mhelp, 7503}}},
        {"frmMenuSJikkou", make<prep::frmMenuSJikkou>(), {{Mhelp, 7500}}},
        {"frmAbout", make<shell::frmAbout>(), {}},
        {"frmDBSentaku", make<company::frmDBSentaku>(), {{Jhelp, 3}}},
        {"frmBackup", make<company::frmBackup>(), {{Jhelp, 5}}},
        {"frmSaiteki", make<company::frmSaiteki>(), {{Jhelp, 6}}},
        {"frmKaisyaShinki", make<company::frmKaisyaShinki>(), {{Jhelp, 4}}},
        {"frmPassword", make<company::frmPassword>(), {{Jhelp, 7}}},
        {"frmHikkosi", make<company::frmHikkosi>(), {{Jhelp, 9}}},
        {"frmKaisyaSakujo", make<company::frmKaisyaSakujo>(), {{Jhelp, 8}}},
        {"frmKaisha", make<company::frmKaisha>(), {{Jhelp, 2001}}},
        {"frmRireki", make<personnel::frmRireki>(), {{Jhelp, 3028}}},
        {"frmJinjiIdou2", make<personnel::frmJinjiIdou2>(), {{Jhelp, 3002}}},
        {"frmJinjiKazoku", make<personnel::frmJinjiKazoku>(), {{Jhelp, 3003}}},
        {"frmJinjiSikaku", make<personnel::frmJinjiSikaku>(), {{Jhelp, 3006}}},
        {"frmJinjiTaisyokusyori", make<personnel::frmJinjiTaisyokusyori>(), {{Jhelp, 3007}}},
        {"frmJinjiCheck", make<personnel::frmJinjiCheck>(), {{Jhelp, 3001}}},
        {"frmJinjiTorikomi", make<personnel::frmJinjiTorikomi>(), {{Jhelp, 3101}}},
        {"frmJinjiSiborikomi", make<personnel::frmJinjiSiborikomi>(sheets), {{Jhelp, 3004}}},
        {"frmJinjiSiborikomi2", make<personnel::frmJinjiSiborikomi2>(sheets), {{Jhelp, 3005}}},
        {"frmSDatatorikomi", make<prep::frmSDatatorikomi>(), {{Shelp, 7001}}},
        {"frmSTaisyousya", make<prep::frmSTaisyousya>(), {{Shelp, 7501}}},
        {"frmSSanteishikiSub", make<prep::frmSSanteishikiSub>(), {{Shelp, 7029}}},
        {"frmSSanteishitei", make<prep::frmSSanteishitei>(), {{Shelp, 7030}}},
        {"frmSSanteishitei2", make<prep::frmSSanteishitei2>(), {{Shelp, 7031}}},
        {"frmSHaibunjikkouK", make<prep::frmSHaibunjikkouK>(), {{Shelp, 7003}}},
        {"frmSJikkou01", make<prep::frmSJikkou01>(), {{Shelp, 7009}}},
        {"frmSJikkou02", make<prep::frmSJikkou02>(), {{Shelp, 7010}}},
        {"frmSJikkou03", make<prep::frmSJikkou03>(), {{Shelp, 7011}}},
        {"frmSJikkou03Sub", make<prep::frmSJikkou03Sub>(), {{Shelp, 7012}}},
        {"frmSJikkou04", make<prep::frmSJikkou04>(), {{Shelp, 7013}}},
        {"frmSJikkou04Sub", make<prep::frmSJikkou04Sub>(), {{Shelp, 7014}}},
        {"frmSHaibunjikkouK2", make<calc::frmSHaibunjikkouK2>(sheets), {{Shelp, 7004}}},
        {"frmSJCheck", make<calc::frmSJCheck>(sheets), {{Shelp, 7200}}},
        {"frmSNenkan", make<calc::frmSNenkan>(sheets), {{Shelp, 7027}}},
        // The list of snapshots is no screen of its own: the top menu opens its preview by this name.
        {"frmHDataPrint", reports::previewSnapshotDates, {}},
    };
    for (const auto& [name, factory, help] : lines) screens.add(QString::fromLatin1(name), factory, help);
    addMasters(screens);
}
