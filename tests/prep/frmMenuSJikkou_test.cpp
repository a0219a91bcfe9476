#include "prep/frmMenuSJikkou.h"

#include <gtest/gtest.h>

#include "shell/global_record.h"
#include "support/company_fixture.h"
#include "support/screen_driver.h"

namespace {

using namespace Qt::StringLiterals;
using namespace support;

class RunMenu : public ::testing::Test {
  protected:
    RunMenu() : house_{global_, screens_} {
        folder_.makeEmpty();
        global_.cn_main = folder_.open();
        global_.kijunbi = u"2003/4/1"_s;
        global_.setRunPanel(u"配分実行基準日: 2003年4月1日"_s);
        house_.help = [this](const QString& screen) { help_ = screen; };
    }
    /// A run screen that only tells that it was there.
    void addScreen(const QString& name) {
        screens_.add(
            name, [name](shell::House&, QWidget* parent) { return new widgets::Form(name, name, parent); });
    }
    void open(ScreenDriver::Step step) {
        prep::frmMenuSJikkou menu(house_, nullptr);
        driver_.run(menu, std::move(step));
    }
    QString stored() {
        QStringList rows;
        for (auto set = global_.cn_main->query(u"SELECT 単価,端数処理,基準日 FROM Tanka_hasuu"_s); !set.eof();
             set.moveNext())
            rows << set.value(0).toText() + set.value(1).toText() + u' ' + set.value(2).toText();
        return rows.join(u';');
    }

    CompanyFolder folder_;
    shell::GlobalRecord global_;
    shell::ScreenRegistry screens_;
    shell::House house_;
    ScreenDriver driver_;
    QString help_;
};

TEST_F(RunMenu, StoresTheRoundingWithTheCalculationOnly) {
    addScreen(u"frmSHaibunjikkouK2"_s);
    addScreen(u"frmSTaisyousya"_s);
    open([&](QDialog& menu) {
        EXPECT_EQ(stored(), u"00 2003/4/1"_s);  // at once, before anything is computed
        EXPECT_TRUE(checked(menu, u"Option1_0"_s) && checked(menu, u"Option2_0"_s));
        click(menu, u"Option1_3"_s);
        click(menu, u"Option2_2"_s);
        driver_.onScreen(u"frmSTaisyousya"_s, [](QDialog& form) { form.reject(); });
        click(menu, u"Command1"_s);
        EXPECT_EQ(stored(), u"00 2003/4/1"_s);
        EXPECT_TRUE(checked(menu, u"Option1_3"_s) && checked(menu, u"Option2_2"_s));
        driver_.onScreen(u"frmSHaibunjikkouK2"_s, [&](QDialog& form) {
            EXPECT_EQ(stored(), u"32 2003/4/1"_s);
            form.reject();
        });
        press(menu, Qt::Key_K, Qt::AltModifier);
        click(menu, u"Option1_4"_s);  // a choice without the calculation is lost
        click(menu, u"Command11"_s);
        EXPECT_EQ(help_, u"frmMenuSJikkou"_s);
        press(menu, Qt::Key_B, Qt::AltModifier);
    });
    EXPECT_EQ(global_.panels.run, QString());
    EXPECT_EQ(stored(), u"32 2003/4/1"_s);
    global_.cn_main->execute(u"UPDATE Tanka_hasuu SET 端数処理 = '7'"_s);
    open([&](QDialog& menu) {
        EXPECT_TRUE(checked(menu, u"Option1_3"_s));
        EXPECT_FALSE(checked(menu, u"Option2_0"_s) || checked(menu, u"Option2_1"_s) ||
                     checked(menu, u"Option2_2"_s));
        press(menu, Qt::Key_Escape);
    });
}

TEST_F(RunMenu, OpensTheStepsThatAreBuiltInTheirModes) {
    struct Step {
        QString button;
        QString screen;
        QString flags;  ///< 設計, 実行, 修正 after the click
    };
    const Step steps[] = {
        {u"Command1"_s, u"frmSTaisyousya"_s, u"101"_s},
        {u"Command3"_s, u"frmSHaibunjikkouK"_s, u"101"_s},
        {u"Command6"_s, u"frmSJCheck"_s, u"101"_s},
        {u"Command7"_s, u"frmSHaibunjikkouK2"_s, u"101"_s},
        {u"Command2"_s, u"frmSSanteishikiSub"_s, u"011"_s},
        {u"Command5"_s, u"frmSSanteishitei"_s, u"010"_s},
        {u"Command4"_s, u"frmSSanteishitei"_s, u"011"_s},
    };
    global_.haibun_sekkei_mode = global_.jikkou_syuusei_mode = true;
    open([&](QDialog& menu) {
        for (const Step& step : steps) EXPECT_FALSE(enabled(menu, step.button)) << step.button.toStdString();
        click(menu, u"Command10"_s);
    });
    for (const Step& step : steps) addScreen(step.screen);
    open([&](QDialog& menu) {
        for (const Step& step : steps) {
            driver_.onScreen(step.screen, [&](QDialog& form) {
                const bool flags[] = {global_.haibun_sekkei_mode, global_.haibun_jikkou_mode,
                                      global_.jikkou_syuusei_mode};
                QString digits;
                for (bool flag : flags) digits += flag ? u'1' : u'0';
                EXPECT_EQ(digits, step.flags) << step.button.toStdString();
                form.reject();
            });
            click(menu, step.button);
        }
        click(menu, u"Command10"_s);
    });
}

TEST_F(RunMenu, TellsAFailureAndStaysUsable) {
    addScreen(u"frmSHaibunjikkouK2"_s);
    global_.cn_main->execute(
        u"CREATE TRIGGER 故障 BEFORE INSERT ON Tanka_hasuu BEGIN SELECT RAISE(ABORT, 'fault'); END"_s);
    driver_.answerFreely([](const shell::BoxRequest&) { return shell::BoxAnswer::Ok; });
    open([&](QDialog& menu) {
        click(menu, u"Command7"_s);  // without its row the calculation must not start
        click(menu, u"Command10"_s);
    });
    EXPECT_EQ(driver_.boxes().size(), 2U);
    EXPECT_EQ(driver_.screens(), QStringList{u"frmMenuSJikkou"_s});
    EXPECT_EQ(stored(), QString());
}

}  // namespace
