#pragma once
#include <QString>
#include <array>
#include <vector>

#include "company/instance_lock.h"

/// 最適化: each database of a company is written anew without its waste.
namespace company {

/// The six databases in the program's order (databaseNames), and whether each counts as present: Hydcdb and
/// Compdb count whenever 賞与db stands, and fail where they do not.
std::array<bool, 6> databasesPresent(const QString& dataDir, const QString& company);

/// What became of one database.
struct Compaction {
    enum class Outcome {
        Done,
        WorkFileExists,  ///< <database>wk stands, from whatever happened before; nothing was touched
        Failed,          ///< in use, missing, damaged, no room: the database is as it was
    };
    QString path;
    Outcome outcome = Outcome::Failed;
    qint64 before = 0, after = 0;  ///< bytes; Done only
};

/// Compacts one database of the company whose lock is held. It is written anew beside the company, checked,
/// put under the name of the work file and from there in the place of the old one, so that a crash at any
/// moment leaves the one or the other.
Compaction compact_database(const CompanyLock& lock, const QString& path);

}  // namespace company
