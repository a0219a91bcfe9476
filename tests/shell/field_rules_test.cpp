#include "shell/field_rules.h"

#include <gtest/gtest.h>

#include "shell/kana.h"
#include "shell/years.h"

namespace shell {
namespace {

TEST(FieldRules, FirstFaultIsTold) {
    const QString label = QStringLiteral("･･･会社名");
    struct Case {
        QString text;
        qint32 maxBytes;
        bool emptyAllowed;
        QString message;  // without the label; empty when the text may stand
    };
    const Case cases[] = {
        {QString(), 20, false, QStringLiteral("未入力は許されません。 ")},
        {QString(), 0, true, QString()},
        {QStringLiteral("a\"b'c"), 2, false, QStringLiteral("項目中に \" を含むことはできません。 ")},
        {QStringLiteral("a'b"), 2, false, QStringLiteral("項目中に ' を含むことはできません。 ")},
        {QStringLiteral("ｱｲｳ"), 3, false, QString()},
        {QStringLiteral("アイウ"), 6, false, QString()},
        {QStringLiteral("アイウ"), 5, false, QStringLiteral("項目の長さ(6)が制限(5)を越えています。 ")},
        {QStringLiteral("見本商事株式会社１２"), 20, false, QString()},
        {QStringLiteral("見本商事株式会社１２a"), 20, false,
         QStringLiteral("項目の長さ(21)が制限(20)を越えています。 ")},
        {QString(1234, u'字'), 1000, true, QStringLiteral("項目の長さ(2468)が制限(1000)を越えています。 ")},
    };
    for (const Case& c : cases) {
        const auto fault = fieldFault(c.text, c.maxBytes, c.emptyAllowed, label);
        EXPECT_EQ(fault.value_or(QString()).toStdString(),
                  (c.message.isEmpty() ? QString() : c.message + label).toStdString());
    }
}

TEST(FieldRules, BytesOfTheCodePage) {
    struct Case {
        QString text;
        qint32 bytes;
    };
    const Case cases[] = {{QStringLiteral("aZ0 ~"), 5},        {QStringLiteral("ｶﾞ"), 2},
                          {QStringLiteral("～－①髙﨑㈱"), 12}, {QStringLiteral("𠮷"), 2},
                          {QStringLiteral("鷗é"), 4},          {QStringLiteral("〜"), 2},
                          {QStringLiteral("山田　太郎"), 10}};
    for (const Case& c : cases) EXPECT_EQ(byteCount(c.text), c.bytes) << c.text.toStdString();
}

TEST(Kana, EachFormFromEachForm) {
    struct Case {
        QString text, hiragana, katakana, half;
    };
    const Case cases[] = {
        {QStringLiteral("ﾔﾏﾀﾞ ﾀﾛｳ"), QStringLiteral("やまだ　たろう"), QStringLiteral("ヤマダ　タロウ"),
         QStringLiteral("ﾔﾏﾀﾞ ﾀﾛｳ")},
        {QStringLiteral("やまだ　たろう"), QStringLiteral("やまだ　たろう"), QStringLiteral("ヤマダ　タロウ"),
         QStringLiteral("ﾔﾏﾀﾞ ﾀﾛｳ")},
        {QStringLiteral("ガーゼ"), QStringLiteral("がーぜ"), QStringLiteral("ガーゼ"),
         QStringLiteral("ｶﾞｰｾﾞ")},
        {QStringLiteral("ﾊﾟｯｼｮﾝ"), QStringLiteral("ぱっしょん"), QStringLiteral("パッション"),
         QStringLiteral("ﾊﾟｯｼｮﾝ")},
        {QStringLiteral("ゔぁみすゞ"), QStringLiteral("ゔぁみすゞ"), QStringLiteral("ヴァミスヾ"),
         QStringLiteral("ｳﾞｧﾐｽヾ")},
        {QStringLiteral("ア゛゜"), QStringLiteral("あ゛゜"), QStringLiteral("ア゛゜"), QStringLiteral("ｱﾞﾟ")},
        {QStringLiteral("ＮTＴ山本"), QStringLiteral("ＮＴＴ山本"), QStringLiteral("ＮＴＴ山本"),
         QStringLiteral("NTT山本")},
        {QString(), QString(), QString(), QString()},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(convertKana(c.text, KanaForm::Hiragana).toStdString(), c.hiragana.toStdString());
        EXPECT_EQ(convertKana(c.text, KanaForm::Katakana).toStdString(), c.katakana.toStdString());
        EXPECT_EQ(convertKana(c.text, KanaForm::HalfKatakana).toStdString(), c.half.toStdString());
    }
}

TEST(Years, WholeYearsBetweenDates) {
    struct Case {
        QDate from, to;
        const char* years;
    };
    const Case cases[] = {
        {{1960, 4, 1}, {2003, 3, 31}, "42"},  {{1960, 4, 1}, {2003, 4, 1}, "43"},
        {{1960, 2, 29}, {2003, 2, 28}, "42"}, {{1960, 2, 29}, {2003, 3, 1}, "43"},
        {{1960, 2, 29}, {2004, 2, 29}, "44"}, {{1960, 2, 29}, {2004, 2, 28}, "43"},
        {{2003, 4, 1}, {2003, 4, 1}, "0"},    {{2003, 12, 31}, {2004, 1, 1}, "0"},
        {{2003, 4, 1}, {2003, 3, 31}, "-1"},  {{2003, 4, 1}, {2000, 4, 1}, "-3"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(nenrei_nensuu(c.from, c.to).toStdString(), c.years);
        EXPECT_EQ(kinzoku_nensuu(c.from, c.to).toStdString(), c.years);
    }
}

}  // namespace
}  // namespace shell
