#include "help/help.h"

#include <gtest/gtest.h>

#include <QSet>

namespace help {
namespace {

using namespace Qt::StringLiterals;
using enum HelpFile;

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
}  // namespace help
