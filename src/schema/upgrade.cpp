#include "schema/upgrade.h"

#include <vector>

#include "schema/files.h"
#include "store/work.h"

namespace schema {
namespace {

void setVersion(store::Connection& connection, const QString& schema, int version) {
    connection.executeScript(QStringLiteral("PRAGMA %1.user_version=%2").arg(schema).arg(version));
}

int versionOf(store::Connection& connection, const QString& schema) {
    const store::Recordset answer = connection.query(QStringLiteral("PRAGMA %1.user_version").arg(schema));
    return static_cast<int>(answer.value(0).toInteger());
}

QStringList columnNames(store::Connection& connection, const QString& schema, const QString& table) {
    QStringList names;
    store::Statement columns = connection.prepare(QStringLiteral("select name from pragma_table_info(?,?)"));
    columns.bind(1, table).bind(2, schema);
    while (columns.step()) names << columns.toText(0);
    return names;
}

/// "CREATE TABLE x(…" as "CREATE TABLE <schema>.x(…": a statement of the catalogue for an attached file.
QString inSchema(QString statement, const QString& schema) {
    const qsizetype name = statement.indexOf(u' ', statement.indexOf(u' ') + 1) + 1;
    return statement.insert(name, schema + u'.');
}

void appendColumns(store::Connection& connection, const QString& schema, const Table& table) {
    const QStringList present = columnNames(connection, schema, table.name);
    for (const Column& column : table.columns)
        if (!present.contains(column.name) && column.type.kind != store::TypeKind::Counter)
            connection.execute(QStringLiteral("ALTER TABLE %1.%2 ADD COLUMN %3")
                                   .arg(schema, table.name, columnDefinition(table, column)));
}

/// What the catalogue knows and the file lacks is added, behind what stands there.
void addMissing(store::Connection& connection, const QString& schema, File file) {
    const QStringList present = connection.tables(schema);
    for (const Table& table : catalog()) {
        if (table.file != file || table.lifetime == Lifetime::Scratch) continue;
        QStringList statements = createStatements(table);
        const QString definition = statements.takeFirst();
        if (!present.contains(table.name)) {
            connection.execute(inSchema(definition, schema));
            for (const QString& index : statements) connection.execute(inSchema(index, schema));
        } else {
            appendColumns(connection, schema, table);
        }
    }
}

/// The step that leads to the version of its number. 1: from a file without a version. 2: the note of a
/// code's change.
void upgradeTo(int version, store::Connection& connection, const QString& schema, File file) {
    if (version == 1) addMissing(connection, schema, file);
    const Table& note = tableNamed(QString::fromUtf16(tables::Sコード変更予定::kName));
    if (version == 2 && file == note.file && !connection.tables(schema).contains(note.name))
        connection.execute(inSchema(createStatements(note).first(), schema));
}

bool isOurs(const std::optional<File>& file) {
    return file == File::Kihon || file == File::Syouyo;
}

}  // namespace

void createTables(store::Connection& connection, File file) {
    for (const Table& table : catalog())
        if (table.file == file && table.lifetime != Lifetime::Scratch)
            for (const QString& statement : createStatements(table)) connection.execute(statement);
    setVersion(connection, QStringLiteral("main"), kSchemaVersion);
}

void insertRow(store::Connection& connection, const Table& table, const store::Binds& values) {
    const QStringList marks(static_cast<qsizetype>(values.size()), QStringLiteral("?"));
    connection.execute(QStringLiteral("insert into %1 values(%2)").arg(table.name, marks.join(u',')), values);
}

void createMissingTables(store::Connection& cnMain) {
    for (const Table& table : catalog())
        if (table.lifetime == Lifetime::CreatedAtOpen && !cnMain.hasTable(table.name))
            for (const QString& statement : createStatements(table)) cnMain.execute(statement);
}

void refuseNewer(store::Connection& connection) {
    for (const QString& schema : connection.schemas())
        if (isOurs(fileOf(connection.filePath(schema))) && versionOf(connection, schema) > kSchemaVersion)
            throw store::Error(
                store::Error::Reason::NotOpen,
                QStringLiteral("このデータは新しいバージョンのプログラムで作成されているため、開けません。"));
}

bool isOlder(store::Connection& connection) {
    for (const QString& schema : connection.schemas())
        if (isOurs(fileOf(connection.filePath(schema))) && versionOf(connection, schema) < kSchemaVersion)
            return true;
    return false;
}

void upgradeSchema(store::Connection& connection) {
    refuseNewer(connection);
    struct Older {
        QString schema;
        File file;
        int version;
    };
    std::vector<Older> older;
    for (const QString& schema : connection.schemas()) {
        const std::optional<File> file = fileOf(connection.filePath(schema));
        if (!isOurs(file)) continue;
        const int version = versionOf(connection, schema);
        if (version < kSchemaVersion) older.push_back({schema, *file, version});
    }
    if (older.empty()) return;
    store::Work work(connection);
    for (const Older& file : older) {
        for (int version = file.version + 1; version <= kSchemaVersion; ++version)
            upgradeTo(version, connection, file.schema, file.file);
        setVersion(connection, file.schema, kSchemaVersion);
    }
    work.commit();
}

}  // namespace schema
