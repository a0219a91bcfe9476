#include "company/backup.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QSettings>
#include <algorithm>

#include "company/company_set.h"
#include "company/key.h"
#include "store/durable_files.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;

/// A copy that is being made, and one that is complete and on its way up into the folder around it.
const QString kBuilding = u".バックアップ作成中"_s;
const QString kReady = u".バックアップ完成"_s;
constexpr int kCopyParts = 70;  ///< of a hundred; the rest is verifying
constexpr int kNewest = 10;
constexpr int kSecondsApart = 600;
const QString kOwnCopiesWanted = u"OwnCopies"_s;

QStringList filesIn(const QString& folder) {
    QStringList names;
    QDirIterator files(folder, QDir::Files | QDir::Hidden | QDir::NoSymLinks, QDirIterator::Subdirectories);
    while (files.hasNext()) names << QDir(folder).relativeFilePath(files.next());
    names.sort();
    return names;
}

// ---- What a backup tells of itself

QJsonObject manifestOf(const QString& folder) {
    QFile file(folder + u'/' + kManifest);
    constexpr qint64 kMost = 1 << 20;  // whoever wrote it
    if (!file.open(QIODevice::ReadOnly) || file.size() > kMost) return {};
    return QJsonDocument::fromJson(file.readAll()).object();
}

void writeManifest(const QString& folder, const Backup& backup) {
    QJsonArray files;
    for (const QString& name : filesIn(folder))
        files << QJsonObject{{u"名前"_s, name}, {u"バイト"_s, QFileInfo(folder + u'/' + name).size()}};
    const QJsonObject told{{u"会社"_s, backup.company},
                           {u"作成日時"_s, backup.made.toString(Qt::ISODateWithMs)},
                           {u"プログラム"_s, backup.program},
                           {u"理由"_s, backup.reason},
                           {u"会社名"_s, backup.summary.registeredName},
                           {u"社員数"_s, backup.summary.people},
                           {u"基準日数"_s, backup.summary.dates},
                           {u"最新の基準日"_s, backup.summary.newestDate.toString(Qt::ISODate)},
                           {u"ファイル"_s, files}};
    QFile file(folder + u'/' + kManifest);
    const QByteArray text = QJsonDocument(told).toJson();
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush())
        throw store::Error(store::Error::Reason::DiskFull, u"バックアップ先に書き込めません。"_s);
    file.close();
}

QStringList namedIn(const QJsonObject& manifest) {
    QStringList names;
    for (const QJsonValue file : manifest.value(u"ファイル"_s).toArray()) {
        const QString name = file[u"名前"_s].toString();
        // A name from outside stays inside of its folder.
        if (!name.isEmpty() && !QDir::isAbsolutePath(name) && !QDir::cleanPath(name).startsWith(u".."_s))
            names << name;
    }
    return names;
}

/// By its own telling alone, without opening a file.
std::optional<Backup> toldBy(const QString& folder) {
    const QJsonObject manifest = manifestOf(folder);
    Backup backup;
    backup.folder = folder;
    backup.company = manifest.value(u"会社"_s).toString();
    backup.made = QDateTime::fromString(manifest.value(u"作成日時"_s).toString(), Qt::ISODateWithMs);
    if (!companyNameFault(backup.company).isEmpty() || !backup.made.isValid()) return std::nullopt;
    backup.program = manifest.value(u"プログラム"_s).toString();
    backup.reason = manifest.value(u"理由"_s).toString();
    backup.summary.registeredName = manifest.value(u"会社名"_s).toString();
    backup.summary.people = manifest.value(u"社員数"_s).toInt();
    backup.summary.dates = manifest.value(u"基準日数"_s).toInt();
    backup.summary.newestDate = QDate::fromString(manifest.value(u"最新の基準日"_s).toString(), Qt::ISODate);
    backup.whole = !backup.program.isEmpty();
    backup.locked = filesLocked(folder);
    for (const QJsonValue file : manifest.value(u"ファイル"_s).toArray()) {
        const QFileInfo stands(folder + u'/' + file[u"名前"_s].toString());
        backup.whole = backup.whole && stands.isFile() && stands.size() == file[u"バイト"_s].toInteger();
        backup.summary.bytes += stands.size();
    }
    return backup;
}

// ---- The folder of a backup

void provideFolder(const QString& path) {
    if (!QDir().mkpath(path))
        throw store::Error(store::Error::Reason::ReadOnly, u"バックアップ先のフォルダを作成できません。\n"_s +
                                                               QDir::toNativeSeparators(path));
}

/// The copy is complete: its files go up, one by one, each in the place of its former self; the file that
/// tells of them comes last. What only the former backup had goes. Can be called again at any point.
void moveUp(const QString& target) {
    const QString ready = target + u'/' + kReady;
    if (!QFileInfo::exists(ready)) return;
    QStringList names = filesIn(ready);
    const QStringList former = namedIn(manifestOf(target));
    if (names.removeOne(kManifest)) {
        // Told anew from its own list: files that went up before a crash are not in the folder any more.
        const QStringList kept = namedIn(manifestOf(ready));
        for (const QString& name : former)
            if (!kept.contains(name)) QFile::remove(target + u'/' + name);
        // Of a copy made by hand: the new files do not open with it.
        if (!kept.contains(kKeyFile)) QFile::remove(target + u'/' + kKeyFile);
        names << kManifest;
    }
    for (const QString& name : names) {
        QDir().mkpath(QFileInfo(target + u'/' + name).path());
        store::replaceFile(ready + u'/' + name, target + u'/' + name);
    }
    store::syncFolder(target);
    store::removeFolder(ready);
    store::syncFolder(target);
}

void settle(const QString& target) {
    moveUp(target);
    store::removeFolder(target + u'/' + kBuilding);
}

}  // namespace

std::optional<Backup> makeBackup(const QString& companyFolder, const QString& company, const QString& target,
                                 const BackupReason& reason, const store::Progress& progress) {
    const QString data = QFileInfo(QFileInfo(companyFolder).path()).canonicalFilePath();
    if ((QFileInfo(target).absoluteFilePath() + u'/').startsWith(data + u'/'))
        throw store::Error(store::Error::Reason::NotOpen,
                           u"会社のデータを置くフォルダの中には、バックアップできません。"_s);
    provideFolder(target);
    settle(target);
    const QString building = target + u'/' + kBuilding;
    provideFolder(building);
    const auto part = [&](qint64 done, qint64 whole) {
        return !progress || progress(done * kCopyParts, whole * 100);
    };
    Backup backup;
    try {
        RowCounts rows;
        {
            CompanyMoment moment(companyFolder, company);
            rows = moment.rowCounts();
            backup = {target,
                      company,
                      QDateTime::currentDateTime(),
                      moment.summary(),
                      QCoreApplication::applicationVersion(),
                      reason.text,
                      true,
                      moment.links(),
                      filesLocked(companyFolder)};
            if (!moment.copyTo(building, company, moment.key(), part)) {
                store::removeFolder(building);
                return std::nullopt;
            }
        }
        if (backup.program.isEmpty()) backup.program = u"-"_s;
        verifyCopy(building, company, rows);
        writeManifest(building, backup);
        for (const QString& name : filesIn(building)) store::syncFile(building + u'/' + name);
        store::syncFolder(building);
    } catch (...) {
        QDir(building).removeRecursively();
        throw;
    }
    if (progress && !progress(99, 100)) {
        store::removeFolder(building);
        return std::nullopt;
    }
    store::renameFolder(building, target + u'/' + kReady);
    store::syncFolder(target);  // from here on the new one counts
    moveUp(target);
    return backup;
}

std::vector<Backup> backupsIn(const QString& root) {
    std::vector<Backup> found;
    for (const QString& name : QDir(root).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString folder = root + u'/' + name;
        try {
            settle(folder);
        } catch (const store::Error&) {
            // It can be looked at all the same.
        }
        if (auto told = toldBy(folder)) {
            found.push_back(std::move(*told));
        } else if (const QString company = companyIn(folder); !company.isEmpty()) {
            Backup plain;
            plain.folder = folder;
            plain.company = company;
            plain.locked = filesLocked(folder);
            for (const QString& file : filesIn(folder)) {
                const QFileInfo entry(folder + u'/' + file);
                plain.summary.bytes += entry.size();
                plain.made = std::max(plain.made, entry.lastModified());
            }
            found.push_back(std::move(plain));
        }
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const Backup& a, const Backup& b) { return a.made > b.made; });
    return found;
}

Backup lookInto(const QString& folder) {
    Backup backup = toldBy(folder).value_or(Backup{});
    backup.folder = folder;
    if (backup.company.isEmpty()) backup.company = companyIn(folder);
    if (backup.company.isEmpty())
        throw store::Error(store::Error::Reason::NotOpen, u"このフォルダに会社のデータはありません。\n"_s +
                                                              QDir::toNativeSeparators(folder));
    CompanyMoment moment(folder, backup.company, namedIn(manifestOf(folder)));
    if (moment.isNewer())
        throw store::Error(
            store::Error::Reason::NotOpen,
            u"このデータは新しいバージョンのプログラムで作成されているため、元に戻せません。"_s);
    backup.summary = moment.summary();
    backup.links = moment.links();
    if (!backup.made.isValid())
        backup.made = QFileInfo(folder + u'/' + databaseNames(backup.company).constFirst()).lastModified();
    return backup;
}

bool restoreBackup(const Backup& backup, const CompanyLock& lock, const store::Progress& progress) {
    const auto part = [&](qint64 done, qint64 whole) {
        return !progress || progress(done * kCopyParts, whole * 100);
    };
    NewSet set(lock);
    RowCounts rows;
    {
        CompanyMoment moment(backup.folder, backup.company, namedIn(manifestOf(backup.folder)));
        moment.requireSound();
        rows = moment.rowCounts();
        if (!moment.copyTo(set.folder(), lock.company(), moment.key(), part)) return false;
    }
    verifyCopy(set.folder(), lock.company(), rows);
    if (progress && !progress(99, 100)) return false;
    set.putInPlace();
    return true;
}

// ---- The program's own copies

QString copiesFolder(const Places& places, const QString& company) {
    return places.backups() + u'/' + kOwnCopies + u'/' + company;
}

namespace {

/// Which of the copies, the newest first, go.
std::vector<Backup> outdated(const std::vector<Backup>& copies) {
    std::vector<Backup> going;
    QSet<QDate> days, months;
    for (std::size_t i = 0; i < copies.size(); ++i) {
        const QDate day = copies[i].made.date();
        const QDate month(day.year(), day.month(), 1);
        const bool recent = day.addMonths(1) >= copies.front().made.date();
        const bool firstOfDay = !days.contains(day), firstOfMonth = !months.contains(month);
        days.insert(day);
        months.insert(month);
        if (i < kNewest || (recent && firstOfDay) || firstOfMonth) continue;
        going.push_back(copies[i]);
    }
    return going;
}

QString freeFolder(const Places& places, const QString& company) {
    QString folder =
        copiesFolder(places, company) + u'/' + QDateTime::currentDateTime().toString(u"yyyyMMdd-HHmmss"_s);
    while (QFileInfo::exists(folder)) folder += u'_';
    return folder;
}

void makeOwnCopy(const Places& places, const QString& company, const QString& reason,
                 const store::Progress& progress = {}) {
    provideFolder(copiesFolder(places, company));
    const QString folder = freeFolder(places, company);
    try {
        if (!makeBackup(places.data + u'/' + company, company, folder, {reason}, progress))
            throw store::Error(store::Error::Reason::Engine, u"バックアップを中止しました。"_s);
    } catch (...) {
        QDir().rmdir(folder);
        throw;
    }
    for (const Backup& copy : outdated(backupsIn(copiesFolder(places, company)))) {
        try {
            store::removeFolder(copy.folder);
        } catch (const store::Error&) {
            // One too many does no harm.
        }
    }
}

}  // namespace

bool ownCopiesWanted(const Places& places, const QString& company) {
    return QSettings(places.settings(), QSettings::IniFormat)
        .value(settingsKey(kOwnCopiesWanted, company), true)
        .toBool();
}

void wantOwnCopies(const Places& places, const QString& company, bool wanted) {
    QSettings(places.settings(), QSettings::IniFormat)
        .setValue(settingsKey(kOwnCopiesWanted, company), wanted);
}

bool keepCopy(const Places& places, const QString& company, const QString& reason,
              const store::Progress& progress) {
    if (!ownCopiesWanted(places, company)) return false;
    const QDateTime now = QDateTime::currentDateTime();
    for (const Backup& copy : backupsIn(copiesFolder(places, company)))
        if (copy.whole && copy.reason == reason && std::abs(copy.made.secsTo(now)) < kSecondsApart)
            return false;
    makeOwnCopy(places, company, reason, progress);
    return true;
}

void keepCopyIfSound(const Places& places, const QString& company, const QString& reason) {
    try {
        keepCopy(places, company, reason);
    } catch (const store::Error&) {
        // What the user does next tells what is wrong with it.
    }
}

void keepReplaced(const Places& places, const QString& company) {
    try {
        makeOwnCopy(places, company, u"元に戻す前"_s);
    } catch (const store::Error& error) {
        using Reason = store::Error::Reason;
        if (error.reason() != Reason::Damaged && error.reason() != Reason::NotOpen) throw;
        const QString from = places.data + u'/' + company, to = freeFolder(places, company);
        for (const QString& name : filesIn(from)) {
            QDir().mkpath(QFileInfo(to + u'/' + name).path());
            store::copyFile(from + u'/' + name, to + u'/' + name);
        }
        store::syncFolder(to);
    }
}

}  // namespace company
