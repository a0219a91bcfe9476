#include "store/connection.h"

#include <sqlite3.h>

#include <QDir>
#include <QFileInfo>
#include <QtEndian>
#include <optional>

#include "store/sql_functions.h"

namespace store {
namespace {

constexpr int kBusyMilliseconds = 2000;
constexpr qint64 kSmallestPage = 512;
/// A run of 32,767 employees stays in memory until it is committed: pages that spill are written twice.
constexpr int kCacheKibibytes = 64 * 1024;

QString quoted(const QString& identifier) {
    return u'"' + QString(identifier).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

QString fileLabel(const QString& path) {
    return u'「' + QFileInfo(path).fileName() + u'」';
}

/// A missing file is told before the engine says "unable to open"; an empty one would pass for a new
/// database.
void requireFile(const QString& path) {
    const QFileInfo file(path);
    if (!file.isFile())
        throw Error(Error::Reason::NotOpen,
                    QStringLiteral("データベース ファイル%1が見つかりません。").arg(fileLabel(path)));
    if (file.size() == 0)
        throw Error(Error::Reason::Damaged,
                    QStringLiteral("データベース ファイル%1は空です。データベースが壊れています。")
                        .arg(fileLabel(path)));
}

/// A file that was cut off ends inside a page.
void requireWholePages(const QString& path, qint64 pageSize) {
    if (QFileInfo(path).size() % pageSize != 0)
        throw Error(
            Error::Reason::Damaged,
            QStringLiteral("データベース ファイル%1が途中で切れています。データベースが壊れています。")
                .arg(fileLabel(path)));
}

/// The error of a conversion function comes through the engine as a text.
std::optional<Error> conversionError(const QString& description) {
    for (const char16_t* text : {kNullText, kTypeText, kDateText})
        if (description == QStringView(text)) return Error(Error::Reason::Type, description);
    if (description == QStringView(kOverflowText)) return Error(Error::Reason::Overflow, description);
    return std::nullopt;
}

struct Explained {
    Error::Reason reason;
    const char16_t* text;
};

Explained explained(int code) {
    using Reason = Error::Reason;
    if (code == SQLITE_IOERR_CORRUPTFS) return {Reason::Damaged, u"データベースが壊れています。"};
    switch (code & 0xff) {
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return {Reason::Locked, u"データベースは他で使用中です。"};
        case SQLITE_READONLY:
            return {Reason::ReadOnly, u"データベースは読み取り専用のため、書き込めません。"};
        case SQLITE_FULL:
            return {Reason::DiskFull, u"ディスクの空き容量が不足しています。"};
        case SQLITE_CORRUPT:
            return {Reason::Damaged, u"データベースが壊れています。"};
        case SQLITE_NOTADB:
            return {Reason::NotOpen, u"パスワードが違うか、データベースではないため、ファイルを開けません。"};
        case SQLITE_CANTOPEN:
        case SQLITE_PERM:
        case SQLITE_AUTH:
            return {Reason::NotOpen, u"データベース ファイルを開けません。"};
        case SQLITE_IOERR:
            return {Reason::Engine, u"データベース ファイルの読み書きに失敗しました。"};
        case SQLITE_NOMEM:
            return {Reason::Engine, u"メモリが不足しています。"};
        default:
            return {Reason::Engine, u"データベースの処理に失敗しました。"};
    }
}

}  // namespace

Error engineError(int code, const QString& description) {
    if (const std::optional<Error> own = conversionError(description)) return *own;
    const Explained known = explained(code);
    QString text = QString::fromUtf16(known.text);
    if (!description.isEmpty()) text += QStringLiteral(" (%1)").arg(description);
    return Error(known.reason, text);
}

Connection::Connection(const QString& path, const Key& key, Mode mode) : path_(path), key_(key) {
    try {
        open(path, mode);
    } catch (...) {
        sqlite3_close_v2(db_);
        throw;
    }
}

Connection::~Connection() {
    if (inTransaction()) sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close_v2(db_);
}

void Connection::open(const QString& path, Mode mode) {
    if (mode != Mode::Create) requireFile(path);
    int flags = SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    flags |= mode == Mode::ReadOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
    if (mode == Mode::Create) flags |= SQLITE_OPEN_CREATE;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &db_, flags, nullptr);
    if (code != SQLITE_OK) fail(code);
    sqlite3_busy_timeout(db_, kBusyMilliseconds);
    const QByteArray key = key_.passphrase().toUtf8();
    const int keyed = sqlite3_key(db_, key.constData(), static_cast<int>(key.size()));
    if (keyed != SQLITE_OK) fail(keyed);
    registerSqlFunctions(db_);
    executeScript(QStringLiteral("PRAGMA temp_store=MEMORY; PRAGMA foreign_keys=OFF"));
    verify(QStringLiteral("main"), path);
}

/// The first read: it shows a wrong key and rolls back what a crash left. Only then is the length of the file
/// final.
void Connection::verify(const QString& schema, const QString& path) {
    const QString name = quoted(schema);
    try {
        query(QStringLiteral("select count(*) from %1.sqlite_schema").arg(name));
    } catch (const Error& error) {
        if (error.reason() == Error::Reason::NotOpen) requireWholePages(path, kSmallestPage);
        // A company has several files: the user must learn which one to restore.
        throw Error(error.reason(), fileLabel(path) + u'：' + error.text());
    }
    executeScript(
        QStringLiteral("PRAGMA %1.journal_mode=DELETE; PRAGMA %1.synchronous=FULL; PRAGMA %1.cache_size=-%2")
            .arg(name)
            .arg(kCacheKibibytes));
    const qint64 pageSize = query(QStringLiteral("PRAGMA %1.page_size").arg(name)).value(0).toInteger();
    requireWholePages(path, pageSize);
}

void Connection::attach(const QString& path, const QString& schema) {
    requireFile(path);
    try {
        execute(QStringLiteral("ATTACH ? AS ? KEY ?"), {path, schema, key_.passphrase()});
    } catch (const Error& error) {
        throw Error(error.reason(), fileLabel(path) + u'：' + error.text());
    }
    try {
        verify(schema, path);
    } catch (...) {
        sqlite3_exec(db_, ("DETACH " + quoted(schema).toUtf8()).constData(), nullptr, nullptr, nullptr);
        throw;
    }
}

int Connection::execute(const QString& sql, const Binds& binds) {
    const sqlite3_int64 before = sqlite3_total_changes64(db_);
    prepare(sql).bindAll(binds).run();
    // The statement's own changes, without those of triggers; the engine keeps the count of the last one that
    // changed anything.
    return sqlite3_total_changes64(db_) == before ? 0 : static_cast<int>(sqlite3_changes64(db_));
}

void Connection::executeScript(const QString& sql) {
    const int code = sqlite3_exec(db_, sql.toUtf8().constData(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) fail(code);
}

Statement Connection::prepare(const QString& sql) {
    const QByteArray text = sql.toUtf8();
    sqlite3_stmt* stmt = nullptr;
    const char* rest = nullptr;
    const int code = sqlite3_prepare_v3(db_, text.constData(), static_cast<int>(text.size()),
                                        SQLITE_PREPARE_PERSISTENT, &stmt, &rest);
    if (code != SQLITE_OK) fail(code);
    Q_ASSERT(stmt && QByteArray(rest).trimmed().isEmpty());
    return Statement(*this, stmt);
}

void Connection::beginTrans(Reserve reserve) {
    executeScript(reserve == Reserve::AllFiles ? QStringLiteral("BEGIN IMMEDIATE") : QStringLiteral("BEGIN"));
}

void Connection::commitTrans() {
    const Changes before = changes();
    const int code = sqlite3_exec(db_, "COMMIT", nullptr, nullptr, nullptr);
    if (code == SQLITE_OK) return;
    const Error error = errorOf(code);
    // Open still: nothing is written, the caller rolls back.
    if (inTransaction()) throw error;
    requireStands(before, error);
}

Connection::Changes Connection::changes() const {
    return {changeCounters(), commonJournals()};
}

/// The engine ended the transaction: before or behind the moment that makes it stand?
void Connection::requireStands(const Changes& before, const Error& error) {
    if (!settle()) {
        // What waits for its common journal, or for its own where there is one file only, is rolled back when
        // the files can be written again.
        const bool alone = schemas().size() == 1 && QFileInfo::exists(path_ + QStringLiteral("-journal"));
        if (alone || commonJournals() != before.journals) throw error;
        throw Error(Error::Reason::CommitUnknown,
                    QStringLiteral("処理の最後にエラーが発生し、登録されたかどうかを確認できません。\n"
                                   "会社を指定し直して、内容を確認してください。"));
    }
    // All files go together: one that was changed tells for all.
    if (changeCounters() == before.counters) throw error;
}

/// The engine counts the changes of a file in its header, in the same write as the changes themselves. Read
/// past the cache: what stands in the files is asked here. A file that can't be read counts as 0.
std::vector<quint32> Connection::changeCounters() const {
    constexpr sqlite3_int64 kOffset = 24;
    std::vector<quint32> counters;
    for (const QString& schema : schemas()) {
        sqlite3_file* file = nullptr;
        unsigned char bytes[4] = {};
        sqlite3_file_control(db_, schema.toUtf8().constData(), SQLITE_FCNTL_FILE_POINTER, &file);
        const bool read =
            file && file->pMethods && file->pMethods->xRead(file, bytes, sizeof bytes, kOffset) == SQLITE_OK;
        counters.push_back(read ? qFromBigEndian<quint32>(bytes) : 0);
    }
    return counters;
}

/// The journals that bind the files of one transaction together; their removal makes it stand.
QStringList Connection::commonJournals() const {
    const QFileInfo main(path_);
    return main.dir().entryList({main.fileName() + QStringLiteral("-mj*")}, QDir::Files);
}

/// A read of every file rolls back what is to be rolled back; false when that fails.
bool Connection::settle() {
    try {
        for (const QString& schema : schemas())
            query(QStringLiteral("select count(*) from %1.sqlite_schema").arg(quoted(schema)));
        return true;
    } catch (const Error&) {
        return false;
    }
}

void Connection::rollbackTrans() {
    // A full disk or a failed write makes the engine roll back by itself.
    if (inTransaction()) executeScript(QStringLiteral("ROLLBACK"));
}

bool Connection::inTransaction() const {
    return sqlite3_get_autocommit(db_) == 0;
}

QStringList Connection::schemas() const {
    QStringList names;
    for (int i = 0; const char* name = sqlite3_db_name(db_, i); ++i)
        if (i != 1) names << QString::fromUtf8(name);  // 1 is the temporary schema
    return names;
}

QString Connection::filePath(const QString& schema) const {
    return QString::fromUtf8(sqlite3_db_filename(db_, schema.toUtf8().constData()));
}

bool Connection::hasTable(const QString& table) const {
    for (const QString& schema : schemas())
        if (tables(schema).contains(table, Qt::CaseInsensitive)) return true;
    return false;
}

QStringList Connection::tables(const QString& schema) const {
    const QString sql =
        QStringLiteral(
            "select name from %1.sqlite_schema where type = 'table' and name not like 'sqlite\\_%' "
            "escape '\\' order by rowid")
            .arg(quoted(schema));
    Statement statement = const_cast<Connection*>(this)->prepare(sql);
    QStringList names;
    while (statement.step()) names << statement.toText(0);
    return names;
}

Error Connection::errorOf(int code) const {
    return engineError(code, QString::fromUtf8(db_ ? sqlite3_errmsg(db_) : sqlite3_errstr(code)));
}

void Connection::fail(int code) const {
    throw errorOf(code);
}

}  // namespace store
