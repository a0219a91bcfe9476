#pragma once
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "store/database_copy.h"

namespace schema {
struct Table;
}  // namespace schema

/// 引っ越し: makes a company of one whose databases are Jet 4 files with the same tables and columns. They
/// are opened for reading only. Everything is read and judged before anything is written.
namespace company {

/// One table of the old company.
struct MovedTable {
    QString file;  ///< its file's name
    QString name;
    const schema::Table* table = nullptr;              ///< of ours; null: it can't be carried
    qint64 found = 0;                                  ///< rows that its file says it has
    std::vector<std::vector<store::Value>> rows = {};  ///< as they will stand, in the order of our columns
    QStringList notes = {};                            ///< what of it can't be carried, and what to look at
    bool loses = false;                                ///< a note tells of something that is lost
};

struct Migration {
    QString company;  ///< as the old files name it
    QString folder;
    std::vector<MovedTable> tables = {};
    QStringList notes = {};  ///< about whole files
    qint64 rows() const;
    bool loses() const;
};

/// Reads the company in `folder`. Throws store::Error when no company stands there or a file is none of ours;
/// a damaged table is told in its notes and carried as far as it can be read. Nothing: `progress` stopped it.
std::optional<Migration> planMigration(const QString& folder, const store::Progress& progress = {});

/// Makes the company `name` of it, all or nothing, and returns the report that is kept in its folder: counts
/// of both sides table by table, and the sums of every amount by 基準日. Throws store::Error when the two
/// sides differ, the name is taken, or nothing can be written; no company is made then.
QString migrate(const Migration& plan, const QString& dataDir, const QString& name);

/// The file of the report in the company's folder.
inline const QString kMigrationReport = QStringLiteral("引っ越しの記録.txt");

}  // namespace company
