#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cstdio>

#include "sample_company.h"
#include "sample_sql.h"
#include "store/error.h"

namespace {

constexpr int kMost = 999999;  ///< 社員Code has six digits

void say(const QString& line) {
    std::fprintf(stdout, "%s\n", line.toUtf8().constData());
}

int fail(const QString& line) {
    std::fprintf(stderr, "%s\n", line.toUtf8().constData());
    return 1;
}

/// The wage companion counts as installed when its program file stands beside ours; an empty one is enough.
bool putCompanionMarker(const QString& programDir) {
    QFile marker(programDir + QStringLiteral("/zukanzen.exe"));
    if (marker.exists()) return true;
    if (!marker.open(QIODevice::WriteOnly)) return false;
    say(QStringLiteral("賃金設計プログラムの印を置きました: %1").arg(marker.fileName()));
    return true;
}

int make(const sample::SampleOptions& options, const QString& sqlFolder) {
    const QString place = QDir(options.dataDir).filePath(options.company);
    if (QFileInfo::exists(place) && !options.replace) {
        say(QStringLiteral("『%1』はすでにあります。").arg(options.company));
        return 0;
    }
    try {
        sample::makeSampleCompany(options);
        if (!sqlFolder.isEmpty()) sample::writeAsSql(options.dataDir, options.company, sqlFolder);
    } catch (const store::Error& error) {
        return fail(QStringLiteral("『%1』を作成できません。%2").arg(options.company, error.text()));
    }
    say(QStringLiteral("『%1』を作成しました: %2").arg(options.company, place));
    say(QStringLiteral("社員 %1人、賞与の基準日 %2、計算待ちの基準日 %3")
            .arg(options.employees)
            .arg(options.earlierRuns ? sample::kDates : 1)
            .arg(sample::newestKijunbi().toString(QStringLiteral("yyyy/M/d"))));
    if (options.wageItems)
        say(
            QStringLiteral("この会社は賃金設計プログラムの給与項目を使います。プログラムのフォルダーに "
                           "zukanzen.exe が必要です"
                           "（--companion-marker で印を置けます）。"));
    return 0;
}

}  // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("見本の会社を作成します。"));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("dataDir"), QStringLiteral("プログラムの Data フォルダー"));
    const QCommandLineOption name(QStringLiteral("company"), QStringLiteral("会社名"), QStringLiteral("名前"),
                                  sample::SampleOptions().company);
    const QCommandLineOption employees(QStringLiteral("employees"), QStringLiteral("社員数"),
                                       QStringLiteral("人数"), QStringLiteral("50"));
    const QCommandLineOption oneCriterion(QStringLiteral("one-criterion"),
                                          QStringLiteral("全員を一つの配分基準に入れます"));
    const QCommandLineOption fresh(QStringLiteral("fresh"), QStringLiteral("すでにある会社を作り直します"));
    const QCommandLineOption noWageItems(QStringLiteral("no-wage-items"),
                                         QStringLiteral("給与項目による基礎額を使いません"));
    const QCommandLineOption marker(QStringLiteral("companion-marker"),
                                    QStringLiteral("zukanzen.exe の印を置くプログラムのフォルダー"),
                                    QStringLiteral("フォルダー"));
    const QCommandLineOption sql(QStringLiteral("as-sql"),
                                 QStringLiteral("基本db と賞与db を SQL の文にしたものも置くフォルダー"),
                                 QStringLiteral("フォルダー"));
    parser.addOptions({name, employees, oneCriterion, fresh, noWageItems, marker, sql});
    parser.process(application);
    if (parser.positionalArguments().size() != 1)
        return fail(QStringLiteral("Data フォルダーを指定してください。"));

    sample::SampleOptions options;
    options.dataDir = QDir(parser.positionalArguments().constFirst()).absolutePath();
    options.company = parser.value(name);
    options.employees = parser.value(employees).toInt();
    options.spread = parser.isSet(oneCriterion) ? sample::Spread::OneCriterion : sample::Spread::Mixed;
    options.wageItems = !parser.isSet(noWageItems);
    options.replace = parser.isSet(fresh);
    if (options.employees < 1 || options.employees > kMost)
        return fail(QStringLiteral("社員数は 1～%1 を指定してください。").arg(kMost));
    if (parser.isSet(marker) && !putCompanionMarker(parser.value(marker)))
        return fail(QStringLiteral("zukanzen.exe の印を置けません: %1").arg(parser.value(marker)));
    return make(options, parser.value(sql));
}
