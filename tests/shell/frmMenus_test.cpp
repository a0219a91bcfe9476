#include "shell/frmMenus.h"

#include "shell/frmMenu000.h"
#include "support/house_screens.h"

namespace shell {
namespace {

using namespace Qt::StringLiterals;
using namespace support;

struct NamedFlag {
    const char* name;
    bool forms::GlobalRecord::*flag;
};
constexpr NamedFlag kFlags[] = {
    {"zenin", &forms::GlobalRecord::rireki_zenin},
    {"joukenn", &forms::GlobalRecord::jinji_mode_joukenn},
    {"daichou", &forms::GlobalRecord::jinji_mode_daichou},
    {"taisyoku", &forms::GlobalRecord::jinji_mode_taisyoku},
    {"fukkatsu", &forms::GlobalRecord::jinji_mode_fukkatsu},
    {"taisyokusya", &forms::GlobalRecord::jinji_mode_taisyokusya},
    {"yoteisya", &forms::GlobalRecord::jinji_mode_yoteisya},
    {"excel", &forms::GlobalRecord::jinji_mode_excel},
    {"kazoku", &forms::GlobalRecord::jinji_mode_kazoku},
    {"kazoku_excel", &forms::GlobalRecord::jinji_mode_kazoku_excel},
    {"shikaku", &forms::GlobalRecord::jinji_mode_shikaku},
    {"shikaku_excel", &forms::GlobalRecord::jinji_mode_shikaku_excel},
    {"sekkei", &forms::GlobalRecord::haibun_sekkei_mode},
    {"jikkou", &forms::GlobalRecord::haibun_jikkou_mode},
};

/// What a press does: the screen it opens, the flag that stands then, and the flags that it takes away:
/// "modes" are those of the personnel selection but for the one set.
const struct {
    const char *menu, *control, *screen, *set, *cleared;
} kPresses[] = {
    {"frmMenuSSyouyo", "Command1", "frmSHaibunSekkei", "sekkei", "jikkou"},
    {"frmMenuSSyouyo", "Command2", "frmSDatatorikomi", "jikkou", "sekkei"},
    {"frmMenuSSyouyo", "Command4", "frmSNenkan", "", ""},
    {"frmMenuJinji", "Command1", "frmJinjiCheck", "", ""},
    {"frmMenuJinji", "Command2", "frmMenuJinjiSub", "", ""},
    {"frmMenuJinji", "Command4", "frmMenuJinjiTaisyoku", "", ""},
    {"frmMenuJinjiSub", "Command1", "frmRireki", "zenin", ""},
    {"frmMenuJinjiSub", "Command2", "frmJinjiSiborikomi", "joukenn", "zenin modes"},
    {"frmMenuJinjiSub", "Command4", "frmJinjiSiborikomi", "daichou", "zenin modes"},
    {"frmMenuJinjiSub", "Command5", "frmJinjiSiborikomi", "excel", "zenin modes"},
    {"frmMenuJinjiSub", "Command6", "frmJinjiSiborikomi", "kazoku", "zenin modes"},
    {"frmMenuJinjiSub", "Command7", "frmJinjiSiborikomi", "kazoku_excel", "zenin modes"},
    {"frmMenuJinjiSub", "Command8", "frmJinjiSiborikomi", "shikaku", "zenin modes"},
    {"frmMenuJinjiSub", "Command9", "frmJinjiSiborikomi", "shikaku_excel", "zenin modes"},
    {"frmMenuJinjiSub", "Command10", "frmJinjiTorikomi", "", ""},
    {"frmMenuJinjiTaisyoku", "Command1", "frmJinjiSiborikomi", "yoteisya", "modes"},
    {"frmMenuJinjiTaisyoku", "Command2", "frmJinjiSiborikomi", "taisyoku", "modes"},
    {"frmMenuJinjiTaisyoku", "Command3", "frmJinjiSiborikomi2", "taisyokusya", "fukkatsu"},
    {"frmMenuJinjiTaisyoku", "Command5", "frmJinjiSiborikomi2", "fukkatsu", "taisyokusya"},
};

using Menus = HouseScreens;

TEST_F(Menus, EachButtonSetsItsModesAndOpensItsScreen) {
    for (const auto& p : kPresses) addScreen(QString::fromLatin1(p.screen));
    for (const auto& p : kPresses) {
        SCOPED_TRACE(std::string(p.menu) + p.control);
        const QStringList cleared = QString::fromLatin1(p.cleared).split(u' ');
        frmMenus form(QString::fromLatin1(p.menu), house_, nullptr);
        driver_.run(form, [&](QDialog& shown) {
            for (const bool before : {true, false}) {
                for (const NamedFlag& flag : kFlags) global_.*flag.flag = before;
                driver_.onScreen(QString::fromLatin1(p.screen), [&](QDialog& child) {
                    for (const NamedFlag& flag : kFlags) {
                        const QString name = QString::fromLatin1(flag.name);
                        const bool mode = name != u"zenin" && name != u"sekkei" && name != u"jikkou";
                        const bool gone = cleared.contains(name) || (mode && cleared.contains(u"modes"_s));
                        EXPECT_EQ(global_.*flag.flag, name == QLatin1String(p.set) || (before && !gone))
                            << flag.name;
                    }
                    child.reject();
                });
                click(shown, QString::fromLatin1(p.control));
            }
            click(shown, u"Command11"_s);
            press(shown, Qt::Key_Escape);
        });
        EXPECT_EQ(helped_.last(), QString::fromLatin1(p.menu));
    }
}

/// frmMenu000 with the company open as far as its load needs it.
class Menu000 : public OverMain {
  protected:
    Menu000() {
        global_.setFolderPanel(u"甲社"_s);
        global_.cn_main = company_.open();
    }
    void open(ScreenDriver::Step step) {
        frmMenu000 menu(house_, &main_);
        driver_.run(menu, std::move(step));
    }
};

TEST_F(Menu000, TheCompanyCountsAsOpenUnderItsRegisteredNameOrItsFolder) {
    const QString named = u"UPDATE 会社テーブル SET 会社名 = "_s;
    const std::pair<QString, QString> cases[] = {{named + u"'株式会社 甲'"_s, u"株式会社 甲"_s},
                                                 {named + u"''"_s, u"甲社"_s},
                                                 {named + u"NULL"_s, u"甲社"_s},
                                                 {u"DELETE FROM 会社テーブル"_s, u"甲社"_s}};
    for (const auto& [sql, shown] : cases) {
        global_.cn_main->execute(sql);
        global_.setCompanyPanel(forms::kNoCompanyPrompt);
        open([&](QDialog& menu) {
            EXPECT_EQ(global_.panels.company, shown);
            EXPECT_FALSE(command1_->isVisible());
            menu.close();  // the box of the window closes it as 終了 does
        });
        EXPECT_TRUE(command1_->isVisible());
        EXPECT_TRUE(global_.cn_main);
        EXPECT_EQ(QDir::current(), QDir(global_.dataDir()));
    }
}

TEST_F(Menu000, ACompanyThatCannotBeReadIsToldAndDoesNotCountAsOpen) {
    global_.cn_main->execute(u"DROP TABLE 会社テーブル"_s);
    driver_.answerFreely([](const forms::BoxRequest& box) {
        EXPECT_EQ(box.title, QString());
        EXPECT_FALSE(box.text.isEmpty());
        return forms::BoxAnswer::Ok;
    });
    open([&](QDialog& menu) { click(menu, u"Command9"_s); });
    EXPECT_EQ(driver_.boxes().size(), 1u);
    EXPECT_FALSE(global_.companyOpen());
}

}  // namespace
}  // namespace shell
