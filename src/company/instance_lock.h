#pragma once
#include <QLockFile>
#include <QString>
#include <memory>

#include "store/connection.h"

namespace company {

/// One running program per user of the machine. Held for the life of the object; a lock left by a process
/// that died is taken over.
class InstanceLock {
  public:
    explicit InstanceLock(const QString& path = defaultPath());
    /// False: another instance is running.
    bool acquired() const { return acquired_; }
    /// A file in the user's runtime folder, or in the folder for temporary files where there is none.
    static QString defaultPath();

  private:
    QLockFile file_;
    bool acquired_ = false;
};

/// One process at a time works on a company, whichever account or machine it runs under: an exclusive lock of
/// the operating system on a file beside the company's folder, so that the folder itself can be exchanged. It
/// goes with the process, so there is no stale lock to judge; the empty file itself stays.
class CompanyLock {
  public:
    /// Locks the company, which need not stand yet. Null when another process (or another lock of this one)
    /// holds it. Throws store::Error when the Data folder cannot be written.
    static std::unique_ptr<CompanyLock> acquire(const QString& dataDir, const QString& company);
    const QString& dataDir() const { return dataDir_; }
    const QString& company() const { return company_; }
    QString folder() const { return dataDir_ + u'/' + company_; }
    /// The lock file's path.
    static QString pathOf(const QString& dataDir, const QString& company);
    /// The lock file of earlier versions, within the company's folder; it means nothing any more.
    static QString formerFileName() { return QStringLiteral("使用中.lock"); }

  private:
    CompanyLock(QString dataDir, QString company, std::unique_ptr<store::Connection> file);
    QString dataDir_, company_;
    std::unique_ptr<store::Connection> file_;  ///< holds its transaction open
};

}  // namespace company
