#include "prep/frmSJikkou04.h"

#include "prep/frmSJikkou04Sub.h"
#include "prep/run_screens.h"
#include "prep/ui_input_grid.h"

namespace {

using namespace preptest;
using sample::kCriteria;

const QString kNext = u"Command2"_s, kSave = u"Command1"_s, kTake = u"Option1_0"_s, kKeep = u"Option1_1"_s;
const QString kNotice = u"確認"_s, kGridScreen = u"frmSJikkou04"_s;
const QString kOfRun = u"基準日 = '2026-12-10' AND 配分区分 = '01' AND 配分基準 = '01'"_s;

/// Four employees of 正社員賞与／一般社員, all with the grade E, and their evaluation results.
class EvaluationImport : public RunScreens {
  protected:
    EvaluationImport() : RunScreens(Content::Sample) {
        global_.kijunbi = u"2026/12/10"_s;
        addScreen<prep::frmSJikkou04>(kGridScreen);
        pick(kCriteria[0]);
        codes_ =
            read(u"SELECT 社員Code FROM S実行個人別計算 WHERE %1 ORDER BY 社員Code LIMIT 4"_s.arg(kOfRun));
        for (const QString& table : {u"S実行個人別計算"_s, u"S実行総額配分"_s}) {
            sql(u"DELETE FROM %1 WHERE %2 AND 社員Code > ?"_s.arg(table, kOfRun), {codes_[3]});
            sql(u"UPDATE %1 SET 評価 = 'E'"_s.arg(table));
        }
        sql(u"DELETE FROM Ｈ評価実績"_s);
        const struct {
            int person;
            QString date, grade;
            store::Value bunrui;
        } results[] = {{0, u"2026/11/20"_s, u"A"_s, u"02"}, {1, u"2026/11/20"_s, u"B"_s, u"02"},
                       {1, u"2026/11/20"_s, u"C"_s, u"03"}, {3, u"2026/11/20"_s, u"D"_s, u"02"},
                       {2, u"2026/6/20"_s, u"S"_s, u"01"},  {2, u"2026/12/10"_s, u"S"_s, u"02"},
                       {2, u"2026/12/9"_s, u"S"_s, u"03"},  {2, u"2026/12/8"_s, u"S"_s, store::Value()}};
        for (const auto& r : results)
            sql(u"INSERT INTO Ｈ評価実績(社員Code, 基準日, 評価, 分類Code) VALUES(?, ?, ?, ?)"_s,
                {codes_[r.person], d(r.date), r.grade, r.bunrui});
    }
    void pick(const sample::Criterion& c) {
        global_.haibun_kubun = QString::fromUtf16(c.kubun);
        global_.haibun_kubun_mei = QString::fromUtf16(c.kubunName);
        global_.haibun_kijun = QString::fromUtf16(c.kijun);
        global_.haibun_kijun_mei = QString::fromUtf16(c.kijunName);
    }
    QString stored() {
        const QString grades = u"SELECT 評価 FROM %1 WHERE %2 ORDER BY 社員Code, ID"_s;
        return read(grades.arg(u"S実行個人別計算"_s, kOfRun)).join(QString()) + u'/' +
               read(grades.arg(u"S実行総額配分"_s, kOfRun)).join(QString());
    }
    void takeDate(QDialog& form, const QString& date) {
        const QString hint =
            u"配分実行基準日の前日までに確定したデータを表示します。\n※ただし、昇給の評価結果は表示しません"_s;
        clickTold(form, kTake, hint, kNotice, BoxAnswer::Ok, BoxIcon::Information);
        chooseText(form, u"DataList1"_s, date);
    }
    void next(QDialog& form, const QStringList& told, const ScreenDriver::Step& look) {
        for (const QString& text : told) driver_.expectBox(text, kNotice);
        expectScreen(kGridScreen, look);
        click(form, kNext);
        EXPECT_FALSE(cn_.inTransaction());
    }
    static QString shown(QDialog& grid) {
        return rows(grid, u"Picture1"_s, prep::InputGrid::Value).join(QString());
    }
    const QStringList both_{u"個人別計算は該当者が4人います。"_s, u"総額配分は該当者が4人います。"_s};
    QStringList codes_;
};

TEST_F(EvaluationImport, TakesTheLastResultOfWhoStandsInTheRunOnce) {
    sql(u"INSERT INTO S実行個人別計算(社員Code, 基準日, 配分区分, 配分基準, 評価) VALUES(?, '2026-12-10', '01', '01', 'E')"_s,
        {codes_[3]});
    const QString need = u"評価結果の基準日を指定してください。"_s, needTitle = u"基準日指定の確認"_s;
    open<prep::frmSJikkou04Sub>([&](QDialog& form) {
        EXPECT_EQ(form.windowTitle() + text(form, u"Label1"_s), u"評価結果取込正社員賞与／一般社員"_s);
        clickTold(form, kNext, need, needTitle);
        EXPECT_EQ(focused(form), kTake);
        takeDate(form, u"2026/6/20"_s);
        EXPECT_EQ(rows(form, u"DataList1"_s), (QStringList{u"2026/6/20"_s, u"2026/11/20"_s}));
        click(form, kKeep);
        EXPECT_FALSE(visible(form, u"DataList1"_s) || visible(form, u"Label2"_s));
        next(form, {}, [&](QDialog& grid) { EXPECT_EQ(shown(grid), u"EEEEE"_s); });
        takeDate(form, u"2026/11/20"_s);
        next(form, {u"個人別計算は該当者が5人います。"_s, both_[1]}, [&](QDialog& grid) {
            EXPECT_TRUE(cn_.inTransaction());
            EXPECT_EQ(shown(grid), u"ACEEE"_s);
        });
        EXPECT_EQ(stored(), u"ACEEE/ACED"_s);
        sql(u"DELETE FROM Ｈ評価実績 WHERE 社員Code <> ?"_s, {codes_[2]});
        next(form, {u"個人別計算は該当者はいません。"_s, u"総額配分は該当者はいません。"_s}, [](QDialog&) {});
        sql(u"DELETE FROM Ｈ評価実績"_s);
        click(form, kKeep);
        driver_.expectBox(driver_.boxes()[1].text, kNotice);
        click(form, kTake);
        EXPECT_EQ(rows(form, u"DataList1"_s), QStringList());
        clickTold(form, kNext, need, needTitle);
    });
}

TEST_F(EvaluationImport, AsksWhereGradesAreUsedAndInTheirWords) {
    const QString off = u"は処理の対象外です。"_s, none = u"は該当者はいません。"_s, a = u"個人別計算"_s,
                  b = u"総額配分"_s;
    // The stored E is no word of the third vocabulary, but stays in sight.
    const struct {
        int criterion;
        QString words, flags;
        QStringList told;
    } cases[] = {{0, u"AB"_s, u"101"_s, both_},
                 {1, u"ABCDE"_s, u"010"_s, {a + none, b + off}},
                 {2, u"ABCE"_s, u"001"_s, {a + off, b + none}},
                 {3, {}, u"000"_s, {}}};
    sql(u"UPDATE S係数評価段階設定 SET 評語タイプ = '12' WHERE 配分区分 = '01' AND 配分基準 = '01'"_s);
    for (const auto& c : cases) {
        pick(kCriteria[c.criterion]);
        open<prep::frmSJikkou04Sub>([&](QDialog& form) {
            QString flags;
            for (bool flag : {global_.hyouka_shikyuu, global_.hyouka_kojinbetsu, global_.hyouka_sougaku})
                flags += flag ? u'1' : u'0';
            EXPECT_EQ(flags, c.flags);
            EXPECT_EQ(visible(form, u"Label3"_s), c.words.isEmpty());
            EXPECT_EQ(visible(form, u"Frame1"_s) && enabled(form, kNext), !c.words.isEmpty());
            if (c.words.isEmpty()) return;
            takeDate(form, u"2026/11/20"_s);
            next(form, c.told, [&](QDialog& grid) {
                EXPECT_EQ(rows(grid, u"DataCombo1_0"_s).join(QString()), c.words);
                const QString stored = shown(grid);
                for (Qt::Key key : {Qt::Key_Home, Qt::Key_Down, Qt::Key_Up}) press(grid, key);
                press(grid, Qt::Key_Z,
                      Qt::ControlModifier);  // the E too, once another word has taken its place
                EXPECT_EQ(shown(grid), stored);
            });
        });
    }
    sql(u"DELETE FROM S係数評価段階設定"_s);
    pick(kCriteria[2]);
    driver_.expectBox(u"この配分基準で使う評語が設定されていません。"_s, {});
    open<prep::frmSJikkou04>([&](QDialog& grid) { EXPECT_FALSE(enabled(grid, kSave)); });
}

TEST_F(EvaluationImport, SavesAllOrNothing) {
    open<prep::frmSJikkou04Sub>([&](QDialog& form) {
        takeDate(form, u"2026/11/20"_s);
        const QByteArray before = dump(cn_);
        const QString poolFails = u"UPDATE ON S実行総額配分"_s;
        breakWrites(poolFails);
        for (const QString& text : both_) driver_.expectBox(text, kNotice);
        expectRollback();
        click(form, kNext);
        expectUnchanged(before);
        repairWrites();
        sql(u"UPDATE Ｈ評価実績 SET 評価 = 'ABC' WHERE 社員Code = ?"_s, {codes_[3]});
        const QByteArray tooLong = dump(cn_);
        driver_.expectBox(both_[0], kNotice);
        expectRollback();
        click(form, kNext);
        expectUnchanged(tooLong);
        sql(u"UPDATE Ｈ評価実績 SET 評価 = 'D' WHERE 社員Code = ?"_s, {codes_[3]});
        const auto fail = [&](QDialog& grid) {
            press(grid, Qt::Key_B);  // the first one's A
            breakWrites(poolFails);
            expectRollback();
            click(grid, kSave);
            EXPECT_EQ(shown(grid), u"BCED"_s);
        };
        next(form, both_, [&](QDialog& grid) {
            fail(grid);
            driver_.expectBox(u"更新していない入力が1人分あります。更新せずに閉じますか？"_s, u"終了の確認"_s,
                              BoxAnswer::Yes);
            press(grid, Qt::Key_Escape);
            EXPECT_TRUE(driver_.boxes().back().loses);
        });
        expectUnchanged(before);
        next(form, both_, [&](QDialog& grid) {
            fail(grid);
            repairWrites();
            click(grid, kSave);
        });
        EXPECT_EQ(stored(), u"BCED/BCED"_s);
        sql(u"UPDATE S実行個人別計算 SET 評価 = '' WHERE 社員Code = ?"_s, {codes_[2]});
        click(form, kKeep);
        next(form, {}, [&](QDialog& grid) {
            EXPECT_EQ(grid.windowTitle(), u"評価結果の入力"_s);
            clickTold(grid, kSave, u"未入力ヶ所があります"_s, u"未入力"_s);
            EXPECT_EQ(focused(grid), u"DataCombo1_2"_s);
            chooseText(grid, u"DataCombo1_2"_s, u"S"_s);
            click(grid, kSave);
        });
        EXPECT_EQ(stored(), u"BCSD/BCSD"_s);
    });
}

}  // namespace
