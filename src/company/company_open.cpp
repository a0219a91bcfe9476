#include "company/company_open.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QSettings>

#include "company/backup.h"
#include "company/company_set.h"
#include "company/key.h"
#include "company/main_connection.h"
#include "schema/files.h"
#include "schema/links.h"
#include "schema/upgrade.h"

namespace company {
namespace {

struct Place {
    const Places& places;
    QString company;
    QString path(schema::File file) const { return schema::filePath(places.data, company, file); }
};

bool refreshPass(store::Connection& dao_db, const QString& target, schema::LinkPass pass,
                 OpenedCompany& opened) {
    opened.link_saki_path = target;
    return schema::refresh_links(dao_db, target, pass, opened.link_error_text);
}

bool refreshAllLinks(store::Connection& dao_db, const Place& place, OpenedCompany& opened) {
    opened.syouyo_db_name = schema::fileName(place.company, schema::File::Syouyo);
    const QString chingin = place.path(schema::File::Chingin);
    if (QFileInfo::exists(chingin)) {
        if (!refreshPass(dao_db, chingin, schema::LinkPass::Chingin, opened)) return false;
        opened.chingin_db_exists = true;
    }
    return refreshPass(dao_db, place.path(schema::File::Kihon), schema::LinkPass::Kihon, opened);
}

/// Base amounts by method '3' come out of the companion's wage tables.
bool usesWageCompanion(store::Connection& cnMain) {
    return !cnMain.query(QStringLiteral("select 1 from S基礎額設定 where 設定方法 = '3' limit 1")).isEmpty();
}

OpenedCompany::Outcome openAt(const Place& place, OpenedCompany& opened) {
    using Outcome = OpenedCompany::Outcome;
    opened.companion_present = QFileInfo::exists(place.places.program + QStringLiteral("/zukanzen.exe"));
    // The connection that refreshes the links becomes the main one, with the files it has attached: opening a
    // keyed file is what costs most here, and so each is opened once.
    auto dao_db = std::make_unique<store::Connection>(place.path(schema::File::Syouyo),
                                                      keyOf(place.places.data + u'/' + place.company));
    schema::refuseNewer(*dao_db);  // before its links are rewritten
    if (!refreshAllLinks(*dao_db, place, opened)) return Outcome::LinkFailed;
    if (schema::isOlder(*dao_db)) keepCopy(place.places, place.company, QStringLiteral("版の更新の前"));
    makeMain(*dao_db, place.company);
    schema::createMissingTables(*dao_db);
    opened.cn_main = std::move(dao_db);
    if (!opened.companion_present && usesWageCompanion(*opened.cn_main)) return Outcome::CompanionMissing;
    return Outcome::Opened;
}

const QString kLastCompany = QStringLiteral("LastCompany");

}  // namespace

QString lastCompany(const Places& places) {
    return QSettings(places.settings(), QSettings::IniFormat).value(kLastCompany).toString();
}

void rememberCompany(const Places& places, const QString& company) {
    QSettings(places.settings(), QSettings::IniFormat).setValue(kLastCompany, company);
}

QStringList companyFolders(const QString& dataDir) {
    if (!QFileInfo(dataDir).isDir()) {
        throw store::Error(store::Error::Reason::NotOpen,
                           QStringLiteral("会社のデータを置くフォルダが見つかりません。\n") +
                               QDir::toNativeSeparators(dataDir));
    }
    recoverSets(dataDir);
    QStringList names;
    QDirIterator folders(dataDir, QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden);
    while (folders.hasNext()) {
        folders.next();
        // A company's name never begins with a dot: that is a change of one, and a lock.
        if (!folders.fileName().startsWith(u'.')) names.append(folders.fileName());
    }
    return names;
}

OpenedCompany openCompany(const Places& places, const QString& company, std::unique_ptr<CompanyLock>& held) {
    const Place place{places, company};
    OpenedCompany opened;
    const bool ours = held && held->folder() == places.data + u'/' + company;
    // A folder that is no company gets no lock file; opening the bonus database tells what is wrong with it.
    if (!ours && QFileInfo::exists(place.path(schema::File::Syouyo))) {
        opened.lock = CompanyLock::acquire(places.data, company);
        if (!opened.lock) {
            opened.outcome = OpenedCompany::Outcome::InUse;
            return opened;
        }
        recoverSet(*opened.lock);
    }
    opened.outcome = openAt(place, opened);
    if (ours) opened.lock = std::move(held);
    return opened;
}

}  // namespace company
