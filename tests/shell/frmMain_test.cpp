#include "shell/frmMain.h"

#include <gtest/gtest.h>

#include <QtTest/qtestspontaneevent.h>
#include <QAction>
#include <QCloseEvent>
#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QSet>
#include <QTest>
#include <QTimer>

#include "company/frmDBSentaku.h"
#include "forms/global_record.h"
#include "help/frmHelp.h"
#include "screen_driver.h"
#include "shell/frmAbout.h"
#include "shell/frmMenu000.h"
#include "shell/program.h"
#include "support/company_fixture.h"

namespace shell {
namespace {

using namespace Qt::StringLiterals;
using namespace support;

const QString kExitText = u"終了しますか？"_s;
const QString kExitTitle = u"終了の確認"_s;
const QString kReopenText = u"『甲社』を閉じて、別の会社を指定しますか？"_s;
const QString kReopenTitle = u"データ指定の確認"_s;

template <class Screen>
forms::ScreenRegistry::Factory factory() {
    return [](forms::House& house, QWidget* parent) { return new Screen(house, parent); };
}

/// The started program with the company 甲社 in its Data folder.
class MainWindow : public testing::Test {
  protected:
    MainWindow() {
        company_.makeEmpty(u"甲社"_s);
        screens_.add(u"frmDBSentaku"_s, factory<company::frmDBSentaku>());
        screens_.add(u"frmMenu000"_s, factory<frmMenu000>());
        screens_.add(u"frmAbout"_s, factory<frmAbout>());
        program_ = std::make_unique<Program>(screens_, company_.programDir());
        program_->setSplashTime(std::chrono::milliseconds(0));
        program_->setLockPath(company_.programDir() + u"/instance.lock"_s);
        program_->house().endProcess = [this] {
            ++ended_;
            helpAtEnd_ = program_->help().window(help::HelpFile::Shelp) != nullptr;
            openAtEnd_ = global().cn_main != nullptr;
        };
        EXPECT_TRUE(program_->Main());
        EXPECT_TRUE(QTest::qWaitForWindowActive(&main()));
    }
    ~MainWindow() override { QDir::setCurrent(QDir::rootPath()); }

    frmMain& main() { return *program_->fMainForm(); }
    forms::GlobalRecord& global() { return program_->house().global; }
    void openCompany(const QString& by = u"StartOpen"_s) {
        driver_.onScreen(u"frmDBSentaku"_s, [](QDialog& form) {
            chooseText(form, u"List1"_s, u"甲社"_s);
            click(form, u"Command2"_s);
        });
        driver_.expectBox(u"『甲社』を指定します。"_s, u"会社指定の確認"_s, forms::BoxAnswer::Yes);
        driver_.onScreen(u"frmMenu000"_s, [this](QDialog& menu) {
            EXPECT_FALSE(visible(main(), u"Command1"_s));
            EXPECT_EQ(text(main(), u"Panels_1"_s), u"甲社"_s);
            click(menu, u"Command9"_s);
        });
        driver_.attempt([&] { click(main(), by); });
        EXPECT_EQ(main().focusWidget()->objectName(), u"Command1"_s) << "the keyboard's way back to the menu";
    }
    void expectExitBox(forms::BoxAnswer answer) {
        driver_.expectBox(kExitText, kExitTitle, answer, forms::BoxIcon::Question);
    }
    bool closeByBox() {
        QCloseEvent event;
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(&main(), &event);  // sendEvent would take the mark off
        return event.isAccepted();
    }

    CompanyFolder company_;
    forms::ScreenRegistry screens_;
    ScreenDriver driver_;
    std::unique_ptr<Program> program_;
    int ended_ = 0;
    bool helpAtEnd_ = false;
    bool openAtEnd_ = false;
};

TEST_F(MainWindow, TheCloseBoxIsRefusedAndAskedAndNoLeavesTheCompanyOpen) {
    openCompany();
    program_->help().open(help::HelpFile::Shelp);
    expectExitBox(forms::BoxAnswer::No);
    EXPECT_FALSE(closeByBox());
    EXPECT_EQ(ended_, 0);
    EXPECT_TRUE(global().cn_main);
    EXPECT_TRUE(program_->help().window(help::HelpFile::Shelp));
    EXPECT_NE(main().cursor().shape(), Qt::WaitCursor);

    expectExitBox(forms::BoxAnswer::Yes);
    EXPECT_FALSE(closeByBox());
    EXPECT_EQ(ended_, 1);
    EXPECT_FALSE(helpAtEnd_);
    EXPECT_FALSE(openAtEnd_);
    EXPECT_FALSE(global().company_lock);
    EXPECT_EQ(QDir::current(), QDir(company_.programDir()));
}

TEST_F(MainWindow, EveryOtherWayOutAsksToo) {
    for (int i = 0; i < 3; ++i) expectExitBox(forms::BoxAnswer::No);
    click(main(), u"mnuFileNo_9"_s);
    EXPECT_FALSE(main().exitProgram());  // the session is called off then
    EXPECT_TRUE(main().isVisible());
    EXPECT_TRUE(main().close());  // not by the user: asked, and let through
    EXPECT_EQ(driver_.boxes().size(), 3u);
    EXPECT_EQ(ended_, 0);
}

TEST_F(MainWindow, AnotherCompanyIsChosenOnlyAfterTheOpenOneMayBeClosed) {
    EXPECT_EQ(text(main(), u"Panels_1"_s), u"処理する会社を指定してください"_s);
    openCompany();
    EXPECT_FALSE(visible(main(), u"StartOpen"_s));
    driver_.onScreen(u"frmMenu000"_s, [](QDialog& menu) { menu.reject(); });
    main().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&main()));
    driver_.attempt([&] { QTest::keyClick(main().focusWidget(), Qt::Key_Return); });

    driver_.expectBox(kReopenText, kReopenTitle, forms::BoxAnswer::No, forms::BoxIcon::Question);
    click(main(), u"mnuFileNo_1"_s);
    EXPECT_TRUE(global().cn_main);

    driver_.expectBox(kReopenText, kReopenTitle, forms::BoxAnswer::Yes);
    driver_.onScreen(u"frmDBSentaku"_s, [this](QDialog& form) {
        EXPECT_FALSE(global().cn_main);
        click(form, u"Command3"_s);
    });
    click(main(), u"mnuFileNo_1"_s);
    EXPECT_FALSE(global().cn_main);
    EXPECT_FALSE(global().company_lock);
    EXPECT_FALSE(visible(main(), u"Command1"_s));
    EXPECT_EQ(text(main(), u"Panels_1"_s), u"処理する会社を指定してください"_s);
    EXPECT_TRUE(visible(main(), u"StartOpen"_s));
    openCompany(u"mnuFileNo_1"_s);
    EXPECT_TRUE(global().companyOpen());
}

TEST_F(MainWindow, ASecondStartIsRefusedAndLeavesTheFirstAlone) {
    Program second(screens_, company_.programDir());
    second.setLockPath(company_.programDir() + u"/instance.lock"_s);
    driver_.expectBox(u"すでに起動されています。"_s, u"二重起動"_s, forms::BoxAnswer::Ok,
                      forms::BoxIcon::Information);
    EXPECT_FALSE(second.Main());
    EXPECT_FALSE(second.fMainForm());
    EXPECT_TRUE(main().isVisible());
}

}  // namespace
}  // namespace shell
