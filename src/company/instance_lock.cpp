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

CompanyLock::CompanyLock(QString folder, std::unique_ptr<store::Connection> file)
    : folder_(std::move(folder)), file_(std::move(file)) {}

std::unique_ptr<CompanyLock> CompanyLock::acquire(const QString& folder) {
    const QString path = folder + u'/' + fileName();
    provideLockFile(path);
    const QFileInfo info(path);
    if (!info.isFile() || !info.isWritable()) {
        throw store::Error(
            store::Error::Reason::ReadOnly,
            QStringLiteral("会社のフォルダに書き込めません。\n") + QDir::toNativeSeparators(folder));
    }
    try {
        // Nothing is ever written into the file: no key, and the mode that accepts an empty file.
        auto file =
            std::make_unique<store::Connection>(path, store::Key::none(), store::Connection::Mode::Create);
        file->executeScript(QStringLiteral("PRAGMA busy_timeout = 0"));  // refused at once, not after a wait
        file->executeScript(QStringLiteral("BEGIN IMMEDIATE"));
        return std::unique_ptr<CompanyLock>(new CompanyLock(folder, std::move(file)));
    } catch (const store::Error& error) {
        if (error.reason() == store::Error::Reason::Locked) return nullptr;
        throw;
    }
}

}  // namespace company
