#include "help/frmHelp.h"

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

#include "forms/global_record.h"
#include "screen_driver.h"
#include "widgets/form.h"

namespace help {
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
    forms::GlobalRecord global_;
    HelpShelf shelf_{global_};
    ScreenDriver driver_;
};

TEST_F(HelpWindow, EachBookHasItsStartPageAndNoLinkLeadsNowhere) {
    const auto& pages = shelf_.pages();
    for (HelpFile file : {HelpFile::Mhelp, HelpFile::Jhelp, HelpFile::Shelp})
        EXPECT_TRUE(findPage(pages, file, 0));
    EXPECT_FALSE(pageOfName(u"hyou_1.html"_s));
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

/// A window that a modal screen blocks gets no mouse press.
TEST_F(HelpWindow, HelpStaysUsableBesideAModalScreenAndItsChild) {
    widgets::Form below(u"frmBelow"_s, u""_s, nullptr);
    int opened = 0;
    const auto readHelp = [&](int number, const QString& title) {
        shelf_.helpOn(HelpTopic{HelpFile::Shelp, number});
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
        readHelp(7001, u"人事データ取込"_s);
        driver_.onScreen(u"frmAbove"_s, [&](QDialog& above) {
            readHelp(7501, u"対象者⇔配分基準の対応"_s);
            above.accept();
        });
        below.showChild(new widgets::Form(u"frmAbove"_s, u""_s, &form));
        form.accept();
    });
    EXPECT_EQ(opened, 2);
}

}  // namespace
}  // namespace help
