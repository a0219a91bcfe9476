#include "prep/frmSSanteishitei.h"

#include <QAbstractItemView>
#include <QTest>

#include "prep/frmSSanteishitei2.h"
#include "prep/run_screens.h"

namespace {

using namespace preptest;

const QString kNext = u"Command1"_s;
const QString kMethod = u"算定方式指定の確認"_s;
const QString kItems = u"frmSSanteishitei2"_s;
const auto &kGeneral = sample::kCriteria[0], &kManagers = sample::kCriteria[1], &kPart = sample::kCriteria[2],
           &kShokutaku = sample::kCriteria[3];

/// The screens that choose what a run works on, over the sample company at its newest date.
class Choice : public RunScreens {
  protected:
    Choice() : RunScreens(Content::Sample) {
        global_.kijunbi = u"2026/12/10"_s;
        addPlain({u"frmSJikkou01"_s, u"frmSJikkou02"_s, u"frmSJikkou03"_s, u"frmSJikkou03Sub"_s,
                  u"frmSJikkou04Sub"_s});
        addScreen<prep::frmSSanteishitei2>(kItems);
    }
    static void pick(QDialog& form, const sample::Criterion& criterion) {
        chooseText(form, u"DataList1"_s, QString::fromUtf16(criterion.kubunName));
        chooseText(form, u"DataList2"_s, QString::fromUtf16(criterion.kijunName));
    }
    void setGlobal(const sample::Criterion& criterion, const QString& method) {
        global_.haibun_kubun = QString::fromUtf16(criterion.kubun);
        global_.haibun_kubun_mei = QString::fromUtf16(criterion.kubunName);
        global_.haibun_kijun = QString::fromUtf16(criterion.kijun);
        global_.haibun_kijun_mei = QString::fromUtf16(criterion.kijunName);
        global_.santei_houshiki = method;
        global_.santei_houshiki_mei = u"方式"_s;
    }
};

TEST_F(Choice, RefusesWhatIsMissing) {
    sql(u"delete from S配分基準対応社員 where 配分区分='02' and 配分基準='01'"_s);
    open<prep::frmSSanteishitei>([&](QDialog& form) {
        const auto guidance = [&] {
            return text(form, u"Label3"_s) + control(form, u"Label3"_s).property("mintTone").toString();
        };
        EXPECT_FALSE(enabled(form, u"DataList2"_s) || visible(form, u"Label2"_s));
        clickTold(form, kNext, u"配分区分を指定してください。"_s, u"配分区分指定の確認"_s);
        EXPECT_EQ(focused(form), u"DataList1"_s);
        choose(form, u"DataList1"_s, 1);
        EXPECT_TRUE(enabled(form, u"DataList2"_s) && visible(form, u"Label2"_s));
        clickTold(form, kNext, u"配分基準を指定してください。"_s, u"配分基準指定の確認"_s);
        EXPECT_EQ(focused(form), u"DataList2"_s);
        pick(form, kPart);
        EXPECT_EQ(guidance(), u"この配分基準に対応する社員はいません。warning"_s);
        clickTold(form, kNext, u"この処理は必要ありません。"_s, u"確認"_s);
        EXPECT_EQ(focused(form), u"DataList2"_s);
        pick(form, kGeneral);
        EXPECT_EQ(guidance(), u"算定方式を指定してください｡"_s);
        sql(u"update S配分基準 set 表示 = 0 where 配分区分 = '01'"_s);
        choose(form, u"DataList1"_s, 0);
        driver_.expectBox(u"設定した配分基準はありません。"_s, u"未設定"_s, BoxAnswer::Ok,
                          BoxIcon::Information);
        QTest::mouseClick(control<QAbstractItemView>(form, u"DataList2"_s).viewport(), Qt::LeftButton);
    });
}

TEST_F(Choice, OfACriterionLeadsToTheEvaluationResults) {
    const QString question = u"『正社員賞与／管理職』を指定します。"_s, title = u"配分基準指定の確認"_s;
    open<prep::frmSSanteishikiSub>([&](QDialog& form) {
        pick(form, kManagers);
        clickTold(form, kNext, question, title, BoxAnswer::No);
        driver_.expectBox(question, title, BoxAnswer::Yes);
        expectScreen(u"frmSJikkou04Sub"_s);
        choose(form, u"DataList2"_s, 1);
        press(form, Qt::Key_Return);
    });
    EXPECT_EQ(global_.haibun_kubun + global_.haibun_kubun_mei, u"01正社員賞与"_s);
    EXPECT_EQ(global_.haibun_kijun + global_.haibun_kijun_mei, u"02管理職"_s);
}

TEST_F(Choice, OfAMethodFollowsTheFlagsOfTheCriterion) {
    const QString flags =
        u"update S配分基準 set 個人別計算=?,総額配分=?,金一封=?,特別加算金=? "
        "where 配分区分='01' and Code='01'"_s;
    const QString question = u"『総額配分』を指定します。"_s;
    open<prep::frmSSanteishitei>([&](QDialog& form) {
        for (const QString& uses :
             {u"----"_s, u"X---"_s, u"-X--"_s, u"--x-"_s, u"---x"_s, u"Xx-x"_s, u"Xxxx"_s}) {
            sql(flags, {uses[0] != u'-', uses[1] != u'-', uses[2] != u'-', uses[3] != u'-'});
            choose(form, u"DataList1"_s, 0);
            EXPECT_EQ(options(form), u"----"_s);
            choose(form, u"DataList2"_s, 0);
            EXPECT_EQ(options(form), uses);
            if (!uses.contains(u'X')) click(form, kNext);  // nothing happens
        }
        click(form, u"Option1_1"_s);
        clickTold(form, kNext, question, kMethod, BoxAnswer::No);
        EXPECT_EQ(global_.santei_houshiki, QString());
        expectScreen(kItems);
        clickTold(form, kNext, question, kMethod, BoxAnswer::Yes);
        EXPECT_EQ(global_.santei_houshiki + global_.santei_houshiki_mei, u"2総額配分"_s);
        for (const auto& [option, code] : {std::pair(u"Option1_2"_s, u"3"_s), {u"Option1_3"_s, u"4"_s}}) {
            click(form, option);
            expectScreen(u"frmSJikkou01"_s);  // straight to the grid, without a question
            click(form, kNext);
            EXPECT_EQ(global_.santei_houshiki, code);
        }
    });
}

TEST_F(Choice, OnTheDesignSideKnowsNoTypedAmounts) {
    global_.haibun_jikkou_mode = false;
    global_.haibun_sekkei_mode = true;
    sql(u"delete from S配分基準対応社員"_s);
    sql(u"update S配分基準 set 個人別計算 = 0 where 配分区分 = '02' and Code = '02'"_s);
    open<prep::frmSSanteishitei>([&](QDialog& form) {
        pick(form, kGeneral);
        EXPECT_EQ(text(form, u"Label3"_s), u"算定方式を指定してください｡"_s);
        EXPECT_FALSE(enabled(form, u"Option1_2"_s));
        expectScreen(kItems, [](QDialog& items) { EXPECT_EQ(options(items), u"Xxxx"_s); });
        clickTold(form, kNext, u"『個人別計算』を指定します。"_s, kMethod, BoxAnswer::Yes);
        pick(form, kPart);  // the pool has no payment coefficient
        expectScreen(kItems, [](QDialog& items) { EXPECT_EQ(options(items), u"Xxx-"_s); });
        clickTold(form, kNext, u"『総額配分』を指定します。"_s, kMethod, BoxAnswer::Yes);
        pick(form, kShokutaku);
        clickTold(form, kNext, u"設計時に設定するものはありません。"_s, kMethod, BoxAnswer::Ok,
                  BoxIcon::Information);
    });
}

TEST_F(Choice, OfAnItemOffersWhatIsLeftToItsPurpose) {
    const QString grids[] = {u"frmSJikkou02"_s, u"frmSJikkou02"_s, u"frmSJikkou03Sub"_s, u"frmSJikkou03"_s};
    const auto offers = [&](bool correction, const QString& items, const QString& guidance) {
        global_.jikkou_syuusei_mode = correction;
        open<prep::frmSSanteishitei2>([&](QDialog& form) {
            EXPECT_EQ(text(form, u"Label1"_s), guidance);
            EXPECT_EQ(options(form), items);
            EXPECT_EQ(global_.panels.run, u"配分区分: %1／配分基準: %2"_s.arg(global_.haibun_kubun_mei,
                                                                              global_.haibun_kijun_mei));
            if (!items.contains(u'X')) click(form, kNext);  // nothing happens
            for (int i = 0; i < 4; ++i) {
                if (items[i] == u'-') continue;
                click(form, u"Option1_%1"_s.arg(i));
                expectScreen(grids[i]);
                click(form, kNext);
                const bool flags[] = {global_.koumoku_kisogaku_a, global_.koumoku_kisogaku_b,
                                      global_.koumoku_keisuu, global_.koumoku_shikyuu};
                for (int j = 0; j < 4; ++j) EXPECT_EQ(flags[j], i == j);
                EXPECT_EQ(global_.santei_koumoku, QString::number(i + 1));
            }
        });
        EXPECT_EQ(global_.panels.run, QString());
    };
    setGlobal(kGeneral, u"1"_s);
    offers(true, u"Xxxx"_s, u"方式"_s);
    setGlobal(kGeneral, u"2"_s);
    offers(false, u"-Xx-"_s, u"方式"_s);
    setGlobal(kShokutaku, u"2"_s);
    offers(false, u"----"_s, u"実行時入力はありません。"_s);
    offers(true, u"----"_s, u"一律金額・係数又は自動入力はありません。"_s);
}

TEST_F(Choice, OfAnItemTidiesBasesThatNothingUses) {
    const QString a = u"基礎額Ａ"_s, b = u"基礎額Ｂ"_s;
    const QString ofA = u"配分区分='01' and 配分基準='01' and 算定方式='1' and 処理区分='1'"_s;
    const auto count = [&](const QString& where) {
        qsizetype rows = 0;
        for (const QString& table : {u"S基礎額設定"_s, u"S基礎額基本給"_s, u"S基礎額手当"_s})
            rows += read(u"select ID from %1 where "_s.arg(table) + where).size();
        return rows;
    };
    const auto close = [&](const QMap<QString, BoxAnswer>& answers) {
        const QString question = u"%1を利用する係数の設定がありません。\n %1の設定データを削除しますか？"_s;
        for (const auto& [base, answer] : answers.asKeyValueRange())
            driver_.expectBox(question.arg(base), u"削除の確認"_s, answer);
        open<prep::frmSSanteishitei2>([](QDialog&) {});
    };
    setGlobal(kGeneral, u"1"_s);
    close({});  // both bases are used: no question
    sql(u"update S係数設定 set 基礎額Ａ=0, 基礎額Ｂ=0 where 配分区分Code='01' and 配分基準Code='01' and 算定方式='1'"_s);
    const QByteArray before = dump(cn_);
    const auto others = count(u"not(%1)"_s.arg(ofA));
    close({{a, BoxAnswer::No}, {b, BoxAnswer::No}});
    expectUnchanged(before);
    close({{a, BoxAnswer::Yes}, {b, BoxAnswer::No}});
    EXPECT_EQ(count(ofA), 0);
    EXPECT_EQ(count(u"not(%1)"_s.arg(ofA)), others);
    close({{b, BoxAnswer::Yes}});
    close({});
}

}  // namespace
