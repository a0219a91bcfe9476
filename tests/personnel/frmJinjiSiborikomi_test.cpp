#include "personnel/frmJinjiSiborikomi.h"

#include "person_screens.h"
#include "personnel/frmJinjiSiborikomi2.h"
#include "reports/frmReport.h"
#include "store/date_text.h"

namespace {

using namespace persontest;
using personnel::frmJinjiSiborikomi;
using personnel::frmJinjiSiborikomi2;
using Flag = bool forms::GlobalRecord::*;
using G = forms::GlobalRecord;

const QString kNobody = u"該当する社員データはありません。"_s;

/// A person as of a date, worked out without the work tables.
struct Person {
    QString code, kana, sex;
    QDate joined;
    bool retired;
    int age, tenure;
    QStringList position;  ///< six codes; empty without a transfer up to the date
};

int number(QDate date) {
    return date.year() * 10000 + date.month() * 100 + date.day();
}

class Selection : public PersonScreens {
  protected:
    Selection() {
        folder_.makeSample();
        openCompany();
        global_.jinji_mode_joukenn = true;
        addPlain(u"frmRireki"_s);
    }
    std::vector<Person> peopleAt(QDate date) {
        std::vector<Person> people;
        auto row = global_.cn_main->prepare(
            u"SELECT 社員Code,フリガナ,性別,生年月日,入社日,退職フラグ FROM 履歴書テーブル ORDER BY 社員Code"_s);
        while (row.step())
            people.push_back({row.toText(0),
                              row.toText(1),
                              row.toText(2),
                              row.toDate(4),
                              row.toBool(5),
                              (number(date) - number(row.toDate(3))) / 10000,
                              (number(date) - number(row.toDate(4))) / 10000,
                              {}});
        for (Person& person : people) {
            QDate latest;
            auto move = global_.cn_main->prepare(
                u"SELECT 異動日,社員区分,所属大,所属小,役職,職種,コース FROM 異動テーブル WHERE 社員Code = ?"_s);
            move.bind(1, person.code);
            while (move.step()) {
                if (move.toDate(0) > date || (latest.isValid() && move.toDate(0) <= latest)) continue;
                latest = move.toDate(0);
                person.position.clear();
                for (int i = 1; i <= 6; ++i) person.position << move.toText(i);
            }
        }
        return people;
    }
    /// Enters conditions told in short: "かさ" the reading, "性3" the option, "0=2" line 2 of the first combo
    /// (the line 0 asks nothing), "歳>40" and so on.
    static void enter(QDialog& form, const QString& asked) {
        static const QStringList years{u"歳>"_s, u"歳<"_s, u"年>"_s, u"年<"_s};
        for (const QString& each : asked.split(u' ', Qt::SkipEmptyParts)) {
            const QString combo = u"DataCombo1_"_s + each.front();
            if (each.startsWith(u'か')) type(form, u"txtFields_1"_s, each.mid(1), Qt::Key_Tab);
            if (each.startsWith(u'性')) click(form, u"Option"_s + each.back());
            if (const auto i = years.indexOf(each.left(2)); i >= 0)
                type(form, u"Text%1"_s.arg(i + 2), each.mid(2), Qt::Key_Tab);
            if (!each.front().isDigit()) continue;
            control(form, combo).setFocus(Qt::TabFocusReason);
            choose(form, combo, each.mid(2).toInt());
        }
    }
    static bool meets(QDialog& form, const Person& person, const QString& asked) {
        const auto one = [&](const QString& each) {
            const int years = each.mid(2).toInt(), of = each.front() == u'歳' ? person.age : person.tenure;
            if (each.startsWith(u'か')) return u"さサｻ"_s.contains(person.kana.front());
            if (each.startsWith(u'性')) return person.sex == each.back();
            if (each.front().isDigit())
                return person.position.value(each.front().digitValue(), u"なし"_s) ==
                       control<widgets::CodeCombo>(form, u"DataCombo1_"_s + each.front()).code();
            return each[1] == u'>' ? of >= years : of <= years;
        };
        const QStringList all = asked.split(u' ', Qt::SkipEmptyParts);
        return std::all_of(all.begin(), all.end(), one);
    }
    static QStringList found(QDialog& form) {
        QStringList codes;
        for (const QString& line : rows(form, u"DataList1"_s)) codes << line.left(6);
        return codes;
    }
};

TEST_F(Selection, FindsWhoMeetsTheConditionsWhicheverOnesAreAsked) {
    const QStringList cases =
        u"|かさ|性3|性1|0=1|1=2|1=2 2=1|3=4|4=2|5=1|歳>40|歳<30|年>10|年<5|"
        "0=1 性2 歳>25 年<1000|歳>30 歳<50 年>3 年<20|かさ 3=0"_s.split(u'|');
    for (const QString& statement :
         {u"性別 = '1' WHERE 社員Code IN ('000003','000046')"_s,
          u"フリガナ = 'ｻﾄｳ' WHERE 社員Code = '000007'"_s, u"フリガナ = 'さとう' WHERE 社員Code = '000008'"_s,
          u"生年月日 = '1986-12-01', 入社日 = '2016-12-01' WHERE 社員Code = '000004'"_s,
          u"生年月日 = '1986-12-02', 入社日 = '2016-12-02' WHERE 社員Code = '000006'"_s})
        sql(u"UPDATE 履歴書テーブル SET "_s + statement);
    for (const QDate date : {QDate(2026, 12, 1), QDate(2019, 6, 30)}) {
        const std::vector<Person> people = peopleAt(date);
        open<frmJinjiSiborikomi>(
            [&](QDialog& form) {
                for (const QString& asked : cases) {
                    SCOPED_TRACE(asked.toStdString());
                    click(form, u"Command2"_s);
                    EXPECT_EQ(text(form, u"Text1"_s), QString());
                    type(form, u"Text1"_s, date.toString(u"yyyy年M月d日"_s), Qt::Key_Tab);
                    enter(form, asked);
                    QStringList expected;
                    for (const Person& person : people)
                        if (!person.retired && person.joined <= date &&
                            meets(form, person, QString(asked).remove(u"3=0"_s)))
                            expected << person.code;
                    EXPECT_FALSE(expected.isEmpty());
                    click(form, u"Command1"_s);
                    EXPECT_EQ(found(form), expected);
                    EXPECT_EQ(text(form, u"Label18"_s), u"対象者数： %1 人"_s.arg(expected.size()));
                }
            },
            sheets_);
    }
}

TEST_F(Selection, TellsWhatCannotBeAskedAndTakesACodeForACompleteCondition) {
    open<frmJinjiSiborikomi>(
        [&](QDialog& form) {
            const auto told = [&](const QString& text, const QString& title, const QString& button) {
                driver_.expectBox(text, title);
                click(form, button);
            };
            EXPECT_EQ(text(form, u"Text1"_s), u"2026/12/1"_s);
            const QString choice = u"処理する人を選択してください。"_s, wrong = u"選択エラー"_s;
            told(choice, wrong, u"Command4"_s);
            for (const QString& sign : {u"%"_s, u"_"_s, u"\\"_s}) {  // a reading, not a pattern
                type(form, u"txtFields_1"_s, sign, Qt::Key_Tab);
                told(kNobody, u"検索結果"_s, u"Command1"_s);
            }
            type(form, u"txtFields_1"_s, {}, Qt::Key_Tab);
            type(form, u"Text2"_s, u"40000"_s, Qt::Key_Tab);
            EXPECT_EQ(text(form, u"Text2"_s), u"40,000"_s);
            told(u"オーバーフローしました。"_s, {}, u"Command1"_s);
            driver_.expectBox(u"未入力は許されません。"_s, u"入力エラー"_s);
            type(form, u"Text1"_s, {}, Qt::Key_Tab);
            driver_.expectBox(u"日付の入力が正しくありません。"_s, u"入力エラー"_s);
            type(form, u"Text1"_s, u"2026/2/29"_s, Qt::Key_Tab);
            type(form, u"Text1"_s, u"1989/1/1"_s, Qt::Key_Tab);
            driver_.expectBox(u"条件に合致するデータはありません。"_s, u"入力エラー"_s);
            control(form, u"DataCombo1_3"_s).setFocus(Qt::TabFocusReason);

            type(form, u"txtFields_0"_s, u"9"_s, Qt::Key_Tab);  // retired
            EXPECT_EQ(text(form, u"txtFields_0"_s), u"000009"_s);
            for (const QString& other :
                 {u"txtFields_1"_s, u"Option2"_s, u"DataCombo1_0"_s, u"Text1"_s, u"Text5"_s})
                EXPECT_FALSE(enabled(form, other)) << other.toStdString();
            EXPECT_EQ(text(form, u"Text2"_s), QString());
            told(kNobody, u"検索結果"_s, u"Command1"_s);
            EXPECT_EQ(text(form, u"Text1"_s), u"2026/12/1"_s);
            for (const QString& code : {u"000046"_s, u"46"_s, u"４６"_s}) {
                type(form, u"txtFields_0"_s, code);
                click(form, u"Command1"_s);
                EXPECT_EQ(found(form), QStringList{u"000046"_s});
            }
            type(form, u"txtFields_0"_s, {}, Qt::Key_Tab);
            EXPECT_TRUE(enabled(form, u"Text5"_s));
            told(choice, wrong, u"Command5"_s);
            choose(form, u"DataList1"_s, 0);
            for (const auto& [button, all] :
                 {std::pair(u"Command5"_s, false), std::pair(u"Command4"_s, true)}) {
                driver_.onScreen(u"frmRireki"_s, [](QDialog& record) { record.reject(); });
                click(form, button);
                EXPECT_EQ(global_.rireki_shinki, all);
                EXPECT_EQ(global_.syain_code, u"000046"_s);
                EXPECT_EQ(read(u"SELECT 社員Code,ID FROM 社員絞込"_s), QStringList{u"000046|1"_s});
                EXPECT_TRUE(text(form, u"DataList1"_s).startsWith(u"000046"_s));  // still chosen
            }
            type(form, u"txtFields_0"_s, {}, Qt::Key_Tab);
            click(form, u"Command1"_s);
            QStringList staff = found(form);
            choose(form, u"DataList1"_s, 3);
            const QString retires = u"UPDATE 履歴書テーブル SET 退職フラグ = -1 WHERE 社員Code = '%1'"_s;
            for (const int goes : {1, 2}) {  // one before the chosen person, then the person
                driver_.onScreen(u"frmRireki"_s, [&](QDialog& record) {
                    sql(retires.arg(staff.takeAt(goes)));
                    record.reject();
                });
                click(form, u"Command5"_s);
                EXPECT_TRUE(text(form, u"DataList1"_s).startsWith(staff[2])) << goes;
            }
        },
        sheets_);
    global_.jinji_mode_joukenn = false;
    global_.jinji_mode_taisyoku = true;
    open<frmJinjiSiborikomi>(
        [&](QDialog& form) {
            EXPECT_FALSE(visible(form, u"Command4"_s));
            EXPECT_FALSE(enabled(form, u"Command5"_s));  // its screen is not there
        },
        sheets_);
}

/// Four people: 000010 in full, 000009 without a sex, 000011 without a transfer, 000012 retired.
class Lists : public PersonScreens {
  protected:
    Lists() {
        folder_.makeEmpty(u"見本商事"_s);
        openCompany();
        for (
            const QString& statement :
            {u"INSERT INTO "
             u"履歴書テーブル(社員Code,氏名,フリガナ,性別,婚姻区分,世帯主区分,生年月日,入社日,電話番号,"
             "最終学歴,自由1,退職フラグ,退職日) VALUES"
             "('000010','甲野','ｺｳﾉ','2','3','1','1980-02-29','2000-04-01','03-1','01','09',0,NULL),"
             "('000009','乙川','ｵﾂｶﾜ',NULL,'1','1','1980-01-01','2000-04-01',NULL,NULL,NULL,0,NULL),"
             "('000011','丙山','ﾍｲﾔﾏ','3','1','1','1980-01-01','2000-04-01',NULL,NULL,NULL,0,NULL),"
             "('000012','丁田','ﾃｲﾀﾞ','3','1','1','1960-05-05','1990-04-01',NULL,NULL,NULL,-1,'2026-03-31')"_s,
             u"INSERT INTO 異動テーブル(社員Code,異動日,社員区分,所属大,所属小,役職,職種,コース,等級,号俸) "
             u"VALUES"
             "('000010','2027-04-01','01','01','01','01','01','01','9','9'),"
             "('000010','2026-12-01','01','02','01','01','88',NULL,'5','7'),"
             "('000010','2000-04-01','01','01','01','01','01','01','1','1'),"
             "('000009','2000-04-01','01','01','01','01','01','01','1','1'),"
             "('000012','1990-04-01','01','01','01','01','01','01','1','1')"_s,
             u"INSERT INTO 社員区分マスタ VALUES('01','正社員','1990-04-01')"_s,
             u"INSERT INTO 所属大マスタ VALUES('01','総務部','1990-04-01'),('02','営業部','1990-04-01')"_s,
             u"INSERT INTO 所属小マスタ VALUES('01','01','庶務課','1990-04-01'),('02','01','一課','1990-04-01')"_s,

             u"INSERT INTO 役職マスタ VALUES('01','部長','1990-04-01')"_s,
             u"INSERT INTO 職種マスタ VALUES('01','事務','1990-04-01')"_s,
             u"INSERT INTO コースマスタ VALUES('01','総合','1990-04-01')"_s,
             u"INSERT INTO 最終学歴マスタ VALUES('01','大学',22)"_s,
             u"UPDATE 会社テーブル SET 自由マスタ1 = '職能資格', 自由マスタ2 = '未設定'"_s,
             u"INSERT INTO 続柄マスタ VALUES('10','父',NULL),('9','妻',NULL)"_s,
             u"INSERT INTO 家族テーブル VALUES('000010','甲野　父','ﾁﾁ','10','2','1950-01-01','3','3','1'),"
             "('000010','甲野　妻','ﾂﾏ','9','3','1981-01-01','2','2','3'),"
             "('000010','甲野　子','ｺ',NULL,'3','2010-01-01','2','2','3')"_s,
             u"INSERT INTO 資格・免許マスタ VALUES('01','普通自動車')"_s,
             u"INSERT INTO 資格・免許テーブル VALUES('000010','01','2','2001-05-01'),('000012','01','2',NULL)"_s})
            sql(statement);
    }
    /// The texts of a band in the order of its columns.
    static QString band(const reports::Report& report, reports::Section section, int row = 0) {
        QStringList texts;
        for (const auto& item : report.design().band(section).controls)
            if (item.kind != reports::ControlKind::Line) texts << report.textOf(item, row, 1);
        return texts.join(u'|').replace(u'/', u'-');
    }
    QString line(int row) {
        QStringList texts;
        const auto& lines = sent_.back().second.rows();
        if (const auto found = lines.find(row); found != lines.end())
            for (const auto& [column, cell] : found->second) {
                while (texts.size() < column - 1) texts << QString();
                texts << (std::holds_alternative<QDate>(cell) ? store::formatDate(std::get<QDate>(cell))
                                                              : std::get<QString>(cell));
            }
        return texts.join(u'|').replace(u'/', u'-');
    }
};

const QString kLeft =
    u"2 人は一覧に入っていません（%1が入っていないか、基準日の時点の異動履歴がありません）。"_s;

TEST_F(Lists, ShowThePeopleInHandAsPrintsAndAsSheets) {
    const QString staff =
        u"社員Code|氏名|フリガナ|性別|生年月日|入社日|社員区分|所属大|所属小|役職|職種|コース/"
        "000010|甲野|ｺｳﾉ|男|1980-2-29|2000-4-1|正社員|営業部|庶務課|部長||"_s;
    const QString sheet =
        u"社員Code|氏名|フリガナ|性別|婚姻区分|世帯主区分|生年月日|入社日|郵便番号|住所１|住所２|tel|fax|"
        u"最終学歴|"
        "出身地|採用区分|職能資格|未設定|自由3|自由4|自由5|社員区分名|所属大名|所属小名|役職名|職種名|"
        "コース名|等級|"
        "号俸|評語/000010|甲野|ｺｳﾉ|男|未婚|－|1980-2-29|2000-4-1||||03-1||大学||||||||正社員|営業部|庶務課|部長|||5|7"_s;
    const QString family =
        u"社員Code|氏名|%1|続柄|性別|生年月日|扶養|同居|障害/"
        "000010|甲野|%2|妻|女|1981-1-1|扶養|同居|無/"
        "000010|甲野|%3|父|男|1950-1-1|非扶養|別居|－"_s;
    const QString printed = family.arg(u"家族氏名|フリガナ"_s, u"甲野　妻|ﾂﾏ"_s, u"甲野　父|ﾁﾁ"_s);
    const QString sent = family.arg(u"家族フリガナ|家族氏名"_s, u"ﾂﾏ|甲野　妻"_s, u"ﾁﾁ|甲野　父"_s);
    const QString skills =
        u"社員Code|氏名|資格・免許|業務必要性|取得年月日/000010|甲野|普通自動車|有|2001-5-1"_s;
    const QString left = kLeft.arg(u"性別"_s), leftOfSheet = kLeft.arg(u"性別・婚姻区分・世帯主区分"_s);
    const QString leftOfFamily =
        u"1 件は一覧に入っていません（続柄・性別・扶養・同居・障害のどれかが入っていません）。"_s;
    const struct {
        Flag flag;
        QString title;  ///< of the print, or of the sheet
        QString lines;  ///< headings first
        QString told;   ///< of the whole list
        bool isSheet = false;
    } cases[] = {
        {&G::jinji_mode_daichou, u"社員台帳"_s, staff, left},
        {&G::jinji_mode_yoteisya, u"退職予定者一覧"_s, staff, left},
        {&G::jinji_mode_kazoku, u"家族情報一覧"_s, printed, leftOfFamily},
        {&G::jinji_mode_shikaku, u"資格・免許保有状況一覧"_s, skills, {}},
        {&G::jinji_mode_excel, u"社員データ"_s, sheet, leftOfSheet, true},
        {&G::jinji_mode_kazoku_excel, u"家族情報"_s, sent, leftOfFamily, true},
        {&G::jinji_mode_shikaku_excel, u"資格・免許"_s, skills, {}, true},
    };
    sql(u"UPDATE 会社テーブル SET 自由マスタ3 = '自由3', 自由マスタ4 = '自由4', 自由マスタ5 = '自由5'"_s);
    for (const auto& each : cases) {
        SCOPED_TRACE(each.title.toStdString());
        const QStringList expected = QString(each.lines).split(u'/');
        global_.*each.flag = true;
        const auto look = [&](QDialog& preview) {
            const reports::Report& report = dynamic_cast<reports::frmReport&>(preview).report();
            EXPECT_EQ(report.title(), each.title);
            QStringList lines{band(report, reports::Section::Section2)};
            for (int row = 0; row < report.rowCount(); ++row)
                lines << band(report, reports::Section::Section1, row);
            EXPECT_EQ(lines, expected);
            const QString head = band(report, reports::Section::Section4);
            EXPECT_TRUE(head.contains(u"基準日：2026年12月1日"_s) && head.contains(u"見本商事"_s));
            preview.reject();
        };
        const QString told = each.isSheet ? u"lblSent"_s : u"lblTold"_s;
        const auto send = [&](QDialog& form, const QString& button) {
            if (!each.isSheet) driver_.onScreen(u"frmReport"_s, look);
            click(form, button);
            if (!each.isSheet) return;
            EXPECT_TRUE(sent_.back().first.endsWith(each.title)) << sent_.back().first.toStdString();
            for (int row = 0; row <= expected.size(); ++row) EXPECT_EQ(line(row + 1), expected.value(row));
            EXPECT_TRUE(text(form, u"lblSent"_s).startsWith(u"保存しました: "_s));
        };
        open<frmJinjiSiborikomi>(
            [&](QDialog& form) {
                click(form, u"Command1"_s);
                send(form, u"Command4"_s);
                EXPECT_EQ(read(u"SELECT 社員Code,ID FROM 社員絞込 ORDER BY ID"_s),
                          (QStringList{u"000009|1"_s, u"000010|2"_s, u"000011|3"_s}));
                EXPECT_TRUE(text(form, told).endsWith(each.told));
                choose(form, u"DataList1"_s, 1);
                send(form, u"Command5"_s);
                EXPECT_EQ(text(form, told).contains(u"一覧に入っていません"_s), each.told == leftOfFamily);
            },
            sheets_);
        global_.*each.flag = false;
    }
}

TEST_F(Lists, OfTheRetiredAndTheWayBack) {
    const auto look = [this](const QString& title, const QString& date, const QString& foot) {
        driver_.onScreen(u"frmReport"_s, [=](QDialog& preview) {
            const reports::Report& report = dynamic_cast<reports::frmReport&>(preview).report();
            EXPECT_EQ(report.title(), title);
            EXPECT_EQ(band(report, reports::Section::Section1),
                      u"000012|丁田|ﾃｲﾀﾞ|女|1960-5-5|%1|正社員|総務部|庶務課|部長|事務|総合"_s.arg(date));
            EXPECT_TRUE(band(report, reports::Section::Section2).contains(u"|退職日|"_s));
            EXPECT_TRUE(band(report, reports::Section::Section3).endsWith(foot));
            preview.reject();
        });
    };
    const QString leaves = u"UPDATE 履歴書テーブル SET 退職日 = ? WHERE 社員Code = '000012'"_s;
    global_.jinji_mode_yoteisya = true;
    sql(leaves, {u"2026-12-01"_s});
    open<frmJinjiSiborikomi>(
        [&](QDialog& form) {
            look(u"退職予定者一覧"_s, u"2026-12-1"_s, u"基準日：2026年12月1日"_s);
            click(form, u"Command4"_s);
            click(form, u"Command1"_s);
            EXPECT_EQ(rows(form, u"DataList1"_s).size(), 3);  // the staff
            sql(leaves, {u"2026-11-30"_s});
            click(form, u"Command2"_s);
            EXPECT_EQ(rows(form, u"DataList1"_s), QStringList());
        },
        sheets_);
    global_.jinji_mode_yoteisya = false;
    sql(leaves, {u"2026-03-31"_s});
    global_.jinji_mode_taisyokusya = true;
    open<frmJinjiSiborikomi2>(
        [&](QDialog& form) {
            EXPECT_EQ(text(form, u"Text2"_s), u"2026/12/1"_s);
            type(form, u"Text1"_s, u"2026/4/1"_s, Qt::Key_Tab);
            driver_.expectBox(kNobody, u"検索結果"_s);
            click(form, u"Command1"_s);
            type(form, u"Text1"_s, u"2026/3/31"_s, Qt::Key_Tab);
            type(form, u"Text2"_s, u"2026/3/31"_s, Qt::Key_Tab);
            click(form, u"Command1"_s);
            EXPECT_EQ(text(form, u"Label1"_s), u"対象者数： 1 人"_s);
            type(form, u"Text1"_s, u"2026/4/1"_s, Qt::Key_Tab);  // asks nothing until the list is made anew
            look(u"退職者一覧"_s, u"2026-3-31"_s, u"2026-3-31～2026-3-31の退職者"_s);
            click(form, u"Command4"_s);
        },
        sheets_);
    global_.jinji_mode_taisyokusya = false;
    global_.jinji_mode_fukkatsu = true;
    open<frmJinjiSiborikomi2>(
        [&](QDialog& form) {
            EXPECT_FALSE(visible(form, u"Command4"_s));
            const QString title = u"復活の確認"_s, question = u" 000012 丁田 を復活させますか？"_s;
            const auto flag = [&] {
                return read(u"SELECT 退職フラグ,退職日 FROM 履歴書テーブル WHERE 社員Code = '000012'"_s)
                    .first();
            };
            click(form, u"Command1"_s);
            choose(form, u"DataList1"_s, 0);
            driver_.expectBox(question, title, BoxAnswer::No);
            click(form, u"Command5"_s);
            EXPECT_EQ(flag(), u"True|2026/3/31"_s);
            sql(u"UPDATE 履歴書テーブル SET 退職フラグ = 0 WHERE 社員Code = '000012'"_s);
            driver_.expectBox(u"復活処理済です。"_s, title);
            click(form, u"Command5"_s);
            sql(u"UPDATE 履歴書テーブル SET 退職フラグ = -1 WHERE 社員Code = '000012'"_s);
            driver_.expectBox(question, title, BoxAnswer::Yes);
            driver_.expectBox(u"処理が終了しました。"_s, u"処理終了確認"_s);
            click(form, u"Command5"_s);
            EXPECT_EQ(flag(), u"False|-"_s);
            EXPECT_EQ(text(form, u"Label1"_s), u"対象者数： 0 人"_s);
        },
        sheets_);
}

}  // namespace
