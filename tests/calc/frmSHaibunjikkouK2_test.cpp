#include "screen_fixture.h"

using namespace calctest;

// Choosing and typing in: each step shows what it needs, and what is wrong is told and changes nothing.
namespace {

const QString kNotNeeded = u"この処理は必要ありません。"_s, kInputError = u"入力エラー"_s;

TEST_F(Calculation, GoesForwardInThreeStepsAndBackWithEachChoice) {
    const QString chosen = u"Label2 Image1 Label3 Image2 Frame1 Frame3 "_s;
    open([&](QDialog& form) {
        EXPECT_EQ(inSight(form), u"Command1"_s);
        EXPECT_EQ(focused(form), u"DataList1"_s);
        choose(form, u"DataList1"_s, 0);
        EXPECT_EQ(inSight(form), u"Label2 Image1 Command1"_s);
        choose(form, u"DataList2"_s, 0);
        EXPECT_EQ(inSight(form), chosen + u"Command6"_s);
        EXPECT_EQ(text(form, u"Label3"_s), u"算定方式を指定してください｡"_s);
        const auto& g = global_;
        EXPECT_EQ(g.haibun_kubun + g.haibun_kubun_mei + g.haibun_kijun + g.haibun_kijun_mei,
                  u"01正社員賞与01一般社員"_s);
        click(form, u"Command6"_s);
        EXPECT_EQ(inSight(form), chosen + u"Command1 Frame4"_s);
        EXPECT_GE(form.width(), 11055 / 15);
        // The option that is chosen already closes the panel like any other.
        click(form, u"Option1_0"_s);
        EXPECT_EQ(inSight(form), chosen + u"Command6"_s);
        press(form, Qt::Key_Right);
        EXPECT_TRUE(checked(form, u"Option1_1"_s));
        EXPECT_EQ(inSight(form), chosen + u"Command1"_s);
        budget(form, u"9000000"_s, u"3000000"_s);
        run(form, kSougaku);
        EXPECT_EQ(inSight(form), chosen + u"Command1 Command4 Command5 Image3"_s);
        type(form, u"Text2"_s, u"1000000"_s, Qt::Key_Return);
        EXPECT_TRUE(text(form, u"Label24"_s).startsWith(u"⚠ 総額配分が予算を"_s)) << "more than it may";
        EXPECT_EQ(control(form, u"Label6_1"_s).property("mintTone").toString(), u"warning"_s);
        choose(form, u"DataList2"_s, 1);
        EXPECT_EQ(inSight(form), chosen + u"Command6"_s);
        choose(form, u"DataList1"_s, 1);
        EXPECT_EQ(inSight(form), u"Label2 Image1 Command1"_s);
        click(form, u"Command3"_s);
        EXPECT_EQ(help_, u"frmSHaibunjikkouK2"_s);
    });
}

TEST_F(Calculation, RefusesWhatCannotRun) {
    sql(u"delete from S配分基準対応社員"_s + kOfRun, runOf(Part));
    sql(u"update S配分基準 set 個人別計算 = 0 where 配分区分 = '02' and Code = '02'"_s);
    open([&](QDialog& form) {
        const auto refused = [&](const QString& box, const QString& title, const QString& focus) {
            const QByteArray before = everything();
            driver_.expectBox(box, title, BoxAnswer::Ok, BoxIcon::Critical);
            click(form, u"Command1"_s);
            EXPECT_EQ(focused(form), focus);
            expectUnchanged(before);
        };
        pick(form, Part);  // nobody left
        EXPECT_EQ(text(form, u"Label3"_s), u"この配分基準に対応する社員はいません。"_s);
        EXPECT_EQ(control(form, u"Label3"_s).property("mintTone").toString(), u"warning"_s);
        refused(kNotNeeded, u"確認"_s, u"DataList2"_s);

        pick(form, Shokutaku);  // typed amounts only
        EXPECT_EQ(text(form, u"Label3"_s), u"配分計算は必要ありません。"_s);
        EXPECT_EQ(control(form, u"Label3"_s).property("mintTone").toString(), QString());
        EXPECT_EQ(inSight(form), u"Label2 Image1 Label3 Image2 Frame1 Command1 Command4 Command5"_s);
        refused(kNotNeeded, u"確認"_s, u"DataList2"_s);

        pick(form, General);
        click(form, u"Option1_1"_s);
        type(form, u"Text2"_s, u""_s, Qt::Key_Return);
        refused(u"総額配分予算を入力してください。"_s, u"未入力"_s, u"Command1"_s);
        EXPECT_FALSE(visible(form, u"Command4"_s));
    });
}

TEST_F(Calculation, ShowsWhatTheFlagsOfTheCriterionAllow) {
    open([&](QDialog& form) {
        for (int flags = 0; flags < 16; ++flags) {
            SCOPED_TRACE(flags);
            const auto uses = [&](int kind) { return (flags & (1 << kind)) != 0; };
            sql(u"update S配分基準 set 個人別計算=?,総額配分=?,金一封=?,特別加算金=? where 配分区分='01' and Code='01'"_s,
                {uses(0), uses(1), uses(2), uses(3)});
            pick(form, General);
            const bool first = uses(0) || flags == 0, second = uses(1) || flags == 0;
            for (int i = 0; i < 4; ++i) {
                EXPECT_EQ(visible(form, u"Option1_%1"_s.arg(i)), uses(i) || flags == 0) << i;
                EXPECT_EQ(checked(form, u"Option1_%1"_s.arg(i)), i == (first ? 0 : second ? 1 : -1)) << i;
            }
            const QString buttons = first    ? u" Frame3 Command6"_s
                                    : second ? u" Frame3 Command1"_s
                                             : u" Command1 Command4 Command5"_s;
            EXPECT_EQ(inSight(form), u"Label2 Image1 Label3 Image2 Frame1"_s + buttons);
            for (const auto& [name, kind] :
                 {std::pair{u"Label6_4"_s, 1}, {u"Label7_0"_s, 2}, {u"Label7_1"_s, 3}})
                EXPECT_EQ(control(form, name).isHidden(), !uses(kind)) << name.toStdString();
            for (int i = 0; i < 2; ++i)
                EXPECT_EQ(control(form, u"Label23_%1"_s.arg(i)).isHidden(), uses(2 + i)) << "names the 0";
            EXPECT_EQ(enabled(form, u"Text1"_s) && enabled(form, u"Text2"_s), uses(1));
            EXPECT_EQ(text(form, u"Label7_2"_s), uses(1) ? u"総額配分予定"_s : QString());
        }
        // The typed amounts are not computed; choosing one only opens the way to the list.
        const QByteArray before = everything();
        click(form, u"Option1_2"_s);
        click(form, u"Command1"_s);
        EXPECT_TRUE(visible(form, u"Command4"_s) && visible(form, u"Image3"_s));
        expectUnchanged(before);
    });
    global_.haibun_sekkei_mode = true;
    open([&](QDialog& form) {
        pick(form, General);
        for (int i = 0; i < 4; ++i) EXPECT_EQ(enabled(form, u"Option1_%1"_s.arg(i)), i < 2) << i;
    });
}

TEST_F(Calculation, TakesValidBudgetsAndKeepsTheFocusOnOthers) {
    const QString notNumeric = u"数字以外は許されません。 "_s,
                  outside = u"0～99,999,999,999円を入力してください。"_s,
                  below = u"総額配分予算以上を入力してください。"_s,
                  above = u"予算総額以下を入力してください。"_s;
    const struct {
        QString box, entry, refusal;
        std::string row;  ///< stored afterwards
    } entries[] = {
        {u"Text1"_s, u"5000000"_s, {}, "5000000 0"},
        {u"Text2"_s, u"5000000"_s, {}, "5000000 5000000"},  // equal is fine for both
        {u"Text2"_s, u"5000001"_s, above, "5000000 5000000"},
        {u"Text2"_s, u"1200000"_s, {}, "5000000 1200000"},
        {u"Text1"_s, u"1199999"_s, below, "5000000 1200000"},
        {u"Text1"_s, u"99999999999"_s, {}, "99999999999 1200000"},
        {u"Text1"_s, u"100000000000"_s, outside, "99999999999 1200000"},
        {u"Text1"_s, u"99999999999999999999999"_s, outside, "99999999999 1200000"},
        {u"Text1"_s, u"7a-.8"_s, below, "99999999999 1200000"},  // only the digits are taken: 78
        {u"Text1"_s, u""_s, {}, "99999999999 1200000"},          // may be left, but is not stored like that
        {u"Text2"_s, u"1200000"_s, above, "99999999999 1200000"},
        {u"Text2"_s, u""_s, {}, "0 0"},
    };
    const auto row = [&] { return read(u"予算総額,総額配分予算"_s, u"S実行予算"_s, General); };
    open([&](QDialog& form) {
        const auto refused = [&](const QString& refusal) {
            driver_.expectBox(refusal, kInputError, BoxAnswer::Ok, BoxIcon::Critical);
        };
        pick(form, General);
        click(form, u"Option1_1"_s);
        budget(form, u"0"_s, u"0"_s);
        for (const auto& [box, entry, refusal, stays] : entries) {
            SCOPED_TRACE(entry.toStdString());
            const QString before = text(form, box);
            if (!refusal.isEmpty()) refused(refusal);
            type(form, box, entry, Qt::Key_Return);
            EXPECT_EQ(focused(form) == box, !refusal.isEmpty());
            EXPECT_EQ(row(), stays);
            if (!refusal.isEmpty()) {
                control<QLineEdit>(form, box).setText(before);
                continue;
            }
            EXPECT_EQ(text(form, box), store::formatGrouped(store::Money::fromYen(entry.toLongLong())));
            EXPECT_EQ(yen(form, u"Label6_4"_s), yen(form, u"Text1"_s) - sum(u"金一封"_s, General));
        }
        // Pasted text gets past the keys.
        for (const auto& [pasted, refusal] : {std::pair{u"百"_s, notNumeric}, {u"-1"_s, outside}}) {
            type(form, u"Text1"_s, u""_s);
            control<QLineEdit>(form, u"Text1"_s).setText(pasted);
            refused(refusal);
            press(form, Qt::Key_Tab);
            EXPECT_EQ(focused(form), u"Text1"_s);
        }
        type(form, u"Text1"_s, u"800000"_s, Qt::Key_Tab);
        // A wrong amount keeps the user from every other control, and closing leaves it behind.
        type(form, u"Text2"_s, u"900000"_s);
        refused(above);
        click(form, u"Command1"_s);
        click(form, u"Command2"_s);
    });
    EXPECT_EQ(row(), "800000 0");
    open([&](QDialog& form) {  // a good one is stored by closing as well
        pick(form, General);
        type(form, u"Text2"_s, u"700000"_s);
        press(form, Qt::Key_Escape);
    });
    EXPECT_EQ(row(), "800000 700000");
}

TEST_F(Calculation, OpensThePanelThatTheSetUpAsksFor) {
    // General's payment coefficient goes by six grades. Each step changes the set-up of the one before.
    const struct {
        QString change, box, panel;  ///< a statement; the text and the panel's first line, "" for none
    } cases[] = {
        {u"delete from S係数評価"_s, u""_s, u"S 2.600 2.600"_s},
        {u"insert into S係数設定(配分区分Code,配分基準Code,設定名称,算定方式,係数) values('01','01','04','1','出来')"_s,
         u"出来係数が未設定です。"_s, u""_s},
        {u"insert into S係数評価(配分区分,配分基準,評価Code) values('01','01','01'),('01','01','02')"_s,
         u"出来係数を設定する場合は、支給係数の設定方法に\n「評価別係数」を選ばないでください。\n"
         u"このまま計算すると評価を２重に乗じてしまいます。"_s,
         u""_s},
        {u"update S支給係数設定 set 設定方法 = '2', 一律係数 = 2.25"_s, u""_s, u" 評価 なし 2.250 2.250"_s},
        {u"update S支給係数設定 set 設定方法 = '1'"_s,
         u"支給係数は実行時入力です。\nシミュレーションは行いません。"_s, u""_s},
        {u"delete from S支給係数設定"_s, u"支給係数が未設定です。"_s, u""_s},
        // Two rows of the coefficient are a set-up that is not looked into: no box, no panel.
        {u"insert into S係数設定(配分区分Code,配分基準Code,設定名称,算定方式) values('01','01','04','1')"_s,
         u""_s, u""_s},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.change.toStdString());
        sql(c.change);
        open([&](QDialog& form) {
            pick(form, General);
            if (!c.box.isEmpty())
                driver_.expectBox(c.box, u"確認"_s, BoxAnswer::Ok,
                                  c.box.contains(u"実行時入力") ? BoxIcon::Information : BoxIcon::Critical);
            click(form, u"Command6"_s);
            const bool runs = !(c.box + c.panel).isEmpty() && !c.box.endsWith(u"未設定です。");
            EXPECT_EQ(visible(form, u"Command1"_s), runs);
            EXPECT_EQ(visible(form, u"Command6"_s), !runs);
            EXPECT_EQ(visible(form, u"Frame4"_s), !c.panel.isEmpty());
            QStringList seen;
            for (const QString& name : u"Label12_0 Label13_0 Text3_0 Label11 Label14 Text4"_s.split(u' '))
                if (visible(form, name) && !text(form, name).isEmpty()) seen << text(form, name);
            EXPECT_EQ(seen.join(u' '), c.panel);
            int boxes = 0;
            for (int i = 0; i < 9; ++i) boxes += visible(form, u"Text3_%1"_s.arg(i)) ? 1 : 0;
            EXPECT_EQ(boxes, c.panel.startsWith(u'S') ? 6 : 0);
        });
    }
}

}  // namespace
