#include "store/database_copy.h"

#include <sqlite3.h>

#include <QFileInfo>
#include <memory>

namespace store {

bool copyDatabase(Connection& connection, const QString& schema, const QString& path, const Key& key,
                  const Progress& progress) {
    constexpr int kPages = 512;
    Connection target(path, key, Connection::Mode::Create);
    const auto failTarget = [&](int code) {
        throw engineError(code, QString::fromUtf8(sqlite3_errmsg(target.handle())));
    };
    sqlite3_backup* backup =
        sqlite3_backup_init(target.handle(), "main", connection.handle(), schema.toUtf8().constData());
    if (!backup) failTarget(sqlite3_errcode(target.handle()));
    int code = SQLITE_OK;
    bool stopped = false;
    while (code == SQLITE_OK && !stopped) {
        code = sqlite3_backup_step(backup, kPages);
        const int whole = sqlite3_backup_pagecount(backup);
        stopped = progress && !progress(whole - sqlite3_backup_remaining(backup), whole);
    }
    const int finished = sqlite3_backup_finish(backup);
    if (stopped) return false;
    if (code != SQLITE_DONE) failTarget(code);
    if (finished != SQLITE_OK) failTarget(finished);
    return true;
}

void compactDatabase(Connection& connection, const QString& path) {
    connection.execute(QStringLiteral("VACUUM main INTO ?"), {path});
}

void requireSound(Connection& connection) {
    for (const QString& schema : connection.schemas()) {
        const Recordset answer =
            connection.query(QStringLiteral("PRAGMA \"%1\".integrity_check(1)").arg(schema));
        if (answer.recordCount() != 1 || answer.value(0).toText() != u"ok")
            throw Error(Error::Reason::Damaged, QStringLiteral("「%1」：データベースが壊れています。")
                                                    .arg(QFileInfo(connection.filePath(schema)).fileName()));
    }
}

}  // namespace store
