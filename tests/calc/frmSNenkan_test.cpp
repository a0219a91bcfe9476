#include "calc/frmSNenkan.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QTest>

#include "calc/frmSJCheck.h"
#include "calc/pay_charts.h"
#include "forms/global_record.h"
#include "reports/frmReport.h"
#include "reports/workbook.h"
#include "screen_driver.h"
#include "support/company_fixture.h"
#include "support/sheet_text.h"

namespace {

using namespace Qt::StringLiterals;
using namespace support;
using forms::BoxAnswer;
using forms::BoxIcon;

/// The screens that send sheets of more than one run's result, over the sample company at its newest date.
class Sheets : public testing::Test {
  protected:
    Sheets() {
        folder_.makeSample();
        global_.cn_main = folder_.open();
        global_.kijunbi = u"2026/12/10"_s;
        global_.panels.company = u"見本商事"_s;
        global_.clock = [] { return QDate(2026, 12, 20); };
        global_.haibun_jikkou_mode = true;
    }
    void sql(const QString& statement) { global_.cn_main->execute(statement); }
    template <class Screen>
    void open(ScreenDriver::Step step) {
        Screen form(house_, sheets_, nullptr);
        driver_.run(form, [&](QDialog& screen) {
            step(screen);
            screen.close();
        });
    }
    void refused(QDialog& form, const QString& box, const QString& title,
                 const QString& button = u"Command1"_s) {
        driver_.expectBox(box, title, BoxAnswer::Ok, BoxIcon::Critical);
        click(form, button);
    }
    /// The cells of a row of the last sheet, joined.
    QString line(int row) const { return support::sheetLines(sent_).value(row - 1); }
    int people() const { return sent_.rows().rbegin()->first - 3; }
    static void expectTold(QDialog& form) {
        const QString told = text(form, u"lblSent"_s), before = u"保存しました: "_s;
        EXPECT_TRUE(told.startsWith(before) && QFile::exists(told.mid(before.size()))) << told.toStdString();
    }
    void send(QDialog& form, const QString& method) {
        driver_.expectBox(u"『%1』を指定します。"_s.arg(method), u"算定方式指定の確認"_s, BoxAnswer::Ok,
                          BoxIcon::None);
        click(form, u"Command1"_s);
        expectTold(form);
        EXPECT_EQ(line(1), u"◆正社員賞与／一般社員◆基礎額・係数の入力状況チェック【%1】"_s.arg(method));
        EXPECT_EQ(global_.santei_houshiki_mei, method);
    }

    CompanyFolder folder_;
    forms::GlobalRecord global_;
    forms::ScreenRegistry screens_;
    forms::House house_{global_, screens_};
    reports::SheetGrid sent_;
    QString name_;
    const reports::SheetFolder sheets_{
        {folder_.programDir() + u"/out"_s, [this](const QString&, const reports::Sheet& sheet) {
             sent_ = sheet.grid;
             name_ = sheet.name + u'/' + sheet.title + u'/' + sheet.origin;
         }}};
    ScreenDriver driver_;
};

TEST_F(Sheets, OfTheInputStatusNeedACriterionWithPeopleAndAMethod) {
    const QString notNeeded = u"この処理は必要ありません。"_s, guidance = u"算定方式を指定してください｡"_s;
    const QString ofRun = u" where 基準日='2026-12-10' and 配分区分='01' and 配分基準='01'"_s;
    open<calc::frmSJCheck>([&](QDialog& form) {
        EXPECT_EQ(form.windowTitle(), u"算定方式指定"_s);
        refused(form, u"配分区分を指定してください。"_s, u"配分区分指定の確認"_s);
        choose(form, u"DataList1"_s, 0);
        EXPECT_TRUE(visible(form, u"Image1"_s) && !visible(form, u"Image2"_s) && !visible(form, u"Label3"_s));
        refused(form, u"配分基準を指定してください。"_s, u"配分基準指定の確認"_s);
        choose(form, u"DataList2"_s, 0);
        send(form, u"個人別計算"_s);
        EXPECT_EQ(line(3).count(u'|'), 2 + 2 + 9 + 2) << line(3).toStdString();  // both bases, nine kinds
        EXPECT_EQ(people(),
                  global_.cn_main->query(u"select * from S配分基準対応社員"_s + ofRun).recordCount());
        click(form, u"Option1_1"_s);
        EXPECT_FALSE(visible(form, u"lblSent"_s));
        send(form, u"総額配分"_s);
    });
    open<calc::frmSJCheck>([&](QDialog& form) {
        const std::pair<QString, QString> cases[] = {
            {u"-1,0,0"_s, u"X-"_s}, {u"0,-1,0"_s, u"-X"_s}, {u"0,0,0"_s, u"Xx"_s}, {u"0,0,-1"_s, u"--"_s}};
        for (const auto& [uses, offered] : cases) {
            sql(u"update S配分基準 set (個人別計算,総額配分,金一封,特別加算金) = (%1,0)"_s.arg(uses));
            choose(form, u"DataList1"_s, 0);
            choose(form, u"DataList2"_s, 0);
            QString shown;
            for (const QString& name : {u"Option1_0"_s, u"Option1_1"_s})
                shown += !visible(form, name) ? u'-' : checked(form, name) ? u'X' : u'x';
            EXPECT_EQ(shown + text(form, u"Label3"_s), offered + guidance);
        }
        refused(form, notNeeded, u"確認"_s);  // typed amounts alone
        sql(u"delete from S配分基準対応社員"_s + ofRun);
        choose(form, u"DataList2"_s, 0);
        EXPECT_EQ(text(form, u"Label3"_s), u"この配分基準に対応する社員はいません。"_s);
        EXPECT_EQ(control(form, u"Label3"_s).property("mintTone").toString(), u"warning"_s);
        refused(form, notNeeded, u"確認"_s);
        EXPECT_EQ(focused(form), u"DataList2"_s);
        global_.haibun_jikkou_mode = false;
        choose(form, u"DataList2"_s, 0);
        EXPECT_EQ(text(form, u"Label3"_s), guidance);
    });
}

TEST_F(Sheets, OfTheYearTakeEachDateOnceAndNeedOne) {
    const QString first = u"DataCombo1"_s, second = u"DataCombo2"_s, third = u"DataCombo3"_s;
    const QString twice = u"基準日が重複しています。"_s, error = u"入力エラー"_s;
    open<calc::frmSNenkan>([&](QDialog& form) {
        EXPECT_EQ(text(form, u"Label4"_s), u"基準日を指定してください（複数可）。"_s);
        EXPECT_EQ(rows(form, third), (QStringList{u"2025/12/10"_s, u"2026/7/10"_s, u"2026/12/10"_s}));
        for (const QString& button : {u"Command4"_s, u"Command5"_s, u"Command7"_s})
            refused(form, u"１つ以上の基準日を指定してください。"_s, u"未指定"_s, button);
        // A click into an empty combo goes to the first empty one.
        QTest::mouseClick(control<QComboBox>(form, third).lineEdit(), Qt::LeftButton);
        EXPECT_TRUE(QTest::qWaitFor([&] { return focused(form) == first; }));
        type(form, first, u"2026/7/10"_s, Qt::Key_Return);
        EXPECT_EQ(focused(form), second);
        for (const QString& again : {u"2026/07/10"_s, u"令和8年7月10日"_s}) {
            type(form, second, again);
            for (Qt::Key key : {Qt::Key_Tab, Qt::Key_Return}) {
                driver_.expectBox(twice, error, BoxAnswer::Ok, BoxIcon::Critical);
                press(form, key);
                EXPECT_EQ(focused(form), second);
            }
        }
        refused(form, twice, error, u"Command4"_s);
        type(form, second, u"いつか"_s, Qt::Key_Tab);  // unknown texts may stand, even twice
        type(form, third, u"いつか"_s, Qt::Key_Tab);
        EXPECT_EQ(focused(form), u"DataCombo4"_s);
        type(form, second, u""_s);
        type(form, third, u""_s);  // goes back to the first empty one
        EXPECT_EQ(focused(form), second);
        click(form, u"Command6"_s);
        EXPECT_EQ(focused(form) + text(form, first) + text(form, second), first);
    });
}

TEST_F(Sheets, OfTheYearAndItsListSetTheDatesSideBySide) {
    using reports::Section;
    sql(u"delete from S配分基準対応社員"_s);  // the last of the three was never an employee
    sql(u"insert into S配分基準対応社員(社員Code,基準日,個人別計算,総額配分,金一封,特別加算金) values"
        "('000002','2026-07-10',1000000,0,0,0),('000001','2026-12-10',20000000,10000,0,0),"
        "('000001','2026-12-10',30000000,0,0,0),('999999','2026-12-10',1,1,1,1)"_s);
    open<calc::frmSNenkan>([&](QDialog& form) {
        choose(form, u"DataCombo1"_s, 1);
        choose(form, u"DataCombo3"_s, 2);
        driver_.onScreen(u"frmReport"_s, [&](QDialog& preview) {
            const reports::Report& report = dynamic_cast<reports::frmReport&>(preview).report();
            EXPECT_EQ(report.title(), u"年間賞与"_s);
            const auto texts = [&](Section section, int row) {
                QStringList all;
                for (const auto& item : report.design().band(section).controls)
                    if (report.isVisible(item) && item.kind != reports::ControlKind::Line)
                        all << report.textOf(item, row, 1);
                return all.join(u'|');
            };
            EXPECT_EQ(texts(Section::Section4, 0), u"年間賞与支給額|"_s);
            EXPECT_EQ(texts(Section::Section2, 0), u"社員Code|氏名|2026/07/10||2026/12/10||合計"_s);
            EXPECT_TRUE(texts(Section::Section1, 0).endsWith(u"|||3,000||5,001"_s));
            EXPECT_TRUE(texts(Section::Section1, 1).endsWith(u"|100||||100"_s));
            // Averages leave empty cells out; 5101 / 2 is rounded away from zero.
            EXPECT_EQ(texts(Section::Section5, 0),
                      u"【合計】|【平均】|100||3,000||5,101|100||3,000||2,551"_s);
            preview.reject();
        });
        click(form, u"Command4"_s);
        driver_.onScreen(u"frmChart"_s, [&](QDialog& charts) {
            EXPECT_EQ(text(charts, u"lblSubject"_s), u"年間賞与支給額　2026/7/10、2026/12/10"_s);
            charts.reject();
        });
        click(form, u"Command7"_s);
        click(form, u"Command5"_s);
        expectTold(form);
        EXPECT_EQ(name_,
                  u"年間支給額/2026-07-10～2026-12-10_見本商事_年間支給額/"
                  "基準日 2026/7/10、2026/12/10　作成日 2026/12/20　見本商事"_s);
        EXPECT_EQ(line(1) + line(2), u"年間賞与支給額"_s);
        EXPECT_EQ(line(3), u"社員Code|氏名|2026年7月10日|なし|2026年12月10日|なし|合計"_s);
        EXPECT_TRUE(line(4).startsWith(u"000001|"_s) && line(4).endsWith(u"|||3000円||5001円"_s));
        EXPECT_EQ(people(), 2);
        click(form, u"Command6"_s);
        type(form, u"DataCombo2"_s, u"いつか"_s);
        click(form, u"Command5"_s);
        EXPECT_EQ(line(3), u"社員Code|氏名|なし|いつか|なし|なし|合計"_s);
        EXPECT_EQ(people(), 0);
    });
}

/// 000001 moved the day after the payment; 000002 has no birthday and stands under a code without a name.
TEST_F(Sheets, OfTheYearAsChartsCountPeopleWhereTheyStoodAtTheDate) {
    for (const auto& statement :
         {u"delete from S配分基準対応社員"_s, u"delete from 異動テーブル"_s,
          u"insert into S配分基準対応社員(社員Code,基準日,個人別計算,総額配分,金一封,特別加算金) values"
          "('000002','2026-07-10',1000000,0,0,0),('000001','2026-12-10',20000000,10000,0,0),"
          "('000001','2026-12-10',30000000,0,0,0),('000002','2026-12-10',null,1,1,1)"_s,
          u"insert into 異動テーブル(社員Code,異動日,等級,所属大,役職) values"
          "('000001','2026-12-10','1','01','01'),('000001','2026-12-11','02','02','02'),"
          "('000001','2020-01-01','03','03','03'),('000002','2020-01-01',null,'99',null)"_s,
          u"update 履歴書テーブル set 生年月日 = null where 社員Code = '000002'"_s,
          u"update 履歴書テーブル set 氏名 = '山田', 生年月日 = (select date(年齢算出年月日, '-46 years')"
          " from Sデータ取込年月日運用 where 基準日 = '2026-12-10') where 社員Code = '000001'"_s,
          u"update 所属大マスタ set 所属大 = '本社' where Code = '01'"_s,
          u"update 等級マスタ set 等級 = '一級' where Code = '1'"_s})
        sql(statement);
    const auto charts =
        calc::chartsOfYear(*global_.cn_main, {QDate(2026, 12, 10), {}, QDate(2026, 7, 10), {}});
    QStringList told;
    for (const auto& chart : charts)
        for (int i = 0; i < reports::itemCount(chart); ++i) told << reports::describeItem(chart, i);
    EXPECT_EQ(told.filter(u"000001"_s).join(u'|'),
              u"000001 山田　年齢 46　5,001円|000001 山田　一級　5,001円"_s);
    EXPECT_EQ(told.filter(u"000002"_s).size(), 1);
    EXPECT_TRUE(told.filter(u"000002"_s).first().endsWith(u"　（なし）　100円"_s));
    EXPECT_EQ(charts[1].note, u"1人（生年月日の入っていない 1人を除く）"_s);
    EXPECT_TRUE(told.contains(u"本社　2026/7/10 0円　2026/12/10 5,001円　合計 5,001円"_s));
    EXPECT_TRUE(told.contains(u"コード 99　2026/7/10 100円　2026/12/10 0円　合計 100円"_s));
    EXPECT_EQ(reports::itemCount(calc::chartsOfYear(*global_.cn_main, {}).front()), 0);
}

}  // namespace
