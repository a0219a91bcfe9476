#include "prep/frmSTaisyousya.h"

#include <gtest/gtest.h>

#include <QTableView>

#include "prep/snapshot.h"
#include "shell/global_record.h"
#include "support/company_fixture.h"
#include "support/screen_driver.h"

namespace {

using namespace Qt::StringLiterals;
using namespace support;
using shell::BoxAnswer;

enum { Code, Shimei, Syozoku, Yakusyoku, Toukyuu, Now, New };
const QString kNone = u"未割り当て"_s;
const QString kManagers = u"正社員賞与／管理職"_s;
const QString kRunTables[] = {u"S配分基準対応社員"_s, u"S実行個人別計算"_s, u"S実行総額配分"_s};

/// The assignment of the sample company's people at its newest date.
class People : public ::testing::Test {
  protected:
    People() : house_{global_, screens_} {
        folder_.makeSample();
        global_.cn_main = folder_.open();
        global_.kijunbi = u"2026/12/10"_s;
        global_.haibun_jikkou_mode = true;
        importSnapshot();
    }
    void importSnapshot() {
        prep::SelectIntoX(*global_.cn_main,
                          *prep::readDates(*global_.cn_main, prep::Side::Jikkou, sample::newestKijunbi()));
    }
    void sql(const QString& statement, const store::Binds& binds = {}) {
        global_.cn_main->execute(statement, binds);
    }
    /// "01/02" for each row of a person at the date.
    QStringList criteriaOf(const QString& table, const QString& code) {
        QStringList all;
        auto row = global_.cn_main->prepare(
            u"select 配分区分,配分基準 from %1 where 社員Code = ? and 基準日 = ?"_s.arg(table));
        row.bindAll({code, sample::newestKijunbi()});
        while (row.step()) all << row.toText(0) + u'/' + row.toText(1);
        return all;
    }
    void open(ScreenDriver::Step step) {
        prep::frmSTaisyousya form(house_, nullptr);
        driver_.run(form, [&](QDialog& screen) {
            step(screen);
            screen.close();
        });
    }
    static int rowOf(QDialog& form, const QString& code) {
        return static_cast<int>(rows(form, u"DataGrid1"_s, Code).indexOf(code));
    }
    static QString cell(QDialog& form, const QString& code, int column) {
        return rows(form, u"DataGrid1"_s, column).value(rowOf(form, code));
    }
    static void select(QDialog& form, const QStringList& codes) {
        for (const QString& code : codes)
            choose(form, u"DataGrid1"_s, rowOf(form, code), code != codes.first());
    }
    static void pick(QDialog& form, const QString& kubun, const QString& kijun) {
        chooseText(form, u"DataList1"_s, kubun);
        chooseText(form, u"DataList2"_s, kijun);
    }
    static int unassigned(QDialog& form) {
        return text(form, u"Label5"_s).remove(u"未割り当て "_s).remove(u"人"_s).toInt();
    }
    void expectStored(int people) {
        driver_.expectBox(u"%1人の対応を登録しました。"_s.arg(people), u"登録の確認"_s, BoxAnswer::Ok,
                          shell::BoxIcon::Information);
    }

    CompanyFolder folder_;
    shell::GlobalRecord global_;
    shell::ScreenRegistry screens_;
    shell::House house_;
    ScreenDriver driver_;
};

const QString kNewcomer = QString::fromUtf16(sample::People::kJoinedAfterLastRun);

TEST_F(People, AreListedSearchedAndSorted) {
    open([&](QDialog& form) {
        const QStringList codes = rows(form, u"DataGrid1"_s, Code);
        EXPECT_EQ(codes.size(),
                  global_.cn_main->query(u"select distinct 社員Code from IdoChuusyutsuMax2"_s).recordCount());
        EXPECT_TRUE(std::is_sorted(codes.begin(), codes.end()));
        EXPECT_EQ(focused(form), u"Text1"_s);
        EXPECT_EQ(cell(form, kNewcomer, Now), kNone);
        EXPECT_EQ(unassigned(form), rows(form, u"DataGrid1"_s, Now).count(kNone));
        EXPECT_GT(unassigned(form), 0);

        type(form, u"Text1"_s, u"勅使河原"_s);
        EXPECT_EQ(rows(form, u"DataGrid1"_s, Code), QStringList{u"000005"_s});
        type(form, u"Text1"_s, u"管理職 課長"_s);  // both words, wherever they stand
        const QStringList chiefs = rows(form, u"DataGrid1"_s, Yakusyoku);
        EXPECT_GT(chiefs.size(), 1);
        EXPECT_EQ(chiefs.count(u"課長"_s), chiefs.size());
        EXPECT_EQ(rows(form, u"DataGrid1"_s, Now).count(kManagers), chiefs.size());
        type(form, u"Text1"_s, u"'%"_s);
        EXPECT_TRUE(rows(form, u"DataGrid1"_s).isEmpty());
        type(form, u"Text1"_s, QString());
        choose(form, u"Combo1"_s, 1);
        EXPECT_EQ(rows(form, u"DataGrid1"_s).size(), unassigned(form));
        choose(form, u"Combo1"_s, 0);

        auto& table = control<QTableView>(form, u"DataGrid1"_s);
        table.sortByColumn(Toukyuu, Qt::DescendingOrder);
        std::vector<int> grades;
        for (const QString& grade : rows(form, u"DataGrid1"_s, Toukyuu)) grades.push_back(grade.toInt());
        EXPECT_TRUE(std::is_sorted(grades.rbegin(), grades.rend()));  // as numbers: 10 before 9
        EXPECT_GE(grades.front(), 10);
    });
}

TEST_F(People, GetACriterionTogetherAndAreStoredTogether) {
    const QStringList both{u"000012"_s, kNewcomer};
    const QByteArray before = dump(*global_.cn_main);
    open([&](QDialog& form) {
        const int without = unassigned(form);
        const QString former = cell(form, both[0], Now);
        EXPECT_FALSE(enabled(form, u"Command1"_s) || enabled(form, u"Command2"_s) ||
                     enabled(form, u"Command3"_s));
        select(form, both);
        EXPECT_EQ(text(form, u"Label7"_s), u"2人を選んでいます"_s);
        EXPECT_FALSE(enabled(form, u"Command1"_s));
        pick(form, u"正社員賞与"_s, u"管理職"_s);
        click(form, u"Command1"_s);
        for (const QString& code : both) EXPECT_EQ(cell(form, code, New), kManagers);
        EXPECT_EQ(cell(form, both[0], Now), former);
        EXPECT_EQ(unassigned(form), without - 1);
        choose(form, u"Combo1"_s, 2);
        EXPECT_EQ(rows(form, u"DataGrid1"_s, Code), both);
        choose(form, u"Combo1"_s, 0);
        EXPECT_EQ(firstDifference(before, dump(*global_.cn_main)).toStdString(), "");  // not stored yet
        expectStored(2);
        click(form, u"Command3"_s);
        EXPECT_EQ(cell(form, kNewcomer, Now), kManagers);
        EXPECT_EQ(cell(form, kNewcomer, New), QString());
        EXPECT_FALSE(enabled(form, u"Command3"_s));
    });
    for (const QString& code : both)
        for (const QString& table : kRunTables)
            EXPECT_EQ(criteriaOf(table, code), QStringList{u"01/02"_s}) << table.toStdString();

    open([&](QDialog& form) {
        select(form, {kNewcomer});
        click(form, u"Command2"_s);
        EXPECT_EQ(cell(form, kNewcomer, New), kNone);
        pick(form, u"正社員賞与"_s, u"管理職"_s);
        click(form, u"Command1"_s);  // back where he stands: no change
        EXPECT_FALSE(enabled(form, u"Command3"_s));
        click(form, u"Command2"_s);
        expectStored(1);
        press(form, Qt::Key_S, Qt::AltModifier);
        EXPECT_EQ(cell(form, kNewcomer, Now), kNone);
    });
    for (const QString& table : kRunTables) EXPECT_TRUE(criteriaOf(table, kNewcomer).isEmpty());
}

TEST_F(People, LoseAmountsAndChangesOnlyAfterAQuestion) {
    const QString mover = u"000012"_s;
    sql(u"update S配分基準対応社員 set 金一封 = 50000000 where 社員Code = ? and 基準日 = ?"_s,
        {mover, sample::newestKijunbi()});
    const QByteArray before = dump(*global_.cn_main);
    const QString leave = u"登録していない変更が1人分あります。登録せずに閉じますか？"_s;
    open([&](QDialog& form) {
        const QString loss =
            u"次の社員には、この基準日の金額が計算または入力されています。\n%1\n\n登録すると、今の配分基準での金額・基礎額・係数は削除されます。登録しますか？"_s
                .arg(cell(form, mover, Shimei));
        select(form, {mover});
        click(form, u"Command2"_s);
        driver_.expectBox(loss, u"削除の確認"_s, BoxAnswer::No);
        click(form, u"Command3"_s);
        EXPECT_EQ(cell(form, mover, New), kNone);
        EXPECT_EQ(firstDifference(before, dump(*global_.cn_main)).toStdString(), "");
        driver_.expectBox(leave, u"終了の確認"_s, BoxAnswer::No);
        press(form, Qt::Key_Escape);
        EXPECT_TRUE(form.isVisible());

        // The last table's write fails: nobody has moved.
        select(form, {mover});
        pick(form, u"正社員賞与"_s, u"管理職"_s);
        click(form, u"Command1"_s);
        sql(u"create temp trigger f before insert on S実行総額配分 begin select raise(abort, 'x'); end"_s);
        driver_.expectBox(loss, u"削除の確認"_s, BoxAnswer::Yes);
        driver_.expectBox(u"処理中にエラーが発生しました。処理を取り消します。"_s, u"取消"_s);
        click(form, u"Command3"_s);
        EXPECT_EQ(firstDifference(before, dump(*global_.cn_main)).toStdString(), "");
        EXPECT_EQ(cell(form, mover, New), kManagers);  // to be tried again
        sql(u"drop trigger f"_s);
        driver_.expectBox(loss, u"削除の確認"_s, BoxAnswer::Yes);
        expectStored(1);
        click(form, u"Command3"_s);
        EXPECT_EQ(criteriaOf(u"S配分基準対応社員"_s, mover), QStringList{u"01/02"_s});

        select(form, {mover});
        click(form, u"Command2"_s);
        driver_.expectBox(leave, u"終了の確認"_s, BoxAnswer::Yes);
        click(form, u"Command5"_s);
    });
    EXPECT_EQ(criteriaOf(u"S配分基準対応社員"_s, mover), QStringList{u"01/02"_s});
}

TEST_F(People, WhoHaveLeftStayListedWithAMark) {
    const QString leaver = u"000012"_s;
    QString former;
    open([&](QDialog& form) { former = cell(form, leaver, Now); });
    sql(u"update 履歴書テーブル set 退職フラグ = -1, 退職日 = ? where 社員Code = ?"_s,
        {sample::newestKijunbi().addDays(-1), leaver});
    importSnapshot();
    sql(u"update S配分基準 set 表示 = 0 where Code = '02' and 配分区分 = '01'"_s);
    open([&](QDialog& form) {
        EXPECT_TRUE(cell(form, leaver, Shimei).endsWith(u"（退職）"_s));
        EXPECT_EQ(cell(form, leaver, Now), former);
        // A criterion that is no longer shown cannot be given, but who stands under it is still told.
        type(form, u"Text1"_s, u"表示しない配分基準（01/02）"_s);
        EXPECT_FALSE(rows(form, u"DataGrid1"_s).isEmpty());
        choose(form, u"DataList1"_s, 0);
        EXPECT_EQ(rows(form, u"DataList2"_s), QStringList{u"一般社員"_s});
        type(form, u"Text1"_s, QString());
        choose(form, u"Combo1"_s, 3);
        EXPECT_EQ(rows(form, u"DataGrid1"_s, Code), QStringList{leaver});
    });
}

}  // namespace
