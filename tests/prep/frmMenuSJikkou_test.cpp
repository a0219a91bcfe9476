#include "prep/frmMenuSJikkou.h"

#include <QLabel>

#include "calc/frmSHaibunjikkouK2.h"
#include "company/company_open.h"
#include "prep/run_screens.h"
#include "reports/frmReport.h"
#include "reports/package.h"
#include "reports/workbook.h"

namespace {

using namespace preptest;

class RunMenu : public RunScreens {
  protected:
    RunMenu() : RunScreens(Content::Empty) {
        global_.kijunbi = u"2003/4/1"_s;
        addPlain({u"frmSTaisyousya"_s, u"frmSHaibunjikkouK"_s, u"frmSJCheck"_s, u"frmSHaibunjikkouK2"_s,
                  u"frmSSanteishikiSub"_s, u"frmSSanteishitei"_s});
    }
    void open(const ScreenDriver::Step& step) { RunScreens::open<prep::frmMenuSJikkou>(step); }
    QString stored() { return read(u"SELECT 単価,端数処理 FROM Tanka_hasuu ORDER BY 基準日"_s).join(u' '); }
    static QString chosen(QDialog& menu) {
        return options(menu, u"Option1"_s, 5) + u' ' + options(menu, u"Option2"_s, 3);
    }
};

TEST_F(RunMenu, StoresTheRoundingOfItsDateWithTheCalculationOnly) {
    sql(u"INSERT INTO Tanka_hasuu(単価,端数処理,基準日) VALUES('1','1','2002-12-10')"_s);
    global_.setRunPanel(u"配分実行基準日: 2003年4月1日"_s);
    sql(u"INSERT INTO Sデータ取込年月日運用(基準日,賞与の内容) VALUES('2003-04-01','決算賞与')"_s);
    open([&](QDialog& menu) {
        EXPECT_EQ(text(menu, u"lblTitle"_s), u"配分実行メニュー　基準日 2003/4/1　決算賞与"_s);
        EXPECT_EQ(stored(), u"1|1 0|0"_s);  // at once, before anything is computed
        EXPECT_EQ(chosen(menu), u"Xxxxx Xxx"_s);
        click(menu, u"Option1_3"_s);
        click(menu, u"Option2_2"_s);
        expectScreen(u"frmSTaisyousya"_s);
        click(menu, u"Command1"_s);
        EXPECT_EQ(stored(), u"1|1 0|0"_s);
        EXPECT_EQ(chosen(menu), u"xxxXx xxX"_s);
        expectScreen(u"frmSHaibunjikkouK2"_s, [&](QDialog&) { EXPECT_EQ(stored(), u"1|1 3|2"_s); });
        press(menu, Qt::Key_K, Qt::AltModifier);
        click(menu, u"Option1_4"_s);  // a choice without the calculation is lost
        press(menu, Qt::Key_B, Qt::AltModifier);
        EXPECT_FALSE(menu.isVisible());
    });
    EXPECT_EQ(global_.panels.run, QString());
    sql(u"UPDATE Tanka_hasuu SET 端数処理 = '3' WHERE 単価 = '3'"_s);  // nothing that the menu knows
    open([&](QDialog& menu) {
        EXPECT_EQ(chosen(menu), u"xxxXx xxx"_s);
        expectScreen(u"frmSHaibunjikkouK2"_s);
        click(menu, u"Command7"_s);
        press(menu, Qt::Key_Escape);
        EXPECT_FALSE(menu.isVisible());
    });
    EXPECT_EQ(stored(), u"1|1 3|3"_s);  // nothing chosen: what is stored stands
    sql(u"UPDATE Tanka_hasuu SET 単価 = '5', 端数処理 = NULL"_s);
    open([&](QDialog& menu) { EXPECT_EQ(chosen(menu), u"xxxxx xxx"_s); });
}

TEST_F(RunMenu, OpensTheStepsInTheirModes) {
    global_.haibun_sekkei_mode = global_.jikkou_syuusei_mode = true;
    global_.haibun_jikkou_mode = false;
    open([&](QDialog& menu) {
        const auto opens = [&](const QString& button, const QString& screen, int design, int run, int fix) {
            expectScreen(screen, [&](QDialog&) {
                EXPECT_EQ(global_.haibun_sekkei_mode, design) << button.toStdString();
                EXPECT_EQ(global_.haibun_jikkou_mode, run) << button.toStdString();
                EXPECT_EQ(global_.jikkou_syuusei_mode, fix) << button.toStdString();
            });
            click(menu, button);
        };
        opens(u"Command1"_s, u"frmSTaisyousya"_s, 1, 0, 1);
        opens(u"Command3"_s, u"frmSHaibunjikkouK"_s, 1, 0, 1);
        opens(u"Command6"_s, u"frmSJCheck"_s, 1, 0, 1);
        opens(u"Command7"_s, u"frmSHaibunjikkouK2"_s, 1, 0, 1);
        opens(u"Command2"_s, u"frmSSanteishikiSub"_s, 0, 1, 1);
        opens(u"Command5"_s, u"frmSSanteishitei"_s, 0, 1, 0);
        opens(u"Command4"_s, u"frmSSanteishitei"_s, 0, 1, 1);
    });
}

TEST_F(RunMenu, TellsAFailureAndStaysUsable) {
    breakWrites(u"INSERT ON Tanka_hasuu"_s);
    driver_.answerFreely([](const forms::BoxRequest&) { return BoxAnswer::Ok; });
    open([&](QDialog& menu) {
        click(menu, u"Command7"_s);  // without its row the calculation must not start
        click(menu, u"Command10"_s);
        EXPECT_FALSE(menu.isVisible());
    });
    EXPECT_EQ(driver_.boxes().size(), 2U);
    EXPECT_EQ(driver_.screens(), QStringList{u"frmMenuSJikkou"_s});
    EXPECT_EQ(stored(), QString());
}

/// Two companies one after the other, each opened as the program does it, with a run of its own date.
class TwoCompanies : public testing::Test {
  protected:
    TwoCompanies() {
        driver_.answerFreely([](const forms::BoxRequest& box) {
            return box.buttons == forms::BoxButtons::YesNo ? BoxAnswer::Yes : BoxAnswer::Ok;
        });
        screens_.add(u"frmSHaibunjikkouK2"_s, [this](forms::House& house, QWidget* parent) {
            return new calc::frmSHaibunjikkouK2(house, sheets_, parent);
        });
    }
    void see(const QDialog& form) {
        seen_ += form.windowTitle();
        for (const auto* label : form.findChildren<QLabel*>()) seen_ += u'\n' + label->text();
    }
    void see(const reports::Report& report) {
        for (const auto& band : report.design().bands)
            for (const auto& control : band.controls)
                for (int row = 0; row < report.rowCount(); ++row)
                    seen_ += u'\n' + report.textOf(control, row, 1);
    }
    void see(const QFileInfo& file) {
        const reports::Package package(file.filePath());
        seen_ += u'\n' + file.fileName();
        for (const QByteArray& part : package.partNames())
            seen_ += u'\n' + QString::fromUtf8(package.part(part));
    }
    /// Everything that the run menu and the calculation show, print and send.
    QString workOn(const QString& company, const QString& person, QDate kijunbi) {
        CompanyFolder folder;
        sample::SampleOptions options;
        options.company = company;
        folder.makeSample(options);
        folder.addCompanionMarker();
        std::unique_ptr<company::CompanyLock> none;
        auto opened = company::openCompany(company::placesOf(folder.programDir()), company, none);
        global_.company_lock = std::move(opened.lock);
        global_.cn_main = std::move(opened.cn_main);
        global_.cn_main->execute(u"update 履歴書テーブル set 氏名 = ?"_s, {person});
        global_.setCompanyPanel(company);
        global_.kijunbi = store::formatDate(kijunbi);
        const auto sent = [this] { return QDir(out_.path()).entryInfoList({u"*.xlsx"_s}); };
        const auto before = sent();
        seen_.clear();
        prep::frmMenuSJikkou menu(house_, nullptr);
        driver_.run(menu, [this](QDialog& steps) {
            see(steps);
            driver_.onScreen(u"frmSHaibunjikkouK2"_s, [this](QDialog& form) {
                see(form);
                chooseText(form, u"DataList1"_s, QString::fromUtf16(sample::kCriteria[0].kubunName));
                chooseText(form, u"DataList2"_s, QString::fromUtf16(sample::kCriteria[0].kijunName));
                click(form, u"Command6"_s);  // lists and sheets follow a calculation
                // The snapshot stands at another date.
                if (global_.kijunbi != store::formatDate(sample::newestKijunbi()))
                    driver_.onScreen(u"frmSKakunin"_s, [](QDialog& found) { click(found, u"Command1"_s); });
                click(form, u"Command1"_s);
                driver_.onScreen(u"frmReport"_s, [this](QDialog& preview) {
                    see(preview);
                    see(dynamic_cast<reports::frmReport&>(preview).report());
                    preview.reject();
                });
                click(form, u"Command4"_s);
                click(form, u"Command5"_s);
                see(form);
                form.close();
            });
            click(steps, u"Command7"_s);
            steps.close();
        });
        for (const QFileInfo& file : sent())
            if (!before.contains(file)) see(file);
        global_.closeCompany();
        return seen_;
    }

    QTemporaryDir out_;
    const reports::SheetFolder sheets_{{out_.path()}};
    forms::GlobalRecord global_;
    forms::ScreenRegistry screens_;
    forms::House house_{global_, screens_};
    ScreenDriver driver_;
    QString seen_;
};

TEST_F(TwoCompanies, NothingOfTheFirstStandsInTheSecond) {
    const auto expectOwn = [](const QString& seen, const QString& company, const QString& person,
                              const QString& date) {
        // The menu's heading, the foot of each page, the sheet and its name.
        for (const QString& own :
             {u"配分実行メニュー　基準日 %1"_s.arg(date), u"基準日 %1　"_s.arg(date),
              u"　作成日 %1　%2"_s.arg(store::formatDate(QDate::currentDate()), company),
              u"<t>%1</t>"_s.arg(person), QString(date).replace(u'/', u'-') + u'_' + company})
            EXPECT_TRUE(seen.contains(own)) << own.toStdString();
    };
    expectOwn(workOn(u"甲商事"_s, u"甲野"_s, QDate(2025, 12, 10)), u"甲商事"_s, u"甲野"_s, u"2025/12/10"_s);
    const QString second = workOn(u"乙商事"_s, u"乙野"_s, QDate(2026, 12, 10));
    expectOwn(second, u"乙商事"_s, u"乙野"_s, u"2026/12/10"_s);
    for (const QString& former : {u"甲"_s, u"2025/12"_s, u"2025-12"_s})
        EXPECT_FALSE(second.contains(former)) << former.toStdString();
}

}  // namespace
