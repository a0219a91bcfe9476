#include "prep/frmSSanteishitei.h"

#include <QAbstractItemView>
#include <QTest>

#include "prep/frmSSanteishitei2.h"
#include "prep/run_screens.h"

namespace {

using namespace preptest;
using sample::kCriteria;

const QString kMethod = u"算定方式指定の確認"_s;
const QString kNobody = u"この配分基準に対応する社員はいません。"_s;
const QString kItems = u"frmSSanteishitei2"_s;
enum { General, Managers, Part, Shokutaku };  // the lines of kCriteria

/// The screens that choose what a run works on, over the sample company at its newest date.
class Choice : public RunScreens {
  protected:
    Choice() : RunScreens(Content::Sample) {
        global_.kijunbi = u"2026/12/10"_s;
        addPlain({u"frmSJikkou01"_s, u"frmSJikkou02"_s, u"frmSJikkou03"_s, u"frmSJikkou03Sub"_s,
                  u"frmSJikkou04Sub"_s});
        addScreen<prep::frmSSanteishitei2>(kItems);
    }
    static void pick(QDialog& form, int criterion) {
        chooseText(form, u"DataList1"_s, QString::fromUtf16(kCriteria[criterion].kubunName));
        chooseText(form, u"DataList2"_s, QString::fromUtf16(kCriteria[criterion].kijunName));
    }
    void next(QDialog& form, const QString& box, const QString& title, BoxAnswer answer = BoxAnswer::Yes) {
        driver_.expectBox(box, title, answer);
        click(form, u"Command1"_s);
    }
    /// "x-x-" for the options in sight; an upper case X is the set one.
    static QString options(QDialog& form) {
        QString all;
        for (int i = 0; i < 4; ++i) {
            const QString name = u"Option1_%1"_s.arg(i);
            all += !visible(form, name) ? u'-' : checked(form, name) ? u'X' : u'x';
        }
        return all;
    }
    /// The refusals that both selection screens share.
    template <class Screen>
    void checkRefusals() {
        const auto refused = [this](QDialog& form, const QString& box, const QString& title,
                                    const QString& focus) {
            next(form, box, title, BoxAnswer::Ok);
            EXPECT_EQ(focused(form), focus);
        };
        const auto tone = [](QDialog& form) {
            return control(form, u"Label3"_s).property("mintTone").toString();
        };
        sql(u"delete from S配分基準対応社員 where 配分区分='02' and 配分基準='01'"_s);
        open<Screen>([&](QDialog& form) {
            EXPECT_EQ(rows(form, u"DataList1"_s), (QStringList{u"正社員賞与"_s, u"嘱託・パート賞与"_s}));
            EXPECT_EQ(text(form, u"Label1"_s), u"処理する配分区分をを指定してください。"_s);
            EXPECT_EQ(text(form, u"Label2"_s), u"配分基準を指定してください。"_s);
            EXPECT_FALSE(enabled(form, u"DataList2"_s) || visible(form, u"Label2"_s));
            refused(form, u"配分区分を指定してください。"_s, u"配分区分指定の確認"_s, u"DataList1"_s);
            choose(form, u"DataList1"_s, 1);
            EXPECT_TRUE(enabled(form, u"DataList2"_s) && visible(form, u"Label2"_s));
            refused(form, u"配分基準を指定してください。"_s, u"配分基準指定の確認"_s, u"DataList2"_s);
            pick(form, Part);
            EXPECT_EQ(text(form, u"Label3"_s) + tone(form), kNobody + u"warning"_s);
            refused(form, u"この処理は必要ありません。"_s, u"確認"_s, u"DataList2"_s);
            pick(form, General);
            EXPECT_NE(text(form, u"Label3"_s), kNobody);
            EXPECT_EQ(tone(form), QString());
            sql(u"update S配分基準 set 表示 = 0 where 配分区分 = '01'"_s);
            choose(form, u"DataList1"_s, 0);
            driver_.expectBox(u"設定した配分基準はありません。"_s, u"未設定"_s, BoxAnswer::Ok,
                              BoxIcon::Information);
            QTest::mouseClick(control<QAbstractItemView>(form, u"DataList2"_s).viewport(), Qt::LeftButton);
        });
    }
};

TEST_F(Choice, OfACriterionRefusesWhatIsMissing) {
    checkRefusals<prep::frmSSanteishikiSub>();
}
TEST_F(Choice, OfAMethodRefusesWhatIsMissing) {
    checkRefusals<prep::frmSSanteishitei>();
}

TEST_F(Choice, OfACriterionLeadsToTheEvaluationResults) {
    const QString question = u"『正社員賞与／管理職』を指定します。"_s, title = u"配分基準指定の確認"_s;
    open<prep::frmSSanteishikiSub>([&](QDialog& form) {
        EXPECT_EQ(form.windowTitle(), u"配分基準指定"_s);
        pick(form, Managers);
        next(form, question, title, BoxAnswer::No);
        driver_.expectBox(question, title, BoxAnswer::Yes);
        expectScreen(u"frmSJikkou04Sub"_s);
        press(form, Qt::Key_F, Qt::AltModifier);
    });
    EXPECT_EQ(driver_.screens().size(), 2);
    EXPECT_EQ((QStringList{global_.haibun_kubun, global_.haibun_kubun_mei, global_.haibun_kijun,
                           global_.haibun_kijun_mei}),
              (QStringList{u"01"_s, u"正社員賞与"_s, u"02"_s, u"管理職"_s}));
}

TEST_F(Choice, OfAMethodFollowsTheFlagsOfTheCriterion) {
    const QString pool = u"『総額配分』を指定します。"_s;
    open<prep::frmSSanteishitei>([&](QDialog& form) {
        EXPECT_EQ(form.windowTitle(), u"算定方式指定"_s);
        for (const QString& offered : {u"----"_s, u"X---"_s, u"-X--"_s, u"--x-"_s, u"---x"_s, u"Xx-x"_s,
                                       u"X-x-"_s, u"-Xx-"_s, u"--xx"_s, u"Xxxx"_s}) {
            sql(u"update S配分基準 set 個人別計算=?,総額配分=?,金一封=?,特別加算金=? where 配分区分='01' and Code='01'"_s,
                {offered[0] != u'-', offered[1] != u'-', offered[2] != u'-', offered[3] != u'-'});
            choose(form, u"DataList1"_s, 0);
            EXPECT_EQ(options(form), u"----"_s);
            choose(form, u"DataList2"_s, 0);
            EXPECT_EQ(options(form), offered);
            EXPECT_EQ(text(form, u"Label3"_s), u"算定方式を指定してください｡"_s);
            if (!offered.contains(u'X')) click(form, u"Command1"_s);  // nothing happens
        }
        click(form, u"Option1_1"_s);
        next(form, pool, kMethod, BoxAnswer::No);
        EXPECT_EQ(global_.santei_houshiki, QString());
        expectScreen(kItems);
        next(form, pool, kMethod);
        EXPECT_EQ(global_.santei_houshiki + global_.santei_houshiki_mei, u"2総額配分"_s);
        for (const auto& [option, code] : {std::pair(u"Option1_2"_s, u"3"_s), {u"Option1_3"_s, u"4"_s}}) {
            click(form, option);
            expectScreen(u"frmSJikkou01"_s);  // straight to the grid, without a question
            click(form, u"Command1"_s);
            EXPECT_EQ(global_.santei_houshiki, code);
        }
    });
    EXPECT_EQ(driver_.boxes().size(), 2U);
}

TEST_F(Choice, OnTheDesignSideKnowsNoTypedAmounts) {
    global_.haibun_jikkou_mode = false;
    global_.haibun_sekkei_mode = true;
    sql(u"delete from S配分基準対応社員"_s);
    sql(u"update S配分基準 set 個人別計算 = 0 where 配分区分 = '02' and Code = '02'"_s);
    open<prep::frmSSanteishitei>([&](QDialog& form) {
        pick(form, General);
        EXPECT_EQ(text(form, u"Label3"_s), u"算定方式を指定してください｡"_s);
        EXPECT_FALSE(enabled(form, u"Option1_2"_s));
        expectScreen(kItems, [](QDialog& items) { EXPECT_EQ(options(items), u"Xxxx"_s); });
        next(form, u"『個人別計算』を指定します。"_s, kMethod);
        pick(form, Part);  // the pool has no payment coefficient
        expectScreen(kItems, [](QDialog& items) { EXPECT_EQ(options(items), u"Xxx-"_s); });
        next(form, u"『総額配分』を指定します。"_s, kMethod);
        pick(form, Shokutaku);
        driver_.expectBox(u"設計時に設定するものはありません。"_s, kMethod, BoxAnswer::Ok,
                          BoxIcon::Information);
        click(form, u"Command1"_s);
    });
}

TEST_F(Choice, OfAnItemOffersWhatIsLeftToItsPurpose) {
    const struct {
        int criterion;
        QString method;
        bool correction;
        QString offered, guidance;
    } cases[] = {
        {General, u"1"_s, true, u"Xxxx"_s, u"方式"_s},
        {General, u"2"_s, false, u"-Xx-"_s, u"方式"_s},
        {Managers, u"1"_s, false, u"X-x-"_s, u"方式"_s},
        {Shokutaku, u"1"_s, false, u"--Xx"_s, u"方式"_s},
        {Shokutaku, u"2"_s, false, u"----"_s, u"実行時入力はありません。"_s},
        {Shokutaku, u"2"_s, true, u"----"_s, u"一律金額・係数又は自動入力はありません。"_s},
    };
    const QString grids[] = {u"frmSJikkou02"_s, u"frmSJikkou02"_s, u"frmSJikkou03Sub"_s, u"frmSJikkou03"_s};
    global_.santei_houshiki_mei = u"方式"_s;
    for (const auto& c : cases) {
        SCOPED_TRACE((c.guidance + c.offered).toStdString());
        global_.jikkou_syuusei_mode = c.correction;
        global_.haibun_kubun = QString::fromUtf16(kCriteria[c.criterion].kubun);
        global_.haibun_kubun_mei = QString::fromUtf16(kCriteria[c.criterion].kubunName);
        global_.haibun_kijun = QString::fromUtf16(kCriteria[c.criterion].kijun);
        global_.haibun_kijun_mei = QString::fromUtf16(kCriteria[c.criterion].kijunName);
        global_.santei_houshiki = c.method;
        open<prep::frmSSanteishitei2>([&](QDialog& form) {
            EXPECT_EQ(form.windowTitle(), u"算定方式"_s);
            EXPECT_EQ(text(form, u"Label1"_s), c.guidance);
            EXPECT_EQ(text(form, u"Label3"_s), u"次の処理を指定してください。"_s);
            EXPECT_EQ(options(form), c.offered);
            EXPECT_EQ(global_.panels.run, u"配分区分: %1／配分基準: %2"_s.arg(global_.haibun_kubun_mei,
                                                                              global_.haibun_kijun_mei));
            if (!c.offered.contains(u'X')) click(form, u"Command1"_s);  // nothing happens
            for (int i = 0; i < 4; ++i) {
                if (c.offered[i] == u'-') continue;
                click(form, u"Option1_%1"_s.arg(i));
                expectScreen(grids[i]);
                click(form, u"Command1"_s);
                const bool flags[] = {global_.koumoku_kisogaku_a, global_.koumoku_kisogaku_b,
                                      global_.koumoku_keisuu, global_.koumoku_shikyuu};
                for (int j = 0; j < 4; ++j) EXPECT_EQ(flags[j], i == j);
                EXPECT_EQ(global_.santei_koumoku, QString::number(i + 1));
            }
        });
        EXPECT_EQ(global_.panels.run, QString());
    }
}

TEST_F(Choice, OfAnItemTidiesBasesThatNothingUses) {
    const QString tables[] = {u"S基礎額設定"_s, u"S基礎額基本給"_s, u"S基礎額手当"_s};
    /// Per table: the rows of a base of 01/01 under method 1, and all the others.
    const auto rowsOf = [&](const QString& base) {
        QStringList counts;
        for (const QString& table : tables)
            counts += read(
                u"select sum(own), sum(not own) from (select 配分区分='01' and 配分基準='01' and "
                "算定方式='1' and 処理区分=? as own from %1)"_s.arg(table),
                {base});
        return counts;
    };
    const auto close = [&](const QMap<QString, BoxAnswer>& answers) {
        for (const auto& [base, answer] : answers.asKeyValueRange())
            driver_.expectBox(
                u"%1を利用する係数の設定がありません。\n %1の設定データを削除しますか？"_s.arg(base),
                u"削除の確認"_s, answer);
        open<prep::frmSSanteishitei2>([](QDialog&) {});
    };
    const QString a = u"基礎額Ａ"_s, b = u"基礎額Ｂ"_s;
    global_.haibun_kubun = global_.haibun_kijun = u"01"_s;
    global_.santei_houshiki = u"1"_s;
    close({});  // both bases are used: no question
    sql(u"update S係数設定 set 基礎額Ａ=0, 基礎額Ｂ=0 where 配分区分Code='01' and 配分基準Code='01' and 算定方式='1'"_s);
    const QByteArray before = dump(cn_);
    close({{a, BoxAnswer::No}, {b, BoxAnswer::No}});
    expectUnchanged(before);
    QStringList left = rowsOf(u"1"_s);
    for (QString& counts : left) counts = u"0|"_s + counts.section(u'|', 1);
    EXPECT_NE(rowsOf(u"1"_s), left);
    close({{a, BoxAnswer::Yes}, {b, BoxAnswer::No}});
    EXPECT_EQ(rowsOf(u"1"_s), left);
    close({{b, BoxAnswer::Yes}});
    close({});
}

TEST_F(Choice, DoesNotOfferScreensThatAreNotBuilt) {
    screens_ = {};
    open<prep::frmSSanteishikiSub>([&](QDialog& form) {
        pick(form, General);
        EXPECT_FALSE(enabled(form, u"Command1"_s));
        choose(form, u"DataList1"_s, 0);
        EXPECT_TRUE(enabled(form, u"Command1"_s));
    });
    open<prep::frmSSanteishitei>([&](QDialog& form) {
        pick(form, General);
        EXPECT_TRUE(visible(form, u"Option1_2"_s) && !enabled(form, u"Option1_2"_s));
    });
    global_.santei_houshiki = u"1"_s;
    open<prep::frmSSanteishitei2>([&](QDialog& form) { EXPECT_FALSE(enabled(form, u"Command1"_s)); });
}

}  // namespace
