#include "prep/frmSDatatorikomi.h"

#include <gtest/gtest.h>

#include "prep/frmMenuSJikkou.h"
#include "shell/global_record.h"
#include "store/date_text.h"
#include "support/company_fixture.h"
#include "support/screen_driver.h"

namespace {

using namespace Qt::StringLiterals;
using namespace support;
using prep::Side;
using shell::BoxAnswer;
using shell::BoxIcon;

const QString kScreen = u"frmSDatatorikomi"_s;
const QString kAll =
    u"Command1 Command2 Text1_0 Text1_1 Text1_2 Label3_0 Label3_1 Label3_2 DataList1 Label4 "
    "Command4_0 Command4_1 Command3_0 Command3_1 Command7 Command6"_s;

/// Two people who can be imported at 2003/4/1, one of them with a row of the run of 2002/12/10.
class Torikomi : public ::testing::Test {
  protected:
    Torikomi() : house_{global_, screens_}, opener_(u"opener"_s, u""_s, nullptr) {
        folder_.makeEmpty();
        global_.cn_main = folder_.open();
        global_.haibun_jikkou_mode = true;
        screens_.add(u"frmMenuSJikkou"_s, [](shell::House& house, QWidget* parent) {
            return new prep::frmMenuSJikkou(house, parent);
        });
        for (const QString& code : {u"000001"_s, u"000002"_s}) {
            cn().execute(
                u"INSERT INTO 履歴書テーブル(社員Code,生年月日,入社日,退職フラグ) VALUES(?,'1980-04-01','2000-04-01',0)"_s,
                {code});
            cn().execute(u"INSERT INTO 異動テーブル(社員Code,異動日) VALUES(?,'2000-04-01')"_s, {code});
        }
        addDate(Side::Jikkou, u"2002/12/10"_s);
        for (const QString& table :
             {u"S配分基準対応社員"_s, u"S実行個人別計算"_s, u"S実行総額配分"_s, u"Sshikyuukeisuu"_s})
            cn().execute(
                u"INSERT INTO %1(配分区分,配分基準,基準日) VALUES('01','02','2002-12-10')"_s.arg(table));
        for (prep::RunTable table : prep::kRunTables)
            cn().execute(u"UPDATE %1 SET 社員Code = '000002'"_s.arg(prep::runTableName(table)));
    }
    store::Connection& cn() { return *global_.cn_main; }
    void addDate(Side side, const QString& date) {
        cn().execute(
            u"INSERT INTO %1(基準日,年齢算出年月日,勤続年数算出年月日) VALUES(?,'2003-03-31','2003-03-30')"_s
                .arg(prep::dateTable(side)),
            {store::requireDate(date)});
    }
    QStringList dates(Side side = Side::Jikkou) {
        QStringList texts;
        for (QDate date : prep::listDates(cn(), side)) texts << store::formatDate(date);
        return texts;
    }
    int runRows(const QString& table, const QString& date) {
        return cn()
            .query(u"SELECT 社員Code FROM %1 WHERE 基準日 = ?"_s.arg(table), {store::requireDate(date)})
            .recordCount();
    }
    void breakWrites(const QString& event) {
        cn().execute(u"CREATE TRIGGER 故障 BEFORE %1 BEGIN SELECT RAISE(ABORT, 'fault'); END"_s.arg(event));
    }
    /// Opens the screen; `menu` says that the run menu is to follow.
    void open(ScreenDriver::Step step, bool menu = false) {
        driver_.onScreen(kScreen, std::move(step));
        if (menu)
            driver_.onScreen(u"frmMenuSJikkou"_s, [this](QDialog& form) {
                panelUnderMenu_ = global_.panels.run;
                click(form, u"Command10"_s);
            });
        opener_.showChild(new prep::frmSDatatorikomi(house_, &opener_));
    }
    static QString shown(QDialog& form) {
        QStringList names;
        for (const QString& name : kAll.split(u' '))
            if (visible(form, name)) names << name;
        return names.join(u' ');
    }
    void fill(QDialog& form, const QString& kijunbi, const QString& nenrei, const QString& kinzoku) {
        type(form, u"Text1_0"_s, kijunbi, Qt::Key_Return);
        type(form, u"Text1_1"_s, nenrei, Qt::Key_Return);
        type(form, u"Text1_2"_s, kinzoku, Qt::Key_Return);
    }

    CompanyFolder folder_;
    shell::GlobalRecord global_;
    shell::ScreenRegistry screens_;
    shell::House house_;
    widgets::Form opener_;
    ScreenDriver driver_;
    QString panelUnderMenu_;
};

const QString kOpening = u"Command1 Command2 Command6"_s;
const QString kNewDate =
    u"Command1 Command2 Text1_0 Text1_1 Text1_2 Label3_0 Label3_1 Label3_2 Label4 "
    "Command4_0 Command3_0"_s;
const QString kExisting = u"Command1 Command2 DataList1 Label4 Command4_1 Command3_1 Command7"_s;

TEST_F(Torikomi, HasThreeStatesAndCancelLeadsBack) {
    open([](QDialog& form) {
        EXPECT_EQ(shown(form), kOpening);
        click(form, u"Command1"_s);
        EXPECT_EQ(shown(form), kNewDate);
        EXPECT_FALSE(enabled(form, u"Command1"_s) || enabled(form, u"Command2"_s));
        EXPECT_EQ(text(form, u"Label4"_s),
                  u"年月日（入力例：2000/4/1）を入力し、ﾃﾞｰﾀ取込ボタンを押してください。"_s);
        EXPECT_EQ(focused(form), u"Text1_0"_s);
        type(form, u"Text1_0"_s, u"not a date"_s);
        click(form, u"Command3_0"_s);  // leaves without a word about the date
        EXPECT_EQ(shown(form), kOpening);
        EXPECT_TRUE(enabled(form, u"Command1"_s) && enabled(form, u"Command2"_s));
        click(form, u"Command2"_s);
        EXPECT_EQ(shown(form), kExisting);
        EXPECT_EQ(text(form, u"Label4"_s),
                  u"読み込むﾃﾞｰﾀの基準日を選択し、ﾃﾞｰﾀ読込ボタンを押してください。"_s);
        EXPECT_EQ(focused(form), u"DataList1"_s);
        press(form, Qt::Key_Escape);
        EXPECT_EQ(shown(form), kOpening);
        press(form, Qt::Key_C, Qt::AltModifier);
    });
}

TEST_F(Torikomi, RefusesWrongDatesAndKeepsTheFocus) {
    struct Refusal {
        int field;
        QString input;
        QString text;
    };
    const Refusal refusals[] = {
        {0, u""_s, u"未入力は許されません。･･･基準日"_s},
        {0, u"2003/2/29"_s, u"日付の入力が正しくありません。･･･基準日"_s},
        {0, u"H14.12.10"_s, u"基準日が重複しています。"_s},
        {0, u"2003/7/1"_s, u"賞与設計に同じ基準日が存在します。"_s},
        {1, u" "_s, u"未入力は許されません。･･･年齢算出年月日"_s},
        {1, u"3/4/1"_s, u"日付の入力が正しくありません。･･･年齢算出年月日"_s},
        {2, u""_s, u"未入力は許されません。･･･勤続年数算出年月日"_s},
        {2, u"平成"_s, u"日付の入力が正しくありません。･･･勤続年数算出年月日"_s},
    };
    addDate(Side::Sekkei, u"2003/7/1"_s);
    const QByteArray before = dump(cn());
    open([&](QDialog& form) {
        click(form, u"Command1"_s);
        for (const Refusal& refusal : refusals) {
            const QString field = u"Text1_%1"_s.arg(refusal.field);
            if (focused(form) != field) type(form, focused(form), u"2003/4/1"_s, Qt::Key_Tab);
            driver_.expectBox(refusal.text, u"入力エラー"_s, BoxAnswer::Ok, BoxIcon::Critical);
            type(form, field, refusal.input, Qt::Key_Tab);
            EXPECT_EQ(focused(form), field);
            driver_.expectBox(refusal.text, u"入力エラー"_s);  // nor does the command get past it
            press(form, Qt::Key_I, Qt::AltModifier);
            EXPECT_EQ(focused(form), field);
        }
        click(form, u"Command3_0"_s);
        click(form, u"Command6"_s);
    });
    EXPECT_EQ(firstDifference(before, dump(cn())), QByteArray());
}

TEST_F(Torikomi, ImportsANewDateAndOpensTheRunMenu) {
    open(
        [&](QDialog& form) {
            click(form, u"Command1"_s);
            fill(form, u"平成15年4月1日"_s, u"2003/03/31"_s, u"2003-4-1"_s);
            EXPECT_EQ(text(form, u"Text1_1"_s), u"2003/3/31"_s);
            click(form, u"Command4_0"_s);
        },
        true);
    EXPECT_EQ(driver_.screens(), (QStringList{kScreen, u"frmMenuSJikkou"_s}));
    EXPECT_EQ(panelUnderMenu_, u"配分実行基準日: 2003年4月1日"_s);
    EXPECT_EQ(global_.panels.run, QString());
    EXPECT_EQ((QStringList{global_.kijunbi, global_.nenrei_kijunbi, global_.kinzoku_kijunbi}),
              (QStringList{u"2003/4/1"_s, u"2003/3/31"_s, u"2003/4/1"_s}));
    EXPECT_EQ(dates(), (QStringList{u"2002/12/10"_s, u"2003/4/1"_s}));
    auto snapshot = cn().query(u"SELECT 年齢,勤続年数 FROM IdoChuusyutsuMax2"_s);
    EXPECT_EQ(snapshot.recordCount(), 2);
    EXPECT_EQ(snapshot.value(0).toText() + u' ' + snapshot.value(1).toText(), u"22 3"_s);
    for (prep::RunTable table : prep::kRunTables)
        EXPECT_EQ(runRows(prep::runTableName(table), u"2003/4/1"_s), 1);
}

TEST_F(Torikomi, SaysWhatToDoWhenNobodyCanBeImported) {
    driver_.expectBox(
        u"この基準日で取り込むことができる人事データはありません。\n \n"
        "①社員データを登録していない。\n"
        "　は　い → 社員データを登録してください\n"
        "　いいえ → ②へ\n"
        "②各社員の異動履歴が作成されていない\n"
        "　は　い → 異動履歴を作成してください（初登録）\n"
        "　いいえ → ③へ\n"
        "③基準日以前の異動履歴を持つ社員が一人もいない\n"
        "　は　い → 基準日を変更してください\n"
        "　いいえ → お問い合わせください"_s,
        u"基準日指定の確認"_s, BoxAnswer::Ok, BoxIcon::Warning);
    open([&](QDialog& form) {
        click(form, u"Command1"_s);
        fill(form, u"2000/3/31"_s, u"2000/3/31"_s, u"2000/3/31"_s);
        click(form, u"Command4_0"_s);
        EXPECT_EQ(shown(form), kOpening);
        click(form, u"Command6"_s);
    });
    EXPECT_EQ(dates(), QStringList{u"2002/12/10"_s});
}

TEST_F(Torikomi, LoadsAnExistingDateWithoutTouchingTheRun) {
    addDate(Side::Jikkou, u"2001/7/10"_s);
    open(
        [&](QDialog& form) {
            click(form, u"Command2"_s);
            EXPECT_EQ(rows(form, u"DataList1"_s), (QStringList{u"2001/7/10"_s, u"2002/12/10"_s}));
            driver_.expectBox(u"基準日を指定してください。"_s, u"基準日指定の確認"_s);
            press(form, Qt::Key_I, Qt::AltModifier);
            EXPECT_EQ(focused(form), u"DataList1"_s);
            chooseText(form, u"DataList1"_s, u"2002/12/10"_s);
            driver_.expectBox(u"『2002/12/10』でデータを取り込みます。"_s, u"データ取込日の確認"_s,
                              BoxAnswer::No);
            click(form, u"Command4_1"_s);
            EXPECT_EQ(global_.kijunbi, QString());
            driver_.expectBox(u"『2002/12/10』でデータを取り込みます。"_s, u"データ取込日の確認"_s,
                              BoxAnswer::Yes);
            click(form, u"Command4_1"_s);
        },
        true);
    EXPECT_EQ(panelUnderMenu_, u"配分実行基準日: 2002年12月10日"_s);
    EXPECT_EQ(global_.nenrei_kijunbi + u' ' + global_.kinzoku_kijunbi, u"2003/3/31 2003/3/30"_s);
    EXPECT_FALSE(prep::snapshotIsEmpty(cn()));
    EXPECT_EQ(runRows(u"S配分基準対応社員"_s, u"2002/12/10"_s),
              1);  // 000001 stays outside: loading assigns nobody
}

TEST_F(Torikomi, DeletesADateAfterAsking) {
    addDate(Side::Jikkou, u"2001/7/10"_s);
    const QString question = u" 2002/12/10 を削除しますか？"_s, title = u"削除の確認"_s;
    open([&](QDialog& form) {
        click(form, u"Command2"_s);
        driver_.expectBox(u"基準日を指定してください。"_s, u"基準日指定の確認"_s);
        click(form, u"Command7"_s);
        choose(form, u"DataList1"_s, 1);
        driver_.expectBox(question, title, BoxAnswer::No);
        click(form, u"Command7"_s);
        EXPECT_EQ(dates().size(), 2);
        const QByteArray before = dump(cn());
        breakWrites(u"DELETE ON Sshikyuukeisuu"_s);
        driver_.expectBox(question, title, BoxAnswer::Yes);
        driver_.expectBox(u"処理中にエラーが発生しました。処理を取り消します。"_s, u"取消"_s);
        click(form, u"Command7"_s);
        EXPECT_EQ(firstDifference(before, dump(cn())), QByteArray());
        cn().execute(u"DROP TRIGGER 故障"_s);
        driver_.expectBox(question, title, BoxAnswer::Yes);
        click(form, u"Command7"_s);
        EXPECT_EQ(rows(form, u"DataList1"_s), QStringList{u"2001/7/10"_s});
        EXPECT_EQ(shown(form), kExisting);
        click(form, u"Command3_1"_s);
        click(form, u"Command6"_s);
    });
    EXPECT_EQ(dates(), QStringList{u"2001/7/10"_s});
    for (prep::RunTable table : prep::kRunTables)
        EXPECT_EQ(runRows(prep::runTableName(table), u"2002/12/10"_s), 0);
}

TEST_F(Torikomi, TakesEverythingBackWhenAWriteFails) {
    breakWrites(u"INSERT ON S実行総額配分"_s);
    open([&](QDialog& form) {
        click(form, u"Command1"_s);
        fill(form, u"2003/4/1"_s, u"2003/4/1"_s, u"2003/4/1"_s);
        driver_.expectBox(u"処理中にエラーが発生しました。処理を取り消します。"_s, u"取消"_s);
        click(form, u"Command4_0"_s);
        EXPECT_EQ(text(form, u"Text1_0"_s), u"2003/4/1"_s);  // nothing typed is lost
        cn().execute(u"UPDATE 履歴書テーブル SET 入社日 = NULL WHERE 社員Code = '000001'"_s);
        driver_.expectBox(u"Null の使い方が不正です。"_s, u""_s);
        click(form, u"Command4_0"_s);
        click(form, u"Command3_0"_s);
        click(form, u"Command6"_s);
    });
    EXPECT_EQ(dates(), QStringList{u"2002/12/10"_s});
    for (prep::RunTable table : prep::kRunTables)
        EXPECT_EQ(runRows(prep::runTableName(table), u"2003/4/1"_s), 0);
    EXPECT_EQ(global_.panels.run, QString());
}

TEST_F(Torikomi, WorksOnItsOwnDatesOnTheDesignSide) {
    global_.haibun_sekkei_mode = true;
    global_.haibun_jikkou_mode = false;
    open([&](QDialog& form) {
        click(form, u"Command1"_s);
        fill(form, u"2002/12/10"_s, u"2003/4/1"_s, u"2003/4/1"_s);  // a date of the run side is free here
        click(form, u"Command4_0"_s);
    });
    EXPECT_EQ(driver_.screens(), QStringList{kScreen});  // no run menu
    EXPECT_EQ(dates(Side::Sekkei), QStringList{u"2002/12/10"_s});
    open([&](QDialog& form) {
        click(form, u"Command2"_s);
        choose(form, u"DataList1"_s, 0);
        driver_.expectBox(u" 2002/12/10 を削除しますか？"_s, u"削除の確認"_s, BoxAnswer::Yes);
        click(form, u"Command7"_s);
        click(form, u"Command3_1"_s);
        click(form, u"Command6"_s);
    });
    EXPECT_TRUE(dates(Side::Sekkei).isEmpty());
    EXPECT_EQ(dates(), QStringList{u"2002/12/10"_s});
    EXPECT_EQ(runRows(u"S実行個人別計算"_s, u"2002/12/10"_s), 1);
}

}  // namespace
