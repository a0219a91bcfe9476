#include "prep/frmSDatatorikomi.h"

#include "company/backup.h"
#include "prep/run_screens.h"
#include "prep/snapshot.h"

namespace {

using namespace preptest;
using prep::Side;

const QString kChosen = u"基準日指定の確認"_s;
const QString kDelete = u"削除の確認"_s;
const QString kDeleteQuestion = u" 2002/12/10 を削除しますか？"_s;
const QString kOpening = u"Command1 Command2 Command6 Command5"_s;
const QString kNewDate = u"Command4_0 Command3_0 Command5"_s;
const QString kExisting = u"Command4_1 Command3_1 Command7 Command5"_s;

const QString kGoes =
    u"2002/12/10（2002年冬季賞与） には、1人分の割り当てと、支給額 合計 1,234,567円があります。\n\n"
    "削除すると、この基準日の基礎額・係数・評価の入力、予算、計算の結果もすべて消え、\n"
    "賞与支給額の一覧表、入力状況のチェック、年間支給額の一覧表に出なくなります。\n"
    "元には戻せません。"_s;

/// Two people who can be imported at 2003/4/1, one of them with a row in the run of 2002/12/10.
class Torikomi : public RunScreens {
  protected:
    Torikomi() : RunScreens(Content::Empty), opener_(u"opener"_s, u""_s, nullptr) {
        addPlain({u"frmMenuSJikkou"_s});
        sql(u"INSERT INTO 履歴書テーブル(社員Code,生年月日,入社日,退職フラグ) VALUES"
            "('000001','1980-04-01','2000-04-01',0),('000002','1980-04-01','2000-04-01',0)"_s);
        sql(u"INSERT INTO 異動テーブル(社員Code,異動日) VALUES('000001','2000-04-01'),('000002','2000-04-01')"_s);
        sql(u"INSERT INTO S配分基準対応社員(社員Code,配分区分,配分基準,基準日,個人別計算,総額配分) "
            "VALUES('000002','01','02','2002-12-10',12000000000,345670000)"_s);
        addDate(Side::Jikkou, u"2002/12/10"_s);
        sql(u"UPDATE Sデータ取込年月日運用 SET 賞与の内容 = '2002年冬季賞与'"_s);
    }
    void addDate(Side side, const QString& date) {
        const QString statement =
            u"INSERT INTO %1(基準日,年齢算出年月日,勤続年数算出年月日) VALUES(?,'2003-03-31','2003-03-30')"_s;
        sql(statement.arg(prep::dateTable(side)), {d(date)});
    }
    QString dates(Side side = Side::Jikkou) {
        return read(u"SELECT 基準日 FROM %1 ORDER BY 基準日"_s.arg(prep::dateTable(side))).join(u' ');
    }
    qsizetype assigned(const QString& date) {
        return read(u"SELECT ID FROM S配分基準対応社員 WHERE 基準日 = ?"_s, {d(date)}).size();
    }
    /// Opens the screen as a menu does. The run menu follows where its panel is given.
    void open(const ScreenDriver::Step& step, const QString& menuPanel = {}) {
        expectScreen(u"frmSDatatorikomi"_s, step);
        const auto look = [&](QDialog&) { EXPECT_EQ(global_.panels.run, menuPanel); };
        if (!menuPanel.isEmpty()) expectScreen(u"frmMenuSJikkou"_s, look);
        opener_.showChild(new prep::frmSDatatorikomi(house_, &opener_));
    }
    static void fillNewDate(QDialog& form, const QStringList& dates) {
        click(form, u"Command1"_s);
        for (int i = 0; i < 3; ++i) type(form, u"Text1_%1"_s.arg(i), dates[i], Qt::Key_Return);
    }

    widgets::Form opener_;
};

TEST_F(Torikomi, HasThreeStatesAndCancelLeadsBack) {
    open([](QDialog& form) {
        EXPECT_EQ(offered(form), kOpening);
        EXPECT_FALSE(visible(form, u"Label4"_s));
        click(form, u"Command1"_s);
        EXPECT_EQ(offered(form), kNewDate);
        EXPECT_EQ(focused(form), u"Text1_0"_s);
        type(form, u"Text1_0"_s, u"not a date"_s);
        click(form, u"Command3_0"_s);  // leaves without a word about the date
        EXPECT_EQ(offered(form), kOpening);
        click(form, u"Command2"_s);
        EXPECT_EQ(offered(form), kExisting);
        EXPECT_EQ(focused(form), u"DataList1"_s);
        press(form, Qt::Key_Escape);
        EXPECT_EQ(offered(form), kOpening);
        press(form, Qt::Key_C, Qt::AltModifier);
        EXPECT_FALSE(form.isVisible());
    });
}

TEST_F(Torikomi, RefusesWrongDatesAndKeepsTheFocus) {
    addDate(Side::Sekkei, u"2003/7/1"_s);
    const QByteArray before = dump(cn_);
    open([&](QDialog& form) {
        const auto refuses = [&](const QString& field, const QString& input, const QString& box) {
            if (focused(form) != field) type(form, focused(form), u"2003/4/1"_s, Qt::Key_Tab);
            driver_.expectBox(box, u"入力エラー"_s, BoxAnswer::Ok, BoxIcon::Critical);
            type(form, field, input, Qt::Key_Tab);
            EXPECT_EQ(focused(form), field);
            driver_.expectBox(box, u"入力エラー"_s);  // nor does the command get past it
            press(form, Qt::Key_I, Qt::AltModifier);
            EXPECT_EQ(focused(form), field);
        };
        click(form, u"Command1"_s);
        refuses(u"Text1_0"_s, u""_s, u"未入力は許されません。･･･基準日"_s);
        refuses(u"Text1_0"_s, u"2003/2/29"_s, u"日付の入力が正しくありません。･･･基準日"_s);
        refuses(u"Text1_0"_s, u"H14.12.10"_s, u"基準日が重複しています。"_s);
        refuses(u"Text1_0"_s, u"2003/7/1"_s, u"賞与設計に同じ基準日が存在します。"_s);
        refuses(u"Text1_1"_s, u" "_s, u"未入力は許されません。･･･年齢算出年月日"_s);
        refuses(u"Text1_1"_s, u"3/4/1"_s, u"日付の入力が正しくありません。･･･年齢算出年月日"_s);
        refuses(u"Text1_2"_s, u""_s, u"未入力は許されません。･･･勤続年数算出年月日"_s);
        refuses(u"Text1_2"_s, u"平成"_s, u"日付の入力が正しくありません。･･･勤続年数算出年月日"_s);
    });
    expectUnchanged(before);
}

TEST_F(Torikomi, ImportsANewDateAndOpensTheRunMenuOnceNothingFails) {
    breakWrites(u"INSERT ON S配分基準対応社員"_s);
    const auto import = [&](QDialog& form) {
        fillNewDate(form, {u"平成15年4月1日"_s, u"2003/03/31"_s, u"2003-4-1"_s});
        expectRollback();
        click(form, u"Command4_0"_s);
        EXPECT_EQ(dates(), u"2002/12/10"_s);
        EXPECT_EQ(text(form, u"Text1_0"_s) + text(form, u"Text1_1"_s), u"2003/4/12003/3/31"_s);  // not lost
        sql(u"UPDATE 履歴書テーブル SET 入社日 = NULL"_s);
        clickTold(form, u"Command4_0"_s, u"Null の使い方が不正です。"_s, u""_s);
        EXPECT_EQ(global_.panels.run, QString());
        sql(u"UPDATE 履歴書テーブル SET 入社日 = '2000-04-01'"_s);
        repairWrites();
        click(form, u"Command4_0"_s);
    };
    open(import, u"配分実行基準日: 2003年4月1日"_s);
    EXPECT_EQ((QStringList{global_.kijunbi, global_.nenrei_kijunbi, global_.kinzoku_kijunbi}),
              (QStringList{u"2003/4/1"_s, u"2003/3/31"_s, u"2003/4/1"_s}));
    EXPECT_EQ(dates(), u"2002/12/10 2003/4/1"_s);
    EXPECT_EQ(read(u"SELECT 年齢,勤続年数 FROM IdoChuusyutsuMax2"_s), (QStringList{u"22|3"_s, u"22|3"_s}));
    EXPECT_EQ(assigned(u"2003/4/1"_s), 1);
}

TEST_F(Torikomi, SaysWhatToDoWhenNobodyCanBeImported) {
    open([&](QDialog& form) {
        fillNewDate(form, QStringList(3, u"2000/3/31"_s));
        driver_.answerFreely([](const forms::BoxRequest& box) {
            EXPECT_TRUE(box.text.startsWith(u"この基準日で取り込むことができる人事データはありません。\n"_s));
            return BoxAnswer::Ok;
        });
        click(form, u"Command4_0"_s);
        EXPECT_EQ(offered(form), kOpening);
    });
    EXPECT_EQ(dates(), u"2002/12/10"_s);
}

TEST_F(Torikomi, DeletesOrLoadsAnExistingDateAfterAsking) {
    const QString question = u"『2001/7/10』でデータを取り込みます。"_s, title = u"データ取込日の確認"_s;
    addDate(Side::Jikkou, u"2001/7/10"_s);
    const QByteArray before = dump(cn_);
    const auto deleteAndLoad = [&](QDialog& form) {
        click(form, u"Command2"_s);
        EXPECT_EQ(rows(form, u"DataList1"_s), (QStringList{u"2001/7/10"_s, u"2002/12/10"_s}));
        for (const QString& button : {u"Command4_1"_s, u"Command7"_s}) {
            clickTold(form, button, u"基準日を指定してください。"_s, kChosen);
            EXPECT_EQ(focused(form), u"DataList1"_s);
        }
        choose(form, u"DataList1"_s, 0);
        clickTold(form, u"Command4_1"_s, question, title, BoxAnswer::No);
        EXPECT_EQ(global_.kijunbi, QString());

        choose(form, u"DataList1"_s, 1);
        clickTold(form, u"Command7"_s, kDeleteQuestion, kDelete, BoxAnswer::No);
        driver_.expectBox(kDeleteQuestion, kDelete, BoxAnswer::Yes);
        clickTold(form, u"Command7"_s, kGoes, kDelete, BoxAnswer::No);
        expectUnchanged(before);
        // Without room for the copy that comes first the user may call it off.
        QFile obstacle(global_.places().backups());
        ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));
        driver_.expectBox(kDeleteQuestion, kDelete, BoxAnswer::Yes);
        driver_.expectBox(kGoes, kDelete, BoxAnswer::Yes);
        driver_.expectBox(
            u"この処理の前の自動バックアップを作成できません。\nバックアップ先のフォルダを作成できません。\n"_s +
                QDir::toNativeSeparators(company::copiesFolder(global_.places(), folder_.company())) +
                u"\n\nバックアップなしで続けますか？"_s,
            u"自動バックアップ"_s, BoxAnswer::No, BoxIcon::Warning);
        clickTold(form, u"Command7"_s, u"処理を中止しました。"_s, QString());
        expectUnchanged(before);
        ASSERT_TRUE(obstacle.remove());
        breakWrites(u"DELETE ON S配分基準対応社員"_s);
        driver_.expectBox(kDeleteQuestion, kDelete, BoxAnswer::Yes);
        driver_.expectBox(kGoes, kDelete, BoxAnswer::Yes);
        expectRollback();
        click(form, u"Command7"_s);
        expectUnchanged(before);
        repairWrites();
        driver_.expectBox(kDeleteQuestion, kDelete, BoxAnswer::Yes);
        clickTold(form, u"Command7"_s, kGoes, kDelete, BoxAnswer::Yes);
        EXPECT_EQ(rows(form, u"DataList1"_s), QStringList{u"2001/7/10"_s});
        EXPECT_EQ(offered(form), kExisting);

        choose(form, u"DataList1"_s, 0);
        driver_.expectBox(question, title, BoxAnswer::Yes);
        press(form, Qt::Key_I, Qt::AltModifier);
    };
    open(deleteAndLoad, u"配分実行基準日: 2001年7月10日"_s);
    EXPECT_EQ(dates(), u"2001/7/10"_s);
    const auto copies = company::backupsIn(company::copiesFolder(global_.places(), folder_.company()));
    ASSERT_EQ(copies.size(), 1U) << "one for the same step within ten minutes";
    EXPECT_EQ(copies[0].reason, u"基準日の削除の前"_s);
    EXPECT_EQ(global_.nenrei_kijunbi + u' ' + global_.kinzoku_kijunbi, u"2003/3/31 2003/3/30"_s);
    EXPECT_FALSE(prep::snapshotIsEmpty(cn_));
    EXPECT_EQ(assigned(u"2002/12/10"_s) + assigned(u"2001/7/10"_s), 0);  // loading assigns nobody
}

TEST_F(Torikomi, KeepsTheNameOfABonusBesideItsDate) {
    addDate(Side::Jikkou, u"2001/7/10"_s);
    const auto names = [this] {
        return read(u"SELECT 賞与の内容 FROM Sデータ取込年月日運用 ORDER BY 基準日"_s).join(u'/');
    };
    const QString tooLong(26, u'賞');
    open(
        [&](QDialog& form) {
            click(form, u"Command2"_s);
            EXPECT_FALSE(enabled(form, u"Text2_1"_s));
            choose(form, u"DataList1"_s, 1);
            EXPECT_EQ(text(form, u"Text2_1"_s), u"2002年冬季賞与"_s);
            type(form, u"Text2_1"_s, u"取り消す"_s);
            click(form, u"Command3_1"_s);  // given up
            EXPECT_EQ(names(), u"-/2002年冬季賞与"_s);
            click(form, u"Command2"_s);
            choose(form, u"DataList1"_s, 0);
            driver_.answerFreely([](const forms::BoxRequest& box) {
                EXPECT_TRUE(box.text.endsWith(u"･･･賞与の内容"_s)) << box.text.toStdString();
                return BoxAnswer::Ok;
            });
            type(form, u"Text2_1"_s, tooLong, Qt::Key_Return);
            EXPECT_EQ(focused(form), u"Text2_1"_s);
            type(form, u"Text2_1"_s, u"2001年夏季賞与"_s);
            choose(form, u"DataList1"_s, 1);  // the field is left: it stands under its own date
            EXPECT_EQ(text(form, u"Text2_1"_s), u"2002年冬季賞与"_s);
            EXPECT_EQ(names(), u"2001年夏季賞与/2002年冬季賞与"_s);
            click(form, u"Command3_1"_s);
            fillNewDate(form, {u"2003/4/1"_s, u"2003/4/1"_s, u"2003/4/1"_s});
            type(form, u"Text2_0"_s, tooLong, Qt::Key_Tab);
            type(form, u"Text2_0"_s, u"2003年決算賞与"_s, Qt::Key_Return);
            click(form, u"Command4_0"_s);
        },
        u"配分実行基準日: 2003年4月1日"_s);
    EXPECT_EQ(names(), u"2001年夏季賞与/2002年冬季賞与/2003年決算賞与"_s);
}

TEST_F(Torikomi, WorksOnItsOwnDatesOnTheDesignSide) {
    global_.haibun_sekkei_mode = true;
    global_.haibun_jikkou_mode = false;
    open([&](QDialog& form) {  // the date is taken on the run side, but free here; no run menu follows
        fillNewDate(form, {u"2002/12/10"_s, u"2003/4/1"_s, u"2003/4/1"_s});
        click(form, u"Command4_0"_s);
    });
    EXPECT_EQ(dates(Side::Sekkei), u"2002/12/10"_s);
    open([&](QDialog& form) {
        click(form, u"Command2"_s);
        choose(form, u"DataList1"_s, 0);
        clickTold(form, u"Command7"_s, kDeleteQuestion, kDelete, BoxAnswer::Yes);
    });
    EXPECT_EQ(dates(Side::Sekkei), QString());
    EXPECT_EQ(dates(), u"2002/12/10"_s);
    EXPECT_EQ(assigned(u"2002/12/10"_s), 1);
}

}  // namespace
