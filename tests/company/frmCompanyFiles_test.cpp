// The screens that make, keep and remove a company's set of files.
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QSettings>
#include <QTabWidget>
#include <QTextDocument>

#include "company/backup.h"
#include "company/compaction.h"
#include "company/company_open.h"
#include "company/create.h"
#include "company/frmBackup.h"
#include "company/frmDBSentaku.h"
#include "company/frmHikkosi.h"
#include "company/frmKaisyaSakujo.h"
#include "company/frmKaisyaShinki.h"
#include "company/frmPassword.h"
#include "company/frmSaiteki.h"
#include "company/key.h"
#include "company/opening_password.h"
#include "support/former_company.h"
#include "support/house_screens.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;
using namespace support;
using forms::BoxAnswer;
using forms::BoxIcon;

class CompanyFiles : public OverMain {
  protected:
    CompanyFiles() { addScreen(u"frmMenu000"_s); }
    Places places() const { return global_.places(); }
    QString backupOf(const QString& company) const { return places().backups() + u'/' + company; }
    /// The company as frmDBSentaku and its menu leave it.
    void open(const QString& shownName) {
        OpenedCompany opened = openCompany(places(), u"甲社"_s, global_.company_lock);
        global_.cn_main = std::move(opened.cn_main);
        global_.company_lock = std::move(opened.lock);
        global_.setFolderPanel(u"甲社"_s);
        global_.setCompanyPanel(shownName);
    }
    QStringList companies() const {
        QStringList names = companyFolders(places().data);
        names.sort();
        return names;
    }
};

TEST_F(CompanyFiles, ABackupGoesWhereTheToldRulesSay) {
    const QString title = u"バックアップの確認"_s;
    createCompany(places().data, u"乙社"_s, {});
    open(u"甲社"_s);
    QTemporaryDir drive, gone;
    const QString usb = drive.path(), empty = gone.path() + u"/none"_s;
    ASSERT_TRUE(QDir(usb).mkpath(u"控え"_s));
    const auto drives = [&] {
        return std::vector<Drive>{{u"/"_s, u"C:"_s}, {usb, u"D:"_s}, {empty, u"E:"_s}};
    };
    const auto done = [&](const QString& company, const QString& where) {
        driver_.expectBox(
            u"『%1』をバックアップし、内容を確かめました。\n社員 0人、基準日 0回\n\n%2"_s.arg(company, where),
            title, BoxAnswer::Ok, BoxIcon::Information);
    };
    {
        frmBackup screen(house_, &main_, drives);
        driver_.run(screen, [&](QDialog& form) {
            EXPECT_EQ(QDir::current(), QDir(places().data));
            control<QComboBox>(form, u"Combo1"_s).setCurrentIndex(-1);
            driver_.expectBox(u"バックアップするデータを選択してください。"_s, title);
            click(form, u"cmdOK"_s);
            choose(form, u"Combo1"_s, int(rows(form, u"Combo1"_s).indexOf(u"乙社"_s)));
            driver_.expectBox(u"『乙社』をバックアップします。"_s, title, BoxAnswer::No);
            click(form, u"cmdOK"_s);
            EXPECT_FALSE(QFileInfo::exists(places().backups()));
            driver_.expectBox(u"『乙社』をバックアップします。"_s, title, BoxAnswer::Yes);
            done(u"乙社"_s, backupOf(u"乙社"_s));
            click(form, u"cmdOK"_s);
        });
        EXPECT_EQ(screen.result(), QDialog::Accepted);
        EXPECT_TRUE(global_.companyOpen());
    }
    {  // the open company is closed, even where the copy fails; a drive without a medium is refused
        frmBackup screen(house_, &main_, drives);
        driver_.run(screen, [&](QDialog& form) {
            EXPECT_EQ(text(form, u"Combo1"_s), u"甲社"_s);
            choose(form, u"Drive1"_s, 1);
            driver_.expectBox(u"バックアップ先の準備ができていません。"_s, title);
            choose(form, u"Drive1"_s, 2);
            EXPECT_EQ(text(form, u"Drive1"_s), u"D:"_s);
            chooseText(form, u"Dir1"_s, u"控え"_s);
            press(form, Qt::Key_Return);
            const QString using_ = u"『甲社』は現在使用中ですが、閉じてバックアップしますか？"_s;
            driver_.expectBox(using_, title, BoxAnswer::No);
            click(form, u"cmdOK"_s);
            EXPECT_TRUE(global_.companyOpen());
            ASSERT_TRUE(QDir(usb).rmdir(u"控え"_s));
            QFile obstacle(usb + u"/控え"_s);
            ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));
            command1_->show();
            driver_.expectBox(using_, title, BoxAnswer::Yes);
            driver_.expectBox(u"バックアップに失敗しました。"_s, title);
            click(form, u"cmdOK"_s);
            EXPECT_FALSE(global_.companyOpen() || global_.cn_main || command1_->isVisible());
            obstacle.remove();
            driver_.expectBox(u"『甲社』をバックアップします。"_s, title, BoxAnswer::Yes);
            done(u"甲社"_s, usb + u"/控え"_s);
            click(form, u"cmdOK"_s);
        });
    }
    EXPECT_TRUE(QFileInfo::exists(usb + u"/控え/甲社賞与db.mdb"_s));
    EXPECT_EQ(lookInto(usb + u"/控え"_s).company, u"甲社"_s);
    // Known by its 会社名 under another one, the open company is not seen to be in use.
    open(u"甲社株式会社"_s);
    frmBackup screen(house_, &main_, drives);
    driver_.run(screen, [&](QDialog& form) {
        driver_.expectBox(u"『甲社』をバックアップします。"_s, title, BoxAnswer::Yes);
        done(u"甲社"_s, backupOf(u"甲社"_s));
        click(form, u"cmdOK"_s);
    });
    EXPECT_TRUE(global_.companyOpen());
}

TEST_F(CompanyFiles, ABackupComesBackInThePlaceOfTheOpenCompanyAndBesideIt) {
    makeBackup(places().data + u"/甲社"_s, u"甲社"_s, backupOf(u"甲社"_s));
    open(u"甲社"_s);
    global_.cn_main->execute(u"insert into 役職マスタ values('01','部長',null)"_s);
    frmBackup screen(house_, &main_, [] { return std::vector<Drive>{{u"/"_s, u"C:"_s}}; });
    driver_.run(screen, [&](QDialog& form) {
        control<QTabWidget>(form, u"SSTab1"_s).setCurrentIndex(1);
        EXPECT_FALSE(enabled(form, u"Command3"_s));
        ASSERT_EQ(rows(form, u"DataGrid1"_s, 1), QStringList{u"甲社"_s});
        choose(form, u"DataGrid1"_s, 0);
        type(form, u"Text1"_s, u"a/b"_s);
        driver_.expectBox(companyNameFault(u"a/b"_s), u"復元の確認"_s);
        click(form, u"Command3"_s);
        const QString question = u"%1のバックアップを『%2』として元に戻します。\n社員 0人、基準日 0回"_s.arg(
            backupsIn(places().backups()).at(0).made.toString(u"yyyy/M/d H:mm"_s));
        const auto done = [&](const QString& name) {
            driver_.expectBox(
                u"『%1』を元に戻し、内容を確かめました。\n「会社指定」で開いて、続きの作業ができます。"_s.arg(
                    name),
                u"復元の確認"_s, BoxAnswer::Ok, BoxIcon::Information);
        };
        type(form, u"Text1"_s, u"丙社"_s);
        driver_.expectBox(question.arg(u"丙社"_s), u"復元の確認"_s, BoxAnswer::Yes);
        done(u"丙社"_s);
        click(form, u"Command3"_s);
        EXPECT_TRUE(global_.companyOpen());
        choose(form, u"DataGrid1"_s, 0);
        const QString loss =
            question.arg(u"甲社"_s) +
            u"\n\nいまの『甲社』は 社員 0人、基準日 0回 "
            u"です。\nこのバックアップのあとに入力した内容はなくなります。"
            "いまの会社は、自動バックアップに残します。\n\n『甲社』は現在使用中のため、閉じて元に戻します。"_s;
        driver_.expectBox(loss, u"復元の確認"_s, BoxAnswer::No, BoxIcon::Warning);
        click(form, u"Command3"_s);
        EXPECT_TRUE(global_.companyOpen());
        driver_.expectBox(loss, u"復元の確認"_s, BoxAnswer::Yes);
        done(u"甲社"_s);
        click(form, u"Command3"_s);
        EXPECT_FALSE(global_.companyOpen());
        EXPECT_EQ(rows(form, u"DataGrid1"_s, 5), (QStringList{u"元に戻す前"_s, u"バックアップ"_s}));
        screen.addFolder(
            copiesFolder(places(), u"甲社"_s) + u'/' +
            QDir(copiesFolder(places(), u"甲社"_s)).entryList(QDir::Dirs | QDir::NoDotAndDotDot).at(0));
        EXPECT_EQ(text(form, u"Text1"_s), u"甲社"_s);
        click(form, u"cmdCancel"_s);
    });
    EXPECT_EQ(companies(), (QStringList{u"丙社"_s, u"甲社"_s}));
    EXPECT_EQ(company_.open()->query(u"select count(*) from 役職マスタ"_s).value(0).toInteger(), 0);
}

TEST_F(CompanyFiles, CompactionTellsEachFile) {
    const QString confirm = u"データ最適化の確認"_s,
                  failed = u"最適化に失敗しました。もう一度やり直してください。"_s;
    const QString folder = places().data + u"/甲社/甲社"_s;
    const auto run = [&](const ScreenDriver::Step& boxes) {
        frmSaiteki screen(house_, &main_);
        driver_.run(screen, [&](QDialog& form) {
            choose(form, u"List1"_s, 0);
            driver_.expectBox(u"『甲社』を最適化します。"_s, confirm, BoxAnswer::Yes);
            boxes(form);
            click(form, u"cmdOK"_s);
        });
        EXPECT_EQ(global_.kaisha_folder, u"甲社"_s);
    };
    const auto tell = [&](const QString& text, const QString& title, std::optional<BoxIcon> icon = {}) {
        driver_.expectBox(text, title, BoxAnswer::Ok, icon);
    };
    QFile work(workFileOf(folder + u"賞与db.mdb"_s));
    ASSERT_TRUE(work.open(QIODevice::WriteOnly));
    work.close();
    run([&](QDialog&) {
        tell(folder + u"基本db.mdbの最適化に成功しました。"_s, confirm);
        tell(folder + u"賞与db.mdbwk (ﾜｰｸﾌｧｲﾙ) があるので処理できません。"_s, u"処理の中止"_s,
             BoxIcon::Critical);
        for (int i = 0; i < 2; ++i)
            tell(failed, u"データ最適化失敗"_s);  // Hydcdb and Compdb count as present
    });
    work.remove();
    open(u"甲社"_s);
    run([&](QDialog&) {
        for (int i = 0; i < 4; ++i) tell(failed, u"データ最適化失敗"_s);
    });
    EXPECT_TRUE(global_.companyOpen());
    createCompany(places().data, u"乙社"_s, {});
    frmSaiteki screen(house_, &main_);
    driver_.run(screen, [&](QDialog& form) {
        driver_.expectBox(u"最適化するデータを指定してください。"_s, confirm);
        click(form, u"cmdOK"_s);
        click(form, u"Command1"_s);
    });
}

// A company that could not be worked with holds on to its lock; it must not pass for the one that is chosen.
TEST_F(CompanyFiles, WhatDoesNotCountAsOpenIsLetGoOf) {
    createCompany(places().data, u"乙社"_s, {});
    open(u"甲社"_s);
    global_.setCompanyPanel(forms::kNoCompanyPrompt);
    global_.setFolderPanel(u"乙社"_s);
    const auto other = CompanyLock::acquire(places().data, u"乙社"_s);
    frmSaiteki screen(house_, &main_);
    driver_.run(screen, [&](QDialog& form) {
        chooseText(form, u"List1"_s, u"乙社"_s);
        driver_.expectBox(u"『乙社』を最適化します。"_s, u"データ最適化の確認"_s, BoxAnswer::Yes);
        for (int i = 0; i < 4; ++i)
            driver_.expectBox(u"最適化に失敗しました。もう一度やり直してください。"_s, u"データ最適化失敗"_s);
        click(form, u"cmdOK"_s);
    });
    EXPECT_FALSE(global_.cn_main || global_.company_lock);
    EXPECT_NE(CompanyLock::acquire(places().data, u"甲社"_s), nullptr);
}

TEST_F(CompanyFiles, ARemovalWantsTheNameAndKeepsABackup) {
    const QString title = u"会社削除の確認"_s;
    createCompany(places().data, u"乙社"_s, {});
    open(u"甲社"_s);
    frmKaisyaSakujo screen(house_, &main_);
    driver_.run(screen, [&](QDialog& form) {
        EXPECT_FALSE(enabled(form, u"Command1"_s));
        chooseText(form, u"List1"_s, u"甲社"_s);
        type(form, u"Text1"_s, u"甲社"_s);
        driver_.expectBox(
            u"『甲社』は開いているため、削除できません。\n「会社指定」で閉じてから、もう一度選んでください。"_s,
            title, BoxAnswer::Ok, BoxIcon::Warning);
        click(form, u"Command1"_s);
        chooseText(form, u"List1"_s, u"乙社"_s);
        EXPECT_TRUE(text(form, u"lblAbout"_s).contains(u"社員　　　0人\n基準日　　ありません"_s));
        type(form, u"Text1"_s, u"乙"_s);
        EXPECT_FALSE(enabled(form, u"Command1"_s));
        type(form, u"Text1"_s, u"乙社"_s);
        const QString question =
            u"『乙社』のすべてのデータを削除します。\nバックアップしてから、削除します。"_s;
        driver_.expectBox(question, title, BoxAnswer::No, BoxIcon::Warning);
        click(form, u"Command1"_s);
        auto other = CompanyLock::acquire(places().data, u"乙社"_s);
        driver_.expectBox(question, title, BoxAnswer::Yes);
        driver_.expectBox(u"『乙社』は、ほかの人またはほかの画面が使用しているため、削除できません。"_s,
                          title);
        click(form, u"Command1"_s);
        other.reset();
        EXPECT_EQ(companies(), (QStringList{u"乙社"_s, u"甲社"_s}));
        driver_.expectBox(question, title, BoxAnswer::Yes);
        driver_.expectBox(u"『乙社』を削除しました。"_s, title, BoxAnswer::Ok, BoxIcon::Information);
        click(form, u"Command1"_s);
        EXPECT_EQ(rows(form, u"List1"_s), QStringList{u"甲社"_s});
        click(form, u"Command2"_s);
    });
    EXPECT_EQ(companies(), QStringList{u"甲社"_s});
    EXPECT_EQ(lookInto(backupOf(u"乙社"_s)).reason, u"削除の前"_s);
}

TEST_F(CompanyFiles, ANewCompanyIsMadeStepByStepAndOpened) {
    open(u"甲社"_s);
    frmKaisyaShinki screen(house_, &main_);
    driver_.run(screen, [&](QDialog& form) {
        const auto refuse = [&](const QString& box, const QString& title, const QString& field) {
            driver_.expectBox(box, title, BoxAnswer::Ok, BoxIcon::Critical);
            click(form, u"Command2"_s);
            EXPECT_EQ(focused(form), field);
        };
        type(form, u"Text1"_s, u"甲社"_s);
        refuse(u"『甲社』はすでにあります。別の名前を入力してください。"_s, u"入力エラー"_s, u"Text1"_s);
        type(form, u"Text1"_s, u"con"_s);
        refuse(u"「con」は会社名に使えません。"_s, u"入力エラー"_s, u"Text1"_s);
        type(form, u"Text1"_s, u"青空工業"_s);
        click(form, u"Command2"_s);
        EXPECT_EQ(text(form, u"txtFields_0"_s), u"青空工業"_s);
        type(form, u"txtFields_2"_s, u"a'"_s);
        refuse(u"項目中に ' を含むことはできません。 ･･･所在地１"_s, u"入力のエラー"_s, u"txtFields_2"_s);
        type(form, u"txtFields_2"_s, u"東京都"_s);
        click(form, u"Command2"_s);
        type(form, u"txtFields_7"_s, u"組合"_s);
        click(form, u"Command2"_s);
        click(form, u"Check1_0"_s);  // 婚姻区分 is not entered
        click(form, u"Command2"_s);
        click(form, u"Check2_1"_s);  // 所属大 is left to the user
        type(form, u"Text2"_s, u"2000/13/1"_s);
        refuse(u"日付の形式が正しくありません。 ･･･設定年月日"_s, u"入力エラー"_s, u"Text2"_s);
        type(form, u"Text2"_s, u"平成12年4月1日"_s);
        EXPECT_FALSE(visible(form, u"Command3"_s));
        control<QLineEdit>(form, u"Text3"_s).setText(u"あかさたな 123"_s);
        driver_.expectBox(u"二つの新しいパスワードが一致しません。"_s, u"入力エラー"_s, BoxAnswer::Ok,
                          BoxIcon::Critical);
        chooseText(form, u"List1"_s, u"8　確認"_s);
        EXPECT_EQ(focused(form), u"Text3"_s);
        control<QLineEdit>(form, u"Text4"_s).setText(u"あかさたな 123"_s);
        click(form, u"Check4"_s);
        click(form, u"Command2"_s);
        EXPECT_TRUE(text(form, u"lblTold"_s).contains(u"青空工業"_s));
        const QString question = u"『青空工業』を作成して開きます。\nいま開いている『甲社』は閉じます。"_s;
        driver_.expectBox(question, u"新規作成の確認"_s, BoxAnswer::No);
        click(form, u"Command3"_s);
        EXPECT_EQ(companies(), QStringList{u"甲社"_s});
        driver_.onScreen(u"frmFukkyuKey"_s, [](QDialog& sheet) {
            click(sheet, u"Check1"_s);
            click(sheet, u"Command2"_s);
        });
        driver_.onScreen(u"frmMenu000"_s, [&](QDialog& menu) {
            EXPECT_EQ(global_.panels.folder, u"青空工業"_s);
            EXPECT_TRUE(global_.cn_main);
            menu.accept();
        });
        driver_.expectBox(question, u"新規作成の確認"_s, BoxAnswer::Yes);
        click(form, u"Command3"_s);
    });
    EXPECT_TRUE(filesLocked(places().data + u"/青空工業"_s));
    auto& cn = *global_.cn_main;
    const auto told = [&cn](const QString& sql) {
        const auto row = cn.query(sql);
        QStringList texts;
        for (int i = 0; i < row.fieldCount(); ++i) texts << row.value(i).toText();
        return texts.join(u' ');
    };
    EXPECT_EQ(told(u"select 会社名,所在地１,自由マスタ1,自由マスタ2 from 会社テーブル"_s),
              u"青空工業 東京都 組合 未設定"_s);
    EXPECT_EQ(told(u"select 婚姻区分,世帯主区分 from 入力可・不可テーブル"_s), u"False True"_s);
    EXPECT_EQ(told(u"select count(*),max(Code),min(設定年月日) from 役職マスタ"_s), u"6 06 2000-04-01"_s);
    EXPECT_EQ(
        told(u"select (select count(*) from 所属大マスタ),(select count(*) from 出身地マスタ),対応年齢 from "
             "最終学歴マスタ where 最終学歴='大学卒'"_s),
        u"0 47 22"_s);
    EXPECT_EQ(QDir(places().data + u"/青空工業"_s).entryList(QDir::Files).size(), 5);
}

TEST_F(CompanyFiles, APasswordIsSetAskedForAndTakenAway) {
    const QString title = u"パスワードの確認"_s;
    {
        frmPassword screen(house_, &main_);
        driver_.run(screen, [&](QDialog& form) {
            EXPECT_FALSE(enabled(form, u"Command1"_s)) << "no company is open";
            click(form, u"Command3"_s);
        });
    }
    open(u"甲社"_s);
    const QString secret = u"あかさたな 123"_s;
    {
        frmPassword screen(house_, &main_);
        driver_.run(screen, [&](QDialog& form) {
            EXPECT_FALSE(enabled(form, u"Text1"_s) || enabled(form, u"Command2"_s));
            control<QLineEdit>(form, u"Text2"_s).setText(u"1234567"_s);
            driver_.expectBox(u"パスワードは8文字以上で入力してください。"_s, u"入力エラー"_s);
            click(form, u"Command1"_s);
            control<QLineEdit>(form, u"Text2"_s).setText(secret);
            driver_.expectBox(u"二つの新しいパスワードが一致しません。"_s, u"入力エラー"_s);
            click(form, u"Command1"_s);
            control<QLineEdit>(form, u"Text3"_s).setText(secret);
            driver_.expectBox(u"パスワードを設定しました。次に会社を開くときから聞かれます。"_s, title,
                              BoxAnswer::Ok, BoxIcon::Information);
            click(form, u"Command1"_s);
        });
    }
    EXPECT_FALSE(
        global_.cn_main->query(u"select ハッシュ from S開始パスワード"_s).value(0).toText().contains(secret));
    global_.closeCompany();
    const auto chooseIt = [&](QDialog& form, const ScreenDriver::Step& asked) {
        driver_.expectBox(u"『甲社』を指定します。"_s, u"会社指定の確認"_s, BoxAnswer::Yes);
        driver_.onScreen(u"frmPasswordKakunin"_s, asked);
        choose(form, u"List1"_s, 0);
        click(form, u"Command2"_s);
    };
    const auto tryIt = [&](QDialog& form, const QString& typed, const QString& box) {
        control<QLineEdit>(form, u"Text1"_s).setText(typed);
        if (!box.isEmpty()) driver_.expectBox(box, title, BoxAnswer::Ok, BoxIcon::Warning);
        click(form, u"Command1"_s);
    };
    frmDBSentaku screen(house_, &main_);
    driver_.run(screen, [&](QDialog& form) {
        chooseIt(form, [&](QDialog& asked) {
            for (int i = 0; i < 3; ++i) tryIt(asked, u"違う"_s, u"パスワードが違います。"_s);
            // By a clock that was set back since; the wait is no longer for that, and this one can't run on.
            store::Connection(company_.file(schema::File::Syouyo), sharedKey())
                .execute(u"update S開始パスワード set 失敗日時='2099-01-01T00:00:00'"_s);
            tryIt(asked, secret, u"あと5秒たってから、もう一度入力してください。"_s);
            click(asked, u"Command2"_s);
        });
        EXPECT_TRUE(!global_.cn_main && form.isVisible());
        EXPECT_NE(CompanyLock::acquire(places().data, u"甲社"_s), nullptr) << "nobody holds it";
        store::Connection(company_.file(schema::File::Syouyo), sharedKey())
            .execute(u"update S開始パスワード set 失敗日時='2026-01-01T00:00:00'"_s);
        chooseIt(form, [&](QDialog& asked) {
            driver_.onScreen(u"frmMenu000"_s, [](QDialog& menu) { menu.accept(); });
            tryIt(asked, secret, {});
        });
    });
    ASSERT_TRUE(global_.cn_main);
    EXPECT_EQ(global_.cn_main->query(u"select 失敗回数 from S開始パスワード"_s).value(0).toInteger(), 0);
    global_.setCompanyPanel(u"甲社"_s);
    frmPassword change(house_, &main_);
    driver_.run(change, [&](QDialog& form) {
        driver_.expectBox(u"パスワードが違います。"_s, title, BoxAnswer::Ok, BoxIcon::Warning);
        click(form, u"Command2"_s);
        control<QLineEdit>(form, u"Text1"_s).setText(secret);
        driver_.expectBox(u"パスワードを解除します。だれでもこの会社を開けるようになります。"_s, title,
                          BoxAnswer::Yes);
        driver_.expectBox(u"パスワードを解除しました。"_s, title);
        click(form, u"Command2"_s);
    });
    EXPECT_FALSE(hasOpeningPassword(*global_.cn_main));
}

TEST_F(CompanyFiles, TheFilesAreLockedWithARecoveryCodeAndUnlockedAgain) {
    const QString title = u"パスワードの確認"_s, secret = u"あかさたな 123"_s,
                  folder = places().data + u"/甲社"_s;
    open(u"甲社"_s);
    const auto enter = [](QDialog& form, const QString& now, const QString& anew) {
        if (!now.isEmpty()) control<QLineEdit>(form, u"Text1"_s).setText(now);
        for (const QString& field : {u"Text2"_s, u"Text3"_s}) control<QLineEdit>(form, field).setText(anew);
    };
    QString code;
    {
        frmPassword screen(house_, &main_);
        driver_.run(screen, [&](QDialog& form) {
            enter(form, {}, secret);
            click(form, u"Check1"_s);
            driver_.onScreen(u"frmFukkyuKey"_s, [&](QDialog& sheet) { click(sheet, u"Command3"_s); });
            click(form, u"Command1"_s);
            EXPECT_TRUE(global_.companyOpen() && !filesLocked(folder));
            driver_.onScreen(u"frmFukkyuKey"_s, [&](QDialog& sheet) {
                EXPECT_FALSE(enabled(sheet, u"Command2"_s));
                click(sheet, u"Check1"_s);
                code = text(sheet, u"lblCode"_s);
                EXPECT_TRUE(dynamic_cast<frmFukkyuKey&>(sheet).sheet()->toPlainText().contains(code));
                click(sheet, u"Command2"_s);
            });
            driver_.expectBox(
                u"『甲社』のファイルを暗号化し、会社を閉じました。\n「会社指定」で、新しいパスワードを入力し"
                u"て開いてください。"
                "\n\nこれまでのバックアップは、暗号化されていません。いらないものは消してください。"_s,
                title, BoxAnswer::Ok, BoxIcon::Information);
            click(form, u"Command1"_s);
        });
    }
    EXPECT_TRUE(filesLocked(folder) && !global_.companyOpen());
    const auto openIt = [&](const QString& typed) {
        frmDBSentaku screen(house_, &main_);
        driver_.run(screen, [&](QDialog& form) {
            driver_.expectBox(u"『甲社』を指定します。"_s, u"会社指定の確認"_s, BoxAnswer::Yes);
            driver_.onScreen(u"frmPasswordKakunin"_s, [&](QDialog& asked) {
                for (int i = 0; i < 3; ++i) {
                    control<QLineEdit>(asked, u"Text1"_s).setText(u"違う"_s);
                    driver_.expectBox(u"パスワードが違います。"_s, title, BoxAnswer::Ok, BoxIcon::Warning);
                    click(asked, u"Command1"_s);
                }
                QSettings settings(places().settings(), QSettings::IniFormat);
                settings.setValue(settingsKey(u"KeyFailed"_s, folder), u"2026-01-01T00:00:00"_s);
                settings.sync();
                control<QLineEdit>(asked, u"Text1"_s).setText(typed);
                driver_.onScreen(u"frmMenu000"_s, [](QDialog& menu) { menu.accept(); });
                click(asked, u"Command1"_s);
            });
            choose(form, u"List1"_s, 0);
            click(form, u"Command2"_s);
        });
        global_.setCompanyPanel(u"甲社"_s);
    };
    openIt(code);  // the password is forgotten: the code opens, and chooses another one
    ASSERT_TRUE(global_.cn_main);
    const QString later = u"はまやらわ 456"_s;
    {
        frmPassword screen(house_, &main_);
        driver_.run(screen, [&](QDialog& form) {
            EXPECT_TRUE(checked(form, u"Check1"_s));
            enter(form, code, later);
            driver_.expectBox(
                u"パスワードを変更しました。これまでのバックアップは、前のパスワードで開きます。"_s, title);
            click(form, u"Command1"_s);
        });
    }
    global_.closeCompany();
    // Nothing is done with the closed company unless its password is known.
    forgetKeys();
    {
        frmKaisyaSakujo screen(house_, &main_);
        driver_.run(screen, [&](QDialog& form) {
            choose(form, u"List1"_s, 0);
            EXPECT_TRUE(text(form, u"lblAbout"_s).contains(u"ファイルが暗号化されています。"_s));
            type(form, u"Text1"_s, u"甲社"_s);
            driver_.expectBox(u"『甲社』のすべてのデータを削除します。\nバックアップしてから、削除します。"_s,
                              u"会社削除の確認"_s, BoxAnswer::Yes);
            driver_.onScreen(u"frmPasswordKakunin"_s, [](QDialog& asked) { click(asked, u"Command2"_s); });
            click(form, u"Command1"_s);
            click(form, u"Command2"_s);
        });
    }
    EXPECT_EQ(companies(), QStringList{u"甲社"_s});
    openIt(later);
    ASSERT_TRUE(global_.cn_main);
    frmPassword screen(house_, &main_);
    driver_.run(screen, [&](QDialog& form) {
        enter(form, later, secret);
        click(form, u"Check1"_s);
        driver_.expectBox(
            u"ファイルの暗号化をやめ、パスワードを設定しました。\n会社を閉じました。「会社指定」で開いてください。"_s,
            title);
        click(form, u"Command1"_s);
    });
    EXPECT_FALSE(filesLocked(folder));
    EXPECT_TRUE(hasOpeningPassword(*company_.open()));
}

TEST_F(CompanyFiles, AFormerCompanyIsShownAndMovedFromTheNewOne) {
    screens_.add(u"frmHikkosi"_s,
                 [](forms::House& house, QWidget* parent) { return new frmHikkosi(house, parent); });
    const QTemporaryDir old;
    for (const QString& name : {u"旧社基本db.mdb"_s, u"旧社賞与db.mdb"_s})
        ASSERT_TRUE(writeFile(old.filePath(name), formerDatabase()));
    frmKaisyaShinki screen(house_, &main_);
    driver_.run(screen, [&](QDialog& form) {
        driver_.onScreen(u"frmHikkosi"_s, [&](QDialog& move) {
            EXPECT_FALSE(enabled(move, u"Command2"_s));
            auto& moving = dynamic_cast<frmHikkosi&>(move);
            driver_.expectBox(
                u"このフォルダに会社のデータはありません。\n"_s + QDir::toNativeSeparators(places().data),
                QString());
            moving.load(places().data);
            moving.load(old.path());
            EXPECT_EQ(rows(move, u"DataGrid1"_s, 3), (QStringList{u"8"_s, u"0"_s, u"0"_s, u"0"_s}));
            EXPECT_EQ(text(move, u"Text1"_s), u"旧社"_s);
            type(move, u"Text1"_s, u"甲社"_s);
            const QString question =
                u"『%1』を作成し、8件を引き継ぎます。\n表に出ているものは引き継がれません。"_s;
            driver_.expectBox(question.arg(u"甲社"_s), u"引っ越しの確認"_s, BoxAnswer::Yes, BoxIcon::Warning);
            driver_.expectBox(u"会社「甲社」は既に存在します。"_s, QString());
            click(move, u"Command2"_s);
            type(move, u"Text1"_s, u"新社"_s);
            driver_.expectBox(question.arg(u"新社"_s), u"引っ越しの確認"_s, BoxAnswer::Yes);
            driver_.expectBox(
                u"『新社』を作成しました。件数と金額の合計は、元のデータとすべて一致しました。\n\n記録： "_s +
                    QDir::toNativeSeparators(places().data + u"/新社/"_s + kMigrationReport),
                u"引っ越しの確認"_s, BoxAnswer::Ok, BoxIcon::Information);
            click(move, u"Command2"_s);
        });
        click(form, u"Command6"_s);
    });
    EXPECT_EQ(companies(), (QStringList{u"新社"_s, u"甲社"_s}));
}

}  // namespace
}  // namespace company
