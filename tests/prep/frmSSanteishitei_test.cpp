#include "prep/frmSSanteishitei.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QTest>

#include "prep/frmSSanteishitei2.h"
#include "shell/global_record.h"
#include "support/company_fixture.h"
#include "support/screen_driver.h"

namespace {

using namespace Qt::StringLiterals;
using namespace support;
using sample::kCriteria;
using shell::BoxAnswer;
using shell::BoxIcon;

const QString kMethod = u"算定方式指定の確認"_s;
const QString kNobody = u"この配分基準に対応する社員はいません。"_s;
enum { General, Managers, Part, Shokutaku };  // the lines of kCriteria

/// The screens that choose what a run works on, over the sample company at its newest date.
class Choice : public ::testing::Test {
  protected:
    Choice() : house_{global_, screens_} {
        folder_.makeSample();
        global_.cn_main = folder_.open();
        global_.kijunbi = u"2026/12/10"_s;
        global_.haibun_jikkou_mode = true;
        for (const QString& name : {u"frmSJikkou01"_s, u"frmSJikkou02"_s, u"frmSJikkou03"_s,
                                    u"frmSJikkou03Sub"_s, u"frmSJikkou04Sub"_s})
            addPlain(name);
        screens_.add(u"frmSSanteishitei2"_s, [](shell::House& house, QWidget* parent) -> QDialog* {
            return new prep::frmSSanteishitei2(house, parent);
        });
    }
    /// A screen of the next step that only tells that it was there.
    void addPlain(const QString& name) {
        screens_.add(
            name, [name](shell::House&, QWidget* parent) { return new widgets::Form(name, name, parent); });
    }
    void sql(const QString& statement, const store::Binds& binds = {}) {
        global_.cn_main->execute(statement, binds);
    }
    int count(const QString& from) {
        return global_.cn_main->query(u"select * from "_s + from).recordCount();
    }

    template <class Screen>
    void open(ScreenDriver::Step step) {
        Screen form(house_, nullptr);
        driver_.run(form, [&](QDialog& screen) {
            step(screen);
            screen.close();
        });
    }
    static void pick(QDialog& form, int criterion) {
        chooseText(form, u"DataList1"_s, QString::fromUtf16(kCriteria[criterion].kubunName));
        chooseText(form, u"DataList2"_s, QString::fromUtf16(kCriteria[criterion].kijunName));
    }
    void refused(QDialog& form, const QString& text, const QString& title, const QString& focus) {
        driver_.expectBox(text, title);
        click(form, u"Command1"_s);
        EXPECT_EQ(focused(form), focus);
    }
    void expectNext(
        const QString& screen, std::function<void()> look = [] {}) {
        driver_.onScreen(screen, [look](QDialog& next) {
            look();
            next.reject();
        });
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
            EXPECT_EQ(text(form, u"Label3"_s), kNobody);
            EXPECT_EQ(control(form, u"Label3"_s).property("mintTone").toString(), u"warning"_s);
            refused(form, u"この処理は必要ありません。"_s, u"確認"_s, u"DataList2"_s);
            pick(form, General);
            EXPECT_NE(text(form, u"Label3"_s), kNobody);
            EXPECT_EQ(control(form, u"Label3"_s).property("mintTone").toString(), QString());
            sql(u"update S配分基準 set 表示 = 0 where 配分区分 = '01'"_s);
            choose(form, u"DataList1"_s, 0);
            driver_.expectBox(u"設定した配分基準はありません。"_s, u"未設定"_s, BoxAnswer::Ok,
                              BoxIcon::Information);
            QTest::mouseClick(control<QAbstractItemView>(form, u"DataList2"_s).viewport(), Qt::LeftButton);
        });
    }

    CompanyFolder folder_;
    shell::GlobalRecord global_;
    shell::ScreenRegistry screens_;
    shell::House house_;
    ScreenDriver driver_;
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
        EXPECT_EQ(text(form, u"Label3"_s), QString());
        driver_.expectBox(question, title, BoxAnswer::No);
        click(form, u"Command1"_s);
        driver_.expectBox(question, title, BoxAnswer::Yes);
        expectNext(u"frmSJikkou04Sub"_s, [&] {
            EXPECT_EQ(global_.haibun_kubun + global_.haibun_kubun_mei + global_.haibun_kijun +
                          global_.haibun_kijun_mei,
                      u"01正社員賞与02管理職"_s);
        });
        press(form, Qt::Key_F, Qt::AltModifier);
    });
    EXPECT_EQ(driver_.screens().size(), 2);
}

TEST_F(Choice, OfAMethodFollowsTheFlagsOfTheCriterion) {
    const QString set =
        u"update S配分基準 set 個人別計算=?,総額配分=?,金一封=?,特別加算金=? where 配分区分='01' and Code='01'"_s;
    open<prep::frmSSanteishitei>([&](QDialog& form) {
        EXPECT_EQ(form.windowTitle(), u"算定方式指定"_s);
        EXPECT_EQ(options(form), u"----"_s);
        for (int flags = 0; flags < 16; ++flags) {
            sql(set, {bool(flags & 1), bool(flags & 2), bool(flags & 4), bool(flags & 8)});
            choose(form, u"DataList1"_s, 0);
            EXPECT_EQ(options(form), u"----"_s);
            choose(form, u"DataList2"_s, 0);
            QString expected;
            for (int i = 0; i < 4; ++i) expected += flags & (1 << i) ? u'x' : u'-';
            if (expected[0] == u'x')
                expected[0] = u'X';
            else if (expected[1] == u'x')
                expected[1] = u'X';
            EXPECT_EQ(options(form), expected) << flags;
            EXPECT_EQ(text(form, u"Label3"_s), u"算定方式を指定してください｡"_s);
            if (!expected.contains(u'X')) click(form, u"Command1"_s);  // nothing happens
        }
        driver_.expectBox(u"『総額配分』を指定します。"_s, kMethod, BoxAnswer::No);
        click(form, u"Option1_1"_s);
        click(form, u"Command1"_s);
        EXPECT_EQ(global_.santei_houshiki, QString());
        driver_.expectBox(u"『総額配分』を指定します。"_s, kMethod, BoxAnswer::Yes);
        expectNext(u"frmSSanteishitei2"_s,
                   [&] { EXPECT_EQ(global_.santei_houshiki + global_.santei_houshiki_mei, u"2総額配分"_s); });
        click(form, u"Command1"_s);
        const std::pair<QString, QString> typed[] = {{u"Option1_2"_s, u"3"_s}, {u"Option1_3"_s, u"4"_s}};
        for (const auto& [option, code] : typed) {  // straight to the grid, without a question
            click(form, option);
            expectNext(u"frmSJikkou01"_s, [&, c = code] { EXPECT_EQ(global_.santei_houshiki, c); });
            click(form, u"Command1"_s);
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
        driver_.expectBox(u"『個人別計算』を指定します。"_s, kMethod, BoxAnswer::Yes);
        driver_.onScreen(u"frmSSanteishitei2"_s, [&](QDialog& next) {
            EXPECT_EQ(options(next), u"Xxxx"_s);
            EXPECT_EQ(text(next, u"Label1"_s), u"個人別計算"_s);
            next.reject();
        });
        click(form, u"Command1"_s);
        pick(form, Part);
        driver_.expectBox(u"『総額配分』を指定します。"_s, kMethod, BoxAnswer::Yes);
        driver_.onScreen(u"frmSSanteishitei2"_s, [&](QDialog& next) {
            EXPECT_EQ(options(next), u"Xxx-"_s);  // the pool has no payment coefficient
            next.reject();
        });
        click(form, u"Command1"_s);
        pick(form, Shokutaku);
        driver_.expectBox(u"設計時に設定するものはありません。"_s, kMethod, BoxAnswer::Ok,
                          BoxIcon::Information);
        click(form, u"Command1"_s);
    });
}

TEST_F(Choice, OfAnItemOffersWhatIsLeftToItsPurpose) {
    const QString none = u"実行時入力はありません。"_s,
                  noneToCorrect = u"一律金額・係数又は自動入力はありません。"_s;
    const struct {
        int criterion;
        QString method;
        bool correction;
        QString offered;
    } cases[] = {
        {General, u"1"_s, false, u"--X-"_s},   {General, u"1"_s, true, u"Xxxx"_s},
        {General, u"2"_s, false, u"-Xx-"_s},   {General, u"2"_s, true, u"X-x-"_s},
        {Managers, u"1"_s, false, u"X-x-"_s},  {Managers, u"1"_s, true, u"-Xxx"_s},
        {Part, u"2"_s, false, u"X-x-"_s},      {Part, u"2"_s, true, u"-Xx-"_s},
        {Shokutaku, u"1"_s, false, u"--Xx"_s}, {Shokutaku, u"1"_s, true, u"X-x-"_s},
        {Shokutaku, u"2"_s, false, u"----"_s}, {Shokutaku, u"2"_s, true, u"----"_s},
    };
    const QString next[] = {u"frmSJikkou02"_s, u"frmSJikkou02"_s, u"frmSJikkou03Sub"_s, u"frmSJikkou03"_s};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.criterion << c.method.toStdString() << c.correction);
        global_.jikkou_syuusei_mode = c.correction;
        global_.haibun_kubun = QString::fromUtf16(kCriteria[c.criterion].kubun);
        global_.haibun_kubun_mei = QString::fromUtf16(kCriteria[c.criterion].kubunName);
        global_.haibun_kijun = QString::fromUtf16(kCriteria[c.criterion].kijun);
        global_.haibun_kijun_mei = QString::fromUtf16(kCriteria[c.criterion].kijunName);
        global_.santei_houshiki = c.method;
        global_.santei_houshiki_mei = u"方式"_s;
        open<prep::frmSSanteishitei2>([&](QDialog& form) {
            EXPECT_EQ(form.windowTitle(), u"算定方式"_s);
            EXPECT_EQ(text(form, u"Label3"_s), u"次の処理を指定してください。"_s);
            EXPECT_EQ(options(form), c.offered);
            EXPECT_EQ(global_.panels.run, u"配分区分: %1／配分基準: %2"_s.arg(global_.haibun_kubun_mei,
                                                                              global_.haibun_kijun_mei));
            const bool any = c.offered.contains(u'X');
            EXPECT_EQ(text(form, u"Label1"_s), any ? u"方式"_s : c.correction ? noneToCorrect : none);
            if (!any) {
                click(form, u"Command1"_s);
                return;
            }
            for (int i = 0; i < 4; ++i) {
                if (c.offered[i] == u'-') continue;
                click(form, u"Option1_%1"_s.arg(i));
                global_.koumoku_kisogaku_a = global_.koumoku_shikyuu = true;
                expectNext(next[i], [&] {
                    const bool flags[] = {global_.koumoku_kisogaku_a, global_.koumoku_kisogaku_b,
                                          global_.koumoku_keisuu, global_.koumoku_shikyuu};
                    for (int j = 0; j < 4; ++j) EXPECT_EQ(flags[j], i == j);
                    EXPECT_EQ(global_.santei_koumoku, QString::number(i + 1));
                });
                click(form, u"Command1"_s);
            }
        });
        EXPECT_EQ(global_.panels.run, QString());
    }
}

TEST_F(Choice, OfAnItemTidiesBasesThatNothingUses) {
    global_.haibun_kubun = global_.haibun_kijun = u"01"_s;
    global_.santei_houshiki = u"1"_s;
    const QString setup = u"S基礎額設定 where 配分区分='01' and 配分基準='01'"_s,
                  ofA = u" and 処理区分='1'"_s;
    const QString question = u"%1を利用する係数の設定がありません。\n %1の設定データを削除しますか？"_s;
    const auto close = [&] { open<prep::frmSSanteishitei2>([](QDialog&) {}); };
    close();  // both bases are used: no question
    sql(u"update S係数設定 set 基礎額Ａ=0, 基礎額Ｂ=0 where 配分区分Code='01' and 配分基準Code='01' and 算定方式='1'"_s);
    const int before = count(setup);
    driver_.expectBox(question.arg(u"基礎額Ａ"_s), u"削除の確認"_s, BoxAnswer::No);
    driver_.expectBox(question.arg(u"基礎額Ｂ"_s), u"削除の確認"_s, BoxAnswer::No);
    close();
    EXPECT_EQ(count(setup), before);
    EXPECT_GT(count(u"S基礎額基本給 where 配分区分='01' and 配分基準='01' and 算定方式='1'"_s + ofA), 0);
    driver_.expectBox(question.arg(u"基礎額Ａ"_s), u"削除の確認"_s, BoxAnswer::Yes);
    driver_.expectBox(question.arg(u"基礎額Ｂ"_s), u"削除の確認"_s, BoxAnswer::No);
    close();
    EXPECT_EQ(count(setup), before - 1);
    for (const QString& table : {u"S基礎額設定"_s, u"S基礎額基本給"_s, u"S基礎額手当"_s}) {
        const QString all = table + u" where 配分区分='01' and 配分基準='01' and 算定方式="_s;
        EXPECT_EQ(count(all + u"'1'"_s + ofA), 0) << table.toStdString();
        EXPECT_GT(count(all + u"'2'"_s + ofA), 0) << table.toStdString();
    }
    driver_.expectBox(question.arg(u"基礎額Ｂ"_s), u"削除の確認"_s, BoxAnswer::Yes);
    close();
    close();
}

TEST_F(Choice, DoesNotOfferScreensThatAreNotBuilt) {
    shell::ScreenRegistry nothing;
    shell::House bare{global_, nothing};
    prep::frmSSanteishikiSub sub(bare, nullptr);
    driver_.run(sub, [&](QDialog& form) {
        pick(form, General);
        EXPECT_FALSE(enabled(form, u"Command1"_s));
        choose(form, u"DataList1"_s, 0);
        EXPECT_TRUE(enabled(form, u"Command1"_s));
        form.close();
    });
    prep::frmSSanteishitei method(bare, nullptr);
    driver_.run(method, [&](QDialog& form) {
        pick(form, General);
        EXPECT_TRUE(visible(form, u"Option1_2"_s) && !enabled(form, u"Option1_2"_s));
        form.close();
    });
    global_.santei_houshiki = u"1"_s;
    prep::frmSSanteishitei2 item(bare, nullptr);
    driver_.run(item, [&](QDialog& form) {
        EXPECT_FALSE(enabled(form, u"Command1"_s));
        form.close();
    });
}

}  // namespace
