#include "main_screens.h"

#include "calc/frmSHaibunjikkouK2.h"
#include "prep/frmMenuSJikkou.h"
#include "prep/frmSDatatorikomi.h"
#include "prep/frmSSanteishikiSub.h"
#include "prep/frmSSanteishitei.h"
#include "prep/frmSSanteishitei2.h"
#if __has_include("prep/frmSTaisyousya.cpp")
#include "prep/frmSTaisyousya.h"
#endif
#include "reports/ui_snapshot_report.h"
#include "shell/frmAbout.h"
#include "shell/frmDBSentaku.h"
#include "shell/frmMenu000.h"
#include "shell/frmMenus.h"

namespace {

template <class Screen>
void add(shell::ScreenRegistry& screens, const char* name) {
    screens.add(QString::fromLatin1(name),
                [](shell::House& house, QWidget* parent) -> QDialog* { return new Screen(house, parent); });
}

void addShell(shell::ScreenRegistry& screens) {
    add<shell::frmDBSentaku>(screens, "frmDBSentaku");
    add<shell::frmMenu000>(screens, "frmMenu000");
    add<shell::frmAbout>(screens, "frmAbout");
    for (const QString& name : shell::frmMenus::names())
        screens.add(name, [name](shell::House& house, QWidget* parent) -> QDialog* {
            return new shell::frmMenus(name, house, parent);
        });
}

void addRun(shell::ScreenRegistry& screens) {
    add<prep::frmSDatatorikomi>(screens, "frmSDatatorikomi");
    add<prep::frmMenuSJikkou>(screens, "frmMenuSJikkou");
#if __has_include("prep/frmSTaisyousya.cpp")
    add<prep::frmSTaisyousya>(screens, "frmSTaisyousya");
#endif
    add<prep::frmSSanteishikiSub>(screens, "frmSSanteishikiSub");
    add<prep::frmSSanteishitei>(screens, "frmSSanteishitei");
    add<prep::frmSSanteishitei2>(screens, "frmSSanteishitei2");
    add<calc::frmSHaibunjikkouK2>(screens, "frmSHaibunjikkouK2");
}

}  // namespace

void registerScreens(shell::ScreenRegistry& screens) {
    addShell(screens);
    addRun(screens);
    // The list of snapshots is no screen of its own: the top menu opens its preview by this name.
    screens.add(QStringLiteral("frmHDataPrint"), reports::previewSnapshotDates);
}
