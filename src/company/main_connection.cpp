#include "company/main_connection.h"

#include <QDir>
#include <QFileInfo>

#include "company/key.h"
#include "schema/files.h"
#include "schema/links.h"
#include "schema/upgrade.h"
#include "store/work.h"

namespace company {
namespace {

/// Every file is recovered now. A crash may have left the common journals of a transaction over several files
/// behind; they may go only while no file still waits for one and no other program is in the middle of such a
/// transaction.
void removeStaleJournals(store::Connection& connection, const QString& company) {
    QDir folder = QFileInfo(connection.path()).dir();
    const QStringList files = folder.entryList(QDir::Files);
    QStringList stale;
    for (const QString& file : files) {
        if (file.endsWith(u"-journal")) return;
        if (file.startsWith(company) && file.contains(u".mdb-mj")) stale << file;
    }
    if (stale.isEmpty()) return;
    try {
        store::Work alone(connection);
        for (const QString& file : stale) folder.remove(file);
        alone.rollback();
    } catch (const store::Error&) {
        // They do no harm; the next open tries again.
    }
}

}  // namespace

void makeMain(store::Connection& connection, const QString& company) {
    for (const QString& path : schema::linkedFiles(connection))
        if (QFileInfo(path).isFile()) schema::attachFile(connection, path);
    removeStaleJournals(connection, company);
    schema::upgradeSchema(connection);
}

std::unique_ptr<store::Connection> openMainConnection(const QString& dataDir, const QString& company) {
    auto connection = std::make_unique<store::Connection>(
        schema::filePath(dataDir, company, schema::File::Syouyo), keyOf(dataDir + u'/' + company));
    makeMain(*connection, company);
    return connection;
}

}  // namespace company
