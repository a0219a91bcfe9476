#include "store/company_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QUuid>
#include <array>
#include <functional>
#include <optional>

#include "store/links.h"

namespace store {
namespace {

constexpr std::array kFiles{File::Kihon, File::Chingin, File::Hyouka, File::Syouyo};

QString ending(File file) {
    switch (file) {
        case File::Kihon:
            return QStringLiteral("基本db.mdb");
        case File::Chingin:
            return QStringLiteral("賃金db.mdb");
        case File::Hyouka:
            return QStringLiteral("評価db.mdb");
        case File::Syouyo:
            return QStringLiteral("賞与db.mdb");
    }
    return {};
}

std::optional<File> fileOf(const QString& path) {
    for (const File file : kFiles)
        if (path.endsWith(ending(file))) return file;
    return std::nullopt;
}

/// A company's name names a folder and the start of four file names, on every system.
void requireCompanyName(const QString& company) {
    bool usable = !company.isEmpty() && company == company.trimmed() && !company.startsWith(u'.') &&
                  !company.endsWith(u'.');
    for (const QChar c : company) usable = usable && c >= u' ' && !QStringLiteral("\\/:*?\"<>|").contains(c);
    if (!usable)
        throw Error(Error::Reason::Type, QStringLiteral("会社名に使用できない文字が含まれています。"));
}

[[noreturn]] void throwNotCreated(const QString& what) {
    throw Error(Error::Reason::NotOpen, QStringLiteral("会社のフォルダ「%1」を作成できません。").arg(what));
}

void insertRow(Connection& connection, const Table& table, const Binds& values) {
    QStringList marks;
    for (std::size_t i = 0; i < values.size(); ++i) marks << QStringLiteral("?");
    connection.execute(QStringLiteral("insert into %1 values(%2)").arg(table.name, marks.join(u',')), values);
}

/// The masters that every company has alike; "1" means not stated.
void fillFixedMasters(Connection& kihon) {
    struct Master {
        const char16_t* table;
        const char16_t* second;
        const char16_t* third;
    };
    static constexpr Master kMasters[] = {
        {tables::性別マスタ::kName, u"男", u"女"},
        {tables::婚姻区分マスタ::kName, u"既婚", u"未婚"},
        {tables::世帯主区分マスタ::kName, u"世帯主", u"非世帯主"},
        {tables::扶養マスタ::kName, u"扶養", u"非扶養"},
        {tables::同居マスタ::kName, u"同居", u"別居"},
        {tables::障害マスタ::kName, u"有", u"無"},
        {tables::業務必要性マスタ::kName, u"有", u"無"},
    };
    for (const Master& master : kMasters) {
        const Table& table = tableNamed(QString::fromUtf16(master.table));
        insertRow(kihon, table, {u"1", u"－"});
        insertRow(kihon, table, {u"2", master.second});
        insertRow(kihon, table, {u"3", master.third});
    }
}

void fillSingleRows(Connection& kihon) {
    namespace company = tables::会社テーブル;
    Binds row(company::kColumns);
    row[company::会社名] = u"";
    for (std::size_t i = company::自由マスタ1; i <= company::自由マスタ5; ++i) row[i] = u"未設定";
    insertRow(kihon, tableNamed(QString::fromUtf16(company::kName)), row);
    namespace input = tables::入力可不可テーブル;
    insertRow(kihon, tableNamed(QString::fromUtf16(input::kName)), Binds(input::kColumns, Value(true)));
}

/// The eighteen coefficients under their standard names, as a company starts with them.
void fillCoefficientNames(Connection& syouyo) {
    namespace run = tables::S実行個人別計算;
    const Table& table = tableNamed(QString::fromUtf16(tables::S係数名称設定::kName));
    const Table& columns = tableNamed(QString::fromUtf16(run::kName));
    for (int k = 0; k < 18; ++k) {
        const QString name = columns.columns[static_cast<std::size_t>(run::年齢係数 + k)].name;
        insertRow(syouyo, table, {Value(), QStringLiteral("%1").arg(k + 1, 2, 10, QChar(u'0')), name, name});
    }
}

void fillLinks(Connection& syouyo, const QString& dataDir, const QString& company) {
    const Table& table = tableNamed(QString::fromUtf16(tables::Sリンクテーブル::kName));
    const auto fill = [&](const QStringList& names, File file) {
        const QString text = linkText(filePath(dataDir, company, file));
        for (const QString& name : names) insertRow(syouyo, table, {Value(), name, text, name});
    };
    fill(chinginLinks(), File::Chingin);
    fill(kihonLinks(), File::Kihon);
}

void setVersion(Connection& connection, const QString& schema, int version) {
    connection.executeScript(QStringLiteral("PRAGMA %1.user_version=%2").arg(schema).arg(version));
}

void createFile(const QString& path, File file, const std::function<void(Connection&)>& fill) {
    Connection connection(path, databasePassword(), Connection::Mode::Create);
    Transaction transaction(connection);
    for (const Table& table : catalog())
        if (table.file == file && table.lifetime != Lifetime::Scratch)
            for (const QString& statement : createStatements(table)) connection.execute(statement);
    fill(connection);
    setVersion(connection, QStringLiteral("main"), kSchemaVersion);
    transaction.commit();
}

// ---- upgrades
// -------------------------------------------------------------------------------------------------

int versionOf(Connection& connection, const QString& schema) {
    const Recordset answer = connection.query(QStringLiteral("PRAGMA %1.user_version").arg(schema));
    return static_cast<int>(answer.value(0).toInteger());
}

QStringList columnNames(Connection& connection, const QString& schema, const QString& table) {
    QStringList names;
    Statement columns = connection.prepare(QStringLiteral("select name from pragma_table_info(?,?)"));
    columns.bind(1, table).bind(2, schema);
    while (columns.step()) names << columns.toText(0);
    return names;
}

/// "CREATE TABLE x(…" as "CREATE TABLE <schema>.x(…": a statement of the catalogue for an attached file.
QString inSchema(QString statement, const QString& schema) {
    const qsizetype name = statement.indexOf(u' ', statement.indexOf(u' ') + 1) + 1;
    return statement.insert(name, schema + u'.');
}

void appendColumns(Connection& connection, const QString& schema, const Table& table) {
    const QStringList present = columnNames(connection, schema, table.name);
    for (const Column& column : table.columns)
        if (!present.contains(column.name) && column.type.kind != TypeKind::Counter)
            connection.execute(QStringLiteral("ALTER TABLE %1.%2 ADD COLUMN %3 %4")
                                   .arg(schema, table.name, column.name, declarationOf(column.type)));
}

/// What the catalogue knows and the file lacks is added, behind what stands there.
void addMissing(Connection& connection, const QString& schema, File file) {
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
void upgradeTo(int version, Connection& connection, const QString& schema, File file) {
    if (version == 1) addMissing(connection, schema, file);
    const Table& note = tableNamed(QString::fromUtf16(tables::Sコード変更予定::kName));
    if (version == 2 && file == note.file && !connection.tables(schema).contains(note.name))
        connection.execute(inSchema(createStatements(note).first(), schema));
}

bool isOurs(const std::optional<File>& file) {
    return file == File::Kihon || file == File::Syouyo;
}

// ---- opening
// --------------------------------------------------------------------------------------------------

/// Every file is recovered now. A crash may have left the common journals of a transaction over several files
/// behind; they may go only while no file still waits for one and no other program is in the middle of such a
/// transaction.
void removeStaleJournals(Connection& connection, const QString& company) {
    QDir folder = QFileInfo(connection.path()).dir();
    const QStringList files = folder.entryList(QDir::Files);
    QStringList stale;
    for (const QString& file : files) {
        if (file.endsWith(u"-journal")) return;
        if (file.startsWith(company) && file.contains(u".mdb-mj")) stale << file;
    }
    if (stale.isEmpty()) return;
    try {
        connection.beginTrans();
        for (const QString& file : stale) folder.remove(file);
        connection.rollbackTrans();
    } catch (const Error&) {
        // They do no harm; the next open tries again.
    }
}

QString schemaOf(std::optional<File> file) {
    if (file == File::Kihon) return QStringLiteral("kihon");
    if (file == File::Chingin) return QStringLiteral("chingin");
    return {};
}

}  // namespace

QString databasePassword() {
    return QStringLiteral("suzumeiro");
}

QString fileName(const QString& company, File file) {
    return company + ending(file);
}

QString filePath(const QString& dataDir, const QString& company, File file) {
    return QDir(QDir(dataDir).absoluteFilePath(company)).absoluteFilePath(fileName(company, file));
}

void createCompany(const QString& dataDir, const QString& company, CompanionFiles companions) {
    requireCompanyName(company);
    const QDir data(dataDir);
    const QString folder = data.absoluteFilePath(company);
    if (QFileInfo::exists(folder))
        throw Error(Error::Reason::NotOpen, QStringLiteral("会社「%1」は既に存在します。").arg(company));
    // Built aside and then renamed: half a company never shows in a list of companies.
    const QString aside =
        data.absoluteFilePath(QStringLiteral(".%1").arg(QUuid::createUuid().toString(QUuid::Id128)));
    if (!data.mkpath(aside)) throwNotCreated(company);
    auto cleanUp = qScopeGuard([&aside] { QDir(aside).removeRecursively(); });
    const auto pathOf = [&](File file) { return QDir(aside).filePath(fileName(company, file)); };
    const auto nothing = [](Connection&) {};
    createFile(pathOf(File::Kihon), File::Kihon, [](Connection& kihon) {
        fillFixedMasters(kihon);
        fillSingleRows(kihon);
    });
    if (companions.chingin) createFile(pathOf(File::Chingin), File::Chingin, nothing);
    if (companions.hyouka) createFile(pathOf(File::Hyouka), File::Hyouka, nothing);
    createFile(pathOf(File::Syouyo), File::Syouyo, [&](Connection& syouyo) {
        fillCoefficientNames(syouyo);
        fillLinks(syouyo, dataDir, company);
    });
    if (!QDir().rename(aside, folder)) throwNotCreated(company);
    cleanUp.dismiss();
}

QString attachFile(Connection& connection, const QString& path) {
    const QStringList taken = connection.schemas();
    for (const QString& schema : taken)
        if (QFileInfo(connection.filePath(schema)) == QFileInfo(path)) return schema;
    QString schema = schemaOf(fileOf(path));
    // A link that is never refreshed may name a second file of the same kind.
    if (schema.isEmpty() || taken.contains(schema)) schema = QStringLiteral("link%1").arg(taken.size());
    connection.attach(path, schema, databasePassword());
    return schema;
}

void makeMain(Connection& connection, const QString& company) {
    for (const QString& path : linkedFiles(connection))
        if (QFileInfo(path).isFile()) attachFile(connection, path);
    removeStaleJournals(connection, company);
    upgradeSchema(connection);
}

std::unique_ptr<Connection> openMainConnection(const QString& dataDir, const QString& company) {
    auto connection =
        std::make_unique<Connection>(filePath(dataDir, company, File::Syouyo), databasePassword());
    makeMain(*connection, company);
    return connection;
}

void createMissingTables(Connection& cnMain) {
    for (const Table& table : catalog())
        if (table.lifetime == Lifetime::CreatedAtOpen && !cnMain.hasTable(table.name))
            for (const QString& statement : createStatements(table)) cnMain.execute(statement);
}

void refuseNewer(Connection& connection) {
    for (const QString& schema : connection.schemas())
        if (isOurs(fileOf(connection.filePath(schema))) && versionOf(connection, schema) > kSchemaVersion)
            throw Error(
                Error::Reason::NotOpen,
                QStringLiteral("このデータは新しいバージョンのプログラムで作成されているため、開けません。"));
}

void upgradeSchema(Connection& connection) {
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
    Transaction transaction(connection);
    for (const Older& file : older) {
        for (int version = file.version + 1; version <= kSchemaVersion; ++version)
            upgradeTo(version, connection, file.schema, file.file);
        setVersion(connection, file.schema, kSchemaVersion);
    }
    transaction.commit();
}

}  // namespace store
