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
/// the operating system on a file in the company's folder. It goes with the process, so there is no stale
/// lock to judge; the empty file itself stays.
class CompanyLock {
  public:
    /// Locks the company in `folder`. Null when another process (or another lock of this one) holds it.
    /// Throws store::Error when the folder cannot be written.
    static std::unique_ptr<CompanyLock> acquire(const QString& folder);
    const QString& folder() const { return folder_; }
    /// The lock file's name within a company's folder.
    static QString fileName() { return QStringLiteral("使用中.lock"); }

  private:
    CompanyLock(QString folder, std::unique_ptr<store::Connection> file);
    QString folder_;
    std::unique_ptr<store::Connection> file_;  ///< holds its transaction open
};

}  // namespace company
