#pragma once
#include <QLineEdit>

#include "calc/frmSHaibunjikkouK2.h"
#include "prep/run_screens.h"
#include "reports/frmReport.h"
#include "reports/workbook.h"
#include "run_fixture.h"
#include "support/sheet_text.h"

namespace calctest {

using namespace preptest;
using sample::kCriteria;

inline const QString kKojinbetsu = u"個人別計算"_s, kSougaku = u"総額配分"_s,
                     kMethod = u"算定方式指定の確認"_s;
enum { General, Managers, Part, Shokutaku };  // the lines of kCriteria

/// The calculation screen over the sample company at its newest date, which is not computed yet. Amounts are
/// rounded to 10 yen, half up.
class Calculation : public RunScreens {
  protected:
    Calculation()
        : RunScreens(Content::Sample),
          sheets_({folder_.programDir() + u"/out"_s, [this](const QString&, const reports::Sheet& sheet) {
                       sent_.push_back({sheet.title, sheet.grid});
                       origin_ = sheet.origin;
                   }}) {
        global_.kijunbi = u"2026/12/10"_s;
        global_.panels.company = u"見本商事"_s;
        house_.help = [this](const QString& screen) { help_ = screen; };
        sql(u"delete from Tanka_hasuu"_s);
        sql(u"insert into Tanka_hasuu(単価,端数処理,基準日) values('1','0','2026-12-10')"_s);
    }

    // ---- The company

    static store::Binds runOf(int criterion) {
        return {kDate, kCriteria[criterion].kubun, kCriteria[criterion].kijun};
    }
    /// Columns of a table, the rows of the run only.
    std::string read(const QString& columns, const QString& table, int criterion,
                     const QString& order = u"ID"_s) {
        return rowsOf(cn_, u"select %1 from %2%3 order by %4"_s.arg(columns, table, kOfRun, order),
                      runOf(criterion));
    }
    std::string stored(const QString& column, int criterion) {
        return read(u"社員Code,"_s + column, u"S配分基準対応社員"_s, criterion, kByCode);
    }
    /// A column of S配分基準対応社員, summed, in yen.
    qint64 sum(const QString& column, int criterion) {
        const std::string yen = read(u"sum(%1) / 10000"_s.arg(column), u"S配分基準対応社員"_s, criterion);
        return QString::fromStdString(yen).toLongLong();
    }
    QByteArray everything() { return dump(cn_); }
    static qint64 yen(QDialog& form, const QString& name) {
        return text(form, name).remove(u',').toLongLong();
    }

    // ---- The screen

    void open(ScreenDriver::Step step) {
        calc::frmSHaibunjikkouK2 form(house_, sheets_, nullptr);
        driver_.run(form, closing(step));
    }
    static void pick(QDialog& form, int criterion) {
        chooseText(form, u"DataList1"_s, QString::fromUtf16(kCriteria[criterion].kubunName));
        chooseText(form, u"DataList2"_s, QString::fromUtf16(kCriteria[criterion].kijunName));
    }
    static void budget(QDialog& form, const QString& total, const QString& pool) {
        type(form, u"Text2"_s, u""_s, Qt::Key_Return);
        type(form, u"Text1"_s, total, Qt::Key_Return);
        type(form, u"Text2"_s, pool, Qt::Key_Return);
    }
    void run(QDialog& form, const QString& method) {
        driver_.expectBox(u"『%1』を指定します。"_s.arg(method), kMethod, BoxAnswer::Ok, BoxIcon::None);
        driver_.expectBox(u"『%1』の処理を終了しました。"_s.arg(method), u"処理終了の確認"_s, BoxAnswer::Ok,
                          BoxIcon::None);
        click(form, u"Command1"_s);
    }
    /// 個人別計算 by way of 支給係数修正.
    void runIndividually(QDialog& form) {
        if (global_.haibun_kubun == u"02"_s)  // its payment coefficient is typed in per person
            driver_.expectBox(u"支給係数は実行時入力です。\nシミュレーションは行いません。"_s, u"確認"_s);
        click(form, u"Command6"_s);
        run(form, kKojinbetsu);
    }
    /// The names of the controls in sight, of those that the steps switch.
    static QString inSight(QDialog& form) {
        QStringList names;
        for (const QString& name :
             u"Label2 Image1 Label3 Image2 Frame1 Frame3 Command1 Command6 Command4 "
             "Command5 Image3 Frame4"_s.split(u' '))
            if (visible(form, name)) names << name;
        return names.join(u' ');
    }

    static inline const QDate kDate = sample::newestKijunbi();
    static inline const QString kOfRun = u" where 基準日 = ?1 and 配分区分 = ?2 and 配分基準 = ?3"_s;
    static inline const QString kByCode = u"cast(社員Code as integer)"_s;
    const reports::SheetFolder sheets_;
    QString help_;
    std::vector<std::pair<QString, reports::SheetGrid>>
        sent_;        ///< the sheets that went to the writer of workbooks
    QString origin_;  ///< what stands under the last of them
};

}  // namespace calctest
