#include "shell/frmMenus.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QMainWindow>
#include <QPushButton>

#include "screen_driver.h"
#include "shell/frmMenu000.h"
#include "shell/global_record.h"
#include "support/company_fixture.h"

namespace shell {
namespace {

using namespace Qt::StringLiterals;
using namespace support;

struct NamedFlag {
    const char* name;
    bool GlobalRecord::*flag;
};
constexpr NamedFlag kFlags[] = {
    {"zenin", &GlobalRecord::rireki_zenin},
    {"joukenn", &GlobalRecord::jinji_mode_joukenn},
    {"daichou", &GlobalRecord::jinji_mode_daichou},
    {"taisyoku", &GlobalRecord::jinji_mode_taisyoku},
    {"fukkatsu", &GlobalRecord::jinji_mode_fukkatsu},
    {"taisyokusya", &GlobalRecord::jinji_mode_taisyokusya},
    {"yoteisya", &GlobalRecord::jinji_mode_yoteisya},
    {"excel", &GlobalRecord::jinji_mode_excel},
    {"kazoku", &GlobalRecord::jinji_mode_kazoku},
    {"kazoku_excel", &GlobalRecord::jinji_mode_kazoku_excel},
    {"shikaku", &GlobalRecord::jinji_mode_shikaku},
    {"shikaku_excel", &GlobalRecord::jinji_mode_shikaku_excel},
    {"sekkei", &GlobalRecord::haibun_sekkei_mode},
    {"jikkou", &GlobalRecord::haibun_jikkou_mode},
};

/// What a press does: the screen it opens, and the flags that stand then when all (or none) stood before.
struct Press {
    const char* control;
    const char* caption;
    const char* screen;
    const char* flagsFromAll;
    const char* flagsFromNone;
};
struct Menu {
    const char* name;
    const char* caption;
    std::vector<Press> presses;
    const char* back;
    const char* backCaption;
};

constexpr const char* kAll =
    "zenin joukenn daichou taisyoku fukkatsu taisyokusya yoteisya excel kazoku kazoku_excel shikaku "
    "shikaku_excel sekkei jikkou";
constexpr const char* kNotSekkei =
    "zenin joukenn daichou taisyoku fukkatsu taisyokusya yoteisya excel kazoku kazoku_excel shikaku "
    "shikaku_excel jikkou";
constexpr const char* kNotJikkou =
    "zenin joukenn daichou taisyoku fukkatsu taisyokusya yoteisya excel kazoku kazoku_excel shikaku "
    "shikaku_excel sekkei";
constexpr const char* kNotFukkatsu =
    "zenin joukenn daichou taisyoku taisyokusya yoteisya excel kazoku kazoku_excel shikaku shikaku_excel "
    "sekkei jikkou";
constexpr const char* kNotTaisyokusya =
    "zenin joukenn daichou taisyoku fukkatsu yoteisya excel kazoku kazoku_excel shikaku shikaku_excel sekkei "
    "jikkou";

const std::vector<Menu>& menus() {
    static const std::vector<Menu> all = {
        {"frmMenuSSyouyo",
         "賞与配分メニュー",
         {{"Command1", "配分設計(&S)", "frmSHaibunSekkei", kNotJikkou, "sekkei"},
          {"Command2", "配分実行(&G)", "frmSDatatorikomi", kNotSekkei, "jikkou"},
          {"Command4", "年間支給額(&N)", "frmSNenkan", kAll, ""}},
         "Command5",
         "メニューへ戻る(&B)"},
        {"frmMenuJinji",
         "人事情報メニュー",
         {{"Command1", "入力項目設定(&J)", "frmJinjiCheck", kAll, ""},
          {"Command2", "人事情報登録(&T)", "frmMenuJinjiSub", kAll, ""},
          {"Command4", "退職処理(&T)", "frmMenuJinjiTaisyoku", kAll, ""}},
         "Command3",
         "メニューへ戻る(&B)"},
        {"frmMenuJinjiSub",
         "人事情報登録メニュー",
         {{"Command1", "\u3000\u3000追加・編集\u3000\u3000全員表示(&A)", "frmRireki", kAll, "zenin"},
          {"Command2", "\u3000\u3000追加・編集\u3000\u3000条件選択(&S)", "frmJinjiSiborikomi",
           "joukenn sekkei jikkou", "joukenn"},
          {"Command4", "社員台帳(&R)", "frmJinjiSiborikomi", "daichou sekkei jikkou", "daichou"},
          {"Command5", "Excel\u3000にデータを送る", "frmJinjiSiborikomi", "excel sekkei jikkou", "excel"},
          {"Command6", "家族情報の確認", "frmJinjiSiborikomi", "kazoku sekkei jikkou", "kazoku"},
          {"Command7", "Excel\u3000にデータを送る", "frmJinjiSiborikomi", "kazoku_excel sekkei jikkou",
           "kazoku_excel"},
          {"Command8", "資格・免許保有状況の確認", "frmJinjiSiborikomi", "shikaku sekkei jikkou", "shikaku"},
          {"Command9", "Excel\u3000にデータを送る", "frmJinjiSiborikomi", "shikaku_excel sekkei jikkou",
           "shikaku_excel"}},
         "Command3",
         "人事情報ﾒﾆｭｰへ戻る(&B)"},
        {"frmMenuJinjiTaisyoku",
         "退職処理メニュー",
         {{"Command1", "予定者一覧(&Y)", "frmJinjiSiborikomi", "zenin yoteisya sekkei jikkou", "yoteisya"},
          {"Command2", "退職処理(&R)", "frmJinjiSiborikomi", "zenin taisyoku sekkei jikkou", "taisyoku"},
          {"Command3", "退職者一覧(&G)", "frmJinjiSiborikomi2", kNotFukkatsu, "taisyokusya"},
          {"Command5", "復活処理(&F)", "frmJinjiSiborikomi2", kNotTaisyokusya, "fukkatsu"}},
         "Command4",
         "人事情報ﾒﾆｭｰへ戻る(&B)"},
    };
    return all;
}

class Menus : public testing::Test {
  protected:
    void fillRegistry() {
        for (const Menu& menu : menus())
            for (const Press& press : menu.presses) addScreen(QString::fromLatin1(press.screen));
    }
    void addScreen(const QString& name) {
        screens_.add(name, [name](House&, QWidget* parent) { return new widgets::Form(name, name, parent); });
    }
    void setFlags(bool on) {
        for (const NamedFlag& flag : kFlags) global_.*flag.flag = on;
    }
    std::string flags() const {
        QStringList names;
        for (const NamedFlag& flag : kFlags)
            if (global_.*flag.flag) names << QString::fromLatin1(flag.name);
        return names.join(u' ').toStdString();
    }
    GlobalRecord global_;
    ScreenRegistry screens_;
    QStringList helped_;
    House house_{
        .global = global_, .screens = screens_, .help = [this](const QString& screen) { helped_ << screen; }};
    ScreenDriver driver_;
};

TEST_F(Menus, EachButtonBearsItsCaptionSetsItsModesAndOpensItsScreen) {
    fillRegistry();
    for (const Menu& menu : menus()) {
        frmMenus form(QString::fromLatin1(menu.name), house_, nullptr);
        EXPECT_EQ(form.windowTitle(), QString::fromUtf8(menu.caption));
        driver_.run(form, [&](QDialog& shown) {
            for (const Press& press : menu.presses) {
                const QString control = QString::fromLatin1(press.control);
                EXPECT_EQ(text(shown, control), QString::fromUtf8(press.caption));
                for (const bool before : {true, false}) {
                    setFlags(before);
                    driver_.onScreen(QString::fromLatin1(press.screen), [&](QDialog& child) {
                        EXPECT_EQ(flags(), before ? press.flagsFromAll : press.flagsFromNone)
                            << menu.name << ' ' << press.control;
                        child.reject();
                    });
                    click(shown, control);
                }
            }
            click(shown, u"Command11"_s);
            EXPECT_EQ(text(shown, QString::fromLatin1(menu.back)), QString::fromUtf8(menu.backCaption));
            click(shown, QString::fromLatin1(menu.back));
        });
        EXPECT_EQ(helped_.last(), QString::fromLatin1(menu.name));
    }
}

TEST_F(Menus, EntriesWithoutAScreenAreDisabledAndTheWayBackIsNot) {
    for (const Menu& menu : menus()) {
        frmMenus form(QString::fromLatin1(menu.name), house_, nullptr);
        driver_.run(form, [&](QDialog& shown) {
            for (const Press& press : menu.presses)
                EXPECT_FALSE(enabled(shown, QString::fromLatin1(press.control)))
                    << menu.name << press.control;
            EXPECT_TRUE(enabled(shown, u"Command11"_s));
            press(shown, Qt::Key_Escape);
        });
    }
}

/// frmMenu000 over a main window, with the company 甲社 open as far as its load needs it.
class Menu000 : public Menus {
  protected:
    Menu000() : main_(new QMainWindow) {
        company_.makeEmpty(u"甲社"_s);
        global_.app_dir = company_.programDir();
        global_.setFolderPanel(u"甲社"_s);
        global_.cn_main = company_.open();
        main_->setObjectName(u"frmMain"_s);
        main_->setCentralWidget(new QWidget(main_.get()));
        command1_ = new QPushButton(main_->centralWidget());
        command1_->setObjectName(u"Command1"_s);
        main_->show();
    }
    void open(ScreenDriver::Step step) {
        frmMenu000 menu(house_, main_.get());
        driver_.run(menu, std::move(step));
    }
    void registerName(const store::Value& name) {
        global_.cn_main->execute(u"UPDATE 会社テーブル SET 会社名 = ?"_s, {name});
    }
    CompanyFolder company_;
    std::unique_ptr<QMainWindow> main_;
    QPushButton* command1_ = nullptr;
};

TEST_F(Menu000, TheCompanyCountsAsOpenUnderItsRegisteredNameOrItsFolder) {
    const QString sql = u"DELETE FROM 会社テーブル"_s;
    registerName(u"株式会社 甲"_s);
    open([&](QDialog& menu) {
        EXPECT_EQ(global_.panels.company, u"株式会社 甲"_s);
        EXPECT_FALSE(command1_->isVisible());
        click(menu, u"Command9"_s);
    });
    EXPECT_TRUE(command1_->isVisible());
    EXPECT_TRUE(global_.cn_main);
    EXPECT_EQ(QDir::current(), QDir(global_.dataDir()));

    for (const store::Value& empty : {store::Value(u""_s), store::Value()}) {
        registerName(empty);
        open([&](QDialog& menu) {
            EXPECT_EQ(global_.panels.company, u"甲社"_s);
            menu.close();  // the box of the window closes it as 終了 does
        });
        EXPECT_TRUE(command1_->isVisible());
    }
    global_.setCompanyPanel(kNoCompanyPrompt);
    global_.cn_main->execute(sql);
    open([&](QDialog& menu) {
        EXPECT_EQ(global_.panels.company, u"甲社"_s);
        press(menu, Qt::Key_Escape);
    });
    QDir::setCurrent(QDir::rootPath());
}

TEST_F(Menu000, ACompanyThatCannotBeReadIsToldAndDoesNotCountAsOpen) {
    global_.cn_main->execute(u"DROP TABLE 会社テーブル"_s);
    driver_.answerFreely([](const BoxRequest& box) {
        EXPECT_EQ(box.title, QString());
        EXPECT_FALSE(box.text.isEmpty());
        return BoxAnswer::Ok;
    });
    open([&](QDialog& menu) { click(menu, u"Command9"_s); });
    EXPECT_EQ(driver_.boxes().size(), 1u);
    EXPECT_FALSE(global_.companyOpen());
}

TEST_F(Menu000, ItsButtonsBearTheirCaptionsAndOpenWhatIsBuilt) {
    for (const QString& name : {u"frmMenuJinji"_s, u"frmMenuSSyouyo"_s, u"frmHDataPrint"_s}) addScreen(name);
    const struct {
        const char* control;
        const char* caption;
        const char* screen;  ///< none: not built
    } buttons[] = {{"Command1", "会社情報(&P)", nullptr},
                   {"Command2", "各種マスタ(&M)", nullptr},
                   {"Command3", "人事情報(&J)", "frmMenuJinji"},
                   {"Command4", "賞与配分(&S)", "frmMenuSSyouyo"},
                   {"Command6", "配分計算", "frmHDataPrint"}};
    open([&](QDialog& menu) {
        EXPECT_EQ(menu.windowTitle(), u"メニュー"_s);
        EXPECT_EQ(text(menu, u"Label3"_s), u"取込日付一覧表示"_s);
        for (const auto& button : buttons) {
            const QString control = QString::fromLatin1(button.control);
            EXPECT_EQ(text(menu, control), QString::fromUtf8(button.caption));
            EXPECT_EQ(enabled(menu, control), button.screen != nullptr);
            if (!button.screen) continue;
            driver_.onScreen(QString::fromLatin1(button.screen), [](QDialog& child) { child.reject(); });
            click(menu, control);
        }
        click(menu, u"Command11"_s);
        click(menu, u"Command9"_s);
    });
    EXPECT_EQ(helped_, QStringList{u"frmMenu000"_s});
}

}  // namespace
}  // namespace shell
