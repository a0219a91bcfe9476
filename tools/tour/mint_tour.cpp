// Goes through the main job on the real screens without a display: opens 見本商事, looks at a master and at
// an employee, prints the staff register, loads the newest date, looks at the assignment, fills in
// automatically and by hand, simulates a payment coefficient, computes one criterion of each method, prints,
// exports, checks the inputs and sets the year's payments side by side.
//   mint-tour <program folder> <output folder>
// Then the road of a person who has just installed the program: a company of one's own with 200 people from
// CSV and a backup of it, left in <output folder>/own.
// It works on a copy of the company, so that the sample stays as it is. The output folder receives the
// printed list, the sheet and pictures of the screens; the totals are printed.
#include <QApplication>
#include <QDir>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTextStream>

#include "main_screens.h"
#include "own_company.h"
#include "reports/frmReport.h"
#include "screen_driver.h"
#include "shell/frmMain.h"
#include "shell/program.h"
#include "widgets/platform_messages.h"
#include "widgets/theme.h"

namespace {

using namespace support;

const QString kCompany = QStringLiteral("見本商事");
const QString kSeisyain = QStringLiteral("正社員賞与");
const QString kIppan = QStringLiteral("一般社員");

void copyFolder(const QString& from, const QString& to) {
    QDir().mkpath(to);
    for (const QString& name : QDir(from).entryList(QDir::Files))
        QFile::copy(from + u'/' + name, to + u'/' + name);
}

/// What one calculation came to, as the screen shows it.
struct Computed {
    QString criterion;
    QString method;
    QString total;
    QString grandTotal;
};

class Tour {
  public:
    Tour(const QString& programDir, const QString& out) : out_(out) {
        const QString data = QStringLiteral("/Data/") + kCompany;
        copyFolder(programDir + data, folder_.path() + data);
        QFile::copy(programDir + QStringLiteral("/zukanzen.exe"),
                    folder_.filePath(QStringLiteral("zukanzen.exe")));
        QDir().mkpath(out_ + QStringLiteral("/screens"));
    }
    int run();

  private:
    void foresee(ScreenDriver& driver);
    void foreseePeople(ScreenDriver& driver);
    void look(ScreenDriver& driver, const QString& screen, const QString& name);
    void savePdf(ScreenDriver& driver, const QString& pdf);
    void picture(QWidget& screen, const QString& name) {
        shot(screen, QStringLiteral("%1/screens/%2_%3.png")
                         .arg(out_)
                         .arg(++pictures_, 2, 10, QLatin1Char('0'))
                         .arg(name));
    }
    static void chooseRun(QDialog& form, const QString& kubun, const QString& kijun, int option);
    void fillIn(QDialog& form);
    void typeIn(QDialog& form);
    void simulate(QDialog& form);
    void compute(QDialog& form, const QString& kubun, const QString& kijun, int option);
    void showYear(ScreenDriver& driver, QDialog& form);
    void printList(ScreenDriver& driver, QDialog& form, const QString& pdf);
    void tellResults() const;
    bool makeOwn();

    QTemporaryDir folder_;
    QString out_;
    int pictures_ = 0;
    std::vector<Computed> computed_;
};

void Tour::foresee(ScreenDriver& driver) {
    driver.onScreen(QStringLiteral("frmDBSentaku"), [this](QDialog& form) {
        chooseText(form, QStringLiteral("List1"), kCompany);
        picture(form, QStringLiteral("会社指定"));
        click(form, QStringLiteral("Command2"));
    });
    driver.onScreen(QStringLiteral("frmMenu000"), [this](QDialog& form) {
        picture(form, QStringLiteral("メニュー"));
        for (int entry : {2, 3, 4, 9}) click(form, QStringLiteral("Command%1").arg(entry));
    });
    foreseePeople(driver);
    driver.onScreen(QStringLiteral("frmMenuSSyouyo"), [this](QDialog& form) {
        picture(form, QStringLiteral("賞与配分メニュー"));
        click(form, QStringLiteral("Command2"));
        click(form, QStringLiteral("Command4"));
        click(form, QStringLiteral("Command5"));
    });
    driver.onScreen(QStringLiteral("frmSDatatorikomi"), [this](QDialog& form) {
        click(form, QStringLiteral("Command2"));
        choose(form, QStringLiteral("DataList1"),
               static_cast<int>(rows(form, QStringLiteral("DataList1")).size()) - 1);
        picture(form, QStringLiteral("人事データ取込"));
        click(form, QStringLiteral("Command4_1"));
    });
    driver.onScreen(QStringLiteral("frmMenuSJikkou"), [this](QDialog& form) {
        picture(form, QStringLiteral("配分実行メニュー"));
        click(form, QStringLiteral("Option1_2"));
        for (int entry : {1, 3, 5, 6, 7, 10}) click(form, QStringLiteral("Command%1").arg(entry));
    });
    driver.onScreen(QStringLiteral("frmSTaisyousya"), [this](QDialog& form) {
        picture(form, QStringLiteral("対象者と配分基準の対応"));
        click(form, QStringLiteral("Command5"));
    });
    driver.onScreen(QStringLiteral("frmSHaibunjikkouK"), [this](QDialog& form) { fillIn(form); });
    driver.onScreen(QStringLiteral("frmSSanteishitei"), [this, &driver](QDialog& form) {
        chooseRun(form, kSeisyain, kIppan, 2);
        driver.onScreen(QStringLiteral("frmSJikkou01"), [this](QDialog& grid) { typeIn(grid); });
        click(form, QStringLiteral("Command1"));
        if (form.isVisible()) click(form, QStringLiteral("Command2"));
    });
    driver.onScreen(QStringLiteral("frmSJCheck"), [this](QDialog& form) {
        chooseRun(form, kSeisyain, kIppan, 0);
        click(form, QStringLiteral("Command1"));
        picture(form, QStringLiteral("入力状況チェック"));
        click(form, QStringLiteral("Command2"));
    });
    driver.onScreen(QStringLiteral("frmSHaibunjikkouK2"), [this, &driver](QDialog& form) {
        compute(form, kSeisyain, kIppan, 0);
        compute(form, kSeisyain, kIppan, 1);
        printList(driver, form, QStringLiteral("賞与支給額_一般社員.pdf"));
        compute(form, QStringLiteral("嘱託・パート賞与"), QStringLiteral("パート"), 1);
        printList(driver, form, QStringLiteral("賞与支給額_パート.pdf"));
        click(form, QStringLiteral("Command2"));
    });
    driver.onScreen(QStringLiteral("frmSNenkan"), [this, &driver](QDialog& form) { showYear(driver, form); });
}

/// The masters, the employee record with what stands behind it, and the staff register.
void Tour::foreseePeople(ScreenDriver& driver) {
    driver.onScreen(QStringLiteral("frmMenuMasuta"), [this](QDialog& form) {
        picture(form, QStringLiteral("マスタメニュー"));
        click(form, QStringLiteral("Command1"));
        click(form, QStringLiteral("Command20"));
    });
    look(driver, QStringLiteral("frmMastaSyain"), QStringLiteral("社員区分マスタ"));
    driver.onScreen(QStringLiteral("frmMenuJinji"), [](QDialog& form) {
        click(form, QStringLiteral("Command2"));
        click(form, QStringLiteral("Command3"));
    });
    driver.onScreen(QStringLiteral("frmMenuJinjiSub"), [](QDialog& form) {
        for (int entry : {1, 4, 3}) click(form, QStringLiteral("Command%1").arg(entry));
    });
    driver.onScreen(QStringLiteral("frmRireki"), [this](QDialog& form) {
        picture(form, QStringLiteral("履歴書"));
        for (int record : {2, 3, 4}) click(form, QStringLiteral("Command%1").arg(record));
        click(form, QStringLiteral("cmdClose"));
    });
    look(driver, QStringLiteral("frmJinjiIdou2"), QStringLiteral("異動履歴"));
    look(driver, QStringLiteral("frmJinjiKazoku"), QStringLiteral("家族情報"));
    look(driver, QStringLiteral("frmJinjiSikaku"), QStringLiteral("資格・免許保有状況"));
    driver.onScreen(QStringLiteral("frmJinjiSiborikomi"), [this, &driver](QDialog& form) {
        click(form, QStringLiteral("Command1"));
        picture(form, QStringLiteral("検索条件"));
        savePdf(driver, QStringLiteral("社員台帳.pdf"));
        click(form, QStringLiteral("Command4"));
        click(form, QStringLiteral("Command6"));
    });
}

/// A record form: its picture, and closed again.
void Tour::look(ScreenDriver& driver, const QString& screen, const QString& name) {
    driver.onScreen(screen, [this, name](QDialog& form) {
        picture(form, name);
        click(form, QStringLiteral("cmdClose"));
    });
}

void Tour::chooseRun(QDialog& form, const QString& kubun, const QString& kijun, int option) {
    chooseText(form, QStringLiteral("DataList1"), kubun);
    chooseText(form, QStringLiteral("DataList2"), kijun);
    click(form, QStringLiteral("Option1_%1").arg(option));
}

void Tour::fillIn(QDialog& form) {
    for (int option : {0, 1}) {
        chooseRun(form, kSeisyain, kIppan, option);
        click(form, QStringLiteral("Command1"));
    }
    picture(form, QStringLiteral("自動入力"));
    click(form, QStringLiteral("Command2"));
}

/// 金一封 of the first two employees.
void Tour::typeIn(QDialog& form) {
    type(form, QStringLiteral("Text1_0"), QStringLiteral("30000"), Qt::Key_Return);
    type(form, QStringLiteral("Text1_1"), QStringLiteral("25000"), Qt::Key_Return);
    picture(form, QStringLiteral("実行時入力"));
    click(form, QStringLiteral("Command1"));
    if (form.isVisible()) click(form, QStringLiteral("Command2"));
}

void Tour::showYear(ScreenDriver& driver, QDialog& form) {
    for (int number = 1; number <= 2; ++number) {
        const QString combo = QStringLiteral("DataCombo%1").arg(number);
        const QStringList dates = rows(form, combo);
        const qsizetype last = dates.size() - number;
        if (last >= 0) choose(form, combo, static_cast<int>(last));
    }
    printList(driver, form, QStringLiteral("年間支給額.pdf"));
    click(form, QStringLiteral("Command2"));
}

/// The panel of the individual calculation is where it is run: half a month more, looked at, computed and
/// taken back, so that the run that counts pays what is registered.
void Tour::simulate(QDialog& form) {
    click(form, QStringLiteral("Command6"));
    for (const QString& box : {QStringLiteral("Text4"), QStringLiteral("Text3_0")}) {
        if (!visible(form, box)) continue;
        const QString registered = text(form, box);
        type(form, box, QString::number(registered.toDouble() + 0.5), Qt::Key_Return);
        picture(form, QStringLiteral("支給係数シミュレーション"));
        type(form, box, registered, Qt::Key_Return);
        return;
    }
}

void Tour::compute(QDialog& form, const QString& kubun, const QString& kijun, int option) {
    const QString name = QStringLiteral("Option1_%1").arg(option);
    chooseRun(form, kubun, kijun, option);
    if (visible(form, QStringLiteral("Command6"))) simulate(form);
    click(form, QStringLiteral("Command1"));
    computed_.push_back({kubun + u'／' + kijun, text(form, name),
                         text(form, QStringLiteral("Label6_%1").arg(option)),
                         text(form, QStringLiteral("Label6_5"))});
    picture(form, QStringLiteral("配分計算_") + text(form, name));
}

/// The preview that comes next goes into a file.
void Tour::savePdf(ScreenDriver& driver, const QString& pdf) {
    driver.onScreen(QStringLiteral("frmReport"), [this, pdf](QDialog& preview) {
        auto& report = dynamic_cast<reports::frmReport&>(preview);
        picture(preview, QStringLiteral("一覧表"));
        report.savePdf(out_ + u'/' + pdf);
        preview.reject();
    });
}

void Tour::printList(ScreenDriver& driver, QDialog& form, const QString& pdf) {
    savePdf(driver, pdf);
    click(form, QStringLiteral("Command4"));
    click(form, QStringLiteral("Command5"));
    picture(form, QStringLiteral("Excelにデータを送る"));
}

void Tour::tellResults() const {
    QTextStream say(stdout);
    say << "配分区分／配分基準\t算定方式\t合計（円）\t支給総額（円）\n";
    for (const Computed& c : computed_)
        say << c.criterion << '\t' << c.method << '\t' << c.total << '\t' << c.grandTotal << '\n';
    say << "結果: " << out_ << '\n';
    for (const QString& name :
         QDir(out_).entryList({QStringLiteral("*.pdf"), QStringLiteral("*.xlsx")}, QDir::Files))
        say << "  " << name << '\n';
    say << "  screens/（画面の写真 " << pictures_ << "枚）\n";
}

bool Tour::makeOwn() {
    const QString own = out_ + QStringLiteral("/own");
    QDir(own).removeRecursively();
    const bool done =
        tour::makeOwnCompany({.programDir = own, .picture = [this](QWidget& screen, const QString& name) {
                                  picture(screen, name);
                              }});
    QTextStream(stdout) << "空の Data から作った会社: " << own << "/Data、バックアップ: " << own
                        << "/BackupDB\n";
    return done;
}

int Tour::run() {
    bool failed = false;
    ScreenDriver::setFailureSink([&failed](const QString& what) {
        QTextStream(stderr) << "失敗: " << what << '\n';
        failed = true;
    });
    forms::ScreenRegistry screens;
    registerScreens(screens, out_);
    shell::Program program(screens, folder_.path());
    program.setSplashTime(std::chrono::milliseconds(0));
    program.setLockPath(folder_.filePath(QStringLiteral("instance.lock")));
    bool ended = false;
    program.house().endProcess = [&ended] { ended = true; };
    {
        ScreenDriver driver;
        driver.answerFreely([](const forms::BoxRequest& box) {
            return box.buttons == forms::BoxButtons::YesNo ? forms::BoxAnswer::Yes : forms::BoxAnswer::Ok;
        });
        foresee(driver);
        program.Main();
        driver.attempt([&] {
            picture(*program.fMainForm(), QStringLiteral("起動"));
            program.fMainForm()->mnuFileNo_Click(1);
            picture(*program.fMainForm(), QStringLiteral("会社を開いたあと"));
            program.fMainForm()->mnuFileNo_Click(9);
        });
    }
    const bool own = makeOwn();
    tellResults();
    return failed || !ended || !own ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
    widgets::dropSizeHintMessage();
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("ひなた堂ミント"));
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        QTextStream(stderr) << "mint-tour <プログラムのフォルダー> <出力先>\n";
        return 2;
    }
    widgets::applyTheme(app, widgets::Scheme::Light);
    return Tour(arguments[1], arguments[2]).run();
}
