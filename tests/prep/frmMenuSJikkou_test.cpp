#include "prep/frmMenuSJikkou.h"

#include "prep/run_screens.h"

namespace {

using namespace preptest;

class RunMenu : public RunScreens {
  protected:
    RunMenu() : RunScreens(Content::Empty) { global_.kijunbi = u"2003/4/1"_s; }
    QStringList stored() { return read(u"SELECT 単価,端数処理,基準日 FROM Tanka_hasuu"_s); }
};

TEST_F(RunMenu, StoresTheRoundingWithTheCalculationOnly) {
    const QStringList fresh{u"0|0|2003/4/1"_s}, chosen{u"3|2|2003/4/1"_s};
    addPlain({u"frmSHaibunjikkouK2"_s, u"frmSTaisyousya"_s});
    global_.setRunPanel(u"配分実行基準日: 2003年4月1日"_s);
    open<prep::frmMenuSJikkou>([&](QDialog& menu) {
        EXPECT_EQ(stored(), fresh);  // at once, before anything is computed
        EXPECT_TRUE(checked(menu, u"Option1_0"_s) && checked(menu, u"Option2_0"_s));
        click(menu, u"Option1_3"_s);
        click(menu, u"Option2_2"_s);
        expectScreen(u"frmSTaisyousya"_s);
        click(menu, u"Command1"_s);
        EXPECT_EQ(stored(), fresh);
        EXPECT_TRUE(checked(menu, u"Option1_3"_s) && checked(menu, u"Option2_2"_s));
        expectScreen(u"frmSHaibunjikkouK2"_s, [&](QDialog&) { EXPECT_EQ(stored(), chosen); });
        press(menu, Qt::Key_K, Qt::AltModifier);
        click(menu, u"Option1_4"_s);  // a choice without the calculation is lost
        click(menu, u"Command11"_s);
        EXPECT_EQ(help_, u"frmMenuSJikkou"_s);
        press(menu, Qt::Key_B, Qt::AltModifier);
        EXPECT_FALSE(menu.isVisible());
    });
    EXPECT_EQ(global_.panels.run, QString());
    EXPECT_EQ(stored(), chosen);
    sql(u"UPDATE Tanka_hasuu SET 端数処理 = '7'"_s);
    open<prep::frmMenuSJikkou>([&](QDialog& menu) {
        EXPECT_TRUE(checked(menu, u"Option1_3"_s));
        for (const QString& rounding : {u"Option2_0"_s, u"Option2_1"_s, u"Option2_2"_s})
            EXPECT_FALSE(checked(menu, rounding));
        press(menu, Qt::Key_Escape);
        EXPECT_FALSE(menu.isVisible());
    });
}

TEST_F(RunMenu, OpensTheStepsThatAreBuiltInTheirModes) {
    const struct {
        QString button, screen, flags;  ///< 設計, 実行, 修正 after the click
    } steps[] = {
        {u"Command1"_s, u"frmSTaisyousya"_s, u"101"_s},
        {u"Command3"_s, u"frmSHaibunjikkouK"_s, u"101"_s},
        {u"Command6"_s, u"frmSJCheck"_s, u"101"_s},
        {u"Command7"_s, u"frmSHaibunjikkouK2"_s, u"101"_s},
        {u"Command2"_s, u"frmSSanteishikiSub"_s, u"011"_s},
        {u"Command5"_s, u"frmSSanteishitei"_s, u"010"_s},
        {u"Command4"_s, u"frmSSanteishitei"_s, u"011"_s},
    };
    global_.haibun_sekkei_mode = global_.jikkou_syuusei_mode = true;
    global_.haibun_jikkou_mode = false;
    open<prep::frmMenuSJikkou>([&](QDialog& menu) {
        for (const auto& step : steps) EXPECT_FALSE(enabled(menu, step.button)) << step.button.toStdString();
    });
    for (const auto& step : steps) addPlain({step.screen});
    open<prep::frmMenuSJikkou>([&](QDialog& menu) {
        for (const auto& step : steps) {
            expectScreen(step.screen, [&](QDialog&) {
                QString flags;
                for (bool flag :
                     {global_.haibun_sekkei_mode, global_.haibun_jikkou_mode, global_.jikkou_syuusei_mode})
                    flags += flag ? u'1' : u'0';
                EXPECT_EQ(flags, step.flags) << step.button.toStdString();
            });
            click(menu, step.button);
        }
    });
}

TEST_F(RunMenu, TellsAFailureAndStaysUsable) {
    addPlain({u"frmSHaibunjikkouK2"_s});
    breakWrites(u"INSERT ON Tanka_hasuu"_s);
    driver_.answerFreely([](const shell::BoxRequest&) { return BoxAnswer::Ok; });
    open<prep::frmMenuSJikkou>([&](QDialog& menu) {
        click(menu, u"Command7"_s);  // without its row the calculation must not start
        click(menu, u"Command10"_s);
        EXPECT_FALSE(menu.isVisible());
    });
    EXPECT_EQ(driver_.boxes().size(), 2U);
    EXPECT_EQ(driver_.screens(), QStringList{u"frmMenuSJikkou"_s});
    EXPECT_EQ(stored(), QStringList());
}

}  // namespace
