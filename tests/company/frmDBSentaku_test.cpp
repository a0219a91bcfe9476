#include "company/frmDBSentaku.h"

#include <QFile>

#include "company/company_open.h"
#include "company/key.h"
#include "forms/menu_form.h"
#include "support/house_screens.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;
using namespace support;

using schema::File;

const QString kTitle = u"会社指定の確認"_s;
const QString kConfirm = u"『甲社』を指定します。"_s;

/// frmDBSentaku with a menu that only notes how it was shown.
class DBSentaku : public OverMain {
  protected:
    DBSentaku() {
        house_.endProcess = [this] { ended_ = true; };
        addScreen(u"frmMenu000"_s);
    }
    int show(ScreenDriver::Step step) {
        frmDBSentaku form(house_, &main_);
        return driver_.run(form, std::move(step));
    }
    /// 指定 of the company, which is confirmed and refused with a box.
    void assignTold(QDialog& form, const QString& text, const QString& title,
                    std::optional<forms::BoxIcon> icon = {}) {
        driver_.expectBox(kConfirm, kTitle, forms::BoxAnswer::Yes);
        driver_.expectBox(text, title, forms::BoxAnswer::Ok, icon);
        choose(form, u"List1"_s, 0);
        click(form, u"Command2"_s);
    }
    static void cancel(QDialog& form) { click(form, u"Command3"_s); }
    /// Why the company does not open, as the files tell it.
    QString failure() {
        std::unique_ptr<CompanyLock> none;
        try {
            return openCompany(global_.places(), u"甲社"_s, none).link_error_text;
        } catch (const store::Error& error) {
            return error.text();
        }
    }
    bool ended_ = false;
};

TEST_F(DBSentaku, ListsTheCompaniesAndCancels) {
    const int result = show([&](QDialog& form) {
        EXPECT_FALSE(visible(form, u"Command1"_s));
        EXPECT_EQ(rows(form, u"List1"_s), QStringList(u"甲社"_s));
        EXPECT_EQ(focused(form), u"List1"_s);
        EXPECT_EQ(QDir::current(), QDir(company_.dataDir()));
        click(form, u"Command4"_s);
        EXPECT_EQ(helped_, QStringList(u"frmDBSentaku"_s));
        EXPECT_EQ(text(form, u"List1"_s), u"甲社"_s) << "the only one";
        driver_.expectBox(kConfirm, kTitle, forms::BoxAnswer::No);
        click(form, u"Command2"_s);
        EXPECT_TRUE(global_.panels.folder.isEmpty());
        press(form, Qt::Key_C, Qt::AltModifier);
    });
    EXPECT_EQ(result, QDialog::Rejected);
    EXPECT_EQ(global_.cn_main, nullptr);
    ASSERT_TRUE(QDir(company_.dataDir()).mkdir(u"乙社"_s));
    for (const QString& last : {QString(), u"丙社"_s, u"甲社"_s}) {
        rememberCompany(global_.places(), last);
        show([&](QDialog& form) {
            EXPECT_EQ(text(form, u"List1"_s), last == u"甲社"_s ? last : QString());
            if (last.isEmpty()) driver_.expectBox(u"処理する会社を指定してください。"_s, kTitle);
            if (last.isEmpty()) click(form, u"Command2"_s);
            cancel(form);
        });
    }
}

TEST_F(DBSentaku, OpensTheCompanyByKeyboardAndShowsTheMenuInItsPlace) {
    bool looked = false;
    screens_.companyOpened = [&](forms::House& house, QWidget*) { looked = house.global.cn_main != nullptr; };
    const int result = show([&](QDialog& form) {
        driver_.expectBox(kConfirm, kTitle, forms::BoxAnswer::Yes);
        driver_.onScreen(u"frmMenu000"_s, [&](QDialog& menu) {
            EXPECT_TRUE(looked) << "what was cut off is settled before the company is worked on";
            EXPECT_EQ(menu.parent(), &main_);
            EXPECT_FALSE(command1_->isVisible());
            EXPECT_TRUE(global_.link_kihon_pass);
            EXPECT_FALSE(form.isVisible()) << "unloaded before the menu shows";
            EXPECT_EQ(QDir::current(), QDir(company_.dataDir()));
            menu.accept();
        });
        press(form, Qt::Key_Return);
    });
    EXPECT_EQ(lastCompany(global_.places()), u"甲社"_s);
    EXPECT_EQ(result, QDialog::Accepted);
    ASSERT_NE(global_.cn_main, nullptr);
    EXPECT_EQ(global_.panels.folder, u"甲社"_s);
    EXPECT_FALSE(global_.companyOpen()) << "the menu's load counts the company as open";
    EXPECT_FALSE(global_.link_kihon_pass || global_.link_chingin_pass);
    EXPECT_EQ(CompanyLock::acquire(company_.dataDir(), u"甲社"_s), nullptr);
    global_.closeCompany();
    EXPECT_NE(CompanyLock::acquire(company_.dataDir(), u"甲社"_s), nullptr);
}

TEST_F(DBSentaku, AFailedLinkIsToldAndEndsTheProcess) {
    ASSERT_TRUE(QFile::remove(company_.file(schema::File::Kihon)));
    const QString expected = failure();
    show([&](QDialog& form) {
        assignTold(form, u"リンク更新できませんでした。\n"_s + expected, u"リンク更新エラー"_s,
                   forms::BoxIcon::Critical);
        EXPECT_TRUE(ended_);
        EXPECT_EQ(global_.link_error_text, expected);
        cancel(form);
    });
}

TEST_F(DBSentaku, WithoutTheCompanionTheScreenStaysAndTheConnectionToo) {
    store::Connection(company_.file(schema::File::Syouyo), company::sharedKey())
        .execute(u"INSERT INTO S基礎額設定 (設定方法) VALUES ('3')"_s);
    show([&](QDialog& form) {
        for (int i = 0; i < 2; ++i) {  // a further 指定 of the same company replaces the connection
            assignTold(form,
                       u"「甲社」は『報酬図鑑ZEN』を利用しています。\n『報酬図鑑ZEN』を"
                       "インストールしないと処理できません。"_s,
                       u"処理不能"_s, forms::BoxIcon::Critical);
            EXPECT_TRUE(form.isVisible());
            EXPECT_NE(global_.cn_main, nullptr);
        }
        EXPECT_EQ(form.cursor().shape(), Qt::ArrowCursor);
        cancel(form);
    });
    EXPECT_FALSE(global_.companyOpen());
}

TEST_F(DBSentaku, RefusesACompanyInUseAndADamagedOne) {
    auto other = CompanyLock::acquire(company_.dataDir(), u"甲社"_s);
    ASSERT_NE(other, nullptr);
    show([&](QDialog& form) {
        assignTold(form,
                   u"『甲社』は、ほかの人またはほかの画面が使用しています。\n使用が終わ"
                   "ってから、もう一度指定してください。"_s,
                   kTitle, forms::BoxIcon::Warning);
        other.reset();
        QFile file(company_.file(schema::File::Syouyo));
        ASSERT_TRUE(file.resize(file.size() / 2));
        assignTold(form, failure(), QString());
        EXPECT_EQ(global_.panels.folder, u"甲社"_s) << "nothing already done is undone";
        EXPECT_EQ(QDir::current(), QDir(company_.companyDir()));
        cancel(form);
    });
    EXPECT_EQ(global_.cn_main, nullptr);
    EXPECT_EQ(global_.company_lock, nullptr);
}

TEST_F(DBSentaku, AMissingDataFolderIsToldAndTheListIsEmpty) {
    ASSERT_TRUE(QDir(company_.dataDir()).removeRecursively());
    driver_.expectBox(
        u"会社のデータを置くフォルダが見つかりません。\n"_s + QDir::toNativeSeparators(company_.dataDir()),
        QString());
    show([&](QDialog& form) {
        EXPECT_TRUE(rows(form, u"List1"_s).isEmpty());
        cancel(form);
    });
}

}  // namespace
}  // namespace company
