#include "domain/field_rules.h"

#include <gtest/gtest.h>

#include "domain/kana.h"
#include "domain/number_rule.h"
#include "domain/years.h"

namespace domain {
namespace {

using namespace Qt::StringLiterals;

TEST(FieldRules, FirstFaultIsTold) {
    const QString label = u"･･･会社名"_s;
    const struct {
        QString text;
        qint32 maxBytes;
        bool emptyAllowed;
        QString message;  // without the label; empty when the text may stand
    } cases[] = {
        {QString(), 20, false, u"未入力は許されません。 "_s},
        {QString(), 0, true, QString()},
        {u"a\"b'c"_s, 2, false, u"項目中に \" を含むことはできません。 "_s},
        {u"a'b"_s, 2, false, u"項目中に ' を含むことはできません。 "_s},
        {u"ｱｲｳ"_s, 3, false, QString()},
        {u"アイウ"_s, 6, false, QString()},
        {u"アイウ"_s, 5, false, u"項目の長さ(6)が制限(5)を越えています。 "_s},
        {QString(1234, u'字'), 1000, true, u"項目の長さ(2468)が制限(1000)を越えています。 "_s},
    };
    for (const auto& c : cases) {
        const auto fault = fieldFault(c.text, c.maxBytes, c.emptyAllowed, label);
        EXPECT_EQ(fault.value_or(QString()).toStdString(),
                  (c.message.isEmpty() ? QString() : c.message + label).toStdString());
    }
}

TEST(FieldRules, BytesOfTheCodePage) {
    const std::pair<QString, qint32> cases[] = {{u"aZ0 ~"_s, 5},      {u"ｶﾞ"_s, 2},  {u"～－①髙﨑㈱"_s, 12},
                                                {u"𠮷"_s, 2},         {u"鷗é"_s, 4}, {u"〜"_s, 2},
                                                {u"山田　太郎"_s, 10}};
    for (const auto& [text, bytes] : cases) EXPECT_EQ(byteCount(text), bytes) << text.toStdString();
}

TEST(NumberRule, TellsTheFirstFaultAndSeparatesThousands) {
    const NumberRule rule{.label = u"単価"_s, .least = -1, .most = 9999.5, .decimals = 2};
    const QString empty = u"未入力は許されません。"_s, wrong = u"数値の入力が正しくありません。"_s,
                  many = u"小数点以下は2桁までです。"_s,
                  outside = u"-1から9,999.5までの数値を入力してください。"_s;
    const std::pair<QString, QString> cases[] = {
        {u" "_s, empty},          {u"12,34"_s, wrong},   {u"1e3"_s, wrong},          {u"1.125"_s, many},
        {u"9,999.51"_s, outside}, {u"-1.01"_s, outside}, {u"9,999.50"_s, QString()}, {u"-1"_s, QString()}};
    for (const auto& [text, told] : cases) {
        const QString fault = numberFault(text, rule).value_or(QString());
        EXPECT_TRUE(fault.startsWith(told) && fault.isEmpty() == told.isEmpty()) << text.toStdString();
        EXPECT_TRUE(fault.isEmpty() || fault.endsWith(u"･･･単価"_s));
    }
    EXPECT_FALSE(numberFault({}, {.label = {}, .emptyAllowed = true}));
    EXPECT_TRUE(numberFault(u"1.0"_s, {})->startsWith(u"整数で入力してください。"_s));
    const std::pair<QString, QString> shown[] = {{u"-1234567.125"_s, u"-1,234,567.125"_s},
                                                 {u"999"_s, u"999"_s},
                                                 {u"-100"_s, u"-100"_s},
                                                 {u"1万"_s, u"1万"_s}};
    for (const auto& [plain, separated] : shown) {
        EXPECT_EQ(withSeparators(plain), separated);
        EXPECT_EQ(withoutSeparators(separated), plain);
    }
}

TEST(Kana, EachFormFromEachForm) {
    const struct {
        QString text, hiragana, katakana, half;
    } cases[] = {
        {u"ﾔﾏﾀﾞ ﾀﾛｳ"_s, u"やまだ　たろう"_s, u"ヤマダ　タロウ"_s, u"ﾔﾏﾀﾞ ﾀﾛｳ"_s},
        {u"やまだ　たろう"_s, u"やまだ　たろう"_s, u"ヤマダ　タロウ"_s, u"ﾔﾏﾀﾞ ﾀﾛｳ"_s},
        {u"ガーゼ"_s, u"がーぜ"_s, u"ガーゼ"_s, u"ｶﾞｰｾﾞ"_s},
        {u"ﾊﾟｯｼｮﾝ"_s, u"ぱっしょん"_s, u"パッション"_s, u"ﾊﾟｯｼｮﾝ"_s},
        {u"ゔぁみすゞ"_s, u"ゔぁみすゞ"_s, u"ヴァミスヾ"_s, u"ｳﾞｧﾐｽヾ"_s},
        {u"ア゛゜"_s, u"あ゛゜"_s, u"ア゛゜"_s, u"ｱﾞﾟ"_s},
        {u"ＮTＴ山本"_s, u"ＮＴＴ山本"_s, u"ＮＴＴ山本"_s, u"NTT山本"_s},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(convertKana(c.text, KanaForm::Hiragana), c.hiragana);
        EXPECT_EQ(convertKana(c.text, KanaForm::Katakana), c.katakana);
        EXPECT_EQ(convertKana(c.text, KanaForm::HalfKatakana), c.half);
    }
}

TEST(Years, WholeYearsBetweenDates) {
    const struct {
        QDate from, to;
        const char* years;
    } cases[] = {
        {{1960, 4, 1}, {2003, 3, 31}, "42"},  {{1960, 4, 1}, {2003, 4, 1}, "43"},
        {{1960, 2, 29}, {2003, 2, 28}, "42"}, {{1960, 2, 29}, {2003, 3, 1}, "43"},
        {{1960, 2, 29}, {2004, 2, 29}, "44"}, {{1960, 2, 29}, {2004, 2, 28}, "43"},
        {{2003, 4, 1}, {2003, 4, 1}, "0"},    {{2003, 12, 31}, {2004, 1, 1}, "0"},
        {{2003, 4, 1}, {2003, 3, 31}, "-1"},  {{2003, 4, 1}, {2000, 4, 1}, "-3"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(nenrei_nensuu(c.from, c.to).toStdString(), c.years);
        EXPECT_EQ(kinzoku_nensuu(c.from, c.to).toStdString(), c.years);
    }
}

}  // namespace
}  // namespace domain
