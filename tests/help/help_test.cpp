#include "help/help.h"

#include <gtest/gtest.h>

namespace help {
namespace {

using namespace Qt::StringLiterals;
using enum HelpFile;

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
