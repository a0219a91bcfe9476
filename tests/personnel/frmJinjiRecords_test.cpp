#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QLineEdit>

#include "forms/global_record.h"
#include "personnel/frmJinjiIdou2.h"
#include "personnel/frmJinjiKazoku.h"
#include "personnel/frmJinjiSikaku.h"
#include "screen_driver.h"
#include "support/company_fixture.h"
#include "widgets/reading_capture.h"

namespace {

using namespace Qt::StringLiterals;
using namespace support;

const QString kInputError = u"入力エラー"_s;

/// The records behind one employee of the sample company on 2026/11/22.
class Records : public ::testing::Test {
  protected:
    Records() {
        folder_.makeSample();
        global_.cn_main = folder_.open();
        global_.clock = [] { return QDate(2026, 11, 22); };
        person(u"000012"_s, u"横山　純一"_s, u"2023/6/1"_s, u"1990/4/1"_s);
    }
    void person(const QString& code, const QString& name, const QString& joined, const QString& born) {
        global_.syain_code = code;
        global_.syain_mei = name;
        global_.syain_nyuusyabi = joined;
        global_.syain_seinengappi = born;
    }
    template <class Screen>
    void open(ScreenDriver::Step step) {
        Screen form(house_, nullptr);
        driver_.run(form, [&](QDialog& dialog) {
            step(dialog);
            click(dialog, u"cmdClose"_s);
        });
    }
    QStringList stored(const QString& columns, const QString& table) {
        QStringList lines;
        auto row = global_.cn_main->prepare(
            u"select %1 from %2 where 社員Code = ? order by 2"_s.arg(columns, table));
        row.bindAll({global_.syain_code});
        while (row.step()) {
            QStringList texts;
            for (int i = 0; i < row.columnCount(); ++i) texts << row.value(i).toText();
            lines << texts.join(u' ');
        }
        return lines;
    }
    /// Types into the field, expects the box as it is left, and the focus to stay.
    void refused(QDialog& form, const QString& field, const QString& typed, const QString& box,
                 const QString& title = kInputError) {
        driver_.expectBox(box, title);
        type(form, field, typed, Qt::Key_Tab);
        EXPECT_EQ(focused(form), field) << box.toStdString();
    }

    CompanyFolder folder_;
    forms::GlobalRecord global_;
    forms::ScreenRegistry screens_;
    forms::House house_{global_, screens_};
    ScreenDriver driver_;
};

TEST_F(Records, OfTransfersMarkTheOneInForceAndNameWhatWasSetUpLater) {
    const QString code = u"000012"_s;
    global_.cn_main->execute(
        u"update 異動テーブル set 社員区分 = '05', 号俸 = '12', 評語 = 'A'"
        " where 社員Code = ? and 異動日 = '2023-06-01'"_s,
        {code});
    open<personnel::frmJinjiIdou2>([](QDialog& form) {
        EXPECT_EQ(rows(form, u"DataGrid1"_s, 0), QStringList({u"2027/4/1"_s, u"2026/4/1"_s, u"2023/6/1"_s}));
        EXPECT_EQ(rows(form, u"DataGrid1"_s, 1), QStringList({{}, u"●"_s, {}}));
        EXPECT_EQ(text(form, u"txtFields_0"_s), u"2027/4/1"_s);
        click(form, u"cmdLast"_s);
        EXPECT_EQ(text(form, u"DataCombo1_1"_s), u"アルバイト"_s);
        EXPECT_EQ(text(form, u"DataCombo1_3"_s), u"経理課"_s);
        EXPECT_EQ(text(form, u"Label3_0"_s) + text(form, u"Label3_1"_s), u"12A"_s);
        click(form, u"cmdEdit"_s);
        type(form, u"txtFields_1"_s, u"確認"_s);
        click(form, u"cmdUpdate"_s);
    });
    EXPECT_EQ(stored(u"社員区分, 異動日, 号俸, 評語, コメント"_s, u"異動テーブル"_s).first(),
              u"05 2023/6/1 12 A 確認"_s);
}

TEST_F(Records, OfTransfersOfferWhatIsSetUpByTheDateAndRefuseTheRest) {
    global_.cn_main->execute(u"update 役職マスタ set 設定年月日 = '2024-01-01'"_s);
    open<personnel::frmJinjiIdou2>([&](QDialog& form) {
        click(form, u"cmdAdd"_s);
        refused(form, u"txtFields_0"_s, {}, u"未入力は許されません。･･･異動日"_s);
        refused(form, u"txtFields_0"_s, u"2023/2/29"_s, u"日付の入力が正しくありません。･･･異動日"_s);
        refused(form, u"txtFields_0"_s, u"2023/5/31"_s, u"入社日より古い日付はありえません。･･･異動日"_s);
        refused(form, u"txtFields_0"_s, u"R8.4.1"_s, u"異動日が重複しています。"_s);
        type(form, u"txtFields_0"_s, u"2023/12/1"_s, Qt::Key_Tab);
        choose(form, u"DataCombo1_0"_s, 0);
        control(form, u"DataCombo1_1"_s).setFocus();
        EXPECT_EQ(rows(form, u"DataCombo1_1"_s),
                  QStringList({u"正社員"_s, u"嘱託"_s, u"パート"_s, u"役員"_s}));
        choose(form, u"DataCombo1_1"_s, 0);
        driver_.expectBox(u"先に所属大を選択してください。"_s, u"所属小選択エラー"_s);
        control(form, u"DataCombo1_3"_s).setFocus();
        EXPECT_EQ(focused(form), u"DataCombo1_2"_s);
        choose(form, u"DataCombo1_2"_s, 1);
        control(form, u"DataCombo1_3"_s).setFocus();
        EXPECT_EQ(rows(form, u"DataCombo1_3"_s), QStringList({u"経理課"_s, u"財務課"_s}));
        choose(form, u"DataCombo1_3"_s, 1);
        control(form, u"DataCombo1_2"_s).setFocus();
        choose(form, u"DataCombo1_2"_s, 0);
        EXPECT_EQ(text(form, u"DataCombo1_3"_s), QString());
        driver_.expectBox(u"この異動日以前に設定された役職はありません。"_s, kInputError);
        control(form, u"DataCombo1_4"_s).setFocus();
        EXPECT_EQ(focused(form), u"txtFields_0"_s);
        type(form, u"txtFields_0"_s, u"2024/12/1"_s, Qt::Key_Tab);
        driver_.expectBox(u"所属小を選択してください。"_s, u"所属小の選択"_s);
        click(form, u"cmdUpdate"_s);
        for (int combo : {3, 4, 5, 6}) {
            control(form, u"DataCombo1_%1"_s.arg(combo)).setFocus();
            choose(form, u"DataCombo1_%1"_s.arg(combo), 0);
        }
        refused(form, u"txtFields_2"_s, u"21"_s, u"1～20を入力してください。･･･等級"_s);
        refused(form, u"txtFields_2"_s, u"0"_s, u"1～20を入力してください。･･･等級"_s);
        type(form, u"txtFields_2"_s, u"x20"_s, Qt::Key_Tab);
        EXPECT_EQ(text(form, u"txtFields_2"_s), u"20"_s);
        click(form, u"cmdUpdate"_s);
    });
    EXPECT_EQ(
        stored(u"社員区分, 異動日, 所属大, 所属小, 役職, 職種, コース, 等級"_s, u"異動テーブル"_s).value(1),
        u"01 2024/12/1 01 11 01 01 01 20"_s);
    global_.cn_main->execute(u"update 入力可・不可テーブル set 所属小 = 0"_s);
    open<personnel::frmJinjiIdou2>([](QDialog& form) {
        choose(form, u"DataGrid1"_s, 2);
        click(form, u"cmdEdit"_s);
        control(form, u"DataCombo1_2"_s).setFocus();
        choose(form, u"DataCombo1_2"_s, 1);
        click(form, u"cmdUpdate"_s);
    });
    EXPECT_EQ(stored(u"所属大, 異動日, 所属小"_s, u"異動テーブル"_s).value(1), u"02 2024/12/1 "_s);
}

TEST_F(Records, OfFamilyAreUniqueByRelationAndShowNames) {
    person(u"000001"_s, u"小林　陽介"_s, u"1991/7/1"_s, u"1969/1/1"_s);
    const auto setSex = [&](const store::Value& code) {
        global_.cn_main->execute(
            u"update 家族テーブル set 性別 = ? where 社員Code = '000001' and 続柄 = '03'"_s, {code});
    };
    setSex(u"1"_s);
    const QStringList before = stored(u"氏名, 続柄, 性別, 扶養, 同居, 障害"_s, u"家族テーブル"_s);
    global_.cn_main->execute(u"update 入力可・不可テーブル set フリガナ = 0, 氏名 = null"_s);
    setSex({});
    open<personnel::frmJinjiKazoku>([&](QDialog& form) {
        ASSERT_EQ(rows(form, u"DataGrid1"_s, 3).size(), 2);
        const QString relation = rows(form, u"DataGrid1"_s, 3).first();
        click(form, u"cmdAdd"_s);
        refused(form, u"txtFields_2"_s, u"小林　長すぎる名前の家族"_s,
                u"項目の長さ(24)が制限(20)を越えています。 ･･･氏名"_s, u"入力のエラー"_s);
        type(form, u"txtFields_2"_s, u"小林　花"_s, Qt::Key_Tab);
        driver_.expectBox(u"続柄を選択してください。"_s, u"続柄選択エラー"_s);
        click(form, u"cmdUpdate"_s);
        chooseText(form, u"DataCombo1"_s, relation);
        driver_.expectBox(u"続柄が重複しています。"_s, u"続柄選択エラー"_s);
        click(form, u"cmdUpdate"_s);
        choose(form, u"DataCombo1"_s, static_cast<int>(rows(form, u"DataCombo1"_s).size()) - 1);
        refused(form, u"txtFields_4"_s, u"2026/11/23"_s,
                u"現在の日付より古い日付を入力してください。･･･生年月日"_s);
        type(form, u"txtFields_4"_s, u"2026/11/22"_s, Qt::Key_Tab);
        click(form, u"Option3_0"_s);
        click(form, u"Option2_3"_s);
        click(form, u"cmdUpdate"_s);
        choose(form, u"DataGrid1"_s, 2);
        EXPECT_TRUE(checked(form, u"Option3_0"_s) && checked(form, u"Option2_3"_s));
        EXPECT_EQ(text(form, u"txtFields_2"_s), u"小林　花"_s);
        choose(form, u"DataGrid1"_s, 0);
        EXPECT_EQ(text(form, u"DataCombo1"_s), relation);
        choose(form, u"DataGrid1"_s, 1);  // not stated: the options still show the row before
        click(form, u"cmdEdit"_s);
        EXPECT_TRUE(checked(form, u"Option1_0"_s));
        click(form, u"cmdUpdate"_s);
    });
    QStringList after = stored(u"氏名, 続柄, 性別, 扶養, 同居, 障害"_s, u"家族テーブル"_s);
    EXPECT_TRUE(after.takeLast().endsWith(u" 3 1 1 2"_s));
    EXPECT_EQ(after, before);
}

TEST_F(Records, OfQualificationsAreNotOlderThanTheirHolder) {
    person(u"000001"_s, u"小林　陽介"_s, u"1991/7/1"_s, u"1969/1/1"_s);
    open<personnel::frmJinjiSikaku>([&](QDialog& form) {
        const QString held = text(form, u"DataCombo1"_s);
        click(form, u"cmdAdd"_s);
        chooseText(form, u"DataCombo1"_s, held);
        driver_.expectBox(u"資格・免許が重複しています。"_s, u"資格・免許選択エラー"_s);
        click(form, u"cmdUpdate"_s);
        choose(form, u"DataCombo1"_s, static_cast<int>(rows(form, u"DataCombo1"_s).size()) - 1);
        refused(form, u"Text1"_s, u"1968/12/31"_s,
                u"生年月日1969/1/1より古い日付はありえません。･･･取得年月日"_s);
        type(form, u"Text1"_s, u"1969/1/1"_s, Qt::Key_Tab);
        click(form, u"cmdUpdate"_s);
        EXPECT_EQ(rows(form, u"DataGrid1"_s, 3).value(1), u"1969/1/1"_s);
        choose(form, u"DataGrid1"_s, 1);
        driver_.expectBox(u" %1 1969/1/1 を削除しますか？"_s.arg(text(form, u"DataCombo1"_s)),
                          u"削除の確認"_s, forms::BoxAnswer::Yes);
        click(form, u"cmdDelete"_s);
        EXPECT_EQ(rows(form, u"DataGrid1"_s, 3).size(), 1);
    });
}

/// A name and its reading, typed into as an input method does.
class Reading : public ::testing::Test {
  protected:
    Reading() { name_.show(); }
    void compose(const QString& composition, const QString& commit = {}, int replaced = 0) {
        QInputMethodEvent event(composition, {});
        event.setCommitString(commit, -replaced, replaced);
        QCoreApplication::sendEvent(&name_, &event);
    }
    void key(Qt::Key code, const QString& text) {
        QKeyEvent event(QEvent::KeyPress, code, Qt::NoModifier, text);
        QCoreApplication::sendEvent(&name_, &event);
    }
    QLineEdit name_, reading_;
    widgets::ReadingCapture capture_{&name_, &reading_};
};

TEST_F(Reading, IsTheKanaThatStoodBeforeTheConversion) {
    for (const QString& step : {u"y"_s, u"や"_s, u"やm"_s, u"やまだ"_s, u"山田"_s, u"八真田"_s})
        compose(step);
    compose({}, u"山田"_s);
    EXPECT_EQ(reading_.text(), u"ﾔﾏﾀﾞ"_s);
    capture_.furigana_set_mode(domain::KanaForm::Katakana);
    compose(u"たろうはなこ"_s);
    compose(u"はなこ"_s, u"太郎"_s);  // the rest goes on
    compose({}, u"ハナコ"_s);
    EXPECT_EQ(name_.text(), u"山田太郎ハナコ"_s);
    EXPECT_EQ(reading_.text(), u"ﾔﾏﾀﾞタロウハナコ"_s);
    name_.setCursorPosition(0);
    compose(u"こ"_s);
    compose({}, u"小"_s);
    EXPECT_EQ(reading_.text(), u"コﾔﾏﾀﾞタロウハナコ"_s);
}

TEST_F(Reading, KeepsNoRubbish) {
    compose(u"すずき"_s);
    compose({});  // cancelled
    compose({}, u"鈴木"_s);
    EXPECT_EQ(reading_.text(), QString());
    compose(u"いちろう"_s);
    compose({}, u"一郎"_s);
    compose(u"いちろ"_s, {}, 0);
    compose({}, u"一朗"_s, 2);  // converted once more
    EXPECT_EQ(reading_.text(), u"ｲﾁﾛｳ"_s);
    name_.selectAll();
    compose(u"さとう"_s);
    compose({}, u"佐藤"_s);
    EXPECT_EQ(reading_.text(), u"ｻﾄｳ"_s);
    capture_.furigana_set_mode(domain::KanaForm::Katakana);
    name_.setCursorPosition(0);
    key(Qt::Key_A, u"A"_s);
    EXPECT_EQ(name_.text() + reading_.text(), u"A佐藤ｻﾄｳA"_s);
    name_.selectAll();
    key(Qt::Key_Backspace, u"\b"_s);
    EXPECT_EQ(name_.text() + reading_.text(), QString());
    name_.setReadOnly(true);
    key(Qt::Key_B, u"B"_s);
    EXPECT_EQ(reading_.text(), QString());
}

}  // namespace
