#include "shell/frmDBSentaku.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QVBoxLayout>

#include "screen_driver.h"
#include "shell/global_record.h"
#include "shell/ui_menu_form.h"
#include "store/company_files.h"
#include "support/company_fixture.h"

namespace shell {
namespace {

using namespace support;
using store::File;

const QString kName = QStringLiteral("frmDBSentaku");
const QString kTitle = QStringLiteral("会社指定の確認");
const QString kConfirm = QStringLiteral("『甲社』を指定します。");

/// frmDBSentaku over a main window, with a menu that only notes how it was shown.
class DBSentaku : public testing::Test {
  protected:
    DBSentaku() {
        company_.makeEmpty(QStringLiteral("甲社"));
        global_.app_dir = company_.programDir();
        house_.help = [this](const QString& screen) { helped_ << screen; };
        house_.endProcess = [this] { ended_ = true; };
        screens_.add(QStringLiteral("frmMenu000"), [this](House&, QWidget* parent) {
            menuParent_ = parent;
            auto* menu = new QDialog(parent);
            menu->setObjectName(QStringLiteral("frmMenu000"));
            return menu;
        });
        main_.setObjectName(QStringLiteral("frmMain"));
        main_.setCentralWidget(new QWidget(&main_));
        command1_ = new QPushButton(main_.centralWidget());
        command1_->setObjectName(QStringLiteral("Command1"));
        main_.show();
    }

    ~DBSentaku() override { QDir::setCurrent(QDir::rootPath()); }

    int show(ScreenDriver::Step step) {
        frmDBSentaku form(house_, &main_);
        return driver_.run(form, std::move(step));
    }
    static void assign(QDialog& form) {
        choose(form, QStringLiteral("List1"), 0);
        click(form, QStringLiteral("Command2"));
    }
    static void cancel(QDialog& form) { click(form, QStringLiteral("Command3")); }
    void changeBonus(const QString& sql, const store::Binds& binds = {}) {
        store::Connection(company_.file(File::Syouyo), store::databasePassword()).execute(sql, binds);
    }

    CompanyFolder company_;
    GlobalRecord global_;
    ScreenRegistry screens_;
    House house_{global_, screens_};
    QMainWindow main_;
    QPushButton* command1_;
    QWidget* menuParent_ = nullptr;
    QStringList helped_;
    bool ended_ = false;
    ScreenDriver driver_;
};

TEST_F(DBSentaku, ShowsItsTextsAndCancels) {
    const int result = show([&](QDialog& form) {
        EXPECT_EQ(form.windowTitle(), QStringLiteral("会社指定"));
        EXPECT_EQ(text(form, QStringLiteral("Label1")), QStringLiteral("処理する会社を指定します。"));
        EXPECT_EQ(text(form, QStringLiteral("Label2")),
                  QStringLiteral("会社名を選択し、［指定］を押してください。"));
        EXPECT_EQ(text(form, QStringLiteral("Command1")), QStringLiteral("< 戻る(&B)"));
        EXPECT_FALSE(visible(form, QStringLiteral("Command1")));
        EXPECT_EQ(text(form, QStringLiteral("Command2")), QStringLiteral("指定(&S)"));
        EXPECT_EQ(text(form, QStringLiteral("Command3")), QStringLiteral("キャンセル(&C)"));
        EXPECT_EQ(rows(form, QStringLiteral("List1")), QStringList(QStringLiteral("甲社")));
        EXPECT_EQ(focused(form), QStringLiteral("List1"));
        EXPECT_EQ(QDir::current(), QDir(company_.dataDir()));
        click(form, QStringLiteral("Command4"));
        EXPECT_EQ(helped_, QStringList(kName));
        driver_.expectBox(QStringLiteral("処理する会社を指定してください。"), kTitle);
        click(form, QStringLiteral("Command2"));
        driver_.expectBox(kConfirm, kTitle, BoxAnswer::No);
        assign(form);
        EXPECT_TRUE(global_.panels.folder.isEmpty());
        press(form, Qt::Key_C, Qt::AltModifier);
    });
    EXPECT_EQ(result, QDialog::Rejected);
    EXPECT_EQ(global_.cn_main, nullptr);
    EXPECT_EQ(driver_.screens(), QStringList(kName));
}

TEST_F(DBSentaku, OpensTheCompanyByKeyboardAndShowsTheMenuInItsPlace) {
    const int result = show([&](QDialog& form) {
        driver_.expectBox(kConfirm, kTitle, BoxAnswer::Yes);
        driver_.onScreen(QStringLiteral("frmMenu000"), [&](QDialog& menu) {
            EXPECT_EQ(menuParent_, &main_);
            EXPECT_FALSE(command1_->isVisible());
            EXPECT_TRUE(global_.link_kihon_pass);
            EXPECT_FALSE(form.isVisible()) << "unloaded before the menu shows";
            EXPECT_EQ(QDir::current(), QDir(company_.dataDir()));
            menu.accept();
        });
        press(form, Qt::Key_Down);
        press(form, Qt::Key_S, Qt::AltModifier);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    ASSERT_NE(global_.cn_main, nullptr);
    EXPECT_EQ(global_.panels.folder, QStringLiteral("甲社"));
    EXPECT_FALSE(global_.companyOpen()) << "the menu's load counts the company as open";
    EXPECT_FALSE(global_.link_kihon_pass || global_.link_chingin_pass);
    EXPECT_EQ(CompanyLock::acquire(company_.companyDir()), nullptr);
    global_.closeCompany();
    EXPECT_NE(CompanyLock::acquire(company_.companyDir()), nullptr);
}

TEST_F(DBSentaku, AFailedLinkIsToldAndEndsTheProcess) {
    ASSERT_TRUE(QFile::remove(company_.file(File::Kihon)));
    show([&](QDialog& form) {
        std::unique_ptr<CompanyLock> none;
        const QString expected = openCompany(global_.app_dir, QStringLiteral("甲社"), none).link_error_text;
        driver_.expectBox(kConfirm, kTitle, BoxAnswer::Yes);
        driver_.expectBox(QStringLiteral("リンク更新できませんでした。\n") + expected,
                          QStringLiteral("リンク更新エラー"), BoxAnswer::Ok, BoxIcon::Critical);
        assign(form);
        EXPECT_TRUE(ended_);
        EXPECT_EQ(global_.link_error_text, expected);
        cancel(form);
    });
}

TEST_F(DBSentaku, WithoutTheCompanionTheScreenStaysAndTheConnectionToo) {
    changeBonus(QStringLiteral("INSERT INTO S基礎額設定 (設定方法) VALUES (?)"), {u"3"});
    show([&](QDialog& form) {
        for (int i = 0; i < 2; ++i) {  // a further 指定 of the same company replaces the connection
            driver_.expectBox(kConfirm, kTitle, BoxAnswer::Yes);
            driver_.expectBox(QStringLiteral("「甲社」は『報酬図鑑ZEN』を利用しています。\n『報酬図鑑ZEN』を"
                                             "インストールしないと処理できません。"),
                              QStringLiteral("処理不能"), BoxAnswer::Ok, BoxIcon::Critical);
            assign(form);
            EXPECT_TRUE(form.isVisible());
            EXPECT_NE(global_.cn_main, nullptr);
        }
        EXPECT_EQ(form.cursor().shape(), Qt::ArrowCursor);
        cancel(form);
    });
    EXPECT_FALSE(global_.companyOpen());
    EXPECT_EQ(driver_.screens(), QStringList(kName));
}

TEST_F(DBSentaku, RefusesACompanyInUseAndADamagedOne) {
    auto other = CompanyLock::acquire(company_.companyDir());
    ASSERT_NE(other, nullptr);
    show([&](QDialog& form) {
        driver_.expectBox(kConfirm, kTitle, BoxAnswer::Yes);
        driver_.expectBox(QStringLiteral("『甲社』は、ほかの人またはほかの画面が使用しています。\n使用が終わ"
                                         "ってから、もう一度指定してください。"),
                          kTitle, BoxAnswer::Ok, BoxIcon::Warning);
        assign(form);
        other.reset();

        QFile file(company_.file(File::Syouyo));
        ASSERT_TRUE(file.resize(file.size() / 2));
        QString expected;
        try {
            std::unique_ptr<CompanyLock> none;
            openCompany(global_.app_dir, QStringLiteral("甲社"), none);
        } catch (const store::Error& error) {
            expected = error.text();
        }
        driver_.expectBox(kConfirm, kTitle, BoxAnswer::Yes);
        driver_.expectBox(expected, QString());
        assign(form);
        EXPECT_EQ(global_.panels.folder, QStringLiteral("甲社")) << "nothing already done is undone";
        EXPECT_EQ(QDir::current(), QDir(company_.companyDir()));
        cancel(form);
    });
    EXPECT_EQ(global_.cn_main, nullptr);
    EXPECT_EQ(global_.company_lock, nullptr);
}

TEST_F(DBSentaku, AMissingDataFolderIsToldAndTheListIsEmpty) {
    ASSERT_TRUE(QDir(company_.dataDir()).removeRecursively());
    driver_.expectBox(QStringLiteral("会社のデータを置くフォルダが見つかりません。\n") +
                          QDir::toNativeSeparators(company_.dataDir()),
                      QString());
    show([&](QDialog& form) {
        EXPECT_TRUE(rows(form, QStringLiteral("List1")).isEmpty());
        driver_.expectBox(QStringLiteral("処理する会社を指定してください。"), kTitle);
        click(form, QStringLiteral("Command2"));
        cancel(form);
    });
}

}  // namespace
}  // namespace shell
