#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QScrollBar>
#include <QTableView>

#include "prep/frmSJikkou01.h"
#include "prep/frmSJikkou02.h"
#include "prep/frmSJikkou03.h"
#include "prep/frmSJikkou03Sub.h"
#include "prep/run_screens.h"
#include "prep/snapshot.h"
#include "prep/ui_input_grid.h"
#include "widgets/theme.h"

namespace {

using namespace preptest;

const QString kGrid = u"Picture1"_s;
const QString kRange = u"1～99,999,999円を入力してください。"_s;
const QString kInputError = u"入力エラー"_s;

/// The grids over the first few employees of 正社員賞与／一般 of the sample company.
class Grids : public RunScreens {
  protected:
    Grids() : RunScreens(Content::Sample) {
        global_.kijunbi = u"2026/12/10"_s;
        global_.haibun_kubun = global_.haibun_kijun = u"01"_s;
        global_.haibun_kubun_mei = u"正社員賞与"_s;
        global_.haibun_kijun_mei = u"一般"_s;
        prep::SelectIntoX(cn_, *prep::readDates(cn_, prep::Side::Jikkou, sample::newestKijunbi()));
    }
    QStringList codes() { return stored(u"S実行個人別計算"_s, u"社員Code"_s); }
    /// Leaves the first `count` employees in the three tables.
    void keep(int count) {
        const QString last = codes().value(count - 1);
        for (prep::RunTable table : prep::kRunTables)
            sql(u"delete from "_s + prep::runTableName(table) + kOfRun + u" and 社員Code > ?"_s,
                {sample::newestKijunbi(), u"01"_s, u"01"_s, last});
    }
    QStringList stored(const QString& table, const QString& column) {
        return read(u"select %1 from %2%3 order by 社員Code"_s.arg(column, table, kOfRun),
                    {sample::newestKijunbi(), u"01"_s, u"01"_s});
    }
    template <class Screen>
    void open(const QString& houshiki, const QString& koumoku, const ScreenDriver::Step& step) {
        global_.santei_houshiki = houshiki;
        global_.santei_koumoku = koumoku;
        RunScreens::open<Screen>(step);
    }
    static QStringList values(QDialog& form) { return rows(form, kGrid, prep::InputGrid::Value); }
    static void cancel(QDialog& form) { click(form, u"Command2"_s); }
    void expectLoss(int people, BoxAnswer answer) {
        driver_.expectBox(u"更新していない入力が%1人分あります。更新せずに閉じますか？"_s.arg(people),
                          u"終了の確認"_s, answer);
    }
    static void paste(QDialog& form, const QString& text) {
        QGuiApplication::clipboard()->setText(text);
        press(form, Qt::Key_V, Qt::ControlModifier);
    }

    const QString kOfRun = u" where 基準日 = ? and 配分区分 = ? and 配分基準 = ?"_s;
};

TEST_F(Grids, ShowTheirItemAndTheScrollBarFromElevenRowsOn) {
    using prep::frmSJikkou01, prep::frmSJikkou02, prep::frmSJikkou03;
    keep(11);
    const auto shows = [&](const QString& caption, const QString& value, int count) {
        return [=](QDialog& form) {
            EXPECT_EQ(form.windowTitle(), caption);
            EXPECT_EQ(text(form, u"Label8"_s), u"正社員賞与／一般  %1人"_s.arg(count));
            EXPECT_EQ(values(form), QStringList(count, value));
            EXPECT_EQ(enabled(form, u"Command1"_s), count > 0);
            EXPECT_EQ(visible(form, u"VScroll1"_s), count > 10);
            EXPECT_EQ(control<QTableView>(form, kGrid).verticalScrollBar()->pageStep(), 3);
            if (count > 0) {
                EXPECT_EQ(control<QLineEdit>(form, u"Text1_0"_s).selectedText(), value);
            }
            press(form, Qt::Key_Escape);
        };
    };
    sql(u"update S実行個人別計算 set 支給係数 = 1"_s);
    sql(u"update S実行総額配分 set 出勤係数 = 1234.5, 基礎額Ｂ = 77000000"_s);
    sql(u"update S配分基準対応社員 set 特別加算金 = 50000000"_s);
    global_.settei_meisyou = u"05"_s;
    global_.settei_meisyou_mei = u"出勤率"_s;
    open<frmSJikkou01>(u"4"_s, {}, shows(u"特別加算金"_s, u"5,000"_s, 11));
    open<frmSJikkou02>(u"2"_s, u"2"_s, shows(u"総額配分／基礎額Ｂ"_s, u"7,700"_s, 11));
    open<frmSJikkou03>(u"2"_s, u"3"_s, shows(u"総額配分／出勤率"_s, u"1,234.500"_s, 11));
    keep(10);
    open<frmSJikkou03>(u"1"_s, u"4"_s, shows(u"個人別計算／支給係数"_s, u"1.000"_s, 10));
    sql(u"delete from IdoChuusyutsuMax2"_s);
    open<frmSJikkou02>(u"1"_s, u"2"_s, shows(u"個人別計算／基礎額Ｂ"_s, QString(), 0));
}

TEST_F(Grids, AreTypedDownwardsJudgedAndStoredWithTheirSum) {
    keep(3);
    sql(u"update S配分基準対応社員 set 金一封 = 0"_s);
    sql(u"delete from S実行予算"_s);
    open<prep::frmSJikkou01>(u"3"_s, {}, [&](QDialog& form) {
        type(form, u"Text1_0"_s, u"1a2.5-0"_s);  // only digits pass
        EXPECT_EQ(text(form, u"Text1_0"_s), u"1250"_s);
        EXPECT_EQ(text(form, u"LabelTotal"_s), u"合計 1,250円　入力 3人／3人　変更 1人"_s);
        press(form, Qt::Key_Return);
        EXPECT_EQ(focused(form), u"Text1_1"_s);
        type(form, u"Text1_1"_s, u"100000000"_s);
        for (Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Tab, Qt::Key_Enter}) {
            driver_.expectBox(kRange, kInputError);
            press(form, key);
            EXPECT_EQ(focused(form), u"Text1_1"_s);
        }
        driver_.expectBox(kRange, kInputError);
        click(form, u"Command1"_s);  // not left, so not pressed
        type(form, u"Text1_1"_s, QString());
        driver_.expectBox(u"空欄なので0にします。"_s, u"空欄0表示"_s);
        press(form, Qt::Key_Up);
        EXPECT_EQ(text(form, u"Text1_1"_s), u"0"_s);
        type(form, u"Text1_1"_s, u"99999999"_s, Qt::Key_Tab);
        EXPECT_EQ(focused(form), u"Text1_2"_s);
        press(form, Qt::Key_Up);
        EXPECT_EQ(text(form, u"Text1_1"_s), u"99,999,999"_s);
        press(form, Qt::Key_End, Qt::ControlModifier);
        press(form, Qt::Key_Return);
        EXPECT_EQ(focused(form), u"Command1"_s);
        expectLoss(2, BoxAnswer::No);
        press(form, Qt::Key_Escape);
        choose(form, kGrid, 0);  // a click opens the row's cell
        EXPECT_EQ(focused(form), u"Text1_0"_s);
        press(form, Qt::Key_U, Qt::AltModifier);
    });
    EXPECT_EQ(stored(u"S配分基準対応社員"_s, u"金一封"_s), (QStringList{u"1250"_s, u"99999999"_s, u"0"_s}));
    EXPECT_EQ(read(u"select 金一封合計, 特別加算金合計 from S実行予算"_s), QStringList{u"100001249|-"_s});
    // The budget's row stands, and nobody has an amount: no sum.
    sql(u"update S配分基準対応社員 set 特別加算金 = null"_s);
    prep::storeTypedTotal(cn_, {sample::newestKijunbi(), u"01"_s, u"01"_s}, u"特別加算金"_s);
    EXPECT_EQ(read(u"select 金一封合計, 特別加算金合計 from S実行予算"_s), QStringList{u"100001249|-"_s});
}

TEST_F(Grids, RefuseAWholeBlockThatDoesNotFit) {
    keep(4);
    sql(u"update S実行個人別計算 set 基礎額Ａ = 100000000"_s);
    const auto refused = [&](const QString& why) {
        driver_.expectBox(why + u"\n貼り付けは行いません。"_s, u"貼り付けの確認"_s, BoxAnswer::Ok,
                          forms::BoxIcon::Warning);
    };
    open<prep::frmSJikkou02>(u"1"_s, u"1"_s, [&](QDialog& form) {
        const QByteArray before = dump(cn_);
        press(form, Qt::Key_Down);
        refused(u"2行目の値（%1 %2）を入力できません。\n%3"_s.arg(
            codes()[2], rows(form, kGrid, prep::InputGrid::Shimei)[2], kRange));
        paste(form, u"20000\r\n0\r\n30000\r\n"_s);
        EXPECT_EQ(values(form), QStringList(4, u"10,000"_s));
        paste(form, u"￥２０，０００\r\n30,000\r\n"_s);
        EXPECT_EQ(values(form), (QStringList{u"10,000"_s, u"20,000"_s, u"30,000"_s, u"10,000"_s}));
        EXPECT_EQ(text(form, u"Text1_1"_s), u"20,000"_s);
        EXPECT_EQ(text(form, u"LabelTotal"_s), u"合計 70,000円　入力 4人／4人　変更 2人"_s);
        expectUnchanged(before);
        expectLoss(2, BoxAnswer::Yes);
        cancel(form);
    });
}

TEST_F(Grids, TakeBackCopyAndGiveByCode) {
    keep(3);
    global_.settei_meisyou = u"05"_s;
    const QStringList code = codes();
    for (int i = 0; i < 3; ++i)
        sql(u"update S実行個人別計算 set 出勤係数 = ? where 社員Code = ?"_s, {1.23456 + i, code[i]});
    const auto copied = [](QDialog& form, Qt::KeyboardModifiers keys) {
        press(form, Qt::Key_C, keys);
        return QGuiApplication::clipboard()->text();
    };
    const auto tinted = [](QDialog& form) {
        QString signs;
        const auto* model = control<QTableView>(form, kGrid).model();
        for (int row = 0; row < model->rowCount(); ++row)
            signs +=
                model->index(row, prep::InputGrid::Value).data(Qt::BackgroundRole).isValid() ? u'x' : u'-';
        return signs;
    };
    open<prep::frmSJikkou03>(u"1"_s, u"3"_s, [&](QDialog& form) {
        const QStringList first = values(form);
        EXPECT_EQ(first[0] + text(form, u"Text1_0"_s), u"約 1.2351.23456"_s);
        type(form, u"Text1_0"_s, u"1.5"_s, Qt::Key_Down);
        type(form, u"Text1_1"_s, u"3"_s);
        EXPECT_EQ(tinted(form), u"xx-"_s);
        EXPECT_EQ(control(form, u"Text1_1"_s).grab().toImage().pixelColor(3, 9), widgets::changedColor());
        press(form, Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(text(form, u"Text1_1"_s) + tinted(form), u"2.23456x--"_s);

        const QStringList whole = copied(form, Qt::ControlModifier | Qt::ShiftModifier).split(u'\n');
        EXPECT_EQ(whole[0], u"社員コード\t氏名\t所属大\t役職\t係数"_s);
        EXPECT_TRUE(whole[3].startsWith(code[2] + u'\t') && whole[3].endsWith(u"\t3.23456"_s));
        choose(form, kGrid, 2);  // a block grows from where the mouse was, too
        press(form, Qt::Key_Up, Qt::ShiftModifier);
        EXPECT_EQ(copied(form, Qt::ControlModifier), u"2.23456\n3.23456"_s);

        const auto preview = [&](const QStringList& results, const QString& button) {
            driver_.onScreen(u"frmSHaritsuke"_s, [=](QDialog& seen) {
                EXPECT_EQ(rows(seen, u"DataGrid1"_s, 4), results);
                click(seen, button);
            });
        };
        const QString nobody = u"この一覧にいない社員です。貼り付けません"_s, changes = u"変わります"_s;
        preview({u"「abc」は数字として読めません。"_s, u"同じ社員コードが2回あります。"_s}, u"Command2"_s);
        paste(form, u"%1\tabc\n%1\t2\n"_s.arg(code[0]));
        EXPECT_EQ(tinted(form), u"x--"_s);
        preview({nobody, changes, u"いまの値と同じです"_s}, u"Command1"_s);
        paste(form, u"率\t社員Code\r\n４\t%1\r\n5\t999999\r\n1.5\t%2\r\n"_s.arg(
                        QString::number(code[2].toInt()), code[0]));
        EXPECT_EQ(values(form).last() + tinted(form), u"4.000x-x"_s);
        press(form, Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(values(form).last() + tinted(form), first.last() + u"x--"_s);
        press(form, Qt::Key_Home, Qt::ControlModifier);
        type(form, u"Text2"_s, u"3"_s);
        type(form, u"Text3"_s, u"4"_s);
        click(form, u"Command4"_s);  // the calculator's result
        EXPECT_EQ(text(form, u"Text1_0"_s), u"0.750"_s);
        driver_.expectBox(u"総額配分の係数にも同じ値をコピーしますか？"_s, u"係数コピーの確認"_s,
                          BoxAnswer::No);
        click(form, u"Command1"_s);
    });
    EXPECT_EQ(stored(u"S実行個人別計算"_s, u"出勤係数"_s),
              (QStringList{u"0.75"_s, u"2.23456"_s, u"3.23456"_s}));
}

TEST_F(Grids, StoreNothingWhereEmployeesDifferOrTheWriteFails) {
    keep(3);
    const QString dropped = codes()[1];
    sql(u"update S実行個人別計算 set 基礎額Ａ = null where 社員Code = ?"_s, {codes()[2]});
    sql(u"delete from IdoChuusyutsuMax2 where 社員Code = ?"_s, {dropped});
    open<prep::frmSJikkou02>(u"1"_s, u"1"_s, [&](QDialog& form) {
        driver_.expectBox(u"未入力ヶ所があります"_s, u"未入力"_s);
        click(form, u"Command1"_s);
        EXPECT_EQ(focused(form), u"Text1_1"_s);
        driver_.expectBox(u"空欄なので10000にします。"_s, u"空欄10000表示"_s);
        press(form, Qt::Key_Tab);
        const QByteArray before = dump(cn_);
        driver_.expectBox(
            u"画面の社員と「個人別計算」の社員が一致しないため、更新しませんでした。\n画面にいない社員: "
            u"%1\n"
            "個人データの取込と、対象者⇔配分基準の対応を確かめてください。"_s.arg(dropped),
            u"社員の不一致"_s, BoxAnswer::Ok, forms::BoxIcon::Warning);
        click(form, u"Command1"_s);
        expectUnchanged(before);
        EXPECT_EQ(values(form)[1], u"10,000"_s);  // what was typed stays

        sql(u"delete from S実行個人別計算 where 社員Code = ?"_s, {dropped});
        breakWrites(u"UPDATE ON S実行個人別計算 WHEN new.社員Code > '%1'"_s.arg(dropped));
        const QByteArray without = dump(cn_);
        expectRollback();
        click(form, u"Command1"_s);
        expectUnchanged(without);
        expectLoss(1, BoxAnswer::Yes);
        press(form, Qt::Key_Escape);
    });
}

TEST_F(Grids, CopyACoefficientToTheOtherMethodOnAYes) {
    keep(2);
    sql(u"delete from S係数設定"_s);
    for (const QString& method : {u"1"_s, u"2"_s})
        sql(u"insert into S係数設定(配分区分Code,配分基準Code,設定名称,算定方式,入力区分Code,係数) "
            "values('01','01','05',?,'1','出勤率')"_s,
            {method});
    for (prep::RunTable table : {prep::RunTable::KojinBetsu, prep::RunTable::SougakuHaibun})
        sql(u"update %1 set 出勤係数 = 1"_s.arg(prep::runTableName(table)));
    global_.settei_meisyou = u"05"_s;
    const auto save = [&](const QString& question, BoxAnswer answer, const QString& value) {
        return [=, this](QDialog& form) {
            type(form, u"Text1_0"_s, value);
            if (!question.isEmpty()) driver_.expectBox(question, u"係数コピーの確認"_s, answer);
            click(form, u"Command1"_s);
        };
    };
    const auto both = [&] {
        return stored(u"S実行個人別計算"_s, u"出勤係数"_s).join(u' ') + u" | "_s +
               stored(u"S実行総額配分"_s, u"出勤係数"_s).join(u' ');
    };
    const QString toPool = u"総額配分の係数にも同じ値をコピーしますか？"_s;
    open<prep::frmSJikkou03>(u"1"_s, u"3"_s, save(toPool, BoxAnswer::No, u"0.5"_s));
    EXPECT_EQ(both(), u"0.5 1 | 1 1"_s);
    open<prep::frmSJikkou03>(u"1"_s, u"3"_s, save(toPool, BoxAnswer::Yes, u"0.0004"_s));  // shown as 0.000
    EXPECT_EQ(both(), u"0.0004 1 | 0.0004 1"_s);
    open<prep::frmSJikkou03>(
        u"2"_s, u"3"_s,
        save(u"個人別計算の係数にも同じ値をコピーしますか？"_s, BoxAnswer::Yes, u"999.999"_s));
    EXPECT_EQ(both(), u"999.999 1 | 999.999 1"_s);
    open<prep::frmSJikkou03>(u"1"_s, u"4"_s, save({}, BoxAnswer::No, u"1.25"_s));
    EXPECT_EQ(stored(u"S実行個人別計算"_s, u"支給係数"_s)[0], u"1.25"_s);
    // The other table lacks somebody: neither of the two is written.
    sql(u"delete from S実行総額配分 where 社員Code = ?"_s, {codes()[1]});
    const QString before = both();
    open<prep::frmSJikkou03>(u"1"_s, u"3"_s, [&](QDialog& form) {
        type(form, u"Text1_0"_s, u"3"_s);
        driver_.expectBox(toPool, u"係数コピーの確認"_s, BoxAnswer::Yes);
        driver_.expectBox(
            u"画面の社員と「総額配分」の社員が一致しないため、更新しませんでした。\n登録先にいない社員: "
            u"%1\n"
            "個人データの取込と、対象者⇔配分基準の対応を確かめてください。"_s.arg(codes()[1]),
            u"社員の不一致"_s);
        click(form, u"Command1"_s);
        type(form, u"Text1_0"_s, u"999.9990"_s, Qt::Key_Tab);  // the value it came with: nothing to lose
        cancel(form);
    });
    EXPECT_EQ(both(), before);
}

TEST_F(Grids, HaveACalculatorThatStoresNothing) {
    keep(1);
    global_.settei_meisyou = u"05"_s;
    sql(u"update S実行個人別計算 set 出勤係数 = 2"_s);
    open<prep::frmSJikkou03>(u"1"_s, u"3"_s, [&](QDialog& form) {
        EXPECT_EQ(text(form, u"Label6"_s), u"0"_s);
        type(form, u"Text2"_s, u"1230"_s, Qt::Key_Return);
        EXPECT_EQ(text(form, u"Text2"_s), u"1,230"_s);
        EXPECT_EQ(focused(form), u"Text3"_s);
        EXPECT_EQ(text(form, u"Label6"_s), u"0.000"_s);
        type(form, u"Text3"_s, u"7"_s);
        EXPECT_EQ(text(form, u"Label6"_s), u"175.714"_s);
        driver_.expectBox(u"空欄なので0にします。"_s, u"空欄0表示"_s);
        type(form, u"Text3"_s, QString());
        EXPECT_EQ(text(form, u"Text3"_s) + text(form, u"Label6"_s), u"00.000"_s);
        driver_.expectBox(u"不正な入力がありました。0にします。"_s, kInputError);
        control<QLineEdit>(form, u"Text3"_s).setText(u"x"_s);
        EXPECT_EQ(text(form, u"Text3"_s) + u' ' + text(form, u"Label6"_s), u"1 1,230.000"_s);
        type(form, u"Text1_0"_s, u"0"_s);
        driver_.expectBox(u"0.000は暫定的に1.000にします。"_s, kInputError);
        press(form, Qt::Key_Tab);
        EXPECT_EQ(text(form, u"Text1_0"_s), u"1"_s);
        expectLoss(1, BoxAnswer::Yes);
        cancel(form);
    });
}

TEST_F(Grids, CoefficientIsChosenFirst) {
    global_.santei_houshiki = u"1"_s;
    addScreen<prep::frmSJikkou03>(u"frmSJikkou03"_s);
    sql(u"delete from S係数設定"_s);
    sql(u"insert into S係数設定(配分区分Code,配分基準Code,設定名称,算定方式,入力区分Code,係数) "
        "values('01','01','16','1','1','功労'),('01','01','05','1','1','出勤率'),('01','01','01','1','3','"
        "年齢'),"
        "('01','01','02','1','2','勤続'),('01','01','05','2','1','出勤率')"_s);
    const QString title = u"係数指定の確認"_s;
    open<prep::frmSJikkou03Sub>(u"1"_s, u"3"_s, [&](QDialog& form) {
        EXPECT_EQ(rows(form, u"DataList1"_s), (QStringList{u"出勤率"_s, u"功労"_s}));
        driver_.expectBox(u"係数を指定してください。"_s, title);
        click(form, u"Command1"_s);
        chooseText(form, u"DataList1"_s, u"功労"_s);
        driver_.expectBox(u"『功労』を指定します。"_s, title, BoxAnswer::Yes);
        expectScreen(u"frmSJikkou03"_s,
                     [](QDialog& grid) { EXPECT_EQ(grid.windowTitle(), u"個人別計算／功労"_s); });
        click(form, u"Command1"_s);
        EXPECT_EQ(global_.settei_meisyou, u"16"_s);
    });
    global_.jikkou_syuusei_mode = true;
    open<prep::frmSJikkou03Sub>(u"1"_s, u"3"_s, [&](QDialog& form) {
        EXPECT_EQ(rows(form, u"DataList1"_s), (QStringList{u"年齢"_s, u"勤続"_s}));
    });
}

}  // namespace
