#include "calc/frmSHaibunjikkouK2.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QLineEdit>
#include <cmath>

#include "reports/frmReport.h"
#include "reports/workbook.h"
#include "shell/global_record.h"
#include "store/catalog.h"
#include "support/company_fixture.h"
#include "support/screen_driver.h"

namespace {

using namespace Qt::StringLiterals;
using namespace support;
using sample::kCriteria;
using shell::BoxAnswer;
using shell::BoxIcon;
using store::Money;

const QString kKojinbetsu = u"個人別計算"_s;
const QString kSougaku = u"総額配分"_s;
const QString kMethod = u"算定方式指定の確認"_s;
const QString kNotNeeded = u"この処理は必要ありません。"_s;
const QString kInputError = u"入力エラー"_s;
enum { General, Managers, Part, Shokutaku };  // the lines of kCriteria

/// The calculation screen over the sample company at its newest date, which is not computed yet. Amounts are
/// rounded to 10 yen, half up.
class Calculation : public ::testing::Test {
  protected:
    Calculation()
        : house_{global_, screens_},
          session_({folder_.programDir() + u"/out"_s, u"賞与"_s, [] { return kDate.startOfDay(); },
                    [this](const QString&, const std::vector<reports::NamedSheet>& sheets) {
                        sent_.push_back(sheets);
                    }}) {
        folder_.makeSample();
        global_.cn_main = folder_.open();
        global_.kijunbi = u"2026/12/10"_s;
        global_.haibun_jikkou_mode = true;
        house_.help = [this](const QString& screen) { help_ = screen; };
        sql(u"delete from Tanka_hasuu"_s);
        sql(u"insert into Tanka_hasuu(単価,端数処理,基準日) values('1','0',?)"_s, {kDate});
    }

    // ---- The company

    int sql(const QString& statement, const store::Binds& binds = {}) {
        return global_.cn_main->execute(statement, binds);
    }
    /// The rows of a query, cells joined by blanks.
    QStringList read(const QString& query, const store::Binds& binds = {}) {
        QStringList lines;
        auto rows = global_.cn_main->prepare(query);
        rows.bindAll(binds);
        while (rows.step()) {
            QStringList cells;
            for (int i = 0; i < rows.columnCount(); ++i) cells << rows.value(i).toText();
            lines << cells.join(u' ');
        }
        return lines;
    }
    static store::Binds runOf(int criterion) {
        return {kDate, kCriteria[criterion].kubun, kCriteria[criterion].kijun};
    }
    static inline const QString kOfRun = u" where 基準日 = ?1 and 配分区分 = ?2 and 配分基準 = ?3"_s;
    /// A column of S配分基準対応社員, summed, as a label shows it.
    QString sum(const QString& column, int criterion) {
        auto row = global_.cn_main->prepare(u"select sum(%1) from S配分基準対応社員"_s.arg(column) + kOfRun);
        row.bindAll(runOf(criterion));
        return row.step() ? store::formatGrouped(row.toMoney(0)) : QString();
    }
    QString budgetRow(int criterion) {
        return read(u"select 予算総額,総額配分予算,個人別計算合計,総額配分合計 from S実行予算"_s + kOfRun,
                    runOf(criterion))
            .join(u'|');
    }
    QByteArray everything() { return dump(*global_.cn_main); }
    void expectUnchanged(const QByteArray& before) {
        EXPECT_EQ(firstDifference(before, everything()).toStdString(), "");
    }

    // ---- The amounts by another way: long doubles, coefficients picked by name, one person at a time

    struct Points {
        QString code;
        long double a = 0, b = 0, payment = 1;
    };
    std::vector<Points> points(int criterion, const QString& table, const QString& method) {
        std::vector<std::pair<bool, bool>> acts(18);
        bool anyA = false, anyB = false;
        auto setup = global_.cn_main->prepare(
            u"select 設定名称,基礎額Ａ,基礎額Ｂ from S係数設定 where 配分区分Code=? and 配分基準Code=? and 算定方式=?"_s);
        setup.bindAll({kCriteria[criterion].kubun, kCriteria[criterion].kijun, method});
        while (setup.step()) {
            auto& [a, b] = acts[static_cast<std::size_t>(setup.toText(0).toInt() - 1)];
            anyA |= a = setup.toBool(1);
            anyB |= b = setup.toBool(2);
        }
        std::vector<Points> all;
        auto row = global_.cn_main->prepare(u"select * from %1"_s.arg(table) + kOfRun +
                                            u" order by cast(社員Code as integer)"_s);
        row.bindAll(runOf(criterion));
        while (row.step()) {
            Points p{row.toText(1), anyA ? static_cast<long double>(row.toMoney(5).raw()) / 10000 : 0,
                     anyB ? static_cast<long double>(row.toMoney(6).raw()) / 10000 : 0};
            for (int k = 0; k < 18; ++k) {
                if (acts[static_cast<std::size_t>(k)].first) p.a *= row.toDouble(7 + k);
                if (acts[static_cast<std::size_t>(k)].second) p.b *= row.toDouble(7 + k);
            }
            if (method == u"1"_s) p.payment = row.toDouble(26);
            all.push_back(p);
        }
        return all;
    }
    static QString rounded(long double amount) {
        return QString::number(static_cast<qint64>(std::floor((amount + 5) / 10) * 10));
    }
    QStringList individually(int criterion, long double correction = 1) {
        QStringList lines;
        for (const Points& p : points(criterion, u"S実行個人別計算"_s, u"1"_s))
            lines << p.code + u' ' + rounded((p.a + p.b) * p.payment * correction);
        return lines;
    }
    QStringList fromPool(int criterion, long double budget) {
        QStringList lines;
        const auto all = points(criterion, u"S実行総額配分"_s, u"2"_s);
        long double total = 0;
        for (const Points& p : all) total += p.a + p.b;
        for (const Points& p : all) lines << p.code + u' ' + rounded((p.a + p.b) * budget / total);
        return lines;
    }
    QStringList stored(const QString& column, int criterion) {
        return read(u"select 社員Code,%1 from S配分基準対応社員"_s.arg(column) + kOfRun +
                        u" order by cast(社員Code as integer)"_s,
                    runOf(criterion));
    }

    // ---- The screen

    void open(ScreenDriver::Step step) {
        calc::frmSHaibunjikkouK2 form(house_, session_, nullptr);
        driver_.run(form, [&](QDialog& screen) {
            step(screen);
            screen.close();
        });
    }
    static void pick(QDialog& form, int criterion) {
        chooseText(form, u"DataList1"_s, QString::fromUtf16(kCriteria[criterion].kubunName));
        chooseText(form, u"DataList2"_s, QString::fromUtf16(kCriteria[criterion].kijunName));
    }
    static void budget(QDialog& form, const QString& total, const QString& pool) {
        type(form, u"Text2"_s, u""_s, Qt::Key_Return);
        type(form, u"Text1"_s, total, Qt::Key_Return);
        type(form, u"Text2"_s, pool, Qt::Key_Return);
    }
    void expectRun(const QString& method) {
        driver_.expectBox(u"『%1』を指定します。"_s.arg(method), kMethod, BoxAnswer::Ok, BoxIcon::None);
        driver_.expectBox(u"『%1』の処理を終了しました。"_s.arg(method), u"処理終了の確認"_s, BoxAnswer::Ok,
                          BoxIcon::None);
    }
    /// 個人別計算 by way of 支給係数修正.
    void runIndividually(QDialog& form) {
        if (global_.haibun_kubun == u"02"_s)  // its payment coefficient is typed in per person
            driver_.expectBox(u"支給係数は実行時入力です。\nシミュレーションは行いません。"_s, u"確認"_s);
        click(form, u"Command6"_s);
        expectRun(kKojinbetsu);
        click(form, u"Command1"_s);
    }
    /// The names of the controls in sight, of those that the steps switch.
    static QString inSight(QDialog& form) {
        QStringList names;
        for (const QString& name :
             {u"Label2"_s, u"Image1"_s, u"Label3"_s, u"Image2"_s, u"Frame1"_s, u"Frame3"_s, u"Command1"_s,
              u"Command6"_s, u"Command4"_s, u"Command5"_s, u"Image3"_s, u"Frame4"_s})
            if (visible(form, name)) names << name;
        return names.join(u' ');
    }
    static QString labels(QDialog& form) {
        QStringList all;
        for (int i = 0; i < 6; ++i) all << text(form, u"Label6_%1"_s.arg(i));
        return all.join(u' ');
    }
    static QString amount(qint64 yen) { return store::formatGrouped(Money::fromYen(yen)); }
    static qint64 yen(QString label) { return label.remove(u',').toLongLong(); }

    static inline const QDate kDate = sample::newestKijunbi();
    CompanyFolder folder_;
    shell::GlobalRecord global_;
    shell::ScreenRegistry screens_;
    shell::House house_;
    reports::ExportSession session_;
    ScreenDriver driver_;
    QString help_;
    std::vector<std::vector<reports::NamedSheet>> sent_;  ///< what went to the writer of workbooks
};

TEST_F(Calculation, GoesForwardInThreeStepsAndBackWithEachChoice) {
    const QString chosen = u"Label2 Image1 Label3 Image2 Frame1 Frame3 "_s;
    open([&](QDialog& form) {
        EXPECT_EQ(form.windowTitle(), u"配分計算"_s);
        EXPECT_EQ(inSight(form), u"Command1"_s);
        EXPECT_EQ(rows(form, u"DataList1"_s), (QStringList{u"正社員賞与"_s, u"嘱託・パート賞与"_s}));
        EXPECT_EQ(focused(form), u"DataList1"_s);
        EXPECT_FALSE(enabled(form, u"DataList2"_s));
        choose(form, u"DataList1"_s, 0);
        EXPECT_EQ(inSight(form), u"Label2 Image1 Command1"_s);
        EXPECT_EQ(rows(form, u"DataList2"_s), (QStringList{u"一般社員"_s, u"管理職"_s}));
        choose(form, u"DataList2"_s, 0);
        EXPECT_EQ(inSight(form), chosen + u"Command6"_s);
        EXPECT_EQ(text(form, u"Label3"_s), u"算定方式を指定してください｡"_s);
        EXPECT_EQ(
            global_.haibun_kubun + global_.haibun_kubun_mei + global_.haibun_kijun + global_.haibun_kijun_mei,
            u"01正社員賞与01一般社員"_s);
        click(form, u"Command6"_s);
        EXPECT_EQ(inSight(form), chosen + u"Command1 Frame4"_s);
        EXPECT_GE(form.width(), 11055 / 15);
        // The option that is chosen already closes the panel like any other.
        click(form, u"Option1_0"_s);
        EXPECT_EQ(inSight(form), chosen + u"Command6"_s);
        press(form, Qt::Key_Right);
        EXPECT_TRUE(checked(form, u"Option1_1"_s));
        EXPECT_EQ(inSight(form), chosen + u"Command1"_s);
        budget(form, u"9000000"_s, u"3000000"_s);
        expectRun(kSougaku);
        click(form, u"Command1"_s);
        EXPECT_EQ(inSight(form), chosen + u"Command1 Command4 Command5 Image3"_s);
        choose(form, u"DataList2"_s, 1);
        EXPECT_EQ(inSight(form), chosen + u"Command6"_s);
        choose(form, u"DataList1"_s, 1);
        EXPECT_EQ(inSight(form), u"Label2 Image1 Command1"_s);
        click(form, u"Command3"_s);
        EXPECT_EQ(help_, u"frmSHaibunjikkouK2"_s);
        sql(u"update S配分基準 set 表示 = 0"_s);
        choose(form, u"DataList1"_s, 0);
        driver_.expectBox(u"設定した配分基準はありません。"_s, u"未設定"_s, BoxAnswer::Ok,
                          BoxIcon::Information);
        control(form, u"DataList2"_s).setFocus();
        press(form, Qt::Key_Space);
    });
}

TEST_F(Calculation, RefusesWhatCannotRun) {
    sql(u"delete from S配分基準対応社員"_s + kOfRun, runOf(Part));
    sql(u"update S配分基準 set 個人別計算 = 0 where 配分区分 = '02' and Code = '02'"_s);
    open([&](QDialog& form) {
        const auto refused = [&](const QString& box, const QString& title, const QString& focus) {
            const QByteArray before = everything();
            driver_.expectBox(box, title, BoxAnswer::Ok, BoxIcon::Critical);
            click(form, u"Command1"_s);
            EXPECT_EQ(focused(form), focus);
            expectUnchanged(before);
        };
        refused(u"配分区分を指定してください。"_s, u"配分区分指定の確認"_s, u"DataList1"_s);
        choose(form, u"DataList1"_s, 0);
        refused(u"配分基準を指定してください。"_s, u"配分基準指定の確認"_s, u"DataList2"_s);

        pick(form, Part);  // nobody left
        EXPECT_EQ(text(form, u"Label3"_s), u"この配分基準に対応する社員はいません。"_s);
        EXPECT_EQ(control(form, u"Label3"_s).property("mintTone").toString(), u"warning"_s);
        refused(kNotNeeded, u"確認"_s, u"DataList2"_s);

        pick(form, Shokutaku);  // typed amounts only
        EXPECT_EQ(text(form, u"Label3"_s), u"配分計算は必要ありません。"_s);
        EXPECT_EQ(control(form, u"Label3"_s).property("mintTone").toString(), QString());
        EXPECT_EQ(inSight(form), u"Label2 Image1 Label3 Image2 Frame1 Command1 Command4 Command5"_s);
        refused(kNotNeeded, u"確認"_s, u"DataList2"_s);

        pick(form, General);
        click(form, u"Option1_1"_s);
        type(form, u"Text2"_s, u""_s, Qt::Key_Return);
        const QByteArray before = everything();
        driver_.expectBox(u"総額配分予算を入力してください。"_s, u"未入力"_s, BoxAnswer::Ok,
                          BoxIcon::Critical);
        click(form, u"Command1"_s);
        expectUnchanged(before);
        EXPECT_FALSE(global_.cn_main->inTransaction());
        EXPECT_FALSE(visible(form, u"Command4"_s));
    });
}

TEST_F(Calculation, ComputesEachMethodAsAFormulaWorkedOutApart) {
    const qint64 pool = 3210000;
    open([&](QDialog& form) {
        for (int criterion : {General, Managers, Shokutaku}) {
            pick(form, criterion);
            runIndividually(form);
            EXPECT_EQ(stored(kKojinbetsu, criterion), individually(criterion)) << criterion;
            EXPECT_EQ(text(form, u"Label6_0"_s), sum(kKojinbetsu, criterion));
            EXPECT_EQ(global_.santei_houshiki + global_.santei_houshiki_mei, u"1個人別計算"_s);
            EXPECT_NE(text(form, u"Label6_0"_s), u"0"_s);
        }
        for (int criterion : {General, Part}) {
            pick(form, criterion);
            if (criterion == General) click(form, u"Option1_1"_s);
            budget(form, u"50000000"_s, QString::number(pool));
            expectRun(kSougaku);
            click(form, u"Command1"_s);
            EXPECT_EQ(stored(kSougaku, criterion), fromPool(criterion, pool)) << criterion;
            EXPECT_EQ(text(form, u"Label6_1"_s), sum(kSougaku, criterion));
            EXPECT_EQ(global_.santei_houshiki + global_.santei_houshiki_mei, u"2総額配分"_s);
            const qint64 people = static_cast<qint64>(stored(kSougaku, criterion).size());
            EXPECT_LE(std::abs(yen(text(form, u"Label6_1"_s)) - pool), 5 * people);  // the residue stays
        }
        // One individual amount in full: base A, typed, times its coefficients, and base B out of the pay.
        const QString code = stored(kKojinbetsu, Managers).first().left(6);
        const auto p = points(Managers, u"S実行個人別計算"_s, u"1"_s).front();
        EXPECT_EQ(p.payment, 2.5L);
        EXPECT_EQ(read(u"select 合計 from S実行個人別計算決定"_s + kOfRun + u" and 社員Code = ?4"_s,
                       {kDate, u"01"_s, u"02"_s, code}),
                  QStringList{rounded((p.a + p.b) * 2.5L)});

        pick(form, General);  // all four at once
        EXPECT_EQ(yen(text(form, u"Label6_4"_s)),
                  50000000 - yen(sum(kKojinbetsu, General)) - yen(sum(u"金一封"_s, General)));
        EXPECT_EQ(
            yen(text(form, u"Label6_5"_s)),
            yen(sum(kKojinbetsu, General)) + yen(sum(kSougaku, General)) + yen(sum(u"金一封"_s, General)));
        // A run of the same criterion again replaces its amounts.
        click(form, u"Option1_1"_s);
        expectRun(kSougaku);
        click(form, u"Command1"_s);
        EXPECT_EQ(stored(kSougaku, General), fromPool(General, pool));
        EXPECT_EQ(read(u"select count(*) from S実行総額配分決定"_s + kOfRun, runOf(General)).first().toInt(),
                  fromPool(General, pool).size());
    });
}

TEST_F(Calculation, ShowsWhatTheFlagsOfTheCriterionAllow) {
    open([&](QDialog& form) {
        for (int flags = 0; flags < 16; ++flags) {
            sql(u"update S配分基準 set 個人別計算=?,総額配分=?,金一封=?,特別加算金=? where 配分区分='01' and Code='01'"_s,
                {bool(flags & 1), bool(flags & 2), bool(flags & 4), bool(flags & 8)});
            pick(form, General);
            QString shown, expected;
            for (int i = 0; i < 4; ++i) {
                shown += visible(form, u"Option1_%1"_s.arg(i)) ? u'x' : u'-';
                expected += flags == 0 || (flags & (1 << i)) ? u'x' : u'-';
            }
            SCOPED_TRACE(flags);
            EXPECT_EQ(shown, expected);
            const bool first = expected[0] == u'x', second = expected[1] == u'x';
            EXPECT_EQ(checked(form, u"Option1_0"_s), first);
            EXPECT_EQ(checked(form, u"Option1_1"_s), !first && second);
            EXPECT_FALSE(checked(form, u"Option1_2"_s) || checked(form, u"Option1_3"_s));
            EXPECT_EQ(visible(form, u"Command6"_s), first);
            EXPECT_EQ(visible(form, u"Command1"_s), !first);
            EXPECT_EQ(visible(form, u"Frame3"_s), first || second);
            EXPECT_EQ(visible(form, u"Command4"_s), !first && !second);
            EXPECT_EQ(enabled(form, u"Text1"_s) && enabled(form, u"Text2"_s), bool(flags & 2));
            EXPECT_EQ(text(form, u"Label7_2"_s), flags & 2 ? u"総額配分予定"_s : QString());
            EXPECT_EQ(control(form, u"Label6_4"_s).isHidden(), !(flags & 2));
            EXPECT_EQ(control(form, u"Label7_0"_s).isHidden(), !(flags & 4));
            EXPECT_EQ(control(form, u"Label7_1"_s).isHidden(), !(flags & 8));
            EXPECT_EQ(text(form, u"Label6_2"_s), flags & 4 ? sum(u"金一封"_s, General) : u"0"_s);
        }
        // The typed amounts are not computed; choosing one only opens the way to the list.
        const QByteArray before = everything();
        click(form, u"Option1_2"_s);
        click(form, u"Command1"_s);
        EXPECT_TRUE(visible(form, u"Command4"_s) && visible(form, u"Image3"_s));
        expectUnchanged(before);
    });
    global_.haibun_sekkei_mode = true;
    open([&](QDialog& form) {
        pick(form, General);
        EXPECT_FALSE(enabled(form, u"Option1_2"_s) || enabled(form, u"Option1_3"_s));
        EXPECT_TRUE(enabled(form, u"Option1_0"_s) && enabled(form, u"Option1_1"_s));
    });
}

TEST_F(Calculation, TakesValidBudgetsAndKeepsTheFocusOnOthers) {
    const QString notNumeric = u"数字以外は許されません。 "_s,
                  outside = u"0～99,999,999,999円を入力してください。"_s,
                  below = u"総額配分予算以上を入力してください。"_s,
                  above = u"予算総額以下を入力してください。"_s;
    const struct {
        const char16_t* box;
        QString entry, shows, refusal, row;
    } entries[] = {
        {u"Text1", u"5000000"_s, u"5,000,000"_s, {}, u"5000000 0"_s},
        {u"Text2", u"5000000"_s, u"5,000,000"_s, {}, u"5000000 5000000"_s},  // equal is fine for both
        {u"Text2", u"5000001"_s, {}, above, {}},
        {u"Text2", u"1200000"_s, u"1,200,000"_s, {}, u"5000000 1200000"_s},
        {u"Text1", u"1199999"_s, {}, below, {}},
        {u"Text1", u"99999999999"_s, u"99,999,999,999"_s, {}, u"99999999999 1200000"_s},
        {u"Text1", u"100000000000"_s, {}, outside, {}},
        {u"Text1", u"99999999999999999999999"_s, {}, outside, {}},
        {u"Text1", u"7a-.8"_s, {}, below, {}},                    // only the digits are taken: 78
        {u"Text1", u""_s, u"0"_s, {}, u"99999999999 1200000"_s},  // may be left, but is not stored like that
        {u"Text2", u"1200000"_s, {}, above, {}},
        {u"Text2", u""_s, u"0"_s, {}, u"0 0"_s},
    };
    const QString row = u"select 予算総額,総額配分予算 from S実行予算"_s + kOfRun;
    open([&](QDialog& form) {
        pick(form, General);
        click(form, u"Option1_1"_s);
        budget(form, u"0"_s, u"0"_s);
        for (const auto& entry : entries) {
            SCOPED_TRACE(entry.entry.toStdString());
            const QString box = QString::fromUtf16(entry.box);
            const QStringList before = read(row, runOf(General));
            if (!entry.refusal.isEmpty())
                driver_.expectBox(entry.refusal, kInputError, BoxAnswer::Ok, BoxIcon::Critical);
            type(form, box, entry.entry, Qt::Key_Return);
            if (entry.refusal.isEmpty()) {
                EXPECT_EQ(text(form, box), entry.shows);
                EXPECT_NE(focused(form), box);
                EXPECT_EQ(read(row, runOf(General)), QStringList{entry.row});
                EXPECT_EQ(yen(text(form, u"Label6_4"_s)),
                          yen(text(form, u"Text1"_s)) - yen(sum(u"金一封"_s, General)));
            } else {
                EXPECT_EQ(focused(form), box);
                EXPECT_EQ(read(row, runOf(General)), before);
                control<QLineEdit>(form, box).setText(
                    before.first().section(u' ', box == u"Text1"_s ? 0 : 1));
            }
        }
        // Pasted text gets past the keys.
        for (const auto& [pasted, box] : {std::pair{u"百"_s, notNumeric}, {u"-1"_s, outside}}) {
            type(form, u"Text1"_s, u""_s);
            control<QLineEdit>(form, u"Text1"_s).setText(pasted);
            driver_.expectBox(box, kInputError, BoxAnswer::Ok, BoxIcon::Critical);
            press(form, Qt::Key_Tab);
            EXPECT_EQ(focused(form), u"Text1"_s);
        }
        type(form, u"Text1"_s, u"800000"_s, Qt::Key_Tab);
        // A wrong amount keeps the user from every other control, and closing leaves it behind.
        type(form, u"Text2"_s, u"900000"_s);
        driver_.expectBox(above, kInputError);
        click(form, u"Command1"_s);
        click(form, u"Command2"_s);
    });
    EXPECT_EQ(read(row, runOf(General)), QStringList{u"800000 0"_s});
    open([&](QDialog& form) {  // a good one is stored by closing as well
        pick(form, General);
        type(form, u"Text2"_s, u"700000"_s);
        press(form, Qt::Key_Escape);
    });
    EXPECT_EQ(read(row, runOf(General)), QStringList{u"800000 700000"_s});
}

TEST_F(Calculation, OpensThePanelThatTheSetUpAsksFor) {
    const QString missing = u"支給係数が未設定です。"_s;
    const QString runTime = u"支給係数は実行時入力です。\nシミュレーションは行いません。"_s;
    const QString twice =
        u"出来係数を設定する場合は、支給係数の設定方法に\n「評価別係数」を選ばないでください。\nこのまま計算すると評価を２重に乗じてしまいます。"_s;
    const struct {
        bool evaluation;      ///< 評価係数 acts in the formula
        int gradeRows;        ///< of S係数評価
        const char16_t* way;  ///< 設定方法; null for no set-up
        QString box;          ///< "" for none
        bool runs, opens;
        int boxes;  ///< Text3 in sight; -1 for Text4
    } cases[] = {
        {false, 0, nullptr, missing, false, false, 0},
        {false, 0, u"1", runTime, true, false, 0},
        {false, 0, u"2", {}, true, true, -1},
        {false, 0, u"3", {}, true, true, 4},
        {true, 1, u"2", u"出来係数が未設定です。"_s, false, false, 0},
        {true, 2, nullptr, missing, false, false, 0},
        {true, 2, u"1", runTime, true, false, 0},
        {true, 2, u"2", {}, true, true, -1},
        {true, 2, u"3", twice, true, false, 0},
    };
    const store::Binds key{u"01"_s, u"01"_s};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.evaluation << c.gradeRows << (c.way ? char(*c.way) : '-'));
        sql(u"delete from S係数設定 where 配分区分Code=? and 配分基準Code=? and 設定名称='04' and 算定方式='1'"_s,
            key);
        sql(u"delete from S係数評価 where 配分区分=? and 配分基準=?"_s, key);
        sql(u"delete from S支給係数設定 where 配分区分=? and 配分基準=?"_s, key);
        if (c.evaluation)
            sql(u"insert into S係数設定(配分区分Code,配分基準Code,設定名称,算定方式,係数) values(?,?,'04','1','出来')"_s,
                key);
        for (int i = 1; i <= c.gradeRows; ++i)
            sql(u"insert into S係数評価(配分区分,配分基準,評価Code) values(?,?,?)"_s,
                {u"01"_s, u"01"_s, u"0%1"_s.arg(i)});
        if (c.way)
            sql(u"insert into S支給係数設定(配分区分,配分基準,設定方法,評語タイプ,一律係数) values(?,?,?,'4',2.25)"_s,
                {u"01"_s, u"01"_s, c.way});
        sql(u"delete from S支給係数評価あり where 配分区分=? and 配分基準=? and 評価Code > '04'"_s, key);
        open([&](QDialog& form) {
            pick(form, General);
            if (!c.box.isEmpty())
                driver_.expectBox(c.box, u"確認"_s, BoxAnswer::Ok,
                                  c.box == runTime ? BoxIcon::Information : BoxIcon::Critical);
            click(form, u"Command6"_s);
            EXPECT_EQ(visible(form, u"Command1"_s), c.runs);
            EXPECT_EQ(visible(form, u"Command6"_s), !c.runs);
            EXPECT_EQ(visible(form, u"Frame4"_s), c.opens);
            int boxes = 0;
            for (int i = 0; i < 9; ++i) boxes += visible(form, u"Text3_%1"_s.arg(i)) ? 1 : 0;
            EXPECT_EQ(visible(form, u"Text4"_s) ? -1 : boxes, c.boxes);
            if (c.boxes < 0) {
                EXPECT_EQ(text(form, u"Label14"_s) + text(form, u"Text4"_s), u"2.2502.250"_s);
            }
            if (c.boxes == 4) {
                EXPECT_EQ(text(form, u"Label12_3"_s) + text(form, u"Label13_3"_s) + text(form, u"Text3_3"_s),
                          u"C2.0002.000"_s);
            }
        });
    }
    // There is no box for a tenth grade.
    sql(u"delete from S係数設定 where 配分区分Code=? and 配分基準Code=? and 設定名称='04'"_s, key);
    for (int i = 5; i <= 10; ++i)
        sql(u"insert into S支給係数評価あり(配分区分,配分基準,評価,支給係数,評価Code) values(?,?,'Z',1,?)"_s,
            {u"01"_s, u"01"_s, QString::number(i)});
    driver_.answerFreely([](const shell::BoxRequest&) { return BoxAnswer::Ok; });
    open([&](QDialog& form) {
        pick(form, General);
        const auto told = driver_.boxes().size();
        click(form, u"Command6"_s);
        EXPECT_EQ(driver_.boxes().size(), told + 1);
        EXPECT_FALSE(visible(form, u"Frame4"_s) || visible(form, u"Command1"_s));
    });
}

TEST_F(Calculation, CorrectedPaymentCoefficientsCountForThisDateOnly) {
    const QString range = u"0.000～999.999を入力してください。"_s;
    const QString design = u"select * from S支給係数設定 union all select * from S支給係数評価あり"_s;
    const QStringList registered = read(design);
    open([&](QDialog& form) {
        pick(form, Managers);  // one for all: 2.500
        click(form, u"Command6"_s);
        EXPECT_EQ(text(form, u"Label10"_s), u"登録値　【係数】　修正値"_s);
        EXPECT_EQ(text(form, u"Label15"_s), u"係数は 0.000～999.999 を入力してください"_s);
        type(form, u"Text4"_s, u""_s, Qt::Key_Return);
        EXPECT_EQ(text(form, u"Text4"_s), u"1.000"_s);
        driver_.expectBox(range, kInputError, BoxAnswer::Ok, BoxIcon::Critical);
        type(form, u"Text4"_s, u"1000"_s, Qt::Key_Return);
        EXPECT_EQ(focused(form), u"Text4"_s);
        driver_.expectBox(u"数字以外は許されません。 "_s, kInputError, BoxAnswer::Ok, BoxIcon::Critical);
        type(form, u"Text4"_s, u"1.2.3"_s, Qt::Key_Return);
        type(form, u"Text4"_s, u"999.999"_s, Qt::Key_Return);
        type(form, u"Text4"_s, u"2.75"_s, Qt::Key_Return);
        EXPECT_EQ(text(form, u"Text4"_s), u"2.750"_s);
        expectRun(kKojinbetsu);
        click(form, u"Command1"_s);
        EXPECT_EQ(stored(kKojinbetsu, Managers), individually(Managers, 1.1L));

        pick(form, General);  // by grade: S 2.6 … F 1.4
        click(form, u"Command6"_s);
        type(form, u"Text3_0"_s, u"3"_s, Qt::Key_Return);
        expectRun(kKojinbetsu);
        click(form, u"Command1"_s);
    });
    EXPECT_EQ(read(u"select 設定方法,一律係数 from Sshikyuukeisuu"_s + kOfRun, runOf(Managers)),
              QStringList{u"2 2.75"_s});
    const QStringList used = read(u"select 評価,支給係数 from SshikyuukeisuuHA"_s + kOfRun, runOf(General));
    EXPECT_EQ(used.size(), 6);
    EXPECT_EQ(used.mid(0, 2), (QStringList{u"S 3"_s, u"A 2.4"_s}));
    EXPECT_EQ(read(design), registered);
    open([&](QDialog& form) {  // the corrections are there again
        pick(form, General);
        click(form, u"Command6"_s);
        EXPECT_EQ(text(form, u"Label13_0"_s) + u' ' + text(form, u"Text3_0"_s), u"2.600 3.000"_s);
        pick(form, Managers);
        click(form, u"Command6"_s);
        EXPECT_EQ(text(form, u"Label14"_s) + u' ' + text(form, u"Text4"_s), u"2.500 2.750"_s);
    });
}

struct Fault {
    const char16_t* breaks;
    bool pool;
};
class Failing : public Calculation, public ::testing::WithParamInterface<Fault> {};

TEST_P(Failing, LeavesAllTablesAsTheyWere) {
    const bool pool = GetParam().pool;
    open([&](QDialog& form) {
        pick(form, General);
        if (pool) {
            click(form, u"Option1_1"_s);
            budget(form, u"9000000"_s, u"3000000"_s);
        } else {
            click(form, u"Command6"_s);
        }
        sql(QString::fromUtf16(GetParam().breaks));
        const QByteArray before = everything();
        const QString shown = labels(form), sight = inSight(form);
        driver_.expectBox(u"『%1』を指定します。"_s.arg(pool ? kSougaku : kKojinbetsu), kMethod);
        driver_.expectBox(u"処理中にエラーが発生しました。処理を取り消します。"_s, u"取消"_s, BoxAnswer::Ok,
                          BoxIcon::Information);
        click(form, u"Command1"_s);
        expectUnchanged(before);
        EXPECT_FALSE(global_.cn_main->inTransaction());
        EXPECT_EQ(labels(form), shown);
        EXPECT_EQ(inSight(form), sight);
        EXPECT_EQ(form.cursor().shape(), Qt::ArrowCursor);
    });
}

INSTANTIATE_TEST_SUITE_P(
    Each, Failing,
    ::testing::Values(
        Fault{u"delete from Tanka_hasuu", false}, Fault{u"delete from Tanka_hasuu", true},
        Fault{u"delete from S支給係数評価あり", false},
        Fault{u"update S実行総額配分 set 基礎額Ａ = 0, 基礎額Ｂ = 0", true},
        Fault{u"create temp trigger f before update on S配分基準対応社員 begin select raise(abort,'x'); end",
              false},
        Fault{u"create temp trigger f before update of 総額配分合計 on S実行予算 begin select "
              u"raise(abort,'x'); end",
              true}));

TEST_F(Calculation, ListsAndSendsTheResult) {
    using reports::Section;
    open([&](QDialog& form) {
        pick(form, General);
        runIndividually(form);
        EXPECT_EQ(
            read(u"select count(*) from S配分基準対応社員"_s + kOfRun + u" and 合計 <> 0"_s, runOf(General)),
            QStringList{u"0"_s});
        driver_.onScreen(u"frmReport"_s, [&](QDialog& preview) {
            const reports::Report& report = dynamic_cast<reports::frmReport&>(preview).report();
            EXPECT_EQ(report.title(), u"賞与支給額"_s);
            EXPECT_EQ(report.rowCount(), stored(kKojinbetsu, General).size());
            QStringList head, first, sums;
            const auto texts = [&](Section section) {
                QStringList all;
                for (const auto& item : report.design().band(section).controls)
                    if (report.isVisible(item)) all << report.textOf(item, 0, 1);
                return all;
            };
            for (const QString& heading :
                 {u"社員Code"_s, u"氏名"_s, kKojinbetsu, kSougaku, u"金一封"_s, u"特別加算金"_s, u"合計"_s})
                EXPECT_TRUE(texts(Section::Section2).contains(heading)) << heading.toStdString();
            EXPECT_TRUE(texts(Section::Section4).contains(u"◆正社員賞与／一般社員"_s));
            EXPECT_TRUE(texts(Section::Section4)
                            .contains(u"支給係数  S=2.600  A=2.400  B=2.200  C=2.000  D=1.800  E=1.600"_s));
            EXPECT_TRUE(texts(Section::Section1).contains(stored(kKojinbetsu, General).first().left(6)));
            EXPECT_TRUE(texts(Section::Section5).contains(sum(kKojinbetsu, General)));
            preview.reject();
        });
        click(form, u"Command4"_s);
        EXPECT_EQ(yen(sum(u"合計"_s, General)), yen(sum(kKojinbetsu, General)) + yen(sum(kSougaku, General)) +
                                                    yen(sum(u"金一封"_s, General)));
        QStringList paths;
        const auto send = [&] {
            click(form, u"Command5"_s);
            const QString told = text(form, u"Label18"_s), before = u"保存しました: "_s;
            EXPECT_TRUE(told.startsWith(before)) << told.toStdString();
            paths << told.mid(before.size());
        };
        send();
        click(form, u"Option1_1"_s);  // the panel closes: the next sheet has no line of coefficients
        send();
        EXPECT_TRUE(paths[0] != paths[1] && QFile::exists(paths[0]) && QFile::exists(paths[1]));
        ASSERT_EQ(sent_.size(), 2U);
        ASSERT_EQ(sent_[1].size(), 2U);  // the earlier sheet stands behind the new one
        for (const auto& [sheet, line] :
             {std::pair{sent_[0][0],
                        u"★支給係数  S = 2.600  A = 2.400  B = 2.200  C = 2.000  D = 1.800  E = 1.600"_s},
              {sent_[1][0], QString()}}) {
            const auto cell = [&](int row, std::size_t i) {
                return std::get<QString>(sheet.grid->rows().at(row).at(i).second);
            };
            EXPECT_TRUE(sheet.name.startsWith(u"一般社員"_s));
            EXPECT_EQ(cell(1, 0), u"◆正社員賞与／一般社員"_s);
            EXPECT_EQ(sheet.grid->rows().contains(2) ? cell(2, 0) : QString(), line);
            EXPECT_EQ(cell(3, 6), u"合計"_s);
            const QStringList people = stored(kKojinbetsu, General);
            EXPECT_EQ(cell(4, 0) + u' ' + cell(4, 2).remove(u','), people.first());
            EXPECT_EQ(sheet.grid->rows().rbegin()->first, people.size() + 3);
        }
    });
}

TEST_F(Calculation, TellsOfAListThatIsEmptyAndOfASheetThatCannotBeWritten) {
    using reports::Section;
    open([&](QDialog& form) {
        pick(form, Shokutaku);
        runIndividually(form);
        // Somebody without personnel record is left out: here, everybody.
        sql(u"delete from 履歴書テーブル"_s);
        driver_.onScreen(u"frmReport"_s, [](QDialog& preview) {
            const auto& report = dynamic_cast<reports::frmReport&>(preview).report();
            EXPECT_EQ(report.rowCount(), 0);
            QStringList said;
            for (const auto& item : report.design().band(Section::Section4).controls)
                if (report.isVisible(item)) said << report.textOf(item, 0, 1);
            EXPECT_TRUE(said.contains(u"該当者はいません。"_s)) << said.join(u'|').toStdString();
            preview.reject();
        });
        click(form, u"Command4"_s);
        QFile blocked(folder_.programDir() + u"/out"_s);
        ASSERT_TRUE(blocked.open(QIODevice::WriteOnly));
        driver_.answerFreely([](const shell::BoxRequest& box) {
            EXPECT_EQ(box.title, QString());
            return BoxAnswer::Ok;
        });
        const auto told = driver_.boxes().size();
        click(form, u"Command5"_s);
        EXPECT_EQ(driver_.boxes().size(), told + 1);
        EXPECT_FALSE(visible(form, u"Label18"_s));
        EXPECT_EQ(form.cursor().shape(), Qt::ArrowCursor);
    });
}

}  // namespace
