#include "sample_company.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include "company/create.h"
#include "company/key.h"
#include "company/main_connection.h"
#include "sample_companions.h"
#include "sample_design.h"
#include "sample_masters.h"
#include "sample_runs.h"
#include "schema/files.h"
#include "schema/links.h"
#include "store/work.h"

namespace sample {
namespace {

[[noreturn]] void throwNotWritten() {
    throw store::Error(store::Error::Reason::ReadOnly,
                       QStringLiteral("見本の会社のフォルダーに書き込めません。"));
}

void writeRows(const QString& dataDir, const SampleOptions& options, const std::vector<Person>& people) {
    const bool wageItems = options.wageItems && options.companions;
    const std::unique_ptr<store::Connection> cn = company::openMainConnection(dataDir, options.company);
    store::Work work(*cn);
    writeMasters(*cn, options);
    writePeople(*cn, people);
    writeDesign(*cn, wageItems);
    writeEvaluations(*cn, people);
    if (options.companions) writeWages(*cn, people);
    work.commit();
    makeRuns(*cn, options, people);
}

void writeHyouka(const QString& dataDir, const SampleOptions& options, const std::vector<Person>& people) {
    store::Connection hyouka(schema::filePath(dataDir, options.company, schema::File::Hyouka),
                             company::sharedKey());
    store::Work work(hyouka);
    writeEvaluationSheets(hyouka, people);
    work.commit();
}

/// The links hold full paths, and the files have moved.
void refreshLinks(const SampleOptions& options) {
    using schema::File;
    const auto path = [&](File file) { return schema::filePath(options.dataDir, options.company, file); };
    store::Connection cn(path(File::Syouyo), company::sharedKey());
    QString error;
    const bool linked = (!options.companions ||
                         schema::refresh_links(cn, path(File::Chingin), schema::LinkPass::Chingin, error)) &&
                        schema::refresh_links(cn, path(File::Kihon), schema::LinkPass::Kihon, error);
    if (!linked) throw store::Error(store::Error::Reason::Engine, error);
}

/// Puts the finished folder in its place; an old company goes to `attic`, from where it comes back when the
/// move fails.
void moveIn(const QString& made, const QString& place, const QString& attic) {
    const bool standing = QFileInfo::exists(place);
    if (standing && !QDir().rename(place, attic)) throwNotWritten();
    if (QDir().rename(made, place)) return;
    if (standing) QDir().rename(attic, place);
    throwNotWritten();
}

}  // namespace

void makeSampleCompany(const SampleOptions& options) {
    const QString place = options.dataDir + u'/' + options.company;
    if (!options.replace && QFileInfo::exists(place))
        throw store::Error(store::Error::Reason::Conflict, QStringLiteral("同じ名前の会社があります。"));
    if (!QDir().mkpath(options.dataDir)) throwNotWritten();
    const QTemporaryDir workshop(QFileInfo(options.dataDir).absoluteFilePath() +
                                 QStringLiteral(".作成中-XXXXXX"));
    if (!workshop.isValid()) throwNotWritten();

    const std::vector<Person> people = makePeople(options);
    company::createCompany(workshop.path(), options.company, {options.companions, options.companions});
    writeRows(workshop.path(), options, people);
    if (options.companions) writeHyouka(workshop.path(), options, people);
    moveIn(workshop.filePath(options.company), place, workshop.filePath(QStringLiteral("前")));
    refreshLinks(options);
}

QDate kijunbi(int index) {
    static const QDate dates[kDates] = {QDate(2025, 12, 10), QDate(2026, 7, 10), QDate(2026, 12, 10)};
    return dates[index];
}

QDate newestKijunbi() {
    return kijunbi(kDates - 1);
}

QDate designKijunbi() {
    return {2025, 10, 1};
}

QString bonusText(int index) {
    static const char16_t* const texts[kDates] = {u"2025年冬季賞与", u"2026年夏季賞与", u"2026年冬季賞与"};
    return QString::fromUtf16(texts[index]);
}

domain::RunKey runKey(const Criterion& criterion, QDate kijunbi) {
    return {kijunbi, QString::fromUtf16(criterion.kubun), QString::fromUtf16(criterion.kijun)};
}

}  // namespace sample
