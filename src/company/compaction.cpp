#include "company/compaction.h"

#include <QFileInfo>

#include "company/company_files.h"
#include "company/company_set.h"
#include "company/key.h"
#include "store/durable_files.h"

namespace company {

std::array<bool, 6> databasesPresent(const QString& dataDir, const QString& company) {
    std::array<bool, 6> present{};
    const QStringList names = databaseNames(company);
    constexpr std::size_t kSyouyo = 3;
    for (std::size_t i = 0; i < present.size(); ++i)
        present[i] = QFileInfo::exists(dataDir + u'/' + company + u'/' +
                                       names[static_cast<qsizetype>(std::min(i, kSyouyo))]);
    return present;
}

Compaction compact_database(const CompanyLock& lock, const QString& path) {
    using Outcome = Compaction::Outcome;
    Compaction told{.path = path};
    const QString work = workFileOf(path);
    if (QFileInfo::exists(work)) {
        told.outcome = Outcome::WorkFileExists;
        return told;
    }
    try {
        const store::Key key = keyOf(lock.folder());
        const NewSet aside(lock);
        const QString written = aside.folder() + u'/' + QFileInfo(path).fileName();
        {
            store::Connection database(path, key);
            told.before = QFileInfo(path).size();
            store::compactDatabase(database, written);
        }
        {
            store::Connection database(written, key, store::Connection::Mode::ReadOnly);
            store::requireSound(database);
        }
        store::syncFile(written);
        told.after = QFileInfo(written).size();
        store::replaceFile(written, work);
        store::replaceFile(work, path);
        store::syncFolder(QFileInfo(path).path());
        told.outcome = Outcome::Done;
    } catch (const store::Error&) {
        told.outcome = Outcome::Failed;
    }
    return told;
}

}  // namespace company
