#include "shell/help.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QSet>
#include <QTemporaryDir>

namespace shell {
namespace {

using namespace Qt::StringLiterals;
using enum HelpFile;

/// Notes what the rule asks of the windows: "-M" closes, "M7500" shows a topic, "M!" the start page.
class Noted : public HelpWindows {
  public:
    void closeAll(HelpFile file) override { steps << u"-"_s + letter(file); }
    void showTopic(HelpFile file, int number) override { steps << letter(file) + QString::number(number); }
    void showStartPage(HelpFile file) override { steps << letter(file) + u'!'; }
    QString taken() { return std::exchange(steps, {}).join(u' '); }
    QStringList steps;

  private:
    static QString letter(HelpFile file) { return u"MJSHC"_s.mid(int(file), 1); }
};

TEST(Help, AnotherAreaClosesTheOtherBooksInOrderTheSameAreaNone) {
    QTemporaryDir program;
    Noted windows;
    QString bunya;
    const struct {
        HelpFile target;
        std::optional<int> topic;
        const char* steps;
        const char16_t* bunya;
    } cases[] = {
        {Shelp, 7001, "-M -J -H -C S7001", u"syo"}, {Shelp, 7004, "S7004", u"syo"},
        {Jhelp, 3, "-M -S -H -C J3", u"jin"},       {Jhelp, {}, "J!", u"jin"},
        {Mhelp, {}, "-J -S -H -C M!", u"menu"},     {Mhelp, 1000, "M1000", u"menu"},
        {Shelp, {}, "-M -J -H -C S!", u"syo"},
    };
    for (const auto& c : cases) {
        help_bunya(bunya, program.path(), c.target, c.topic, windows);
        EXPECT_EQ(windows.taken(), QString::fromLatin1(c.steps));
        EXPECT_EQ(bunya, QString::fromUtf16(c.bunya));
    }
    EXPECT_EQ(QDir::current(), QDir(program.path()));
    closeEveryHelp(windows);
    EXPECT_EQ(windows.taken(), u"-H -C -M -J -S"_s);
    QDir::setCurrent(QDir::rootPath());
}

TEST(Help, EachScreenHasOneTopicAndEachTopicOneScreen) {
    QSet<QString> screens;
    QSet<QString> places;
    for (const HelpTopic& topic : helpTopics()) {
        EXPECT_FALSE(screens.contains(topic.screen)) << topic.screen.toStdString();
        const QString page = pageName(topic.file, topic.number);
        EXPECT_FALSE(places.contains(page)) << page.toStdString();
        EXPECT_EQ(pageOfName(page), std::pair(topic.file, topic.number));
        screens << topic.screen;
        places << page;
    }
    EXPECT_EQ(helpTopic(u"frmMenuSJikkou"_s)->file, Mhelp);
    EXPECT_FALSE(helpTopic(u"frmNowhere"_s));
    EXPECT_FALSE(pageOfName(u"hyou_1.html"_s));
}

TEST(Help, AWordIsFoundWhateverItsWidthCaseAndKana) {
    const QString text = u"取消ボタン、ﾎﾞﾀﾝ、ぼたん。ＥＸＣＥＬとExcel"_s;
    using Places = std::vector<std::pair<int, int>>;
    const Places buttons = {{2, 3}, {6, 4}, {11, 3}};
    for (const QString& word : {u"ボタン"_s, u"ﾎﾞﾀﾝ"_s, u"ぼたん"_s})
        EXPECT_EQ(findWord(text, word), buttons);
    EXPECT_EQ(findWord(text, u"ｅｘcel"_s), (Places{{15, 5}, {21, 5}}));
    EXPECT_TRUE(findWord(text, u"ホタン"_s).empty());
    EXPECT_TRUE(findWord(text, u""_s).empty());

    const HelpPage page{Shelp, 1, u"配分計算"_s, {}, u"端数処理は四捨五入"_s};
    EXPECT_TRUE(pageHolds(page, searchWords(u"　端数　計算 "_s)));
    EXPECT_FALSE(pageHolds(page, searchWords(u"端数　取込"_s)));
    EXPECT_TRUE(pageHolds(page, searchWords(u"　"_s)));
}

}  // namespace
}  // namespace shell
