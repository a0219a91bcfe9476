#include "company/instance_lock.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace company {
namespace {

/// Makes the empty lock file. An existing one is not opened here: on some systems closing a second handle of
/// a file would drop the lock that this process already holds on it.
void provideLockFile(const QString& path) {
    if (QFileInfo::exists(path)) return;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append)) return;
    file.close();
    // Colleagues of other accounts use the same file.
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::WriteGroup |
                        QFile::ReadOther | QFile::WriteOther);
}

}  // namespace

InstanceLock::InstanceLock(const QString& path) : file_(path) {
    file_.setStaleLockTime(0);  // only a dead process leaves a stale lock, however long a live one runs
    // A folder where no lock can be made must not keep the user from working.
    acquired_ = file_.tryLock(0) || file_.error() != QLockFile::LockFailedError;
}

QString InstanceLock::defaultPath() {
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty()) folder = QDir::tempPath();
    return folder + QStringLiteral("/hinata-mint-") + QDir::home().dirName() + QStringLiteral(".lock");
}

CompanyLock::CompanyLock(QString dataDir, QString company, std::unique_ptr<store::Connection> file)
    : dataDir_(std::move(dataDir)), company_(std::move(company)), file_(std::move(file)) {}

QString CompanyLock::pathOf(const QString& dataDir, const QString& company) {
    return dataDir + QStringLiteral("/.lock.") + company;
}

std::unique_ptr<CompanyLock> CompanyLock::acquire(const QString& dataDir, const QString& company) {
    const QString path = pathOf(dataDir, company);
    provideLockFile(path);
    const QFileInfo info(path);
    if (!info.isFile() || !info.isWritable()) {
        throw store::Error(store::Error::Reason::ReadOnly,
                           QStringLiteral("会社のデータを置くフォルダに書き込めません。\n") +
                               QDir::toNativeSeparators(dataDir));
    }
    try {
        // Nothing is ever written into the file: no key, and the mode that accepts an empty file.
        auto file =
            std::make_unique<store::Connection>(path, store::Key::none(), store::Connection::Mode::Create);
        file->executeScript(QStringLiteral("PRAGMA busy_timeout = 0"));  // refused at once, not after a wait
        file->executeScript(QStringLiteral("BEGIN IMMEDIATE"));
        QFile::remove(dataDir + u'/' + company + u'/' + formerFileName());
        return std::unique_ptr<CompanyLock>(new CompanyLock(dataDir, company, std::move(file)));
    } catch (const store::Error& error) {
        if (error.reason() == store::Error::Reason::Locked) return nullptr;
        throw;
    }
}

}  // namespace company
