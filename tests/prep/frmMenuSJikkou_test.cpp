#include "prep/frmMenuSJikkou.h"

#include "prep/run_screens.h"

namespace {

using namespace preptest;

class RunMenu : public RunScreens {
  protected:
    RunMenu() : RunScreens(Content::Empty) {
        global_.kijunbi = u"2003/4/1"_s;
        addPlain({u"frmSTaisyousya"_s, u"frmSHaibunjikkouK"_s, u"frmSJCheck"_s, u"frmSHaibunjikkouK2"_s,
                  u"frmSSanteishikiSub"_s, u"frmSSanteishitei"_s});
    }
    void open(const ScreenDriver::Step& step) { RunScreens::open<prep::frmMenuSJikkou>(step); }
    QString stored() { return read(u"SELECT 単価,端数処理 FROM Tanka_hasuu ORDER BY 基準日"_s).join(u' '); }
    static QString chosen(QDialog& menu) {
        return options(menu, u"Option1"_s, 5) + u' ' + options(menu, u"Option2"_s, 3);
    }
};

TEST_F(RunMenu, StoresTheRoundingOfItsDateWithTheCalculationOnly) {
    sql(u"INSERT INTO Tanka_hasuu(単価,端数処理,基準日) VALUES('1','1','2002-12-10')"_s);
    global_.setRunPanel(u"配分実行基準日: 2003年4月1日"_s);
    sql(u"INSERT INTO Sデータ取込年月日運用(基準日,賞与の内容) VALUES('2003-04-01','決算賞与')"_s);
    open([&](QDialog& menu) {
        EXPECT_EQ(text(menu, u"lblTitle"_s), u"配分実行メニュー　基準日 2003/4/1　決算賞与"_s);
        EXPECT_EQ(stored(), u"1|1 0|0"_s);  // at once, before anything is computed
        EXPECT_EQ(chosen(menu), u"Xxxxx Xxx"_s);
        click(menu, u"Option1_3"_s);
        click(menu, u"Option2_2"_s);
        expectScreen(u"frmSTaisyousya"_s);
        click(menu, u"Command1"_s);
        EXPECT_EQ(stored(), u"1|1 0|0"_s);
        EXPECT_EQ(chosen(menu), u"xxxXx xxX"_s);
        expectScreen(u"frmSHaibunjikkouK2"_s, [&](QDialog&) { EXPECT_EQ(stored(), u"1|1 3|2"_s); });
        press(menu, Qt::Key_K, Qt::AltModifier);
        click(menu, u"Option1_4"_s);  // a choice without the calculation is lost
        press(menu, Qt::Key_B, Qt::AltModifier);
        EXPECT_FALSE(menu.isVisible());
    });
    EXPECT_EQ(global_.panels.run, QString());
    sql(u"UPDATE Tanka_hasuu SET 端数処理 = '3' WHERE 単価 = '3'"_s);  // nothing that the menu knows
    open([&](QDialog& menu) {
        EXPECT_EQ(chosen(menu), u"xxxXx xxx"_s);
        expectScreen(u"frmSHaibunjikkouK2"_s);
        click(menu, u"Command7"_s);
        press(menu, Qt::Key_Escape);
        EXPECT_FALSE(menu.isVisible());
    });
    EXPECT_EQ(stored(), u"1|1 3|3"_s);  // nothing chosen: what is stored stands
    sql(u"UPDATE Tanka_hasuu SET 単価 = '5', 端数処理 = NULL"_s);
    open([&](QDialog& menu) { EXPECT_EQ(chosen(menu), u"xxxxx xxx"_s); });
}

TEST_F(RunMenu, OpensTheStepsInTheirModes) {
    global_.haibun_sekkei_mode = global_.jikkou_syuusei_mode = true;
    global_.haibun_jikkou_mode = false;
    open([&](QDialog& menu) {
        const auto opens = [&](const QString& button, const QString& screen, int design, int run, int fix) {
            expectScreen(screen, [&](QDialog&) {
                EXPECT_EQ(global_.haibun_sekkei_mode, design) << button.toStdString();
                EXPECT_EQ(global_.haibun_jikkou_mode, run) << button.toStdString();
                EXPECT_EQ(global_.jikkou_syuusei_mode, fix) << button.toStdString();
            });
            click(menu, button);
        };
        opens(u"Command1"_s, u"frmSTaisyousya"_s, 1, 0, 1);
        opens(u"Command3"_s, u"frmSHaibunjikkouK"_s, 1, 0, 1);
        opens(u"Command6"_s, u"frmSJCheck"_s, 1, 0, 1);
        opens(u"Command7"_s, u"frmSHaibunjikkouK2"_s, 1, 0, 1);
        opens(u"Command2"_s, u"frmSSanteishikiSub"_s, 0, 1, 1);
        opens(u"Command5"_s, u"frmSSanteishitei"_s, 0, 1, 0);
        opens(u"Command4"_s, u"frmSSanteishitei"_s, 0, 1, 1);
    });
}

TEST_F(RunMenu, TellsAFailureAndStaysUsable) {
    breakWrites(u"INSERT ON Tanka_hasuu"_s);
    driver_.answerFreely([](const shell::BoxRequest&) { return BoxAnswer::Ok; });
    open([&](QDialog& menu) {
        click(menu, u"Command7"_s);  // without its row the calculation must not start
        click(menu, u"Command10"_s);
        EXPECT_FALSE(menu.isVisible());
    });
    EXPECT_EQ(driver_.boxes().size(), 2U);
    EXPECT_EQ(driver_.screens(), QStringList{u"frmMenuSJikkou"_s});
    EXPECT_EQ(stored(), QString());
}

}  // namespace
