#include "company/company_set.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QSet>

#include "company/company_files.h"
#include "store/durable_files.h"

namespace company {
namespace {

const QString kNew = QStringLiteral(".new.");
const QString kReady = QStringLiteral(".ready.");
const QString kOld = QStringLiteral(".old.");

struct Names {
    explicit Names(const CompanyLock& lock) : data(lock.dataDir()), company(lock.company()) {}
    QString at(const QString& prefix) const { return data + u'/' + prefix + company; }
    QString stands() const { return at({}); }
    QString data, company;
};

bool isThere(const QString& path) {
    const QFileInfo place(path);
    return place.exists() || place.isSymLink();
}

void requireOwnFolder(const Names& names) {
    const QFileInfo stands(names.stands());
    if (stands.exists() && !stands.isDir())
        throw store::Error(store::Error::Reason::ReadOnly,
                           QStringLiteral("『%1』と同じ名前のファイルがあるため、この処理はできません。")
                               .arg(names.company));
    if (stands.isSymLink())
        throw store::Error(
            store::Error::Reason::ReadOnly,
            QStringLiteral("『%1』はほかの場所へのリンクのため、この処理はできません。").arg(names.company));
}

void syncAll(const QString& folder) {
    QStringList folders{folder};
    QDirIterator files(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        files.next();
        const QFileInfo entry = files.fileInfo();
        if (entry.isSymLink()) continue;
        if (entry.isDir())
            folders << entry.filePath();
        else
            store::syncFile(entry.filePath());
    }
    for (const QString& one : folders) store::syncFolder(one);
}

/// `.ready.X` stands: it becomes the company. Whatever fails, it can be called again.
void finish(const Names& names) {
    if (isThere(names.stands())) {
        store::removeFolder(names.at(kOld));
        store::renameFolder(names.stands(), names.at(kOld));
    }
    store::renameFolder(names.at(kReady), names.stands());
    store::syncFolder(names.data);
}

/// Behind a failure of finish(): as if it had not been decided.
void takeBack(const Names& names) {
    if (!isThere(names.stands()) && isThere(names.at(kOld)))
        store::renameFolder(names.at(kOld), names.stands());
    store::renameFolder(names.at(kReady), names.at(kNew));
    store::syncFolder(names.data);
}

/// What is not the company any more goes; the change stands without that too.
void clear(const Names& names) {
    try {
        store::removeFolder(names.at(kOld));
    } catch (const store::Error&) {
        // The next opening tries again.
    }
}

}  // namespace

NewSet::NewSet(const CompanyLock& lock) : lock_(lock) {
    const Names names(lock);
    requireOwnFolder(names);
    recoverSet(lock);
    folder_ = names.at(kNew);
    if (!QDir().mkpath(folder_))
        throw store::Error(store::Error::Reason::ReadOnly,
                           QStringLiteral("会社のデータを置くフォルダに書き込めません。\n") +
                               QDir::toNativeSeparators(names.data));
}

NewSet::~NewSet() {
    try {
        store::removeFolder(folder_);
    } catch (const store::Error&) {
        // The next opening tries again.
    }
}

void NewSet::putInPlace() {
    const Names names(lock_);
    syncAll(folder_);
    store::syncFolder(names.data);
    store::renameFolder(folder_, names.at(kReady));
    try {
        store::syncFolder(names.data);  // decided
        finish(names);
    } catch (const store::Error&) {
        takeBack(names);
        throw;
    }
    clear(names);
}

void removeSet(const CompanyLock& lock) {
    const Names names(lock);
    requireOwnFolder(names);
    recoverSet(lock);
    store::renameFolder(names.stands(), names.at(kOld));
    store::syncFolder(names.data);
    clear(names);
}

void recoverSet(const CompanyLock& lock) {
    const Names names(lock);
    if (isThere(names.at(kReady))) finish(names);
    store::removeFolder(names.at(kOld));
    if (!isThere(names.at(kNew))) return;
    // Files may have been on their way from there, one by one, into the place of their former selves.
    for (const QString& database : databaseNames(names.company)) {
        const QString file = names.stands() + u'/' + database;
        if (QFileInfo::exists(file)) QFile::remove(workFileOf(file));
    }
    store::removeFolder(names.at(kNew));
}

void recoverSets(const QString& dataDir) {
    QSet<QString> companies;
    for (const QString& prefix : {kNew, kReady, kOld})
        for (const QString& name :
             QDir(dataDir).entryList({prefix + u'*'}, QDir::AllEntries | QDir::Hidden | QDir::System))
            companies << name.mid(prefix.size());
    for (const QString& company : companies) {
        try {
            if (const auto lock = CompanyLock::acquire(dataDir, company)) recoverSet(*lock);
        } catch (const store::Error&) {
            // The opening of that company tells what is wrong.
        }
    }
}

}  // namespace company
