#include <QFile>

#include "calc/changed_inputs.h"
#include "screen_fixture.h"

using namespace calctest;
using reports::Section;

// The runs against a formula worked out apart, their failures, and what shows the result.
namespace {

class Run : public Calculation {
  protected:
    /// A base in yen times the coefficients that the set-up puts on it, as SQL.
    QString product(int criterion, const QString& method, const QString& base) {
        const auto& columns = schema::tableNamed(u"S実行個人別計算"_s).columns;
        QString factors;
        auto setup = global_.cn_main->prepare(
            u"select 設定名称 from S係数設定 where 配分区分Code=? and 配分基準Code=? and 算定方式=? and %1<>0"_s
                .arg(base));
        setup.bindAll({kCriteria[criterion].kubun, kCriteria[criterion].kijun, method});
        while (setup.step())
            factors += u" * "_s + columns[static_cast<std::size_t>(6 + setup.toText(0).toInt())].name;
        return factors.isEmpty() ? u"0"_s : base + u" / 10000.0"_s + factors;
    }
    /// Everybody's amount: the points times `factor`, to 10 yen, half up.
    std::string workedOut(int criterion, const QString& method, const QString& factor) {
        const QString points =
            product(criterion, method, u"基礎額Ａ"_s) + u" + "_s + product(criterion, method, u"基礎額Ｂ"_s);
        return read(u"社員Code, cast((点 * %1 + 5) / 10 as integer) * 10"_s.arg(factor),
                    u"(select *, %1 as 点 from %2)"_s.arg(
                        points, method == u"1"_s ? u"S実行個人別計算"_s : u"S実行総額配分"_s),
                    criterion, kByCode);
    }
    std::string individually(int criterion, const QString& correction = u"1"_s) {
        return workedOut(criterion, u"1"_s, u"支給係数 * "_s + correction);
    }
    /// What the preview shows in a section.
    static QStringList texts(const reports::Report& report, Section section) {
        QStringList all;
        for (const auto& item : report.design().band(section).controls)
            if (report.isVisible(item)) all << report.textOf(item, 0, 1);
        return all;
    }
};

TEST_F(Run, ComputesEachMethodAsAFormulaWorkedOutApart) {
    open([&](QDialog& form) {
        for (int criterion : {General, Managers, Shokutaku}) {
            pick(form, criterion);
            runIndividually(form);
            EXPECT_EQ(stored(kKojinbetsu, criterion), individually(criterion)) << criterion;
            EXPECT_EQ(yen(form, u"Label6_0"_s), sum(kKojinbetsu, criterion));
            EXPECT_GT(sum(kKojinbetsu, criterion), 0);
            EXPECT_EQ(global_.santei_houshiki + global_.santei_houshiki_mei, u"1個人別計算"_s);
        }
        for (int criterion : {Part, General}) {
            pick(form, criterion);
            if (criterion == General) click(form, u"Option1_1"_s);
            budget(form, u"50000000"_s, u"3210000"_s);
            run(form, kSougaku);
            EXPECT_EQ(stored(kSougaku, criterion),
                      workedOut(criterion, u"2"_s, u"3210000 / sum(点) over ()"_s));
            EXPECT_EQ(yen(form, u"Label6_1"_s), sum(kSougaku, criterion));
            EXPECT_EQ(global_.santei_houshiki + global_.santei_houshiki_mei, u"2総額配分"_s);
        }
        const qint64 apart = sum(kKojinbetsu, General) + sum(u"金一封"_s, General);
        EXPECT_EQ(yen(form, u"Label6_4"_s), 50000000 - apart);
        EXPECT_EQ(yen(form, u"Label6_5"_s), apart + sum(kSougaku, General));
    });
}

TEST_F(Run, CorrectedPaymentCoefficientsCountForThisDateOnly) {
    const auto total = [](const std::string& amounts) {
        qint64 sum = 0;
        for (const QString& one : QString::fromStdString(amounts).split(u'|'))
            sum += one.section(u' ', 1).toLongLong();
        return sum;
    };
    open([&](QDialog& form) {
        const auto effect = [&] {
            QStringList amounts;
            for (int i = 0; i < 3; ++i) amounts << text(form, u"Label24_%1"_s.arg(i));
            return amounts.join(u' ') + u'|' + text(form, u"Label26"_s);
        };
        const auto refused = [&](const QString& entry, const QString& refusal) {
            driver_.expectBox(refusal, u"入力エラー"_s, BoxAnswer::Ok, BoxIcon::Critical);
            type(form, u"Text4"_s, entry, Qt::Key_Return);
            EXPECT_EQ(focused(form), u"Text4"_s);
        };
        pick(form, Managers);  // one for all: 2.500
        click(form, u"Command6"_s);
        EXPECT_EQ(text(form, u"Label10"_s), u"登録値　【係数】　修正値"_s);
        EXPECT_EQ(text(form, u"Label15"_s), u"係数は 0.000～999.999 を入力してください"_s);
        type(form, u"Text4"_s, u""_s);
        EXPECT_EQ(effect(), u"— — —|修正値に 0.000～999.999 を入力してください。"_s);
        press(form, Qt::Key_Return);
        EXPECT_EQ(text(form, u"Text4"_s), u"1.000"_s);
        refused(u"1000"_s, u"0.000～999.999を入力してください。"_s);
        refused(u"1.2.3"_s, u"数字以外は許されません。 "_s);
        type(form, u"Text4"_s, u"999.999"_s, Qt::Key_Return);
        const QByteArray before = everything();
        type(form, u"Text4"_s, u"2.75"_s);  // the totals follow each key
        const qint64 now = total(individually(Managers)), then = total(individually(Managers, u"1.1"_s));
        EXPECT_EQ(effect().section(u'|', 0, 0), u"%L1 %L2 +%L3"_s.arg(now).arg(then).arg(then - now));
        expectUnchanged(before);
        press(form, Qt::Key_Return);
        EXPECT_EQ(text(form, u"Text4"_s), u"2.750"_s);
        run(form, kKojinbetsu);
        EXPECT_EQ(stored(kKojinbetsu, Managers), individually(Managers, u"1.1"_s));

        pick(form, General);  // by grade: S 2.6 … F 1.4
        click(form, u"Command6"_s);
        type(form, u"Text3_0"_s, u"3"_s, Qt::Key_Return);
        run(form, kKojinbetsu);
        EXPECT_EQ(stored(kKojinbetsu, General),
                  individually(General, u"case 評価 when 'S' then 3 / 2.6 else 1 end"_s));
    });
    open([&](QDialog& form) {  // the corrections are there again, beside what is registered
        pick(form, General);
        click(form, u"Command6"_s);
        EXPECT_EQ(text(form, u"Label13_0"_s) + u' ' + text(form, u"Text3_0"_s), u"2.600 3.000"_s);
        EXPECT_EQ(text(form, u"Label13_1"_s) + u' ' + text(form, u"Text3_1"_s), u"2.400 2.400"_s);
        pick(form, Managers);
        click(form, u"Command6"_s);
        EXPECT_EQ(text(form, u"Label14"_s) + u' ' + text(form, u"Text4"_s), u"2.500 2.750"_s);
    });
}

struct Fault {
    bool pool;
    QString breaks, cause;
    bool suspicious = false;
};
class Failing : public Run, public ::testing::WithParamInterface<Fault> {};

TEST_P(Failing, LeavesAllTablesAsTheyWere) {
    const auto& [pool, breaks, cause, suspicious] = GetParam();
    open([&](QDialog& form) {
        pick(form, General);
        click(form, pool ? u"Option1_1"_s : u"Command6"_s);
        if (pool) budget(form, u"9000000"_s, u"3000000"_s);
        sql(breaks);
        const QString shown = inSight(form);
        sql(u"update S実行予算 set 個人別計算合計 = 12340000"_s);  // from elsewhere, meanwhile
        const QByteArray before = everything();
        if (suspicious)
            driver_.onScreen(u"frmSKakunin"_s, [](QDialog& found) { click(found, u"Command1"_s); });
        driver_.expectBox(u"『%1』を指定します。"_s.arg(pool ? kSougaku : kKojinbetsu), kMethod);
        driver_.expectBox(u"処理中にエラーが発生しました。処理を取り消します。"_s, u"取消"_s, BoxAnswer::Ok,
                          BoxIcon::Information);
        click(form, u"Command1"_s);
        expectUnchanged(before);
        EXPECT_EQ(inSight(form), shown);
        EXPECT_EQ(text(form, u"Label6_0"_s), u"1,234"_s) << "as the tables have it";
        EXPECT_EQ(text(form, u"lblCause"_s), cause);
        EXPECT_TRUE(visible(form, u"lblCause"_s));
        EXPECT_EQ(form.cursor().shape(), Qt::ArrowCursor);
    });
}

const QString kTrigger = u"create temp trigger f before update of %1 begin select raise(abort,'x'); end"_s;
const QString kNoRounding = u"端数処理が未設定です。配分実行メニューで決めてください。"_s;
INSTANTIATE_TEST_SUITE_P(
    Each, Failing,
    ::testing::Values(
        Fault{false, u"delete from Tanka_hasuu"_s, kNoRounding},
        Fault{true, u"delete from Tanka_hasuu"_s, kNoRounding},
        Fault{false, u"delete from S支給係数評価あり"_s, u"評価「S」の支給係数が登録からなくなっています。"_s,
              true},
        Fault{false, u"update S実行個人別計算 set 支給係数 = null where 社員Code = '000012'"_s,
              u"000012　支給係数：値が入っていません。"_s, true},
        Fault{true, u"update S実行総額配分 set 基礎額Ａ = null, 基礎額Ｂ = null where 社員Code = '000012'"_s,
              u"000012　基礎額Ａ：値が入っていません。"_s, true},
        Fault{true, u"update S実行総額配分 set 基礎額Ａ = 0, 基礎額Ｂ = 0"_s,
              u"全員の支給対象額が0円です。基礎額と係数を確かめてください。"_s, true},
        Fault{false, kTrigger.arg(u"個人別計算 on S配分基準対応社員"_s),
              u"データベースの処理に失敗しました。 (x)"_s},
        Fault{true, kTrigger.arg(u"総額配分合計 on S実行予算"_s),
              u"データベースの処理に失敗しました。 (x)"_s}));

TEST_F(Run, ListsAndSendsTheResult) {
    const QString title = u"◆正社員賞与／一般社員"_s;
    open([&](QDialog& form) {
        pick(form, General);
        runIndividually(form);
        const auto people = QString::fromStdString(stored(kKojinbetsu, General)).split(u'|');
        const QString code = people[0].section(u' ', 0, 0);
        driver_.onScreen(u"frmReport"_s, [&](QDialog& preview) {
            const auto& report = dynamic_cast<reports::frmReport&>(preview).report();
            EXPECT_EQ(report.title(), u"賞与支給額"_s);
            EXPECT_EQ(report.rowCount(), people.size());
            EXPECT_TRUE(texts(report, Section::Section1).contains(code));
            for (const QString& heading :
                 u"社員Code 氏名 個人別計算 総額配分 金一封 特別加算金 合計"_s.split(u' '))
                EXPECT_TRUE(texts(report, Section::Section2).contains(heading)) << heading.toStdString();
            const QStringList head = texts(report, Section::Section4);
            EXPECT_TRUE(head.contains(title));
            EXPECT_TRUE(head.contains(u"支給係数  S=2.600  A=2.400  B=2.200  C=2.000  D=1.800  E=1.600"_s));
            EXPECT_TRUE(texts(report, Section::Section5).contains(text(form, u"Label6_0"_s)));
            const auto pages = [&] { return dynamic_cast<reports::frmReport&>(preview).pageCount(); };
            const int own = pages();
            click(preview, u"chkCharts"_s);  // three charts, two on a page
            EXPECT_EQ(pages(), own + 2);
            EXPECT_EQ(text(preview, u"lblPages"_s), u"全 %1 ページ"_s.arg(own + 2));
            const QString pdf = folder_.programDir() + u"/list.pdf"_s;
            EXPECT_TRUE(dynamic_cast<reports::frmReport&>(preview).savePdf(pdf));
            QFile file(pdf);
            EXPECT_TRUE(file.open(QIODevice::ReadOnly));
            EXPECT_TRUE(file.readAll().contains("/Count " + QByteArray::number(own + 2)));
            click(preview, u"chkCharts"_s);
            EXPECT_EQ(pages(), own);
            preview.reject();
        });
        click(form, u"Command4"_s);
        driver_.onScreen(u"frmChart"_s, [&](QDialog& charts) {
            EXPECT_EQ(text(charts, u"lblSubject"_s), title + u"　基準日 2026/12/10"_s);
            press(charts, Qt::Key_2, Qt::AltModifier);
            charts.reject();
        });
        click(form, u"Command7"_s);
        EXPECT_EQ(sum(u"合計"_s, General), sum(kKojinbetsu, General) + sum(u"金一封"_s, General));
        for (const bool panel : {true, false}) {
            if (!panel) click(form, u"Option1_1"_s);  // closes it: no line of coefficients
            click(form, u"Command5"_s);
            const QString told = text(form, u"lblSent"_s);
            EXPECT_TRUE(told.startsWith(u"保存しました: "_s) && QFile::exists(told.section(u' ', 1)));
            const auto& [file, grid] = sent_.back();
            EXPECT_EQ(file, u"2026-12-10_見本商事_正社員賞与／一般社員_賞与支給額"_s);
            const QStringList lines = sheetLines(grid);
            EXPECT_EQ(lines[0], title);
            EXPECT_EQ(lines[1].startsWith(u"★支給係数  S = 2.600  A = 2.400  "_s), panel);
            EXPECT_TRUE(lines[3].startsWith(code + u'|') && lines[3].endsWith(u"円"_s));
            EXPECT_EQ(lines.size(), people.size() + 3);
            EXPECT_TRUE(visible(form, u"SentOpen"_s) && visible(form, u"SentFolder"_s));
        }
    });
}

TEST_F(Run, SaysWhenAStoredTotalNoLongerFitsItsInputs) {
    const QString ofOne =
        u" where 社員Code = (select min(社員Code) from %1 where 基準日 = '2026-12-10' and "
        "配分区分 = '01' and 配分基準 = '01') and 基準日 = '2026-12-10'"_s;
    const QString individual = ofOne.arg(u"S実行個人別計算"_s), pool = ofOne.arg(u"S実行総額配分"_s);
    const struct {
        QString change, back;
        bool changed;
    } cases[] = {
        {u"update S実行個人別計算 set 基礎額Ａ = 基礎額Ａ + 1000000"_s + individual,
         u"update S実行個人別計算 set 基礎額Ａ = 基礎額Ａ - 1000000"_s + individual, true},
        {u"update S実行個人別計算 set 支給係数 = 支給係数 * 2"_s + individual,
         u"update S実行個人別計算 set 支給係数 = 支給係数 / 2"_s + individual, true},
        {u"update S実行総額配分 set 基礎額Ｂ = 基礎額Ｂ * 2 + 10000000"_s + pool,
         u"update S実行総額配分 set 基礎額Ｂ = (基礎額Ｂ - 10000000) / 2"_s + pool, true},
        {u"update S実行予算 set 総額配分予算 = 総額配分予算 + 10000000000"_s,
         u"update S実行予算 set 総額配分予算 = 総額配分予算 - 10000000000"_s, true},
        {u"update SshikyuukeisuuHA set 支給係数 = 支給係数 + 1"_s,
         u"update SshikyuukeisuuHA set 支給係数 = 支給係数 - 1"_s, true},
        {u"update Tanka_hasuu set 単価 = '3' where 基準日 = '2026-12-10'"_s,
         u"update Tanka_hasuu set 単価 = '1' where 基準日 = '2026-12-10'"_s, true},
        {u"delete from Tanka_hasuu where 基準日 = '2026-12-10'"_s,
         u"insert into Tanka_hasuu(単価,端数処理,基準日) values('1','0','2026-12-10')"_s, true},
        {u"update S配分基準対応社員 set 金一封 = 金一封 + 10000000"_s,
         u"update S配分基準対応社員 set 金一封 = 金一封 - 10000000"_s, false},  // added anew for each list
    };
    open([&](QDialog& form) {
        const auto again = [&] {
            pick(form, Managers);
            pick(form, General);
            return visible(form, u"Label25"_s);
        };
        pick(form, General);
        EXPECT_FALSE(again());  // never calculated
        click(form, u"Command6"_s);
        type(form, u"Text3_0"_s, u"3"_s, Qt::Key_Return);
        run(form, kKojinbetsu);
        click(form, u"Option1_1"_s);
        budget(form, u"50000000"_s, u"3210000"_s);
        run(form, kSougaku);
        EXPECT_FALSE(again());
        for (const auto& c : cases) {
            sql(c.change);
            EXPECT_EQ(again(), c.changed) << c.change.toStdString();
            sql(c.back);
            EXPECT_FALSE(again()) << c.back.toStdString();
        }
        sql(cases[0].change);
        click(form, u"Option1_1"_s);
        run(form, kSougaku);
        const QString remark = u"※計算のあとに入力が変わっています"_s;
        click(form, u"Command5"_s);
        EXPECT_TRUE(origin_.startsWith(remark)) << origin_.toStdString();
        driver_.onScreen(u"frmChart"_s, [&](QDialog& charts) {
            EXPECT_TRUE(text(charts, u"lblSubject"_s).endsWith(remark));
            charts.reject();
        });
        click(form, u"Command7"_s);
    });
    EXPECT_EQ(calc::changedRuns(cn_, {QDate(2026, 7, 10), kDate}),
              QStringList{u"2026/12/10 正社員賞与／一般社員"_s});
}

TEST_F(Run, TellsOfASheetThatCannotBeWritten) {
    QFile blocked(folder_.programDir() + u"/out"_s);
    ASSERT_TRUE(blocked.open(QIODevice::WriteOnly));
    open([&](QDialog& form) {
        pick(form, Shokutaku);
        runIndividually(form);
        driver_.answerFreely([](const forms::BoxRequest&) { return BoxAnswer::Ok; });
        const auto told = driver_.boxes().size();
        click(form, u"Command5"_s);
        EXPECT_EQ(driver_.boxes().size(), told + 1);
        EXPECT_FALSE(visible(form, u"lblSent"_s));
        EXPECT_EQ(form.cursor().shape(), Qt::ArrowCursor);
    });
}

}  // namespace
