#include <gtest/gtest.h>

#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>

#include "screen_driver.h"
#include "shell/global_record.h"
#include "shell/ui_box.h"
#include "shell/ui_field_rules.h"
#include "shell/ui_guard.h"
#include "shell/ui_menu_form.h"
#include "support/company_fixture.h"

// What all screens of the house share: menus, boxes, the failure style.
namespace shell {
namespace {

using namespace support;

class HouseScreens : public testing::Test {
  protected:
    HouseScreens() {
        screens_.add(QStringLiteral("frmChild"), [](House&, QWidget* parent) {
            return new widgets::Form(QStringLiteral("frmChild"), QStringLiteral("子"), parent);
        });
    }
    GlobalRecord global_;
    ScreenRegistry screens_;
    House house_{global_, screens_};
    ScreenDriver driver_;
};

TEST_F(HouseScreens, AMenuStandsUnderTheMainWindowAndLeavesForItsChild) {
    QMainWindow main;
    main.setObjectName(QStringLiteral("frmMain"));
    main.setGeometry(30, 20, 400, 300);
    main.show();
    int helped = 0;
    MenuForm menu(QStringLiteral("frmMenuX"), QStringLiteral("メニュー"), house_, &main,
                  {{.control = QStringLiteral("Command1"),
                    .caption = QStringLiteral("登録(&T)"),
                    .prepare = [](GlobalRecord& global) { global.rireki_zenin = true; },
                    .screen = QStringLiteral("frmChild")},
                   {.control = QStringLiteral("Command2"),
                    .caption = QStringLiteral("未完成(&M)"),
                    .screen = QStringLiteral("frmNowhere")},
                   {.control = QStringLiteral("Command3"), .caption = QStringLiteral("メニューへ戻る(&B)")},
                   {.control = QStringLiteral("Command11"),
                    .caption = QStringLiteral("ヘルプ(&H)"),
                    .action = [&helped] { ++helped; }}});
    // 45 and 600 twips are 3 and 40 pixels, 40000 twips are 2666; 7770 by 4770 twips 518 by 318.
    const QPoint home = main.pos() + QPoint(3, 40);
    driver_.run(menu, [&](QDialog& form) {
        EXPECT_EQ(form.pos(), home);
        EXPECT_GE(form.width(), 518);
        EXPECT_GE(form.height(), 318);
        EXPECT_FALSE(enabled(form, QStringLiteral("Command2")));
        click(form, QStringLiteral("Command11"));
        EXPECT_EQ(helped, 1);
        driver_.onScreen(QStringLiteral("frmChild"), [&](QDialog& child) {
            EXPECT_TRUE(global_.rireki_zenin);
            EXPECT_EQ(form.pos(), main.pos() + QPoint(2666, 2666));
            child.accept();
        });
        click(form, QStringLiteral("Command1"));
        EXPECT_EQ(form.pos(), home);
        EXPECT_EQ(form.cursor().shape(), Qt::ArrowCursor);
        press(form, Qt::Key_Escape);
    });
    EXPECT_EQ(driver_.screens(), QStringList({QStringLiteral("frmMenuX"), QStringLiteral("frmChild")}));
}

TEST_F(HouseScreens, BoxesSpeakJapaneseAndDeletionDefaultsToNo) {
    driver_.useRealBoxes();
    struct Case {
        QString title;
        Qt::Key key;
        bool answer;
    };
    for (const Case& c : {Case{QStringLiteral("終了の確認"), Qt::Key_Return, true},
                          Case{QStringLiteral("終了の確認"), Qt::Key_Escape, false},
                          Case{QStringLiteral("削除の確認"), Qt::Key_Return, false}}) {
        driver_.onScreen(QStringLiteral("QMessageBox"), [&](QDialog& shown) {
            auto& box = dynamic_cast<QMessageBox&>(shown);
            EXPECT_EQ(box.windowTitle(), c.title);
            EXPECT_EQ(box.text(), QStringLiteral("<b>a</b>\n'b'"));
            EXPECT_EQ(box.textFormat(), Qt::PlainText);
            EXPECT_EQ(box.icon(), QMessageBox::Question);
            ASSERT_EQ(box.buttons().size(), 2);
            EXPECT_EQ(box.buttons()[0]->text(), QStringLiteral("はい(&Y)"));
            EXPECT_EQ(box.buttons()[1]->text(), QStringLiteral("いいえ(&N)"));
            press(shown, c.key);
        });
        EXPECT_EQ(ask(nullptr, QStringLiteral("<b>a</b>\n'b'"), c.title), c.answer);
    }
    driver_.onScreen(QStringLiteral("QMessageBox"), [](QDialog& shown) {
        EXPECT_EQ(dynamic_cast<QMessageBox&>(shown).icon(), QMessageBox::Critical);
        EXPECT_EQ(shown.windowTitle(), QStringLiteral("ひなた堂ミント"));
        press(shown, Qt::Key_Return);
    });
    tell(nullptr, QStringLiteral("x"), QString(), BoxIcon::Critical);
}

TEST_F(HouseScreens, FailuresAreToldOnceAndAnOpenTransactionIsRolledBack) {
    CompanyFolder company;
    company.makeEmpty();
    const auto cn = company.open();
    widgets::Form form(QStringLiteral("frmX"), QString(), nullptr);
    FormTransaction transaction(*cn);
    const auto count = [&] { return cn->query(QStringLiteral("select * from Tanka_hasuu")).recordCount(); };
    const auto insert = [&] {
        cn->execute(QStringLiteral("INSERT INTO Tanka_hasuu (単価) VALUES (?)"), {u"1"});
    };
    const store::Error error(store::Error::Reason::DiskFull,
                             QStringLiteral("ディスクの空き容量が不足しています。"));

    EXPECT_TRUE(guarded(&form, transaction, [&] {
        transaction.begin();
        insert();
        transaction.commit();
    }));
    EXPECT_EQ(count(), 1);

    driver_.expectBox(QStringLiteral("処理中にエラーが発生しました。処理を取り消します。"),
                      QStringLiteral("取消"), BoxAnswer::Ok, BoxIcon::Information);
    EXPECT_FALSE(guarded(&form, transaction, [&] {
        form.setHourglass();
        transaction.begin();
        insert();
        throw error;
    }));
    EXPECT_EQ(count(), 1);
    EXPECT_FALSE(transaction.open() || cn->inTransaction());
    EXPECT_EQ(form.cursor().shape(), Qt::ArrowCursor);

    driver_.expectBox(error.text(), QString(), BoxAnswer::Ok, BoxIcon::None);
    EXPECT_FALSE(guarded(&form, transaction, [&] { throw error; }));
    driver_.expectBox(error.text(), QString());
    EXPECT_FALSE(guarded(nullptr, [&] { throw error; }));
}

TEST_F(HouseScreens, CheckFieldTellsTheFault) {
    const QString label = QStringLiteral("･･･会社名");
    EXPECT_TRUE(check_field(nullptr, QStringLiteral("見本"), 4, false, label));
    driver_.expectBox(QStringLiteral("項目の長さ(4)が制限(3)を越えています。 ･･･会社名"),
                      QStringLiteral("入力のエラー"), BoxAnswer::Ok, BoxIcon::Critical);
    EXPECT_FALSE(check_field(nullptr, QStringLiteral("見本"), 3, false, label));
}

/// The driver is what every screen test leans on: it must not let a fault pass.
TEST_F(HouseScreens, TheDriverReportsWhatWasNotForeseen) {
    QStringList failures;
    ScreenDriver::setFailureSink([&](const QString& text) { failures << text.section(u':', 0, 0); });
    widgets::Form form(QStringLiteral("frmX"), QString(), nullptr);
    new QLineEdit(&form);
    driver_.run(form, [&](QDialog& shown) {
        tell(&shown, QStringLiteral("a"), QStringLiteral("b"));
        driver_.expectBox(QStringLiteral("a"), QStringLiteral("c"));
        tell(&shown, QStringLiteral("a"), QStringLiteral("b"));
        QDialog(&shown).exec();
        driver_.expectBox(QStringLiteral("left"), QString());
        click(shown, QStringLiteral("Command1"));
    });
    driver_.verify();
    ScreenDriver::setFailureSink([](const QString& text) { ADD_FAILURE() << text.toStdString(); });
    EXPECT_EQ(failures.join(u'|'),
              QStringLiteral("unexpected box|box says|unexpected screen QDialog, awaited|"
                             "frmX has no control Command1|frmX is still open after its step|never said"));
}

}  // namespace
}  // namespace shell
