#include <QLineEdit>
#include <QRegularExpression>

#include "person_screens.h"
#include "personnel/frmJinjiCheck.h"
#include "personnel/frmJinjiTaisyokusyori.h"
#include "personnel/frmRireki.h"

// The employee record with its list of people, and what is set beside it: retirement, the items entered.
namespace persontest {
namespace {

const QString kInputError = u"入力エラー"_s;
const QString kFieldError = u"入力のエラー"_s;

class Rireki : public PersonScreens {
  protected:
    Rireki() {
        folder_.makeSample();
        openCompany();
        global_.app_dir = folder_.programDir();
        global_.panels.folder = folder_.company();
        global_.rireki_zenin = true;
    }
    void rireki(const ScreenDriver::Step& step) { open<personnel::frmRireki>(step); }
    QStringList staff(const QString& where) {
        return read(u"SELECT 社員Code FROM 履歴書テーブル WHERE %1 ORDER BY 社員Code"_s.arg(where));
    }
    /// How many cells of all files hold the code.
    qsizetype cells(const QString& code) {
        global_.cn_main.reset();
        const QString all = QString::fromUtf8(folder_.fingerprint());
        global_.cn_main = folder_.open();
        return all.count(QRegularExpression(u"(?<![0-9.:-])%1(?![0-9.:-])"_s.arg(code)));
    }
};

TEST_F(Rireki, OpensOverMastersThatOthersBroke) {
    sql(u"INSERT INTO 最終学歴マスタ(Code,最終学歴) VALUES('博士','別の表から')"_s);
    sql(u"UPDATE 入力可・不可テーブル SET 採用区分 = 0"_s);
    sql(u"ALTER TABLE 採用区分マスタ RENAME TO 別名"_s);
    driver_.expectBox(u"データベースの処理に失敗しました。 (no such table: 採用区分マスタ)"_s, QString());
    rireki([&](QDialog& form) {
        EXPECT_FALSE(text(form, u"txtFields_1"_s).isEmpty());
        click(form, u"cmdEdit"_s);
        choose(form, u"DataCombo1_0"_s, 0);
        click(form, u"cmdUpdate"_s);
        form.close();
    });
}

TEST_F(Rireki, ChecksEachFieldAndOffersTheFirstTransferOfANewPerson) {
    addPlain(u"frmJinjiIdou2"_s);
    const QString long21 = u"ｱ"_s.repeated(21), long41 = u"ア"_s.repeated(20) + u"ｱ"_s;
    const struct {
        int field;
        QString typed, box, title;
    } refused[] = {
        {0, {}, u"未入力は許されません。･･･社員Code"_s, kInputError},
        {0, u"0"_s, u"1～999999を入力してください。･･･社員Code"_s, kInputError},
        {0, u"1000000"_s, u"1～999999を入力してください。･･･社員Code "_s, kInputError},
        {0, u"12"_s, u"社員Codeが重複しています。"_s, kInputError},
        {1, {}, u"未入力は許されません。 ･･･氏名"_s, kFieldError},
        {1, u"山田'"_s, u"項目中に ' を含むことはできません。 ･･･氏名"_s, kFieldError},
        {2, long21, u"項目の長さ(21)が制限(20)を越えています。 ･･･フリガナ"_s, kFieldError},
        {3, {}, u"未入力は許されません。･･･生年月日"_s, kInputError},
        {3, u"2001/2/29"_s, u"日付の入力が正しくありません。･･･生年月日"_s, kInputError},
        {3, u"2026/12/2"_s, u"現在の日付より古い日付を入力してください。･･･生年月日"_s, kInputError},
        {3, u"1899/12/31"_s, u"1900年1月1日以降の日付を入力してください。･･･生年月日"_s, kInputError},
        {4, {}, u"未入力は許されません。･･･入社日"_s, kInputError},
        {4, u"去年"_s, u"日付の入力が正しくありません。･･･入社日"_s, kInputError},
        {4, u"2100/1/1"_s, u"2099年12月31日以前の日付を入力してください。･･･入社日"_s, kInputError},
        {5, u"123-45678"_s, u"項目の長さ(9)が制限(8)を越えています。 ･･･郵便番号"_s, kFieldError},
        {6, long41, u"項目の長さ(41)が制限(40)を越えています。 ･･･住所１"_s, kFieldError},
        {7, u"\""_s, u"項目中に \" を含むことはできません。 ･･･住所２"_s, kFieldError},
        {8, u"0"_s.repeated(14), u"項目の長さ(14)が制限(13)を越えています。 ･･･tel"_s, kFieldError},
        {9, u"0"_s.repeated(14), u"項目の長さ(14)が制限(13)を越えています。 ･･･fax"_s, kFieldError},
    };
    const QStringList good = {
        u"7777"_s, u"新人　花子"_s, u"ｼﾝｼﾞﾝ"_s, u"2000/12/2"_s, u"H13.4.1"_s, u"100-0001"_s, {}, {}, {}, {}};
    sql(u"UPDATE 会社テーブル SET 自由マスタ1 = '組合', 自由マスタ2 = '未設定'"_s);
    sql(u"UPDATE 入力可・不可テーブル SET 自由1 = -1, 自由2 = -1, 住宅区分 = null, 出身地 = 0, 婚姻区分 = 0, 採用区分 = 0, 自由3 = 0, 自由4 = 0, 自由5 = 0"_s);
    rireki([&](QDialog& form) {
        click(form, u"cmdAdd"_s);
        for (const auto& each : refused) {
            driver_.expectBox(each.box, each.title);
            type(form, u"txtFields_%1"_s.arg(each.field), each.typed, Qt::Key_Tab);
            EXPECT_EQ(focused(form), u"txtFields_%1"_s.arg(each.field)) << each.box.toStdString();
            type(form, u"txtFields_%1"_s.arg(each.field), good[each.field]);
        }
        EXPECT_EQ(text(form, u"txtFields_0"_s), u"007777"_s);
        driver_.expectBox(u"生年月日より古い日付はありえません。･･･入社日"_s, kInputError);
        type(form, u"txtFields_4"_s, u"2000/12/1"_s, Qt::Key_Tab);
        type(form, u"txtFields_4"_s, good[4], Qt::Key_Tab);
        EXPECT_EQ(text(form, u"Label5"_s) + u'/' + text(form, u"Label6"_s), u"25/25"_s);
        for (const auto& [combo, box] : {std::pair{0, u"最終学歴"_s}, {2, u"住宅区分"_s}, {4, u"組合"_s}}) {
            driver_.expectBox(box + u"を選択してください。"_s, box + u"の選択"_s);
            click(form, u"cmdUpdate"_s);
            choose(form, u"DataCombo1_%1"_s.arg(combo), 0);
        }
        click(form, u"Option3_0"_s);
        EXPECT_FALSE(enabled(form, u"Option2_1"_s));
        driver_.expectBox(
            u"007777 新人　花子 "
            u"を追加しました。\n異動履歴がないと、基準日の一覧や賞与の計算に出てきません。\n\n"
            "続けて最初の異動を入力しますか？"_s,
            u"異動履歴の入力"_s, BoxAnswer::Yes);
        driver_.onScreen(u"frmJinjiIdou2"_s, [&](QDialog& idou) {
            EXPECT_EQ(global_.syain_code + global_.syain_mei + global_.syain_nyuusyabi,
                      u"007777新人　花子2001/4/1"_s);
            idou.reject();
        });
        click(form, u"cmdUpdate"_s);
        EXPECT_EQ(text(form, u"txtFields_0"_s), u"000001"_s);  // back where the user was
    });
    EXPECT_EQ(
        read(u"SELECT 氏名,生年月日,入社日,郵便番号,住所1,性別,婚姻区分,世帯主区分,退職フラグ,自由2,出身地"
             " FROM 履歴書テーブル WHERE 社員Code = '007777'"_s),
        QStringList(u"新人　花子|2000/12/2|2001/4/1|100-0001|-|3|1|1|False|-|-"_s));
}

TEST_F(Rireki, AsksBeforeThePersonJoinsBehindTheOwnHistory) {
    sql(u"DELETE FROM 異動テーブル WHERE 社員Code = '000001'"_s);
    sql(u"INSERT INTO 異動テーブル(社員Code, 異動日) VALUES('000001', '2010-10-01'), ('000001', '1999-04-01')"_s);
    sql(u"UPDATE 履歴書テーブル SET 入社日 = '1999-04-01', 生年月日 = '1970-01-01' WHERE 社員Code = '000001'"_s);
    rireki([&](QDialog& form) {
        const std::pair<QString, BoxAnswer> typed[] = {
            {u"1999/4/2"_s, BoxAnswer::No}, {u"2011/1/1"_s, BoxAnswer::Yes}, {u"1999/3/31"_s, BoxAnswer::Ok}};
        click(form, u"cmdEdit"_s);
        for (int earlier = 1; const auto& [joined, answer] : typed) {
            type(form, u"txtFields_4"_s, joined);
            if (answer != BoxAnswer::Ok)
                driver_.expectBox(
                    u"入社日（%1）より前の異動が %2 件あります。最も古い異動日は 1999/4/1 です。\n"
                    "このまま更新しても、異動履歴は変わりません。"_s.arg(joined)
                        .arg(earlier++),
                    u"入社日の確認"_s, answer);
            click(form, u"cmdUpdate"_s);
            EXPECT_EQ(staff(u"入社日 = '2011-01-01' AND 社員Code = '000001'"_s).size(),
                      answer == BoxAnswer::Yes);
            if (answer == BoxAnswer::Yes) click(form, u"cmdEdit"_s);
        }
    });
}

TEST_F(Rireki, ShowsTheStaffTheSelectionOrOnePerson) {
    sql(u"UPDATE 履歴書テーブル SET 退職フラグ = -1, 退職日 = '2026-03-31' WHERE 社員Code = '000002'"_s);
    sql(u"DELETE FROM 社員絞込"_s);
    const QStringList current = staff(u"退職フラグ = 0"_s);
    for (const QString& code : {current[7], u"000002"_s, current[3]})
        sql(u"INSERT INTO 社員絞込(社員Code) VALUES(?)"_s, {code});
    const struct {
        bool all, selected;
        QStringList people;
    } modes[] = {
        {true, true, current}, {false, true, {current[3], current[7]}}, {false, false, {u"000002"_s}}};
    for (const auto& mode : modes) {
        global_.rireki_zenin = mode.all;
        global_.rireki_shinki = mode.selected;
        global_.syain_code = u"000002"_s;
        rireki([&](QDialog& form) {
            EXPECT_EQ(rows(form, u"DataGrid1"_s), mode.people);
            EXPECT_EQ(enabled(form, u"cmdAdd"_s), mode.all);
            EXPECT_FALSE(enabled(form, u"Command2"_s));  // its screen is not there
            if (mode.people.size() > 1) return;
            click(form, u"cmdEdit"_s);
            type(form, u"txtFields_0"_s, u"888888"_s, Qt::Key_Tab);
            click(form, u"cmdUpdate"_s);
            EXPECT_EQ(rows(form, u"DataGrid1"_s), QStringList(u"888888"_s));
        });
        EXPECT_FALSE(global_.rireki_shinki);
    }
    EXPECT_EQ(global_.syain_code, u"888888"_s);
    sql(u"DELETE FROM 履歴書テーブル"_s);
    global_.rireki_zenin = true;
    rireki([&](QDialog& form) {
        for (const QString& button : {u"cmdEdit"_s, u"cmdDelete"_s, u"cmdNext"_s, u"Command3"_s})
            EXPECT_FALSE(enabled(form, button));
        click(form, u"cmdAdd"_s);
        click(form, u"cmdUpdate"_s);
        press(form, Qt::Key_Tab);  // nobody yet: the code may be left empty
        EXPECT_EQ(focused(form), u"txtFields_1"_s);
        click(form, u"cmdCancel"_s);
        EXPECT_TRUE(enabled(form, u"cmdAdd"_s));
    });
}

TEST_F(Rireki, FindsPeopleAsOneTypes) {
    sql(u"UPDATE 履歴書テーブル SET 氏名 = '髙橋　ダイ', フリガナ = 'ﾀｶﾊｼ ﾀﾞｲ' WHERE 社員Code = '000007'"_s);
    sql(u"UPDATE 履歴書テーブル SET 氏名 = 'Ｋｅｎ　髙田', フリガナ = 'たかだ　けん' WHERE 社員Code = '000020'"_s);
    rireki([&](QDialog& form) {
        const auto found = [&](const QString& typed) {
            type(form, u"Text1"_s, typed);
            return rows(form, u"DataGrid1"_s).join(u' ');
        };
        for (const QString& typed :
             {u"たかはしだ"_s, u"タカハシダイ"_s, u"髙橋ダ"_s, u"000007"_s, u"０７ 髙"_s})
            EXPECT_EQ(found(typed), u"000007"_s) << typed.toStdString();
        EXPECT_EQ(found(u"ken タ"_s), u"000020"_s);
        EXPECT_EQ(text(form, u"txtFields_0"_s), u"000020"_s);
        EXPECT_EQ(found(u"髙"_s), u"000007 000020"_s);
        press(form, Qt::Key_Home);  // the field's own
        EXPECT_EQ(text(form, u"txtFields_0"_s), u"000020"_s);
        click(form, u"cmdFirst"_s);
        press(form, Qt::Key_Down);
        press(form, Qt::Key_Down);
        EXPECT_EQ(text(form, u"lblStatus"_s),
                  u"Record: %1"_s.arg(staff(u"退職フラグ = 0"_s).indexOf(u"000020"_s) + 1));
        const QString shown = text(form, u"txtFields_0"_s);
        EXPECT_EQ(found(u"髙いない"_s), QString());
        EXPECT_EQ(text(form, u"txtFields_0"_s), shown);
        const QStringList commands{u"cmdEdit"_s, u"cmdDelete"_s, u"cmdNext"_s};
        for (const QString& command : commands) EXPECT_FALSE(enabled(form, command)) << command.toStdString();
        EXPECT_TRUE(enabled(form, u"cmdAdd"_s));
        press(form, Qt::Key_Escape);
        for (const QString& command : commands) EXPECT_TRUE(enabled(form, command)) << command.toStdString();
        EXPECT_EQ(rows(form, u"DataGrid1"_s), staff(u"退職フラグ = 0"_s));
        EXPECT_EQ(text(form, u"DataGrid1"_s), shown);
        choose(form, u"DataGrid1"_s, 1);
        press(form, Qt::Key_Return);
        EXPECT_TRUE(visible(form, u"cmdUpdate"_s));
        click(form, u"cmdCancel"_s);
    });
}

TEST_F(Rireki, ANewCodeReachesEveryTableAndARemovalLeavesNone) {
    const qsizetype before = cells(u"000012"_s);
    const QString whom = read(u"SELECT 氏名 FROM 履歴書テーブル WHERE 社員Code = '000012'"_s).value(0);
    ASSERT_GT(before, 20);
    rireki([&](QDialog& form) {
        type(form, u"Text1"_s, u"000012"_s);
        sql(u"CREATE TEMP TRIGGER fails BEFORE UPDATE ON 家族テーブル BEGIN SELECT RAISE(ABORT,'x'); END"_s);
        click(form, u"cmdEdit"_s);
        driver_.expectBox(u"社員Codeが重複しています。"_s, kInputError);
        type(form, u"txtFields_0"_s, u"13"_s, Qt::Key_Tab);
        type(form, u"txtFields_0"_s, u"000012"_s, Qt::Key_Tab);
        type(form, u"txtFields_0"_s, u"987654"_s, Qt::Key_Tab);
        driver_.expectBox(u"処理中にエラーが発生しました。処理を取り消します。"_s, u"取消"_s);
        driver_.expectBox(
            u"次のファイルは、社員Code「000012」（%1）が新しいコード「987654」に変更されたままです。\n\n"
            "・見本商事賃金db.mdb\n\nもう一度更新すると、すべてのファイルが新しいコードになります。"
            "更新しないときは、次に会社を指定したときに元のコードへ戻せます。"_s.arg(whom),
            u"取消"_s);
        click(form, u"cmdUpdate"_s);
        EXPECT_EQ(text(form, u"txtFields_0"_s), u"987654"_s);
        EXPECT_EQ(read(u"SELECT count(*) FROM 異動テーブル WHERE 社員Code = '987654'"_s),
                  QStringList(u"0"_s));
        sql(u"DROP TRIGGER fails"_s);
        click(form, u"cmdUpdate"_s);
        type(form, u"Text1"_s, u"987654"_s);
        EXPECT_EQ(rows(form, u"DataGrid1"_s), QStringList(u"987654"_s));
    });
    EXPECT_EQ(cells(u"000012"_s), 0);
    EXPECT_EQ(cells(u"987654"_s), before);
    rireki([&](QDialog& form) {
        type(form, u"Text1"_s, u"987654"_s);
        const QString name = text(form, u"txtFields_1"_s);
        QStringList lines;
        for (const auto& [label, table] : {std::pair{u"異動履歴"_s, u"異動テーブル"_s},
                                           {u"家族情報"_s, u"家族テーブル"_s},
                                           {u"資格・免許保有状況"_s, u"資格・免許テーブル"_s},
                                           {u"評価実績"_s, u"Ｈ評価実績"_s},
                                           {u"個人別計算"_s, u"S実行個人別計算"_s},
                                           {u"個人別計算の決定"_s, u"S実行個人別計算決定"_s},
                                           {u"総額配分"_s, u"S実行総額配分"_s},
                                           {u"総額配分の決定"_s, u"S実行総額配分決定"_s},
                                           {u"配分基準の対応"_s, u"S配分基準対応社員"_s}})
            lines << u"・%1　%2 件"_s.arg(
                label, read(u"SELECT count(*) FROM %1 WHERE 社員Code = '987654'"_s.arg(table)).first());
        for (const BoxAnswer answer : {BoxAnswer::No, BoxAnswer::Yes}) {
            EXPECT_EQ(staff(u"社員Code = '987654'"_s).size(), 1);
            driver_.expectBox(u" 987654 %1 を削除しますか？"_s.arg(name), u"削除の確認"_s, BoxAnswer::Yes);
            driver_.expectBox(
                u"987654 %1 には次の記録があり、一緒に削除されます。元には戻せません。\n\n%2\n\n"
                "退職した人は、削除せずに退職処理をしてください。\n本当に削除しますか？"_s.arg(
                    name, lines.join(u'\n')),
                u"削除の確認"_s, answer);
            click(form, u"cmdDelete"_s);
        }
        EXPECT_EQ(rows(form, u"DataGrid1"_s), QStringList());
    });
    EXPECT_EQ(cells(u"987654"_s), 0);
    // Who is gone meanwhile is not written over somebody else.
    const QString others =
        u"SELECT 社員Code, 氏名 FROM 履歴書テーブル WHERE 社員Code <> '000013' ORDER BY 1"_s;
    const QStringList untouched = read(others);
    rireki([&](QDialog& form) {
        type(form, u"Text1"_s, u"000013"_s);
        click(form, u"cmdEdit"_s);
        type(form, u"txtFields_1"_s, u"別人"_s, Qt::Key_Tab);
        sql(u"DELETE FROM 履歴書テーブル WHERE 社員Code = '000013'"_s);
        driver_.expectBox(u"処理中にエラーが発生しました。処理を取り消します。"_s, u"取消"_s);
        click(form, u"cmdUpdate"_s);
        driver_.expectBox(u"編集中のレコードが見つからないため、更新できません。"_s, {});
        click(form, u"cmdUpdate"_s);
        EXPECT_EQ(text(form, u"txtFields_1"_s), u"別人"_s);
        driver_.expectBox(u"入力した内容はまだ更新されていません。"_s, u"入力の確認"_s, BoxAnswer::Yes);
        click(form, u"cmdCancel"_s);
    });
    EXPECT_EQ(read(others), untouched);
}

TEST_F(Rireki, WhoRetiresLeavesTheStaffOnceItIsConfirmed) {
    sql(u"UPDATE 履歴書テーブル SET 入社日 = '1990-04-01', 氏名 = '見本　一' WHERE 社員Code = '000003'"_s);
    global_.syain_code = u"000003"_s;
    const QString question = u"見本　一 の退職日を2026/3/31で登録します。\nよろしいですか。"_s;
    const auto retire = [&](QDialog& form) {
        for (const QString& typed : {u""_s, u"3月末"_s}) {
            driver_.expectBox(u"日付の入力が正しくありません。"_s, kInputError);
            type(form, u"Text1"_s, typed, Qt::Key_Tab);
        }
        driver_.expectBox(u"入社日より古い日付はありえません。･･･退職日"_s, kInputError);
        type(form, u"Text1"_s, u"1990/3/31"_s, Qt::Key_Tab);
        type(form, u"Text1"_s, u"R8.3.31"_s);
        driver_.expectBox(question, u"更新の確認"_s, BoxAnswer::No);
        click(form, u"Command1"_s);
        EXPECT_EQ(staff(u"退職フラグ = 0 AND 社員Code = '000003'"_s).size(), 1);
        driver_.expectBox(question, u"更新の確認"_s, BoxAnswer::Yes);
        driver_.expectBox(u"処理が終了しました。"_s, u"処理終了確認"_s);
        click(form, u"Command1"_s);
        EXPECT_FALSE(form.isVisible());
    };
    open<personnel::frmJinjiTaisyokusyori>(retire);
    EXPECT_EQ(staff(u"退職フラグ = -1 AND 退職日 = '2026-03-31' AND 社員Code = '000003'"_s).size(), 1);
    driver_.expectBox(u"見本　一 は退職処理済です。"_s, u"退職処理済データ"_s, BoxAnswer::Ok,
                      forms::BoxIcon::Information);
    open<personnel::frmJinjiTaisyokusyori>(
        [&](QDialog& form) { EXPECT_EQ(text(form, u"Text1"_s), u"2026/3/31"_s); });
}

TEST_F(Rireki, AnItemWithoutACheckMarkIsNotKept) {
    sql(u"UPDATE 入力可・不可テーブル SET 自由3 = -1, 住所2 = null, 取得年月日 = 0"_s);
    sql(u"UPDATE 会社テーブル SET 自由マスタ2 = 'R&D区分', 自由マスタ3 = '未設定'"_s);
    const QString flags = u"SELECT 自由3,住所2,取得年月日 FROM 入力可・不可テーブル"_s;
    for (const BoxAnswer answer : {BoxAnswer::No, BoxAnswer::Yes})
        open<personnel::frmJinjiCheck>([&](QDialog& form) {
            EXPECT_FALSE(enabled(form, u"Check1_12"_s));
            EXPECT_EQ(text(form, u"Check1_11"_s) + text(form, u"Check1_5"_s), u"R&&D区分ｔｅｌ"_s);
            EXPECT_EQ(read(flags), QStringList(u"False|-|False"_s));
            click(form, u"Check1_4"_s);
            click(form, u"Check1_25"_s);
            driver_.expectBox(u"内容を変更します。\nよろしいですか。"_s, u"更新の確認"_s, answer);
            click(form, u"Command1"_s);
            EXPECT_EQ(form.isVisible(), answer == BoxAnswer::No);
            if (answer == BoxAnswer::No)
                driver_.expectBox(u"入力した内容はまだ更新されていません。"_s, u"入力の確認"_s,
                                  BoxAnswer::Yes);
        });
    EXPECT_EQ(read(flags), QStringList(u"False|False|True"_s));
    rireki([&](QDialog& form) {
        click(form, u"cmdEdit"_s);
        EXPECT_EQ(text(form, u"lblLabels_15"_s), u"R&&D区分:"_s);
        EXPECT_EQ(control(form, u"DataCombo1_5"_s).accessibleName(), u"R&D区分"_s);
        EXPECT_TRUE(control<QLineEdit>(form, u"txtFields_7"_s).isReadOnly());
        EXPECT_FALSE(control<QLineEdit>(form, u"txtFields_6"_s).isReadOnly());
        EXPECT_TRUE(control<widgets::CodeCombo>(form, u"DataCombo1_6"_s).isLocked());
        click(form, u"cmdCancel"_s);
    });
}

}  // namespace
}  // namespace persontest
