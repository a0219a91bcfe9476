#include "masters/frmMasta.h"

#include "masters/frmMenuMasuta.h"
#include "personnel/person_screens.h"
#include "personnel/ui_code_change.h"
#include "reports/frmReport.h"
#include "support/fault_vfs.h"

namespace masters {
namespace {

using namespace persontest;

const MasterKind& kindOf(const QString& screen) {
    return *std::find_if(masterKinds().begin(), masterKinds().end(),
                         [&](const MasterKind& kind) { return kind.screen == screen; });
}

class Masta : public PersonScreens {
  protected:
    Masta() {
        FaultVfs::install();
        folder_.makeSample();
        openCompany();
        global_.app_dir = folder_.programDir();
        global_.panels.folder = folder_.company();
        for (const MasterKind& kind : masterKinds())
            screens_.add(kind.screen, [&kind](forms::House& house, QWidget* parent) {
                return new frmMasta(kind, house, parent);
            });
    }
    /// ｷｬﾝｾﾙ with something typed.
    void giveUp(QDialog& form) {
        driver_.expectBox(u"入力した内容はまだ更新されていません。"_s, u"入力の確認"_s, BoxAnswer::Yes);
        click(form, u"cmdCancel"_s);
    }
    void edit(const QString& screen, const ScreenDriver::Step& step) {
        frmMasta form(kindOf(screen), house_, nullptr);
        driver_.run(form, [&](QDialog& shown) {
            step(shown);
            if (shown.isVisible()) shown.reject();
        });
    }
    static void fill(QDialog& form, const QStringList& texts) {
        for (int i = 0; i < texts.size(); ++i)
            if (!texts[i].isNull()) type(form, u"txtFields_%1"_s.arg(i), texts[i], Qt::Key_Tab);
    }
    /// The box comes when the control is left, and the focus stays.
    void refused(QDialog& form, const QString& field, const QString& text, const QString& box,
                 const QString& title = u"入力エラー"_s) {
        driver_.expectBox(box, title);
        type(form, field, text, Qt::Key_Tab);
        EXPECT_EQ(focused(form), field) << qPrintable(box);
    }
    QString status(QDialog& form) { return text(form, u"lblStatus"_s); }
};

/// A row that another tool wrote stands behind the others, gets a code or goes.
TEST_F(Masta, ACodeThatIsNoNumberIsSeenAndPutRight) {
    for (const QString& code : {u"甲"_s, u"x1"_s})
        sql(u"insert into 採用区分マスタ(Code,採用区分) values(?,'他から')"_s, {code});
    edit(u"frmMastaSaiyou"_s, [&](QDialog& form) {
        const auto codes = [&] { return rows(form, u"DataGrid1"_s, 0); };
        const qsizetype last = codes().size() - 1;
        EXPECT_EQ(codes().mid(last - 1), (QStringList{u"x1"_s, u"甲"_s}));
        choose(form, u"DataGrid1"_s, int(last));
        driver_.expectBox(u" 甲 他から を削除しますか？"_s, u"削除の確認"_s, BoxAnswer::Yes);
        click(form, u"cmdDelete"_s);
        click(form, u"cmdEdit"_s);
        fill(form, {u"96"_s});
        click(form, u"cmdUpdate"_s);
        EXPECT_EQ(codes().last(), u"96"_s);
    });
}

/// Every master: an entry comes in, gets another code and goes again, and stands in the list at its place.
TEST_F(Masta, EachMasterTakesRenamesAndRemovesAnEntry) {
    for (const MasterKind& kind : masterKinds()) {
        SCOPED_TRACE(kind.screen.toStdString());
        const QString codes = u"select %1 from %2 where %3 = '試験'"_s.arg(
            kind.column(kind.code), kind.tableName(), kind.nameColumn());
        edit(kind.screen, [&](QDialog& form) {
            click(form, u"cmdAdd"_s);
            EXPECT_EQ(status(form), u"ﾚｺｰﾄﾞを追加します。");
            EXPECT_FALSE(visible(form, u"DataGrid1"_s) || visible(form, u"cmdClose"_s));
            if (kind.other >= 0) choose(form, u"DataCombo1"_s, 0);
            const QString third = kind.date >= 0 ? u"H12.4.1"_s : kind.age >= 0 ? u"18"_s : QString();
            fill(form, {u"97"_s, u"試験"_s, third});
            click(form, u"cmdUpdate"_s);
            EXPECT_EQ(status(form), u"Record: 1");  // where it stood before
            EXPECT_EQ(read(codes), QStringList{u"97"_s});
            const int codeColumn = kind.underOther ? 1 : 0;
            choose(form, u"DataGrid1"_s, int(rows(form, u"DataGrid1"_s, codeColumn).indexOf(u"97"_s)));
            click(form, u"cmdEdit"_s);
            EXPECT_EQ(status(form), u"ﾚｺｰﾄﾞを編集します。");
            fill(form, {u"98"_s});
            click(form, u"cmdUpdate"_s);
            EXPECT_EQ(read(codes), QStringList{u"98"_s});
            EXPECT_EQ(text(form, u"txtFields_0"_s), u"98");  // the entry stays the one shown
            driver_.expectBox(u" 98 試験 を削除しますか？"_s, u"削除の確認"_s, BoxAnswer::Yes);
            click(form, u"cmdDelete"_s);
            EXPECT_TRUE(read(codes).isEmpty());
        });
    }
}

TEST_F(Masta, WrongFieldsAreRefusedWhereTheyStand) {
    sql(u"insert into 続柄マスタ values('90','孤立',null)"_s);
    edit(u"frmMastaSyain"_s, [&](QDialog& form) {
        click(form, u"cmdAdd"_s);
        for (const char16_t* wrong : {u"0", u"100"})
            refused(form, u"txtFields_0"_s, QString::fromUtf16(wrong), u"1～99を入力してください。･･･Code"_s);
        refused(form, u"txtFields_0"_s, u"1"_s, u"Codeが重複しています。"_s);
        EXPECT_EQ(text(form, u"txtFields_0"_s), u"01");
        refused(form, u"txtFields_0"_s, u""_s, u"未入力は許されません。･･･Code"_s);
        type(form, u"txtFields_0"_s, u"5x6"_s, Qt::Key_Tab);  // letters are not taken
        EXPECT_EQ(text(form, u"txtFields_0"_s), u"56");
        refused(form, u"txtFields_1"_s, u"あいうえおかきく9"_s,
                u"項目の長さ(17)が制限(16)を越えています。 ･･･社員区分"_s, u"入力のエラー"_s);
        refused(form, u"txtFields_1"_s, u""_s, u"未入力は許されません。 ･･･社員区分"_s, u"入力のエラー"_s);
        type(form, u"txtFields_1"_s, u"試験"_s, Qt::Key_Tab);
        refused(form, u"txtFields_2"_s, u"4/1"_s, u"日付の入力が正しくありません。･･･設定年月日"_s);
        refused(form, u"txtFields_2"_s, u""_s, u"未入力は許されません。･･･設定年月日"_s);
        // Closing by the window's own button would lose what was typed.
        const auto gives = [&](BoxAnswer answer) {
            driver_.expectBox(u"入力した内容はまだ更新されていません。"_s, u"入力の確認"_s, answer);
        };
        gives(BoxAnswer::No);
        form.reject();
        gives(BoxAnswer::No);
        click(form, u"cmdCancel"_s);
        EXPECT_EQ(text(form, u"txtFields_1"_s), u"試験");
        gives(BoxAnswer::Yes);
        click(form, u"cmdCancel"_s);
        EXPECT_EQ(text(form, u"txtFields_0"_s), u"01");
    });
    edit(u"frmMastaGakureki"_s, [&](QDialog& form) {
        click(form, u"cmdEdit"_s);
        refused(form, u"txtFields_2"_s, u"100"_s, u"1～99を入力してください。･･･対応年齢"_s);
        giveUp(form);
    });
    edit(u"frmMastaSyozokuSyo"_s, [&](QDialog& form) {
        click(form, u"cmdAdd"_s);
        driver_.expectBox(u"所属大を選択してください。"_s, u"所属大の選択"_s);
        press(form, Qt::Key_Tab);
        EXPECT_EQ(focused(form), u"DataCombo1");
        choose(form, u"DataCombo1"_s, 0);
        refused(form, u"txtFields_0"_s, u"10000"_s, u"1～9999を入力してください。･･･Code"_s);
        refused(form, u"txtFields_0"_s, u"11"_s, u"Codeが重複しています。"_s);
        choose(form, u"DataCombo1"_s, 1);  // free under another department
        type(form, u"txtFields_0"_s, u"11"_s, Qt::Key_Tab);
        giveUp(form);
        click(form, u"cmdEdit"_s);
        choose(form, u"DataCombo1"_s, 1);
        driver_.expectBox(u"使用中のデータがあるため所属大は変更できません。"_s, u"入力エラー"_s);
        click(form, u"cmdUpdate"_s);
        giveUp(form);
    });
}

/// What people use stays; retired people count.
TEST_F(Masta, ACodeInUseIsNotRemoved) {
    const struct {
        QString screen, who;
    } uses[] = {{u"frmMastaSyain"_s, u"異動履歴"_s},
                {u"frmMastaSyozokuDai"_s, u"異動履歴"_s},
                {u"frmMastaSyozokuSyo"_s, u"異動履歴"_s},
                {u"frmMastaGakureki"_s, u"履歴書"_s},
                {u"frmMastaGiyuu1"_s, u"履歴書"_s},
                {u"frmMastaZokugara"_s, u"家族情報"_s},
                {u"frmMastaZokugaraGroup"_s, u"続柄マスタ"_s},
                {u"frmMastaShikaku"_s, u"資格・免許保有状況"_s}};
    sql(u"update 履歴書テーブル set 退職フラグ = -1, 最終学歴 = '01'"_s);
    sql(u"insert into 家族テーブル(社員Code,続柄) select '000001',Code from 続柄マスタ limit 1"_s);
    sql(u"insert into 資格・免許テーブル(社員Code,資格・免許) select '000001',Code from 資格・免許マスタ limit 1"_s);
    for (const auto& [screen, who] : uses)
        edit(screen, [&](QDialog& form) {
            driver_.expectBox(who + u"に使用中のデータがあるため削除できません。"_s, u"削除制限"_s);
            click(form, u"cmdDelete"_s);
        });
}

/// A changed code reaches people, coefficients and both companions; unchanged or cancelled it touches
/// nothing.
TEST_F(Masta, ARenameReachesEveryTableOrNone) {
    const auto dump = [&] {
        global_.cn_main.reset();
        const QByteArray all = folder_.fingerprint();
        openCompany();
        return all;
    };
    const QString holders =
        u"select (select count(*) from 異動テーブル where 社員区分 = ?) || '/' || "
        "(select count(*) from S係数社員区分 where 社員区分 = ?)"_s;
    const auto held = [&](const QString& code) {
        return global_.cn_main->query(holders, {code, code}).value(0).toText();
    };
    const QString before = held(u"01"_s);
    const QByteArray untouched = dump();
    edit(u"frmMastaSyain"_s, [&](QDialog& form) {
        click(form, u"cmdEdit"_s);
        fill(form, {u"31"_s});
        giveUp(form);
        click(form, u"cmdEdit"_s);
        click(form, u"cmdCancel"_s);  // nothing typed: nothing to ask
        click(form, u"cmdEdit"_s);
        click(form, u"cmdUpdate"_s);
    });
    EXPECT_EQ(firstDifference(untouched, dump()), "");
    // Every write in turn fails: the main files are as before, the entry typed is still there.
    for (int n = 1; n < 400; n += 7) {
        edit(u"frmMastaSyain"_s, [&](QDialog& form) {
            click(form, u"cmdEdit"_s);
            fill(form, {u"31"_s});
            driver_.answerFreely([](const forms::BoxRequest&) { return BoxAnswer::Yes; });
            FaultVfs::arm(FaultVfs::Operation::Write, n, FaultVfs::Kind::IoError);
            click(form, u"cmdUpdate"_s);
            const bool failed = FaultVfs::counted() >= n;
            FaultVfs::disarm();
            if (!failed) {
                n = 1000;
                return;
            }
            EXPECT_EQ(text(form, u"txtFields_0"_s), u"31") << n;
            EXPECT_TRUE(visible(form, u"cmdUpdate"_s)) << n;
            click(form, u"cmdCancel"_s);
        });
        if (n < 400) {
            EXPECT_EQ(held(u"01"_s), before) << n;
        }
    }
    EXPECT_EQ(held(u"31"_s), before);
    EXPECT_EQ(held(u"01"_s), u"0/0");
    global_.cn_main->execute(u"update 社員区分マスタ set Code = '0031' where Code = '31'"_s);
    edit(u"frmMastaSyain"_s, [&](QDialog& form) {
        click(form, u"cmdLast"_s);
        click(form, u"cmdEdit"_s);
        click(form, u"cmdUpdate"_s);
        EXPECT_EQ(text(form, u"txtFields_0"_s), u"0031");
    });
}

/// What fails behind the companions' files is told with what they keep; the next opening settles it on wish.
TEST_F(Masta, AFailureTellsWhatTheCompanionsKeep) {
    const QString chingin = u"・"_s + schema::fileName(folder_.company(), schema::File::Chingin);
    const QString hyouka = u"・"_s + schema::fileName(folder_.company(), schema::File::Hyouka);
    const QString rest = u"・%1\n・%2"_s.arg(schema::fileName(folder_.company(), schema::File::Kihon),
                                             schema::fileName(folder_.company(), schema::File::Syouyo));
    global_.cn_main.reset();
    const QByteArray before = folder_.fingerprint();
    openCompany();
    for (const BoxAnswer answer : {BoxAnswer::No, BoxAnswer::Yes}) {
        sql(u"CREATE TEMP TRIGGER 故障 BEFORE UPDATE ON 社員区分マスタ BEGIN SELECT RAISE(ABORT, 'fault'); END"_s);
        edit(u"frmMastaSyain"_s, [&](QDialog& form) {
            click(form, u"cmdEdit"_s);
            fill(form, {u"31"_s});
            driver_.expectBox(u"処理中にエラーが発生しました。処理を取り消します。"_s, u"取消"_s);
            driver_.expectBox(
                u"次のファイルは、社員区分Code「01」が新しいコード「31」に変更されたままです。\n\n%1\n%2\n\n"
                "もう一度更新すると、すべてのファイルが新しいコードになります。更新しないときは、次に会社を"
                "指定したときに元のコードへ戻せます。"_s.arg(chingin, hyouka),
                u"取消"_s, BoxAnswer::Ok, forms::BoxIcon::Warning);
            click(form, u"cmdUpdate"_s);
            giveUp(form);
        });
        openCompany();
        driver_.expectBox(
            u"社員区分Code「01」を「31」に変更する処理が、前回、途中で終了しました。\n\n新しいコードになって"
            u"いるファイル\n"
            "%1\n%2\n\n元のコードのままのファイル\n%3\n\nどちらのコードにそろえますか？"_s.arg(chingin,
                                                                                               hyouka, rest),
            u"コード変更の確認"_s, answer, forms::BoxIcon::Warning);
        personnel::askCutOffChange(house_, nullptr);
        personnel::askCutOffChange(house_, nullptr);  // settled: no word more
        global_.cn_main.reset();
        const QByteArray now = folder_.fingerprint();
        openCompany();
        if (answer == BoxAnswer::No) {
            EXPECT_EQ(firstDifference(before, now), "");
        }
    }
    EXPECT_EQ(read(u"select Code from 社員区分マスタ where Code in ('01','31')"_s), QStringList(u"31"_s));
    EXPECT_EQ(read(u"select count(*) from 異動テーブル where 社員区分 = '01'"_s), QStringList(u"0"_s));
}

TEST_F(Masta, BrowsingGoesByKeysAndTheLastEntryLeavesAnEmptyList) {
    sql(u"delete from 自由マスタ4"_s);
    sql(u"insert into 自由マスタ4 values('01','い'),('03','は'),('02','ろ')"_s);
    sql(u"update 会社テーブル set 自由マスタ4 = '技能 &A'"_s);
    edit(u"frmMastaGiyuu4"_s, [&](QDialog& form) {
        EXPECT_EQ(form.windowTitle(), u"技能 &A");
        EXPECT_EQ(text(form, u"lblLabels_1"_s), u"技能 &&A:"_s);
        EXPECT_EQ(control(form, u"txtFields_1"_s).accessibleName(), u"技能 &A"_s);
        EXPECT_EQ(rows(form, u"DataGrid1"_s, 1).join(u""_s), u"いろは");
        const struct {
            Qt::Key key;
            Qt::KeyboardModifiers modifiers;
            int record;
        } presses[] = {{Qt::Key_Down, {}, 2},
                       {Qt::Key_PageDown, {}, 3},
                       {Qt::Key_Down, {}, 3},
                       {Qt::Key_Home, {}, 1},
                       {Qt::Key_Up, {}, 1},
                       {Qt::Key_End, {}, 3},
                       {Qt::Key_PageUp, {}, 2},
                       {Qt::Key_Down, Qt::ControlModifier, 3},
                       {Qt::Key_Up, Qt::ControlModifier, 1}};
        for (const auto& [key, modifiers, record] : presses) {
            press(form, key, modifiers);
            EXPECT_EQ(status(form), u"Record: %1"_s.arg(record));
        }
        choose(form, u"DataGrid1"_s, 1);
        EXPECT_EQ(text(form, u"txtFields_1"_s), u"ろ");
        press(form, Qt::Key_Return);
        EXPECT_TRUE(visible(form, u"cmdUpdate"_s));
        click(form, u"cmdCancel"_s);
        for (const QString& next : {u"03 は"_s, u"01 い"_s}) {
            driver_.expectBox(u" "_s + text(form, u"txtFields_0"_s) + u' ' + text(form, u"txtFields_1"_s) +
                                  u" を削除しますか？"_s,
                              u"削除の確認"_s, BoxAnswer::Yes);
            click(form, u"cmdDelete"_s);
            EXPECT_EQ(text(form, u"txtFields_0"_s) + u' ' + text(form, u"txtFields_1"_s), next);
        }
        driver_.expectBox(u" 01 い を削除しますか？"_s, u"削除の確認"_s, BoxAnswer::Yes);
        click(form, u"cmdDelete"_s);
        EXPECT_EQ(status(form), u"Record: 0");
        for (const QString& name : {u"cmdEdit"_s, u"cmdDelete"_s, u"cmdNext"_s})
            EXPECT_FALSE(enabled(form, name)) << qPrintable(name);
        click(form, u"cmdAdd"_s);
        click(form, u"cmdUpdate"_s);  // nothing to say yet: there is no list to be unlike
        EXPECT_EQ(status(form), u"ﾚｺｰﾄﾞを追加します。");
        click(form, u"cmdCancel"_s);
        press(form, Qt::Key_Escape);
        EXPECT_FALSE(form.isVisible());
    });
}

TEST_F(Masta, TheMenuOpensEditorsAndPrintsLists) {
    sql(u"UPDATE 会社テーブル SET 自由マスタ1 = 'R&D区分'"_s);
    frmMenuMasuta menu(house_, nullptr);
    driver_.run(menu, [&](QDialog& form) {
        EXPECT_EQ(text(form, u"Command1"_s) + text(form, u"Command15"_s), u"★社員区分R&&D区分");
        for (const int off : {18, 19, 38, 39}) EXPECT_FALSE(visible(form, u"Command%1"_s.arg(off)));
        control(form, u"Command16"_s).setFocus();
        for (const int stop : {36, 17, 37, 20, 40, 1, 21, 2}) {  // from the last button round to the first
            press(form, Qt::Key_Tab);
            EXPECT_EQ(focused(form), u"Command%1"_s.arg(stop));
        }
        driver_.onScreen(u"frmMastaSyain"_s, [](QDialog& editor) { editor.reject(); });
        click(form, u"Command1"_s);
        for (int i = 0; i < 17; ++i) {
            const MasterKind& kind = masterKinds()[size_t(i)];
            driver_.onScreen(u"frmReport"_s, [&](QDialog& preview) {
                const reports::Report& report = static_cast<reports::frmReport&>(preview).report();
                EXPECT_EQ(report.rowCount(), read(u"select * from "_s + kind.tableName()).size());
                preview.reject();
            });
            click(form, u"Command%1"_s.arg(21 + i));
        }
        press(form, Qt::Key_Escape);
    });
    EXPECT_FALSE(global_.cn_main->hasTable(u"jsyozoku"_s));
}

}  // namespace
}  // namespace masters
