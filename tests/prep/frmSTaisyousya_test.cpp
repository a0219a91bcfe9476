#include "prep/frmSTaisyousya.h"

#include <QTableView>

#include "prep/run_screens.h"
#include "prep/snapshot.h"

namespace {

using namespace preptest;

enum { Code, Shimei, Syozoku, Yakusyoku, Toukyuu, Now, New };
const QString kGrid = u"DataGrid1"_s;
const QString kNone = u"未割り当て"_s, kNoneCount = u"未割り当て %1人"_s;
const QString kManagers = u"正社員賞与／管理職"_s;
const QString kMover = u"000012"_s;
const QString kNewcomer = QString::fromUtf16(sample::People::kJoinedAfterLastRun);

/// The assignment of the sample company's people at its newest date.
class People : public RunScreens {
  protected:
    People() : RunScreens(Content::Sample) {
        global_.kijunbi = u"2026/12/10"_s;
        importSnapshot();
    }
    void importSnapshot() {
        prep::SelectIntoX(cn_, *prep::readDates(cn_, prep::Side::Jikkou, sample::newestKijunbi()));
    }
    void open(const ScreenDriver::Step& step) { RunScreens::open<prep::frmSTaisyousya>(step); }
    /// A person's criteria at the date in the three run tables and the two decision tables, "." for none.
    QString criteriaOf(const QString& code) {
        QStringList all;
        for (const QString& table : {u"S配分基準対応社員"_s, u"S実行個人別計算"_s, u"S実行総額配分"_s,
                                     u"S実行個人別計算決定"_s, u"S実行総額配分決定"_s}) {
            const QString select = u"select 配分区分||配分基準 from %1 where 基準日=? and 社員Code=?"_s;
            const QStringList found = read(select.arg(table), {sample::newestKijunbi(), code});
            all << (found.isEmpty() ? u"."_s : found.join(u'+'));
        }
        return all.join(u' ');
    }
    static QString cell(QDialog& form, const QString& code, int column) {
        return rows(form, kGrid, column).value(rows(form, kGrid, Code).indexOf(code));
    }
    static void select(QDialog& form, const QStringList& codes) {
        for (const QString& code : codes)
            choose(form, kGrid, int(rows(form, kGrid, Code).indexOf(code)), code != codes.first());
    }
    static void makeManagers(QDialog& form, const QStringList& codes) {
        select(form, codes);
        chooseText(form, u"DataList1"_s, u"正社員賞与"_s);
        chooseText(form, u"DataList2"_s, u"管理職"_s);
        click(form, u"Command1"_s);
    }
    static void release(QDialog& form, const QString& code) {
        select(form, {code});
        click(form, u"Command2"_s);
    }
    /// The person's rows as they start in a run.
    void makeFresh(const QString& code) {
        const QStringList criterion =
            read(u"select 配分区分, 配分基準 from S配分基準対応社員 where 社員Code = ? and 基準日 = ?"_s,
                 {code, sample::newestKijunbi()});
        prep::assign(cn_, sample::newestKijunbi(), {code}, {});
        prep::assign(cn_, sample::newestKijunbi(), {code},
                     {criterion.first().section(u'|', 0, 0), criterion.first().section(u'|', 1)});
    }
    QString totalsOf(const QString& kijun) {
        return read(
                   u"select 個人別計算合計, 総額配分合計, 金一封合計, 特別加算金合計 from S実行予算 where "
                   u"基準日 = ? "
                   "and 配分区分 = '01' and 配分基準 = ?"_s,
                   {sample::newestKijunbi(), kijun})
            .join(u' ');
    }
    void store(QDialog& form, int people) {
        clickTold(form, u"Command3"_s, u"%1人の対応を登録しました。"_s.arg(people), u"登録の確認"_s,
                  BoxAnswer::Ok, BoxIcon::Information);
    }
};

TEST_F(People, AreListedSearchedAndSorted) {
    // Two transfers on the same day make two rows of the snapshot, but one person.
    sql(u"insert into IdoChuusyutsuMax2 select * from IdoChuusyutsuMax2 where 社員Code = ?"_s, {kNewcomer});
    open([&](QDialog& form) {
        EXPECT_EQ(rows(form, kGrid, Code),
                  read(u"select distinct 社員Code from IdoChuusyutsuMax2 order by 社員Code"_s));
        EXPECT_EQ(focused(form), u"Text1"_s);
        EXPECT_EQ(cell(form, kNewcomer, Now), kNone);
        EXPECT_FALSE(cell(form, kNewcomer, Syozoku).isEmpty());
        EXPECT_EQ(text(form, u"Label5"_s), kNoneCount.arg(rows(form, kGrid, Now).count(kNone)));
        choose(form, u"Combo1"_s, 1);
        EXPECT_EQ(text(form, u"Label5"_s), kNoneCount.arg(rows(form, kGrid).size()));
        choose(form, u"Combo1"_s, 0);

        type(form, u"Text1"_s, u"勅使河原"_s);
        EXPECT_EQ(rows(form, kGrid, Code), QStringList{u"000005"_s});
        type(form, u"Text1"_s, u"管理職 課長"_s);  // both words, wherever they stand
        const auto chiefs = rows(form, kGrid).size();
        EXPECT_GT(chiefs, 1);
        EXPECT_EQ(rows(form, kGrid, Yakusyoku), QStringList(chiefs, u"課長"_s));
        EXPECT_EQ(rows(form, kGrid, Now), QStringList(chiefs, kManagers));
        type(form, u"Text1"_s, u"'%"_s);
        EXPECT_TRUE(rows(form, kGrid).isEmpty());
        type(form, u"Text1"_s, QString());

        control<QTableView>(form, kGrid).sortByColumn(Toukyuu, Qt::DescendingOrder);
        EXPECT_GE(rows(form, kGrid, Toukyuu).first().toInt(), 10);  // as numbers: 10 before 9
    });
}

TEST_F(People, GetACriterionTogetherAndAreStoredTogether) {
    const QStringList both{kMover, kNewcomer};
    makeFresh(kMover);
    for (const QString& table : {u"S実行個人別計算決定"_s, u"S実行総額配分決定"_s})
        sql(u"insert into %1(社員Code,配分区分,配分基準,基準日) values(?,'01','01',?)"_s.arg(table),
            {kMover, sample::newestKijunbi()});
    EXPECT_EQ(criteriaOf(kMover) + criteriaOf(kNewcomer), u"0101 0101 0101 0101 0101. . . . ."_s);
    const auto others = [this] {
        return read(u"select * from S実行個人別計算 where 基準日 < ? or 社員Code not in (?, ?)"_s,
                    {sample::newestKijunbi(), kMover, kNewcomer});
    };
    const QStringList otherRows = others();
    const QByteArray before = dump(cn_);
    open([&](QDialog& form) {
        const auto without = rows(form, kGrid, Now).count(kNone);
        const QString former = cell(form, kMover, Now);
        EXPECT_EQ(offered(form), u"Command4 Command5"_s);
        select(form, both);
        EXPECT_EQ(text(form, u"Label7"_s), u"2人を選んでいます"_s);
        EXPECT_EQ(offered(form), u"Command2 Command4 Command5"_s);
        makeManagers(form, both);
        EXPECT_EQ(cell(form, kMover, Now), former);
        EXPECT_EQ(text(form, u"Label5"_s), kNoneCount.arg(without - 1));
        choose(form, u"Combo1"_s, 2);
        EXPECT_EQ(rows(form, kGrid, Code), both);
        EXPECT_EQ(rows(form, kGrid, New), QStringList(2, kManagers));
        choose(form, u"Combo1"_s, 0);
        expectUnchanged(before);  // not stored yet
        store(form, 2);
        EXPECT_EQ(cell(form, kNewcomer, New), QString());
        EXPECT_EQ(offered(form), u"Command4 Command5"_s);
    });
    for (const QString& code : both) EXPECT_EQ(criteriaOf(code), u"0102 0102 0102 . ."_s);
    EXPECT_EQ(others(), otherRows);
    open([&](QDialog& form) {
        for (const QString& code : both) EXPECT_EQ(cell(form, code, Now), kManagers);
        release(form, kNewcomer);
        EXPECT_EQ(cell(form, kNewcomer, New), kNone);
        makeManagers(form, {kNewcomer});  // back where he stands: no change
        EXPECT_FALSE(enabled(form, u"Command3"_s));
        release(form, kNewcomer);
        store(form, 1);
        EXPECT_EQ(cell(form, kNewcomer, Now), kNone);
        EXPECT_EQ(criteriaOf(kNewcomer), u". . . . ."_s);
    });
}

TEST_F(People, LoseAmountsAndChangesOnlyAfterAQuestion) {
    const QString loss =
        u"配分基準が変わる次の社員には、今の配分基準で入力または計算したものがあります。\n"
        "登録すると、それらは削除されます。元には戻せません。\n\n・%1 %2：%3"_s;
    makeFresh(kMover);
    // Each of these alone is reason enough to ask, and is told.
    const std::vector<std::array<QString, 3>> entries{
        {u"S実行総額配分"_s, u"入力3係数 = 1.1"_s, u"係数"_s},
        {u"S実行個人別計算"_s, u"支給係数 = 0.5"_s, u"係数"_s},
        {u"S実行総額配分"_s, u"基礎額Ｂ = 0"_s, u"基礎額"_s},
        {u"S実行個人別計算"_s, u"評価 = 'A'"_s, u"評価"_s},
        {u"S配分基準対応社員"_s, u"金一封 = 50000000"_s, u"支給額"_s}};
    for (const auto& [table, entry, kind] : entries) {
        makeFresh(kMover);
        sql(u"update %1 set %2 where 社員Code = ? and 基準日 = ?"_s.arg(table, entry),
            {kMover, sample::newestKijunbi()});
        open([&, kind = kind](QDialog& form) {
            release(form, kMover);
            clickTold(form, u"Command3"_s, loss.arg(kMover, cell(form, kMover, Shimei), kind),
                      u"削除の確認"_s, BoxAnswer::No);
            driver_.expectBox(u"登録していない変更が1人分あります。"_s, u"終了の確認"_s, BoxAnswer::Yes);
        });
    }
    const QByteArray before = dump(cn_);
    open([&](QDialog& form) {
        const QString asked = loss.arg(kMover, cell(form, kMover, Shimei), u"支給額"_s);
        const auto leave = [&](BoxAnswer answer) {
            const QString question = u"登録していない変更が1人分あります。"_s;
            driver_.expectBox(question, u"終了の確認"_s, answer);
            press(form, Qt::Key_Escape);
            EXPECT_EQ(form.isVisible(), answer == BoxAnswer::No);
        };
        release(form, kMover);
        clickTold(form, u"Command3"_s, asked, u"削除の確認"_s, BoxAnswer::No);
        EXPECT_EQ(cell(form, kMover, New), kNone);
        expectUnchanged(before);
        leave(BoxAnswer::No);

        // The last table's write fails: nobody has moved.
        makeManagers(form, {kMover});
        breakWrites(u"INSERT ON S実行総額配分"_s);
        driver_.expectBox(asked, u"削除の確認"_s, BoxAnswer::Yes);
        expectRollback();
        click(form, u"Command3"_s);
        expectUnchanged(before);
        EXPECT_EQ(cell(form, kMover, New), kManagers);  // to be tried again
        repairWrites();
        driver_.expectBox(asked, u"削除の確認"_s, BoxAnswer::Yes);
        store(form, 1);

        release(form, kMover);
        leave(BoxAnswer::Yes);
    });
    open([&](QDialog& form) { EXPECT_EQ(cell(form, kMover, Now), kManagers); });
}

TEST_F(People, TakeTheirAmountsOutOfTheTotalsOfWhatTheyLeave) {
    const QDate date = sample::newestKijunbi();
    const QString all =
        u"select 社員Code from S配分基準対応社員 where 基準日 = ? and 配分区分 = '01' and 配分基準 = ?"_s;
    const QStringList staff = read(all, {date, u"01"_s});
    sql(u"update S配分基準対応社員 set 個人別計算 = 1000000, 総額配分 = 20000, 金一封 = 30000, 特別加算金 = 40000 where 基準日 = ?"_s,
        {date});
    sql(u"delete from S実行予算"_s);
    for (const QString& kijun : {u"01"_s, u"02"_s, u"03"_s})
        sql(u"insert into S実行予算(配分区分, 配分基準, 基準日, 予算総額, 個人別計算合計) values('01', ?, ?, 70000, 12750000000)"_s,
            {kijun, date});
    const auto yen = [](qsizetype people) {
        return u"%1|%2|%3|%4"_s.arg(people * 100).arg(people * 2).arg(people * 3).arg(people * 4);
    };
    prep::assign(cn_, date, {staff.first()}, {});
    EXPECT_EQ(totalsOf(u"01"_s), yen(staff.size() - 1));
    const QStringList there = read(all, {date, u"02"_s});  // given again, they keep what they have
    const auto managers = there.size();
    prep::assign(cn_, date, staff + there, {u"01"_s, u"02"_s});
    EXPECT_EQ(totalsOf(u"01"_s), yen(0));
    EXPECT_EQ(totalsOf(u"02"_s), yen(managers));                     // the newcomers bring no amounts along
    EXPECT_EQ(totalsOf(u"03"_s).section(u'|', 0, 0), u"1275000"_s);  // not touched
    EXPECT_EQ(read(u"select 予算総額 from S実行予算"_s), QStringList(3, u"7"_s));
}

TEST_F(People, WhoHaveLeftStayListedWithAMark) {
    QString former;
    open([&](QDialog& form) { former = cell(form, kMover, Now); });
    sql(u"update 履歴書テーブル set 退職フラグ = -1, 退職日 = ? where 社員Code = ?"_s,
        {sample::newestKijunbi().addDays(-1), kMover});
    importSnapshot();
    sql(u"update S配分基準 set 表示 = 0 where Code = '02' and 配分区分 = '01'"_s);
    open([&](QDialog& form) {
        EXPECT_TRUE(cell(form, kMover, Shimei).endsWith(u"（退職）"_s));
        EXPECT_EQ(cell(form, kMover, Now), former);
        // A criterion that is no longer shown cannot be given, but who stands under it is still told.
        type(form, u"Text1"_s, u"表示しない配分基準（01/02）"_s);
        EXPECT_FALSE(rows(form, kGrid).isEmpty());
        choose(form, u"DataList1"_s, 0);
        EXPECT_EQ(rows(form, u"DataList2"_s), QStringList{u"一般社員"_s});
        type(form, u"Text1"_s, QString());
        choose(form, u"Combo1"_s, 3);
        EXPECT_EQ(rows(form, kGrid, Code), QStringList{kMover});
    });
}

}  // namespace
