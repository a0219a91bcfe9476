#include "prep/frmSDatatorikomi.h"

#include "prep/frmMenuSJikkou.h"
#include "prep/run_screens.h"

namespace {

using namespace preptest;
using prep::Side;

const QString kScreen = u"frmSDatatorikomi"_s;
const QString kChosen = u"基準日指定の確認"_s;
const QString kDelete = u"削除の確認"_s;
const QString kDeleteQuestion = u" 2002/12/10 を削除しますか？"_s;

/// Two people who can be imported at 2003/4/1, one of them with rows in the run of 2002/12/10.
class Torikomi : public RunScreens {
  protected:
    Torikomi() : RunScreens(Content::Empty), opener_(u"opener"_s, u""_s, nullptr) {
        addScreen<prep::frmMenuSJikkou>(u"frmMenuSJikkou"_s);
        sql(u"INSERT INTO 履歴書テーブル(社員Code,生年月日,入社日,退職フラグ) VALUES"
            "('000001','1980-04-01','2000-04-01',0),('000002','1980-04-01','2000-04-01',0)"_s);
        sql(u"INSERT INTO 異動テーブル(社員Code,異動日) VALUES('000001','2000-04-01'),('000002','2000-04-01')"_s);
        addDate(Side::Jikkou, u"2002/12/10"_s);
        for (prep::RunTable table : prep::kRunTables)
            sql(u"INSERT INTO %1(社員Code,配分区分,配分基準,基準日) VALUES('000002','01','02','2002-12-10')"_s
                    .arg(prep::runTableName(table)));
    }
    void addDate(Side side, const QString& date) {
        sql(u"INSERT INTO %1(基準日,年齢算出年月日,勤続年数算出年月日) VALUES(?,'2003-03-31','2003-03-30')"_s
                .arg(prep::dateTable(side)),
            {d(date)});
    }
    QStringList dates(Side side = Side::Jikkou) {
        return read(u"SELECT 基準日 FROM %1 ORDER BY 基準日"_s.arg(prep::dateTable(side)));
    }
    /// How many rows each of the three run tables has at a date: "111".
    QString runRows(const QString& date) {
        QString counts;
        for (prep::RunTable table : prep::kRunTables)
            counts +=
                read(u"SELECT count(*) FROM %1 WHERE 基準日 = ?"_s.arg(prep::runTableName(table)), {d(date)})
                    .first();
        return counts;
    }
    void open(const ScreenDriver::Step& step) {
        expectScreen(kScreen, step);
        opener_.showChild(new prep::frmSDatatorikomi(house_, &opener_));
    }
    void openToRunMenu(const ScreenDriver::Step& step) {
        expectScreen(kScreen, step);
        expectScreen(u"frmMenuSJikkou"_s, [&](QDialog&) { panelUnderMenu_ = global_.panels.run; });
        opener_.showChild(new prep::frmSDatatorikomi(house_, &opener_));
        EXPECT_EQ(driver_.screens(), (QStringList{kScreen, u"frmMenuSJikkou"_s}));
        EXPECT_EQ(global_.panels.run, QString());
    }
    static void fillNewDate(QDialog& form, const QString& kijunbi, const QString& nenrei,
                            const QString& kinzoku) {
        click(form, u"Command1"_s);
        type(form, u"Text1_0"_s, kijunbi, Qt::Key_Return);
        type(form, u"Text1_1"_s, nenrei, Qt::Key_Return);
        type(form, u"Text1_2"_s, kinzoku, Qt::Key_Return);
    }

    widgets::Form opener_;
    QString panelUnderMenu_;
};

TEST_F(Torikomi, HasThreeStatesAndCancelLeadsBack) {
    const QString opening = u"Command1 Command2 Command6"_s,
                  newDate =
                      u"Command1 Command2 Text1_0 Text1_1 Text1_2 Label3_0 Label3_1 Label3_2 Label4 "
                      "Command4_0 Command3_0"_s,
                  existing = u"Command1 Command2 DataList1 Label4 Command4_1 Command3_1 Command7"_s;
    const auto inSight = [](QDialog& form) {
        QStringList names =
            u"Command1 Command2 Text1_0 Text1_1 Text1_2 Label3_0 Label3_1 Label3_2 DataList1 "
            "Label4 Command4_0 Command4_1 Command3_0 Command3_1 Command7 Command6"_s.split(u' ');
        names.removeIf([&](const QString& name) { return !visible(form, name); });
        return names.join(u' ');
    };
    open([&](QDialog& form) {
        EXPECT_EQ(inSight(form), opening);
        click(form, u"Command1"_s);
        EXPECT_EQ(inSight(form), newDate);
        EXPECT_FALSE(enabled(form, u"Command1"_s) || enabled(form, u"Command2"_s));
        EXPECT_EQ(text(form, u"Label4"_s),
                  u"年月日（入力例：2000/4/1）を入力し、ﾃﾞｰﾀ取込ボタンを押してください。"_s);
        EXPECT_EQ(focused(form), u"Text1_0"_s);
        type(form, u"Text1_0"_s, u"not a date"_s);
        click(form, u"Command3_0"_s);  // leaves without a word about the date
        EXPECT_EQ(inSight(form), opening);
        EXPECT_TRUE(enabled(form, u"Command1"_s) && enabled(form, u"Command2"_s));
        click(form, u"Command2"_s);
        EXPECT_EQ(inSight(form), existing);
        EXPECT_EQ(text(form, u"Label4"_s),
                  u"読み込むﾃﾞｰﾀの基準日を選択し、ﾃﾞｰﾀ読込ボタンを押してください。"_s);
        EXPECT_EQ(focused(form), u"DataList1"_s);
        press(form, Qt::Key_Escape);
        EXPECT_EQ(inSight(form), opening);
        press(form, Qt::Key_C, Qt::AltModifier);
        EXPECT_FALSE(form.isVisible());
    });
}

TEST_F(Torikomi, RefusesWrongDatesAndKeepsTheFocus) {
    const struct {
        QString field, input, text;
    } refusals[] = {
        {u"Text1_0"_s, u""_s, u"未入力は許されません。･･･基準日"_s},
        {u"Text1_0"_s, u"2003/2/29"_s, u"日付の入力が正しくありません。･･･基準日"_s},
        {u"Text1_0"_s, u"H14.12.10"_s, u"基準日が重複しています。"_s},
        {u"Text1_0"_s, u"2003/7/1"_s, u"賞与設計に同じ基準日が存在します。"_s},
        {u"Text1_1"_s, u" "_s, u"未入力は許されません。･･･年齢算出年月日"_s},
        {u"Text1_1"_s, u"3/4/1"_s, u"日付の入力が正しくありません。･･･年齢算出年月日"_s},
        {u"Text1_2"_s, u""_s, u"未入力は許されません。･･･勤続年数算出年月日"_s},
        {u"Text1_2"_s, u"平成"_s, u"日付の入力が正しくありません。･･･勤続年数算出年月日"_s},
    };
    addDate(Side::Sekkei, u"2003/7/1"_s);
    const QByteArray before = dump(cn_);
    open([&](QDialog& form) {
        click(form, u"Command1"_s);
        for (const auto& refusal : refusals) {
            if (focused(form) != refusal.field) type(form, focused(form), u"2003/4/1"_s, Qt::Key_Tab);
            driver_.expectBox(refusal.text, u"入力エラー"_s, BoxAnswer::Ok, BoxIcon::Critical);
            type(form, refusal.field, refusal.input, Qt::Key_Tab);
            EXPECT_EQ(focused(form), refusal.field);
            driver_.expectBox(refusal.text, u"入力エラー"_s);  // nor does the command get past it
            press(form, Qt::Key_I, Qt::AltModifier);
            EXPECT_EQ(focused(form), refusal.field);
        }
    });
    expectUnchanged(before);
}

TEST_F(Torikomi, ImportsANewDateAndOpensTheRunMenuOnceNothingFails) {
    breakWrites(u"INSERT ON S実行総額配分"_s);
    openToRunMenu([&](QDialog& form) {
        fillNewDate(form, u"平成15年4月1日"_s, u"2003/03/31"_s, u"2003-4-1"_s);
        expectRollback();
        click(form, u"Command4_0"_s);
        EXPECT_EQ(dates(), QStringList{u"2002/12/10"_s});
        EXPECT_EQ(runRows(u"2003/4/1"_s), u"000"_s);
        EXPECT_EQ(text(form, u"Text1_0"_s) + text(form, u"Text1_1"_s), u"2003/4/12003/3/31"_s);  // not lost
        sql(u"UPDATE 履歴書テーブル SET 入社日 = NULL"_s);
        driver_.expectBox(u"Null の使い方が不正です。"_s, u""_s);
        click(form, u"Command4_0"_s);
        EXPECT_EQ(global_.panels.run, QString());
        sql(u"UPDATE 履歴書テーブル SET 入社日 = '2000-04-01'"_s);
        repairWrites();
        click(form, u"Command4_0"_s);
    });
    EXPECT_EQ(panelUnderMenu_, u"配分実行基準日: 2003年4月1日"_s);
    EXPECT_EQ((QStringList{global_.kijunbi, global_.nenrei_kijunbi, global_.kinzoku_kijunbi}),
              (QStringList{u"2003/4/1"_s, u"2003/3/31"_s, u"2003/4/1"_s}));
    EXPECT_EQ(dates(), (QStringList{u"2002/12/10"_s, u"2003/4/1"_s}));
    EXPECT_EQ(read(u"SELECT 年齢,勤続年数 FROM IdoChuusyutsuMax2"_s), (QStringList{u"22|3"_s, u"22|3"_s}));
    EXPECT_EQ(runRows(u"2003/4/1"_s), u"111"_s);
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
        kChosen, BoxAnswer::Ok, BoxIcon::Warning);
    open([&](QDialog& form) {
        fillNewDate(form, u"2000/3/31"_s, u"2000/3/31"_s, u"2000/3/31"_s);
        click(form, u"Command4_0"_s);
        EXPECT_TRUE(visible(form, u"Command6"_s));  // the opening state again
    });
    EXPECT_EQ(dates(), QStringList{u"2002/12/10"_s});
}

TEST_F(Torikomi, LoadsAnExistingDateWithoutTouchingTheRun) {
    addDate(Side::Jikkou, u"2001/7/10"_s);
    openToRunMenu([&](QDialog& form) {
        const auto load = [&](const QString& text, const QString& title, BoxAnswer answer) {
            driver_.expectBox(text, title, answer);
            press(form, Qt::Key_I, Qt::AltModifier);
        };
        const QString question = u"『2002/12/10』でデータを取り込みます。"_s, title = u"データ取込日の確認"_s;
        click(form, u"Command2"_s);
        EXPECT_EQ(rows(form, u"DataList1"_s), (QStringList{u"2001/7/10"_s, u"2002/12/10"_s}));
        load(u"基準日を指定してください。"_s, kChosen, BoxAnswer::Ok);
        EXPECT_EQ(focused(form), u"DataList1"_s);
        chooseText(form, u"DataList1"_s, u"2002/12/10"_s);
        load(question, title, BoxAnswer::No);
        EXPECT_EQ(global_.kijunbi, QString());
        load(question, title, BoxAnswer::Yes);
    });
    EXPECT_EQ(panelUnderMenu_, u"配分実行基準日: 2002年12月10日"_s);
    EXPECT_EQ(global_.nenrei_kijunbi + u' ' + global_.kinzoku_kijunbi, u"2003/3/31 2003/3/30"_s);
    EXPECT_FALSE(prep::snapshotIsEmpty(cn_));
    EXPECT_EQ(runRows(u"2002/12/10"_s), u"111"_s);  // 000001 stays outside: loading assigns nobody
}

TEST_F(Torikomi, DeletesADateAfterAsking) {
    addDate(Side::Jikkou, u"2001/7/10"_s);
    const QByteArray before = dump(cn_);
    open([&](QDialog& form) {
        click(form, u"Command2"_s);
        driver_.expectBox(u"基準日を指定してください。"_s, kChosen);
        click(form, u"Command7"_s);
        choose(form, u"DataList1"_s, 1);
        driver_.expectBox(kDeleteQuestion, kDelete, BoxAnswer::No);
        click(form, u"Command7"_s);
        expectUnchanged(before);
        breakWrites(u"DELETE ON S配分基準対応社員"_s);
        driver_.expectBox(kDeleteQuestion, kDelete, BoxAnswer::Yes);
        expectRollback();
        click(form, u"Command7"_s);
        expectUnchanged(before);
        repairWrites();
        driver_.expectBox(kDeleteQuestion, kDelete, BoxAnswer::Yes);
        click(form, u"Command7"_s);
        EXPECT_EQ(rows(form, u"DataList1"_s), QStringList{u"2001/7/10"_s});
        EXPECT_TRUE(visible(form, u"Command4_1"_s));
        click(form, u"Command3_1"_s);
        click(form, u"Command6"_s);
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(dates(), QStringList{u"2001/7/10"_s});
    EXPECT_EQ(runRows(u"2002/12/10"_s), u"000"_s);
}

TEST_F(Torikomi, WorksOnItsOwnDatesOnTheDesignSide) {
    global_.haibun_sekkei_mode = true;
    global_.haibun_jikkou_mode = false;
    open([&](QDialog& form) {
        fillNewDate(form, u"2002/12/10"_s, u"2003/4/1"_s, u"2003/4/1"_s);  // free here, taken on the run side
        click(form, u"Command4_0"_s);
    });
    EXPECT_EQ(driver_.screens(), QStringList{kScreen});  // no run menu
    EXPECT_EQ(dates(Side::Sekkei), QStringList{u"2002/12/10"_s});
    open([&](QDialog& form) {
        click(form, u"Command2"_s);
        choose(form, u"DataList1"_s, 0);
        driver_.expectBox(kDeleteQuestion, kDelete, BoxAnswer::Yes);
        click(form, u"Command7"_s);
    });
    EXPECT_EQ(dates(Side::Sekkei), QStringList());
    EXPECT_EQ(dates(), QStringList{u"2002/12/10"_s});
    EXPECT_EQ(runRows(u"2002/12/10"_s), u"111"_s);
}

}  // namespace
