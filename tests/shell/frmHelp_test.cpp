#include "shell/frmHelp.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTextBrowser>
#include <QWindow>

#include "screen_driver.h"
#include "shell/global_record.h"
#include "widgets/form.h"

namespace shell {
namespace {

using namespace Qt::StringLiterals;
using namespace support;

class HelpWindow : public testing::Test {
  protected:
    HelpWindow() { global_.app_dir = QDir::tempPath(); }
    static QTextBrowser& page(frmHelp& window) { return control<QTextBrowser>(window, u"page"_s); }
    static QString shown(frmHelp& window) { return page(window).documentTitle(); }
    static QStringList contents(frmHelp& window) {
        QStringList titles;
        for (const QString& row : rows(window, u"contents"_s)) titles << row.trimmed();
        return titles;
    }
    GlobalRecord global_;
    HelpShelf shelf_{global_};
    ScreenDriver driver_;
};

TEST_F(HelpWindow, EveryScreenOfTheRunHasItsPageAndNoLinkLeadsNowhere) {
    const auto& pages = shelf_.pages();
    for (const QString& screen : {u"frmDBSentaku"_s, u"frmMenu000"_s, u"frmMenuJinji"_s, u"frmMenuJinjiSub"_s,
                                  u"frmMenuJinjiTaisyoku"_s, u"frmMenuSSyouyo"_s, u"frmMenuSJikkou"_s,
                                  u"frmSDatatorikomi"_s, u"frmSTaisyousya"_s, u"frmSSanteishikiSub"_s,
                                  u"frmSSanteishitei"_s, u"frmSSanteishitei2"_s, u"frmSHaibunjikkouK2"_s}) {
        const auto topic = helpTopic(screen);
        ASSERT_TRUE(topic) << screen.toStdString();
        EXPECT_TRUE(findPage(pages, topic->file, topic->number)) << screen.toStdString();
    }
    for (HelpFile file : {HelpFile::Mhelp, HelpFile::Jhelp, HelpFile::Shelp})
        EXPECT_TRUE(findPage(pages, file, 0));
    const QRegularExpression link(u"href=\"([^\"]+)\""_s);
    for (const HelpPage& page : pages) {
        EXPECT_FALSE(page.title.isEmpty());
        for (auto it = link.globalMatch(page.html); it.hasNext();) {
            const QString target = it.next().captured(1);
            const auto place = pageOfName(target);
            EXPECT_TRUE(place && findPage(pages, place->first, place->second)) << target.toStdString();
        }
    }
}

TEST_F(HelpWindow, OneWindowPerBookMovesToTheTopicAndAnotherBookClosesIt) {
    shelf_.helpOn(u"frmSDatatorikomi"_s);
    QPointer<frmHelp> bonus = shelf_.window(HelpFile::Shelp);
    ASSERT_TRUE(bonus);
    EXPECT_EQ(shown(*bonus), u"人事データ取込"_s);
    shelf_.helpOn(u"frmSHaibunjikkouK2"_s);
    EXPECT_EQ(shelf_.window(HelpFile::Shelp), bonus);
    EXPECT_EQ(shown(*bonus), u"配分計算"_s);
    click(*bonus, u"back"_s);
    EXPECT_EQ(shown(*bonus), u"人事データ取込"_s);
    EXPECT_EQ(bonus->page(), 7001);

    shelf_.helpOn(u"frmDBSentaku"_s);
    EXPECT_FALSE(shelf_.window(HelpFile::Shelp));
    EXPECT_EQ(shown(*shelf_.window(HelpFile::Jhelp)), u"会社指定"_s);
    EXPECT_EQ(global_.help_bunya, u"jin"_s);
    shelf_.helpOn(u"frmBackup"_s);  // a screen whose page is not written
    EXPECT_EQ(shown(*shelf_.window(HelpFile::Jhelp)), u"基本事項のヘルプ"_s);
    shelf_.helpOn(u"frmNowhere"_s);
    EXPECT_EQ(shown(*shelf_.window(HelpFile::Mhelp)), u"メニュー画面のヘルプ"_s);

    shelf_.window(HelpFile::Mhelp)->close();  // a window that the user closed comes back
    shelf_.open(HelpFile::Mhelp);
    EXPECT_TRUE(shelf_.window(HelpFile::Mhelp));
    closeEveryHelp(shelf_);
    EXPECT_FALSE(shelf_.window(HelpFile::Mhelp));
}

TEST_F(HelpWindow, TheSearchListsThePagesOfAllBooksAndMarksTheWord) {
    shelf_.open(HelpFile::Shelp);
    frmHelp& bonus = *shelf_.window(HelpFile::Shelp);
    const int all = int(contents(bonus).size());
    EXPECT_EQ(all, int(shelf_.pages().size()) + 3);  // each book with its heading, its own first
    EXPECT_EQ(contents(bonus).first(), u"賞与配分"_s);

    type(bonus, u"search"_s, u"切り捨て"_s);
    EXPECT_EQ(contents(bonus),
              (QStringList{u"賞与配分"_s, u"配分計算"_s, u"メニュー画面"_s, u"配分実行メニュー"_s}));
    press(bonus, Qt::Key_Return);
    EXPECT_EQ(shown(bonus), u"配分計算"_s);
    const auto marks = page(bonus).extraSelections();
    ASSERT_FALSE(marks.isEmpty());
    EXPECT_EQ(marks.first().cursor.selectedText(), u"切り捨て"_s);

    // A page of another book opens by the rule; the search comes along.
    choose(bonus, u"contents"_s, 3);
    ASSERT_TRUE(QTest::qWaitFor([this] { return shelf_.window(HelpFile::Mhelp) != nullptr; }));
    EXPECT_FALSE(shelf_.window(HelpFile::Shelp));
    frmHelp& menu = *shelf_.window(HelpFile::Mhelp);
    EXPECT_EQ(shown(menu), u"配分実行メニュー"_s);
    EXPECT_EQ(text(menu, u"search"_s), u"切り捨て"_s);
    EXPECT_EQ(contents(menu).first(), u"メニュー画面"_s);

    type(menu, u"search"_s, u"存在しないことば"_s);
    EXPECT_TRUE(contents(menu).first().startsWith(u"見つかりませんでした。"_s));
    EXPECT_TRUE(page(menu).extraSelections().isEmpty());
    type(menu, u"search"_s, u""_s);
    EXPECT_EQ(contents(menu).size(), all);
}

/// A window that a modal screen blocks gets no mouse press.
TEST_F(HelpWindow, HelpStaysUsableBesideAModalScreenAndItsChild) {
    widgets::Form below(u"frmBelow"_s, u""_s, nullptr);
    int opened = 0;
    const auto readHelp = [&](const QString& screen, const QString& title) {
        shelf_.helpOn(screen);
        frmHelp& window = *shelf_.window(HelpFile::Shelp);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        const qreal before = page(window).font().pointSizeF();
        const auto& larger = control<QPushButton>(window, u"larger"_s);
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          larger.mapTo(&window, larger.rect().center()));
        EXPECT_GT(page(window).font().pointSizeF(), before);
        EXPECT_EQ(shown(window), title);
        ++opened;
    };
    driver_.run(below, [&](QDialog& form) {
        readHelp(u"frmSDatatorikomi"_s, u"人事データ取込"_s);
        driver_.onScreen(u"frmAbove"_s, [&](QDialog& above) {
            readHelp(u"frmSTaisyousya"_s, u"対象者⇔配分基準の対応"_s);
            above.accept();
        });
        below.showChild(new widgets::Form(u"frmAbove"_s, u""_s, &form));
        form.accept();
    });
    EXPECT_EQ(opened, 2);
}

}  // namespace
}  // namespace shell
