#include "personnel/frmJinjiTorikomi.h"

#include <QFile>

#include "domain/code_page.h"
#include "person_screens.h"
#include "personnel/code_change.h"

namespace {

using namespace persontest;
using namespace personnel;

const QString kUtf8Mark = u"\uFEFF"_s;

class Import : public PersonScreens {
  protected:
    Import() {
        folder_.makeSample();
        openCompany();
        global_.app_dir = folder_.programDir();
        global_.panels.folder = folder_.company();
        sql(u"UPDATE 入力可・不可テーブル SET 住宅区分 = 0, コメント = 0"_s);
    }
    QString file(const QByteArray& content) {
        const QString path = folder_.programDir() + u"/取込.csv"_s;
        QFile out(path);
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(content);
        return path;
    }
    static frmJinjiTorikomi& screen(QDialog& form) { return dynamic_cast<frmJinjiTorikomi&>(form); }
    /// What becomes of the rows: outcome and reasons of each.
    static QStringList judged(QDialog& form) {
        QStringList lines;
        const QStringList outcomes = rows(form, u"DataGrid1"_s, 3), reasons = rows(form, u"DataGrid1"_s, 4);
        for (qsizetype i = 0; i < outcomes.size(); ++i) lines << outcomes[i] + u':' + reasons[i];
        return lines;
    }
    void expectSame(const QByteArray& before) {
        EXPECT_EQ(firstDifference(before, dump(*global_.cn_main)).toStdString(), "");
        EXPECT_FALSE(global_.cn_main->inTransaction());
    }
    void take(QDialog& form, const QString& question, const QString& after = {}) {
        driver_.expectBox(question + u"\nよろしいですか。"_s, u"取込の確認"_s, BoxAnswer::Yes);
        driver_.expectBox(u"取込が終了しました。"_s + after, u"処理終了確認"_s);
        click(form, u"Command3"_s);
        EXPECT_NE(driver_.boxes().rbegin()[1].loses, question.contains(u"、0 件を更新"_s));
        EXPECT_FALSE(enabled(form, u"Command3"_s));
    }
};

const QString kPeople =
    u"社員Code,氏名,フリガナ,性別,生年月日,入社日,最終学歴,職能資格,勤務地,組合,出身地,採用区分\n"_s;
const QString kAfterPeople =
    u"\n\n追加した社員は、異動履歴を登録すると基準日ごとの一覧に出るようになります。"_s;

TEST_F(Import, RefusesRowsAsTheScreensDoAndTakesAllOrNothing) {
    const QString rest = u",01,01,01,01,13,01"_s;
    const struct {
        QString row;
        QString judged;
    } cases[] = {
        {u"101,新田　一,ｼﾝﾃﾞﾝ,女,1990/4/1,H25.4.1"_s + rest, u"追加:"_s},
        {u"000102,\"新田, 二\",ｼﾝﾃﾞﾝ,2,1990/4/1,1990/4/1"_s + rest, u"追加:"_s},
        {u"101,新田,ｼﾝﾃﾞﾝ,,1990/4/1,2013/4/1"_s + rest,
         u"取込不可:社員Codeが重複しています。（2行目と同じ）"_s},
        {u"1,新田,ｼﾝﾃﾞﾝ,,1990/4/1,2013/4/1"_s + rest, u"取込不可:社員Codeが重複しています。"_s},
        {u"0,新田,ｼﾝﾃﾞﾝ,,1990/4/1,2013/4/1"_s + rest, u"取込不可:1～999999を入力してください。･･･社員Code"_s},
        {u"103,,ｱｱｱｱｱｱｱｱｱｱｱｱｱｱｱｱｱｱｱｱｱ,,2026/12/2,2026/12/1"_s + rest,
         u"取込不可:未入力は許されません。 ･･･氏名　項目の長さ(21)が制限(20)を越えています。 ･･･フリガナ　"
         "現在の日付より古い日付を入力してください。･･･生年月日　生年月日より古い日付はありえません。･･･入社日"_s},
        {u"104,新'田,ｼﾝﾃﾞﾝ,男性,平成2年13月1日,1899/12/31,,,,,99,01"_s,
         u"取込不可:項目中に ' を含むことはできません。 ･･･氏名　「男性」はマスタにありません。･･･性別　"
         "最終学歴を選択してください。　「99」はマスタにありません。･･･出身地　職能資格を選択してください。　"
         "勤務地を選択してください。　組合を選択してください。　日付の入力が正しくありません。･･･生年月日　"
         "1900年1月1日以降の日付を入力してください。･･･入社日"_s},
        {u"105,新田,ｼﾝﾃﾞﾝ,女,1990/4/1,2013/4/1,01,01,01,01,13,01,01"_s,
         u"取込不可:見出しのない列に値があります。「,」を含む項目は「\"」で囲んでください。"_s},
        {u"106,\"新\n田\",ｼﾝﾃﾞﾝ,女,1990/4/1,2013/4/1,02"_s + rest.mid(3),
         u"取込不可:項目中に改行を含むことはできません。･･･氏名　"
         "「02」はコードとしても名称としても別の項目にあり、どちらか決められません。･･･最終学歴"_s},
    };
    sql(u"UPDATE 最終学歴マスタ SET 最終学歴 = '02' WHERE Code = '03'"_s);
    QString sheet = kPeople;
    QStringList expected;
    for (const auto& each : cases) {
        sheet += each.row + u'\n';
        expected << each.judged;
    }
    const QByteArray before = dump(*global_.cn_main);
    open<frmJinjiTorikomi>([&](QDialog& form) {
        screen(form).load(file(sheet.toUtf8()));
        EXPECT_EQ(judged(form), expected.mid(2));
        click(form, u"Check2"_s);
        EXPECT_EQ(judged(form), expected);
        EXPECT_EQ(text(form, u"lblCounts"_s), u"追加： 2 件　更新： 0 件　取り込めない行： 7 件"_s);
        EXPECT_FALSE(enabled(form, u"Command3"_s));
        expectSame(before);

        // One row that cannot be written takes all back.
        screen(form).load(file((kPeople + cases[0].row + u'\n' + cases[1].row).toUtf8()));
        sql(u"CREATE TEMP TRIGGER 故障 BEFORE INSERT ON 履歴書テーブル WHEN NEW.社員Code = '000102' "
            "BEGIN SELECT RAISE(ABORT, 'fault'); END"_s);
        driver_.expectBox(u"2 件を追加し、0 件を更新します。\nよろしいですか。"_s, u"取込の確認"_s,
                          BoxAnswer::Yes);
        driver_.expectBox(u"処理中にエラーが発生しました。処理を取り消します。"_s, u"取消"_s);
        click(form, u"Command3"_s);
        expectSame(before);
        sql(u"DROP TRIGGER 故障"_s);
        // What a change cut off left under a new person's code in a companion's file goes back before.
        const CompanyDatabases company{*global_.cn_main, global_.dataDir(), folder_.company()};
        const CodeKey old{u"000003"_s, {}}, taken{u"000101"_s, {}};
        announceRename(company, Referent::Syain, old, taken);
        renameInSecondaries(company, Referent::Syain, old, taken, {});
        take(form, u"2 件を追加し、0 件を更新します。"_s, kAfterPeople);
        EXPECT_FALSE(holdsCode(company, schema::File::Hyouka, Referent::Syain, taken));
        EXPECT_TRUE(holdsCode(company, schema::File::Hyouka, Referent::Syain, old));
        EXPECT_EQ(
            read(u"SELECT "
                 u"社員Code,氏名,性別,婚姻区分,生年月日,入社日,最終学歴,出身地,郵便番号,退職フラグ,退職日 "
                 "FROM 履歴書テーブル WHERE 社員Code > '000100' ORDER BY 社員Code"_s),
            (QStringList{u"000101|新田　一|3|1|1990/4/1|2013/4/1|01|13|-|False|-"_s,
                         u"000102|新田, 二|2|1|1990/4/1|1990/4/1|01|13|-|False|-"_s}));

        // Existing people change on wish only, in the columns that the sheet fills.
        const QString columns =
            u"SELECT 氏名,フリガナ,電話番号,生年月日 FROM 履歴書テーブル WHERE 社員Code = '000101'"_s;
        screen(form).load(file("社員Code,氏名,TEL,住宅区分,備考\n101,,03-1234-5678,,x\n"));
        EXPECT_EQ(judged(form), QStringList{u"取込不可:社員Codeが重複しています。"_s});
        EXPECT_TRUE(text(form, u"lblFile"_s).endsWith(u"（取り込まない見出し： 備考）"_s));
        click(form, u"Check1"_s);
        EXPECT_EQ(judged(form), QStringList{u"更新:"_s});
        take(form, u"0 件を追加し、1 件を更新します。"_s);
        EXPECT_EQ(read(columns), QStringList{u"新田　一|ｼﾝﾃﾞﾝ|03-1234-5678|1990/4/1"_s});
        screen(form).load(file("社員Code,氏名\n101,別人\n"));
        EXPECT_EQ(judged(form), QStringList{u"更新:いまの氏名は「新田　一」です。"_s});
        driver_.expectBox(
            u"0 件を追加し、1 件を更新します。\n氏名の変わる社員が 1 人います。社員Codeを確かめてください。\n"
            "よろしいですか。"_s,
            u"取込の確認"_s, BoxAnswer::No);
        click(form, u"Command3"_s);
        screen(form).load(file("社員Code,住宅区分\n101,01\n"));
        EXPECT_EQ(judged(form), QStringList{u"取込不可:入力しない設定の項目です。･･･住宅区分"_s});
    });
}

TEST_F(Import, OfTransfersGoesByTheValidityOfCodesAndKeepsWhatCompanionsFill) {
    sql(u"DELETE FROM 異動テーブル WHERE 社員Code = '000001'"_s);
    sql(u"UPDATE 履歴書テーブル SET 入社日 = '2000-04-01' WHERE 社員Code = '000001'"_s);
    sql(u"INSERT INTO "
        u"異動テーブル(社員Code,異動日,異動事由,社員区分,所属大,所属小,役職,職種,コース,等級,号俸,評語,"
        "コメント) VALUES('000001','2010-04-01','01','01','01','11','01','01','01','5','7','Ａ','旧')"_s);
    const QString headings = u"社員Code,異動日,異動事由,社員区分,所属大,所属小,役職,職種,コース,等級\n"_s;
    const auto names = [&](const QString& columns) {
        return read(
                   u"SELECT %1 FROM 所属小マスタ AS S INNER JOIN 所属大マスタ AS D ON D.Code = S.所属大 "
                   "WHERE S.所属大 = '02' ORDER BY S.Code"_s.arg(columns))
            .first();
    };
    const QString second = names(u"D.所属大"_s) + u',' + names(u"S.所属小"_s);
    const struct {
        QString row;
        QString judged;
    } cases[] = {
        {u"1,2000/4/1,1,1,%1,1,1,1,05"_s.arg(second), u"追加:"_s},
        {u"1,2010/4/1,1,1,%1,1,1,1,20"_s.arg(second), u"取込不可:異動日が重複しています。"_s},
        {u"1,2000年4月1日,1,1,%1,1,1,1,1.5"_s.arg(second),
         u"取込不可:異動日が重複しています。（2行目と同じ）　1～20を入力してください。･･･等級"_s},
        {u"1,2000/3/31,1,1,%1,1,1,1,12345678901234567890"_s.arg(second),
         u"取込不可:入社日より古い日付はありえません。･･･異動日　1～20を入力してください。･･･等級"_s},
        {u"777777,2026/4/1,1,5,1,%1,,1,1,x"_s.arg(names(u"S.所属小"_s)),
         u"取込不可:この社員Codeの社員は登録されていません。･･･社員Code　"
         "「5」は異動日より後に設定されたため選べません。･･･社員区分　「%1」はマスタにありません。･･･所属小　"
         "役職を選択してください。　数字以外は許されません。 "_s.arg(names(u"S.所属小"_s))},
    };
    QString sheet = kUtf8Mark + headings;
    QStringList expected;
    for (const auto& each : cases) {
        sheet += each.row + u"\r\n"_s;
        expected << each.judged;
    }
    open<frmJinjiTorikomi>([&](QDialog& form) {
        click(form, u"Option1_1"_s);
        screen(form).load(file(sheet.toUtf8()));
        click(form, u"Check2"_s);
        EXPECT_EQ(judged(form), expected);
        // Changed on wish: 号俸, 評語 and what the sheet does not fill stay.
        click(form, u"Check1"_s);
        screen(form).load(file((headings + cases[0].row + u'\n' + u"1,2010/4/1,,,01,,,,,8\n"_s).toUtf8()));
        take(form, u"1 件を追加し、1 件を更新します。"_s);
        const QString syou = names(u"S.Code"_s);
        EXPECT_EQ(
            read(u"SELECT 異動日,異動事由,社員区分,所属大,所属小,役職,職種,コース,等級,号俸,評語,コメント "
                 u"FROM "
                 "異動テーブル WHERE 社員Code = '000001' ORDER BY 異動日"_s),
            (QStringList{u"2000/4/1|01|01|02|%1|01|01|01|5|-|-|-"_s.arg(syou),
                         u"2010/4/1|01|01|01|11|01|01|01|8|7|Ａ|旧"_s}));
    });
}

TEST_F(Import, ReadsWhatOfficeProgramsWriteAndTellsWhatItCannotRead) {
    const QByteArray shiftJis(
        "\x8e\xd0\x88\xf5\x43\x6f\x64\x65,\x8e\x81\x96\xbc\n1,\x96\x5c\n");  // 社員Code,氏名
    const struct {
        QByteArray content;
        QString told;  ///< empty: rows are shown
    } cases[] = {
        {shiftJis, {}},
        {"社員Code\r1\r", {}},
        {"\"社員Code\",\"氏\n名\"\n\"1\"", {}},
        {"PK\x03\x04xlsx",
         u"Excelのブックはそのままでは読み込めません。Excelの［名前を付けて保存］で"
         "「CSV UTF-8（コンマ区切り）」を選んで保存し、そのファイルを選んでください。"_s},
        {"社員Code\n\"1\n2", u"2行目の「\"」が閉じられていないため、読み込めません。"_s},
        {"社員Code\n,,\n", u"取り込む行がありません。1行目に見出し、2行目からデータを入れてください。"_s},
        {"\x81\x20\xff", u"文字を読み取れません。UTF-8かシフトJISのCSVファイルを選んでください。"_s},
        {"氏名\n1\n", u"見出し「社員Code」がありません。1行目に見出しを入れてください。"_s},
        {"社員Code,住所1,住所１\n1\n", u"見出し「住所１」が2つあります。"_s},
        {"社員Code,出身地\n1\n", u"見出し「出身地」は2つの項目に当てはまります。"_s},
        {QByteArray(personnel::kMaxImportBytes + 1, 'x'),
         u"ファイルが大きすぎます（21 MB）。20 MB までのファイルに分けてください。"_s},
    };
    sql(u"UPDATE 会社テーブル SET 自由マスタ1 = '出身地'"_s);
    open<frmJinjiTorikomi>([&](QDialog& form) {
        for (const auto& each : cases) {
            SCOPED_TRACE(each.content.left(40).toStdString());
            if (!each.told.isEmpty()) driver_.expectBox(each.told, {});
            screen(form).load(file(each.content));
            EXPECT_EQ(judged(form).size(), each.told.isEmpty() ? 1 : 0);
        }
        sql(u"UPDATE 会社テーブル SET 自由マスタ1 = '職能資格'"_s);
        const QString path = folder_.programDir() + u"/ひな形.csv"_s;
        screen(form).saveTemplate(path);
        QFile saved(path);
        ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
        EXPECT_EQ(
            saved.readAll(),
            (kUtf8Mark + u"社員Code,氏名,フリガナ,性別,婚姻区分,世帯主区分,生年月日,入社日,最終学歴,郵便番号,"
                         "住所１,住所２,tel,fax,出身地,採用区分,職能資格,勤務地,組合\r\n"_s)
                .toUtf8());
    });
}

}  // namespace
