#pragma once
#include <QDateTime>
#include <QString>
#include <optional>
#include <vector>

#include "company/company_files.h"
#include "company/instance_lock.h"
#include "company/places.h"

/// Backups of a company. A backup is a plain copy of the company's folder, so that a hand can bring it back
/// too; beside the files lies one that tells what it is.
namespace company {

/// Why there is a backup.
struct BackupReason {
    QString text;  ///< empty: the user asked for it
};

struct Backup {
    QString folder;   ///< where its files stand
    QString company;  ///< whose it is; empty: no company's files stand there
    QDateTime made;   ///< by the clock of the machine that made it; a plain copy: its newest file
    CompanySummary summary;
    QString program;  ///< version that made it; empty: a copy made by hand
    QString reason;
    /// Made by the program, and all files stand in the sizes that were noted.
    bool whole = false;
    QStringList links;    ///< what it does not hold
    bool locked = false;  ///< with a key of its own; it opens with the password of its time
};

/// Copies the company, as it is at one moment, into the folder `target`, in the place of a backup that stands
/// there; other files there stay. The copy is complete and was verified (every database opened, sound, the
/// same rows as the original) before a file of the former backup goes, and a crash at any moment leaves the
/// one or the other. Nothing: `progress` stopped it, and the former backup stands. Throws store::Error
/// likewise.
std::optional<Backup> makeBackup(const QString& companyFolder, const QString& company, const QString& target,
                                 const BackupReason& reason = {}, const store::Progress& progress = {});

/// The backups that stand in the subfolders of `root`, the newest first. A folder that is no backup does not
/// count. None where there is no such folder.
std::vector<Backup> backupsIn(const QString& root);
/// What a folder holds: a backup, or a copy that somebody made by hand. Opens its files. Throws store::Error
/// when it holds no company, or a damaged one.
Backup lookInto(const QString& folder);

/// Makes the company of `lock` of a backup or of a plain copy, all or nothing; a company that stood there
/// under that name goes (keep it first). The backup is verified before. False: stopped. Throws store::Error;
/// the company then stands as before.
bool restoreBackup(const Backup& backup, const CompanyLock& lock, const store::Progress& progress = {});

/// The program's own copies of a company, before something that can lose much. At most one for a reason
/// within ten minutes, and none where the user does not want them. The newest ten stay, of older ones the
/// last of each day for a month and the last of each month. False: none was due. Throws store::Error when it
/// can't be made, or `progress` stopped it.
bool keepCopy(const Places& places, const QString& company, const QString& reason,
              const store::Progress& progress = {});
/// The same where a company that can't be copied must not keep the user from going on.
void keepCopyIfSound(const Places& places, const QString& company, const QString& reason);
/// The same before a company is replaced: always, and of a damaged one the files as they are.
void keepReplaced(const Places& places, const QString& company);
/// Whether the user wants them for this company; yes unless told otherwise. A company that is replaced is
/// kept all the same.
bool ownCopiesWanted(const Places& places, const QString& company);
void wantOwnCopies(const Places& places, const QString& company, bool wanted);
/// Where they stand.
QString copiesFolder(const Places& places, const QString& company);

}  // namespace company
