#include "own_company.h"

#include <QDate>
#include <QDir>
#include <QFile>

#include "domain/csv.h"
#include "main_screens.h"
#include "personnel/frmJinjiTorikomi.h"
#include "sample_lists.h"
#include "screen_driver.h"
#include "shell/frmMain.h"
#include "shell/program.h"

namespace tour {
namespace {

using namespace Qt::StringLiterals;
using namespace support;
using sample::lists::Name;

QString dateText(int year, int month, int day) {
    return u"%1/%2/%3"_s.arg(year).arg(month).arg(day);
}

QString writeSheet(const QString& path, const std::vector<QStringList>& rows) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return {};
    for (const QStringList& row : rows) file.write(domain::csvLine(row).toUtf8());
    return path;
}

/// What a payroll office would bring along: everybody, and the first position of each.
QString writePeople(const QString& folder, int people) {
    std::vector<QStringList> rows{{u"社員Code"_s, u"氏名"_s, u"フリガナ"_s, u"性別"_s, u"婚姻区分"_s,
                                   u"世帯主区分"_s, u"生年月日"_s, u"入社日"_s, u"最終学歴"_s, u"郵便番号"_s,
                                   u"住所１"_s, u"tel"_s, u"出身地"_s, u"住宅区分"_s, u"採用区分"_s}};
    const auto of = [](const std::vector<Name>& names, int i) {
        return names[std::size_t(i) % names.size()];
    };
    for (int i = 1; i <= people; ++i) {
        const bool man = i % 5 < 3;
        const Name family = of(sample::lists::kSurnames, i * 7);
        const Name given = of(man ? sample::lists::kMale : sample::lists::kFemale, i * 5 + i / 30);
        const int joined = 1990 + i * 13 % 35;
        rows.push_back(
            {QString::number(i), QString::fromUtf16(family.text) + u'　' + QString::fromUtf16(given.text),
             QString::fromUtf16(family.kana) + u' ' + QString::fromUtf16(given.kana), man ? u"男"_s : u"女"_s,
             i % 3 ? u"既婚"_s : u"未婚"_s, i % 3 ? u"世帯主"_s : u"非世帯主"_s,
             dateText(joined - 22 - i % 3, 1 + i % 12, 1 + i % 28), dateText(joined, 4, 1),
             i % 4 ? u"大学卒"_s : u"高等学校卒"_s, u"100-0001"_s, u"東京都千代田区千代田%1"_s.arg(i),
             u"03-5550-%1"_s.arg(i, 4, 10, QChar(u'0')), u"東京都"_s, i % 2 ? u"持家"_s : u"賃貸"_s,
             i % 6 ? u"新卒採用"_s : u"中途採用"_s});
    }
    return writeSheet(folder + u"/社員.csv"_s, rows);
}
QString writeTransfers(const QString& folder, int people) {
    std::vector<QStringList> rows{{u"社員Code"_s, u"異動日"_s, u"異動事由"_s, u"社員区分"_s, u"所属大"_s,
                                   u"役職"_s, u"職種"_s, u"コース"_s, u"等級"_s}};
    const QStringList units{u"総務部"_s, u"経理部"_s, u"営業部"_s, u"製造部"_s};
    for (int i = 1; i <= people; ++i)
        rows.push_back({QString::number(i), dateText(1990 + i * 13 % 35, 4, 1), u"新規採用"_s,
                        i % 11 ? u"正社員"_s : u"嘱託"_s, units[i % 4], i % 9 ? u"一般"_s : u"課長"_s,
                        i % 4 == 3 ? u"技能職"_s : u"事務職"_s, u"総合職"_s, QString::number(1 + i % 9)});
    return writeSheet(folder + u"/異動履歴.csv"_s, rows);
}

}  // namespace

bool makeOwnCompany(const OwnRoad& road) {
    const auto picture = [&road](QWidget& screen, const QString& name) {
        if (road.picture) road.picture(screen, name);
    };
    QDir().mkpath(road.programDir + u"/Data"_s);
    forms::ScreenRegistry screens;
    registerScreens(screens, road.programDir);
    shell::Program program(screens, road.programDir);
    program.setSplashTime(std::chrono::milliseconds(0));
    program.setLockPath(road.programDir + u"/instance.lock"_s);
    bool ended = false;
    program.house().endProcess = [&ended] { ended = true; };
    ScreenDriver driver;
    driver.answerFreely([](const forms::BoxRequest& box) {
        return box.buttons == forms::BoxButtons::YesNo ? forms::BoxAnswer::Yes : forms::BoxAnswer::Ok;
    });
    driver.onScreen(u"frmKaisyaShinki"_s, [&](QDialog& form) {
        type(form, u"Text1"_s, road.company);
        picture(form, u"新規作成"_s);
        click(form, u"Command2"_s);
        type(form, u"txtFields_0"_s, road.company + u"株式会社"_s);
        for (const QString& step : {u"4　入力する項目"_s, u"5　コード表"_s, u"8　確認"_s}) {
            chooseText(form, u"List1"_s, step);
            picture(form, u"新規作成_"_s + step.mid(2));
        }
        click(form, u"Command3"_s);
    });
    driver.onScreen(u"frmMenu000"_s, [&](QDialog& form) {
        picture(form, u"はじめての準備"_s);
        click(form, u"GuideNext"_s);
        picture(form, u"はじめての準備_社員を登録したあと"_s);
        click(form, u"Command9"_s);
    });
    driver.onScreen(u"frmJinjiTorikomi"_s, [&](QDialog& form) {
        auto& import = dynamic_cast<personnel::frmJinjiTorikomi&>(form);
        import.load(writePeople(road.programDir, road.people));
        picture(form, u"社員の取込"_s);
        click(form, u"Command3"_s);
        click(form, u"Option1_1"_s);
        import.load(writeTransfers(road.programDir, road.people));
        click(form, u"Command3"_s);
        click(form, u"Command4"_s);
    });
    driver.onScreen(u"frmBackup"_s, [&](QDialog& form) {
        picture(form, u"バックアップ"_s);
        click(form, u"cmdOK"_s);
    });
    program.Main();
    driver.attempt([&] {
        picture(*program.fMainForm(), u"はじめての起動"_s);
        program.fMainForm()->mnuFileNo_Click(0);
        program.fMainForm()->mnuFileNo_Click(4);
        program.fMainForm()->mnuFileNo_Click(9);
    });
    return ended;
}

}  // namespace tour
