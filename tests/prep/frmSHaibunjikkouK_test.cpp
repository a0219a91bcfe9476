#include "prep/frmSHaibunjikkouK.h"

#include <QAbstractItemView>

#include "prep/run_screens.h"
#include "reports/frmReport.h"
#include "sample_design.h"
#include "schema/catalog.h"

namespace {

using namespace preptest;
using sample::kCriteria;

const QString kChosen = u"算定方式指定の確認"_s;
const QString kFinished = u"処理終了の確認"_s;

/// The sample company at its newest date: its inputs were worked out by the sample's own rules.
class AutoInputScreen : public RunScreens {
  protected:
    AutoInputScreen() : RunScreens(Content::Sample) { global_.kijunbi = u"2026/12/10"_s; }

    static void pick(QDialog& form, const sample::Criterion& criterion) {
        chooseText(form, u"DataList1"_s, QString::fromUtf16(criterion.kubunName));
        chooseText(form, u"DataList2"_s, QString::fromUtf16(criterion.kijunName));
    }
    /// The columns of the run's table that the set-up fills by itself.
    static QStringList automaticColumns(int criterion, char16_t method) {
        const auto& columns = schema::tableNamed(u"S実行個人別計算"_s).columns;
        QStringList names;
        for (const auto& use : sample::kBaseUses)
            if (use.criterion == criterion && use.method == method && use.way != u'1')
                names << columns[use.side == u'1' ? 5 : 6].name;
        for (const auto& use : sample::kCoefficientUses)
            if (use.criterion == criterion && use.method == method && !use.typed && (use.a || use.b))
                names << columns[std::size_t(6 + use.kind)].name;
        for (const auto& use : sample::kPaymentUses)
            if (use.criterion == criterion && method == u'1' && use.way != u'1') names << columns[26].name;
        return names;
    }
    void run(QDialog& form, const QString& caption) {
        driver_.expectBox(u"『%1』を指定します。"_s.arg(caption), kChosen, BoxAnswer::Yes);
        clickTold(form, u"Command1"_s, u"『%1』の処理を終了しました。"_s.arg(caption), kFinished);
    }
};

TEST_F(AutoInputScreen, FillsWhatIsAutomaticAndNothingElse) {
    open<prep::frmSHaibunjikkouK>([&](QDialog& form) {
        for (int criterion = 0; criterion < 4; ++criterion) {
            for (char16_t method : {u'1', u'2'}) {
                const sample::Criterion& c = kCriteria[criterion];
                if (!(method == u'1' ? c.kojinbetsu : c.sougaku)) continue;
                const QString table = method == u'1' ? u"S実行個人別計算"_s : u"S実行総額配分"_s;
                SCOPED_TRACE(table.toStdString() + std::to_string(criterion));
                const QString rows = u"SELECT * FROM %1 ORDER BY ID"_s.arg(table);
                const QStringList expected = read(rows);
                // The sample leaves 1 where nobody is found; base amounts without wages are 0 in both.
                sql(u"UPDATE %1 SET %2 = 1 WHERE 基準日 = ? AND 配分区分 = ? AND 配分基準 = ?"_s.arg(
                        table, automaticColumns(criterion, method).join(u" = 1,"_s)),
                    {sample::newestKijunbi(), c.kubun, c.kijun});
                EXPECT_NE(read(rows), expected);
                pick(form, c);
                EXPECT_FALSE(enabled(form, u"Command4"_s) || visible(form, u"Image3"_s));
                click(form, method == u'1' ? u"Option1_0"_s : u"Option1_1"_s);
                run(form, method == u'1' ? u"個人別計算"_s : u"総額配分"_s);
                EXPECT_TRUE(enabled(form, u"Command4"_s) && visible(form, u"Image3"_s));
                EXPECT_EQ(read(rows), expected);
                EXPECT_EQ(global_.santei_houshiki, QString(QChar(method)));
            }
        }
    });
}

TEST_F(AutoInputScreen, OffersWhatTheCriterionUsesAndRefusesTheRest) {
    const QString need = u"この処理は必要ありません。"_s;
    sql(u"DELETE FROM S配分基準対応社員 WHERE 配分区分 = '02' AND 配分基準 = '01'"_s);
    sql(u"UPDATE S配分基準 SET 個人別計算 = 0 WHERE 配分区分 = '02' AND Code = '02'"_s);
    const struct {
        const sample::Criterion& criterion;
        QString options, told;
    } cases[] = {{kCriteria[0], u"Xx--"_s, u"算定方式を指定してください｡"_s},
                 {kCriteria[1], u"X---"_s, u"算定方式を指定してください｡"_s},
                 {kCriteria[2], u"-X--"_s, u"この配分基準に対応する社員はいません。"_s},
                 {kCriteria[3], u"----"_s, u"自動入力はありません。"_s}};
    open<prep::frmSHaibunjikkouK>([&](QDialog& form) {
        for (const auto& c : cases) {
            pick(form, c.criterion);
            EXPECT_EQ(options(form), c.options);
            EXPECT_EQ(text(form, u"Label3"_s), c.told);
            const bool ready = c.told.startsWith(u"算定"_s);
            EXPECT_EQ(control(form, u"Label3"_s).property("mintTone").toString(),
                      ready ? QString() : u"warning"_s);
            if (!ready) clickTold(form, u"Command1"_s, need, u"確認"_s);
        }
        EXPECT_EQ(focused(form), u"DataList2"_s);
    });
}

TEST_F(AutoInputScreen, ListsTheJudgmentsUnderTheCompanysNames) {
    global_.panels.company = u"見本商事"_s;
    global_.clock = [] { return QDate(2026, 11, 23); };
    open<prep::frmSHaibunjikkouK>([&](QDialog& form) {
        pick(form, kCriteria[0]);
        run(form, u"個人別計算"_s);
        expectScreen(u"frmReport"_s, [](QDialog& preview) {
            const reports::Report& report = dynamic_cast<reports::frmReport&>(preview).report();
            const auto all = [&](reports::Section section) {
                QStringList texts;
                for (const auto& c : report.design().band(section).controls)
                    if (c.kind != reports::ControlKind::Line && report.isVisible(c))
                        texts << report.textOf(c, 0, 1);
                return texts;
            };
            EXPECT_EQ(report.title(), u"自動入力判定"_s);
            EXPECT_EQ(all(reports::Section::Section4).join(u' '), u"自動入力判定 ◆正社員賞与／一般社員"_s);
            EXPECT_EQ(
                all(reports::Section::Section3),
                (QStringList{u"- 1 -"_s,
                             u"基準日 2026/12/10　正社員賞与／一般社員　作成日 2026/11/23　見本商事"_s}));
            EXPECT_EQ(all(reports::Section::Section2).join(u','),
                      u"社員Code,氏名,基礎額Ａ,基礎額Ｂ,年齢係数,勤続係数,等級係数,,区分係数,,役職係数,,,"
                      "職能資格係数,,,,,支給係数"_s);
            EXPECT_EQ(all(reports::Section::Section1).mid(2).join(u','), u"○,○,○,○,○,,○,,○,,,○,,,,,○"_s);
        });
        click(form, u"Command4"_s);
        sql(u"DELETE FROM S実行自動入力判定"_s);
        clickTold(form, u"Command4"_s, u"データがありません。"_s, u"データなし"_s);
    });
}

/// Whoever is missing in the snapshot is named with the place of the mend; who goes on all the same meets the
/// failure, which takes everything back.
TEST_F(AutoInputScreen, NamesWhoIsMissingAndRollsBackWhatFails) {
    const QString missing = read(
                                u"SELECT max(社員Code) FROM S実行個人別計算 WHERE 基準日 = '2026-12-10' AND "
                                "配分区分 = '01' AND 配分基準 = '01'"_s)
                                .value(0);
    sql(u"DELETE FROM IdoChuusyutsuMax2 WHERE 社員Code = ?"_s, {missing});
    addPlain({u"frmSTaisyousya"_s});
    const auto answered = [&](QDialog& form, const QString& button) {
        driver_.onScreen(u"frmSKakunin"_s, [&, button](QDialog& found) {
            EXPECT_EQ(focused(found), u"Command2"_s);
            const auto* rows = dynamic_cast<QAbstractItemView&>(control(found, u"DataGrid1"_s)).model();
            EXPECT_EQ(rows->rowCount(), 1);
            EXPECT_TRUE(rows->index(0, 0).data().toString().contains(u"1人"_s));
            EXPECT_TRUE(rows->index(0, 1).data().toString().startsWith(missing + u' '));
            EXPECT_EQ(rows->index(0, 2).data().toString(), u"対象者⇔配分基準の対応"_s);
            click(found, button);
        });
        if (button == u"Command3"_s) expectScreen(u"frmSTaisyousya"_s);
        if (button == u"Command1"_s)
            driver_.expectBox(u"『個人別計算』を指定します。"_s, kChosen, BoxAnswer::Yes);
        if (button == u"Command1"_s) expectRollback();
        click(form, u"Command1"_s);
    };
    open<prep::frmSHaibunjikkouK>([&](QDialog& form) {
        pick(form, kCriteria[0]);
        const QByteArray before = dump(cn_);
        for (const QString& button : {u"Command2"_s, u"Command3"_s, u"Command1"_s}) {
            answered(form, button);
            EXPECT_FALSE(enabled(form, u"Command4"_s));
            expectUnchanged(before);
        }
        EXPECT_EQ(text(form, u"lblCause"_s), missing + u"　年齢係数：社員の記録がありません。"_s);
    });
}

}  // namespace
