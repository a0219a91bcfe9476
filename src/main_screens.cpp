#include "main_screens.h"

#include "calc/frmSHaibunjikkouK2.h"
#include "calc/frmSJCheck.h"
#include "calc/frmSNenkan.h"
#include "company/frmDBSentaku.h"
#include "company/frmKaisha.h"
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

template <class Screen>
void add(forms::ScreenRegistry& screens, const char* name) {
    screens.add(QString::fromLatin1(name),
                [](forms::House& house, QWidget* parent) -> QDialog* { return new Screen(house, parent); });
}

void addShell(forms::ScreenRegistry& screens) {
    add<company::frmDBSentaku>(screens, "frmDBSentaku");
    add<shell::frmMenu000>(screens, "frmMenu000");
    add<shell::frmAbout>(screens, "frmAbout");
    add<company::frmKaisha>(screens, "frmKaisha");
    for (const QString& name : shell::frmMenus::names())
        screens.add(name, [name](forms::House& house, QWidget* parent) -> QDialog* {
            return new shell::frmMenus(name, house, parent);
        });
}

void addRecords(forms::ScreenRegistry& screens) {
    add<personnel::frmRireki>(screens, "frmRireki");
    add<personnel::frmJinjiIdou2>(screens, "frmJinjiIdou2");
    add<personnel::frmJinjiTaisyokusyori>(screens, "frmJinjiTaisyokusyori");
    add<personnel::frmJinjiCheck>(screens, "frmJinjiCheck");
    add<personnel::frmJinjiKazoku>(screens, "frmJinjiKazoku");
    add<personnel::frmJinjiSikaku>(screens, "frmJinjiSikaku");
}

void addMasters(forms::ScreenRegistry& screens) {
    add<masters::frmMenuMasuta>(screens, "frmMenuMasuta");
    for (const masters::MasterKind& kind : masters::masterKinds())
        screens.add(kind.screen, [&kind](forms::House& house, QWidget* parent) -> QDialog* {
            return new masters::frmMasta(kind, house, parent);
        });
}

void addRun(forms::ScreenRegistry& screens) {
    add<prep::frmSDatatorikomi>(screens, "frmSDatatorikomi");
    add<prep::frmMenuSJikkou>(screens, "frmMenuSJikkou");
    add<prep::frmSTaisyousya>(screens, "frmSTaisyousya");
    add<prep::frmSHaibunjikkouK>(screens, "frmSHaibunjikkouK");
    add<prep::frmSSanteishikiSub>(screens, "frmSSanteishikiSub");
    add<prep::frmSSanteishitei>(screens, "frmSSanteishitei");
    add<prep::frmSSanteishitei2>(screens, "frmSSanteishitei2");
    add<prep::frmSJikkou01>(screens, "frmSJikkou01");
    add<prep::frmSJikkou02>(screens, "frmSJikkou02");
    add<prep::frmSJikkou03Sub>(screens, "frmSJikkou03Sub");
    add<prep::frmSJikkou03>(screens, "frmSJikkou03");
    add<prep::frmSJikkou04Sub>(screens, "frmSJikkou04Sub");
    add<prep::frmSJikkou04>(screens, "frmSJikkou04");
}

template <class Screen>
void addSender(forms::ScreenRegistry& screens, const char* name,
               const std::shared_ptr<reports::SheetFolder>& sheets) {
    screens.add(QString::fromLatin1(name), [sheets](forms::House& house, QWidget* parent) -> QDialog* {
        return new Screen(house, *sheets, parent);
    });
}

void addSelection(forms::ScreenRegistry& screens, const std::shared_ptr<reports::SheetFolder>& sheets) {
    addSender<personnel::frmJinjiSiborikomi>(screens, "frmJinjiSiborikomi", sheets);
    addSender<personnel::frmJinjiSiborikomi2>(screens, "frmJinjiSiborikomi2", sheets);
    add<personnel::frmJinjiTorikomi>(screens, "frmJinjiTorikomi");
}

void addCalculation(forms::ScreenRegistry& screens, const std::shared_ptr<reports::SheetFolder>& sheets) {
    addSender<calc::frmSHaibunjikkouK2>(screens, "frmSHaibunjikkouK2", sheets);
    addSender<calc::frmSJCheck>(screens, "frmSJCheck", sheets);
    addSender<calc::frmSNenkan>(screens, "frmSNenkan", sheets);
}

}  // namespace

void registerScreens(forms::ScreenRegistry& screens, const QString& sheetFolder) {
    screens.companyOpened = personnel::askCutOffChange;
    addShell(screens);
    addMasters(screens);
    addRecords(screens);
    addRun(screens);
    const auto sheets = std::make_shared<reports::SheetFolder>(reports::SheetFolder::Options{
        sheetFolder.isEmpty() ? reports::SheetFolder::defaultFolder() : sheetFolder});
    addSelection(screens, sheets);
    addCalculation(screens, sheets);
    // The list of snapshots is no screen of its own: the top menu opens its preview by this name.
    screens.add(QStringLiteral("frmHDataPrint"), reports::previewSnapshotDates);
}
