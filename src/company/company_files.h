#pragma once
#include <QDate>
#include <QHash>
#include <QString>
#include <QStringList>
#include <memory>

#include "store/database_copy.h"

/// What stands in a company's folder, and one moment of it.
namespace company {

/// The names of the six databases that a company may have, in the program's order: 基本db, 賃金db, 評価db,
/// 賞与db, Hydcdb, Compdb.
QStringList databaseNames(const QString& company);
/// Where the compaction of a database writes: its name and "wk".
QString workFileOf(const QString& database);

/// A name that can be a company's: it names a folder and begins six file names, here and on other systems.
/// Empty when it can, otherwise what is wrong with it, for the user.
QString companyNameFault(const QString& company);

/// The folder of the program's own copies beside the backups: no company bears its name.
inline const QString kOwnCopies = QStringLiteral("自動バックアップ");
/// The file in a backup that tells what it is.
inline const QString kManifest = QStringLiteral("バックアップ.json");

/// The company whose files stand in a folder, whatever the folder is called: it is told by its
/// <会社>基本db.mdb beside <会社>賞与db.mdb. Empty when there is none.
QString companyIn(const QString& folder);

/// What a user knows a company by.
struct CompanySummary {
    QString registeredName;  ///< 会社名 of 会社テーブル
    int people = 0;
    int dates = 0;     ///< 基準日 that were taken
    QDate newestDate;  ///< invalid without one
    qint64 bytes = 0;  ///< of all files
};

/// The rows of every table, by "<file's ending>.<table>".
using RowCounts = QHash<QString, qint64>;

/// One moment of a company's files, whoever works on them: everything that is read and copied through it
/// belongs together. Holds back writers of the company as long as it lives.
class CompanyMoment {
  public:
    /// Throws store::Error when 基本db or 賞与db can't be opened or a database is damaged. A file of a
    /// companion that is not in our form counts as any other file. With `only`, nothing but these files of
    /// the folder belongs to the company.
    CompanyMoment(const QString& folder, const QString& company, const QStringList& only = {});
    ~CompanyMoment();
    CompanyMoment(const CompanyMoment&) = delete;
    CompanyMoment& operator=(const CompanyMoment&) = delete;

    CompanySummary summary();
    RowCounts rowCounts();
    /// Written by a newer version of the program.
    bool isNewer();
    /// The key of its databases.
    const store::Key& key() const { return files_->key(); }
    /// Copies all into the folder `target`, the databases under the names of the company `name` and under
    /// `key`. Links are not followed and not copied. False when `progress` stopped it.
    bool copyTo(const QString& target, const QString& name, const store::Key& key,
                const store::Progress& progress);
    /// Throws Error(Damaged) unless every database is sound.
    void requireSound();
    /// Names of links, which no copy holds.
    const QStringList& links() const { return links_; }

  private:
    QString endingOf(const QString& schema) const;
    QString folder_, company_;
    QStringList others_, links_;  ///< relative paths
    std::unique_ptr<store::Connection> files_;
};

/// Throws Error(Damaged) unless the copy in `folder` is sound and holds the rows that the original held.
void verifyCopy(const QString& folder, const QString& company, const RowCounts& expected);

}  // namespace company
