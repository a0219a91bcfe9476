#include <QLineEdit>
#include <QMessageBox>

#include "forms/box.h"
#include "forms/field_check.h"
#include "forms/guard.h"
#include "forms/menu_form.h"
#include "support/house_screens.h"

// What all screens of the house share: menus, boxes, the failure style.
namespace forms {
namespace {

using namespace Qt::StringLiterals;
using namespace support;

TEST_F(HouseScreens, AMenuStandsUnderTheMainWindowAndLeavesForItsChild) {
    QMainWindow main;
    main.setObjectName(u"frmMain"_s);
    main.setGeometry(30, 20, 400, 300);
    main.show();
    addScreen(u"frmChild"_s);
    int helped = 0;
    MenuForm menu(
        u"frmMenuX"_s, u"メニュー"_s, house_, &main,
        {{.control = u"Command1"_s,
          .caption = u"登録(&T)"_s,
          .prepare = [](GlobalRecord& global) { global.rireki_zenin = true; },
          .screen = u"frmChild"_s},
         {.control = u"Command2"_s, .caption = u"未完成(&M)"_s, .screen = u"frmNowhere"_s},
         {.control = u"Command3"_s, .caption = u"メニューへ戻る(&B)"_s},
         {.control = u"Command11"_s, .caption = u"ヘルプ(&H)"_s, .action = [&helped] { ++helped; }}});
    // 45 and 600 twips are 3 and 40 pixels.
    const QPoint home = main.pos() + QPoint(3, 40);
    driver_.run(menu, [&](QDialog& form) {
        EXPECT_EQ(form.pos(), home);
        EXPECT_FALSE(enabled(form, u"Command2"_s));
        click(form, u"Command11"_s);
        EXPECT_EQ(helped, 1);
        driver_.onScreen(u"frmChild"_s, [&](QDialog& child) {
            EXPECT_TRUE(global_.rireki_zenin);
            EXPECT_FALSE(form.isVisible());
            child.accept();
        });
        form.move(home + QPoint(50, 60));
        click(form, u"Command1"_s);
        EXPECT_TRUE(form.isVisible());
        EXPECT_EQ(form.pos(), home + QPoint(50, 60)) << "comes back where it stood";
        EXPECT_EQ(form.cursor().shape(), Qt::ArrowCursor);
        press(form, Qt::Key_Escape);
    });
    EXPECT_EQ(driver_.screens(), QStringList({u"frmMenuX"_s, u"frmChild"_s}));
}

TEST_F(HouseScreens, BoxesSpeakJapaneseAndALossDefaultsToNo) {
    driver_.useRealBoxes();
    const QString text = u"<b>a</b>\n'b'"_s;
    const QString title = u"終了の確認"_s;
    const std::tuple<decltype(&ask), Qt::Key, bool> cases[] = {
        {ask, Qt::Key_Return, true}, {ask, Qt::Key_Escape, false}, {askLoss, Qt::Key_Return, false}};
    for (const auto& [ask, key, answer] : cases) {
        driver_.onScreen(u"QMessageBox"_s, [&](QDialog& shown) {
            const auto& box = dynamic_cast<QMessageBox&>(shown);
            EXPECT_EQ(box.windowTitle() + box.text(), title + text);
            EXPECT_EQ(box.textFormat(), Qt::PlainText);
            EXPECT_EQ(box.icon(), QMessageBox::Question);
            ASSERT_EQ(box.buttons().size(), 2);
            EXPECT_EQ(box.buttons()[0]->text() + box.buttons()[1]->text(), u"はい(&Y)いいえ(&N)"_s);
            press(shown, key);
        });
        EXPECT_EQ(ask(nullptr, text, title), answer);
    }
    driver_.onScreen(u"QMessageBox"_s, [](QDialog& shown) {
        EXPECT_EQ(dynamic_cast<QMessageBox&>(shown).icon(), QMessageBox::Critical);
        EXPECT_EQ(shown.windowTitle(), u"ひなた堂ミント"_s);
        press(shown, Qt::Key_Return);
    });
    tell(nullptr, u"x"_s, QString(), BoxIcon::Critical);
}

TEST_F(HouseScreens, FailuresAreToldOnceAndAnOpenWorkIsRolledBack) {
    CompanyFolder company;
    company.makeEmpty();
    const auto cn = company.open();
    widgets::Form form(u"frmX"_s, QString(), nullptr);
    const auto count = [&] { return cn->query(u"select * from Tanka_hasuu"_s).recordCount(); };
    const auto insert = [&] { cn->execute(u"INSERT INTO Tanka_hasuu (単価) VALUES (?)"_s, {u"1"}); };
    const store::Error error(store::Error::Reason::DiskFull, u"ディスクの空き容量が不足しています。"_s);
    const auto expectCancelled = [&] {
        driver_.expectBox(u"処理中にエラーが発生しました。処理を取り消します。"_s, u"取消"_s, BoxAnswer::Ok,
                          BoxIcon::Information);
    };
    EXPECT_TRUE(guarded(&form, [&] {
        store::Work work(*cn, u"登録"_s);
        insert();
        work.commit();
    }));
    EXPECT_EQ(count(), 1);

    // The screen is brought back before the box; a work inside another one takes back its own part only.
    int left = -1;
    expectCancelled();
    EXPECT_FALSE(guarded(
        &form,
        [&] {
            form.setHourglass();
            store::Work work(*cn, u"登録"_s);
            insert();
            {
                store::Work inner(*cn);
                insert();
            }
            EXPECT_EQ(count(), 2);
            throw error;
        },
        [&] {
            left = count();
            EXPECT_TRUE(driver_.boxes().empty());
        }));
    EXPECT_EQ(left, 1);
    EXPECT_EQ(form.cursor().shape(), Qt::ArrowCursor);

    // Forgotten: ended without a word, or never; the works that follow are no part of it.
    std::unique_ptr<store::Work> kept;
    for (const bool stays : {false, true}) {
        expectCancelled();
        EXPECT_FALSE(guarded(&form, [&] {
            auto work = std::make_unique<store::Work>(*cn, u"登録"_s);
            insert();
            if (stays) kept = std::move(work);
        }));
        EXPECT_FALSE(cn->inTransaction());
    }
    EXPECT_EQ(count(), 1);

    // What the engine ended goes on for nobody: neither its rest nor its commit.
    for (const bool writes : {true, false}) {
        expectCancelled();
        EXPECT_FALSE(guarded(&form, [&] {
            store::Work work(*cn, u"登録"_s);
            cn->executeScript(u"ROLLBACK"_s);
            if (writes) insert();
            work.commit();
        }));
    }
    EXPECT_EQ(count(), 1);

    driver_.expectBox(error.text(), QString(), BoxAnswer::Ok, BoxIcon::None);
    EXPECT_FALSE(guarded(&form, [&] { throw error; }));
    driver_.expectBox(error.text(), QString());
    EXPECT_FALSE(guarded(nullptr, [&] { throw error; }));
}

/// The driver is what every screen test leans on: it must not let a fault pass.
TEST_F(HouseScreens, TheDriverReportsWhatWasNotForeseen) {
    QStringList failures;
    ScreenDriver::setFailureSink([&](const QString& text) { failures << text.section(u':', 0, 0); });
    widgets::Form form(u"frmX"_s, QString(), nullptr);
    new QLineEdit(&form);
    driver_.run(form, [&](QDialog& shown) {
        tell(&shown, u"a"_s, u"b"_s);
        driver_.expectBox(u"a"_s, u"c"_s);
        tell(&shown, u"a"_s, u"b"_s);
        QDialog(&shown).exec();
        driver_.expectBox(u"left"_s, QString());
        click(shown, u"Command1"_s);
    });
    driver_.verify();
    ScreenDriver::setFailureSink([](const QString& text) { ADD_FAILURE() << text.toStdString(); });
    EXPECT_EQ(failures.join(u'|'),
              u"unexpected box|box says|unexpected screen QDialog, awaited|"
              "frmX has no control Command1|frmX is still open after its step|never said"_s);
}

}  // namespace
}  // namespace forms
