#include "support/company_fixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <map>
#include <stdexcept>
#include <tuple>

#include "store/links.h"

namespace support {
namespace {

using store::File;

void require(bool done, const QString& what) {
    if (!done) throw std::runtime_error(("company fixture: " + what).toStdString());
}

void copyFolder(const QString& from, const QString& to) {
    require(QDir().mkpath(to), QStringLiteral("mkpath"));
    for (const QString& file : QDir(from).entryList(QDir::Files))
        require(QFile::copy(from + u'/' + file, to + u'/' + file), QStringLiteral("copy"));
}

/// The companies made so far in this process, by their options.
class Originals {
  public:
    QString folderOf(sample::SampleOptions options) {
        const Key key{options.company,   options.employees,   options.companions,
                      options.wageItems, options.earlierRuns, options.spread};
        auto found = roots_.find(key);
        if (found == roots_.end()) {
            auto root = std::make_unique<QTemporaryDir>();
            options.dataDir = root->filePath(QStringLiteral("Data"));
            sample::makeSampleCompany(options);
            found = roots_.emplace(key, std::move(root)).first;
        }
        return found->second->filePath(QStringLiteral("Data/") + options.company);
    }

  private:
    using Key = std::tuple<QString, int, bool, bool, bool, sample::Spread>;
    std::map<Key, std::unique_ptr<QTemporaryDir>> roots_;
};

Originals& originals() {
    static Originals all;
    return all;
}

void refresh(store::Connection& cn, const QString& target, store::LinkPass pass) {
    QString error;
    require(store::refresh_links(cn, target, pass, error), error);
}

bool isPath(const QString& table) {
    return table == QStringLiteral("Sリンクテーブル");
}

void dumpTable(store::Connection& cn, const QString& schema, const QString& table, QByteArray& out) {
    store::Statement rows =
        cn.prepare(QStringLiteral("SELECT * FROM %1.\"%2\" ORDER BY rowid").arg(schema, table));
    while (rows.step()) {
        out += table.toUtf8();
        for (int column = 0; column < rows.columnCount(); ++column) {
            out += '\t';
            if (rows.isNull(column))
                out += "NULL";
            else if (rows.columnType(column).kind == store::TypeKind::Double)
                out += QByteArray::number(rows.toDouble(column), 'g', 17);
            else
                out += rows.value(column).toText().toUtf8();
        }
        out += '\n';
    }
}

void dumpSchema(store::Connection& cn, const QString& schema, QByteArray& out) {
    for (const QString& table : cn.tables(schema)) {
        out += "# " + table.toUtf8() + '\n';
        if (!isPath(table)) dumpTable(cn, schema, table, out);
    }
}

}  // namespace

CompanyFolder::CompanyFolder() {
    require(root_.isValid() && QDir().mkpath(dataDir()), QStringLiteral("temporary folder"));
}

void CompanyFolder::makeSample(sample::SampleOptions options) {
    company_ = options.company;
    copyFolder(originals().folderOf(options), companyDir());
    refreshLinks();
}

void CompanyFolder::refreshLinks() const {
    store::Connection cn(file(File::Syouyo), store::databasePassword());
    if (QFileInfo::exists(file(File::Chingin))) refresh(cn, file(File::Chingin), store::LinkPass::Chingin);
    refresh(cn, file(File::Kihon), store::LinkPass::Kihon);
}

void CompanyFolder::makeEmpty(const QString& company, store::CompanionFiles companions) {
    company_ = company;
    store::createCompany(dataDir(), company, companions);
}

void CompanyFolder::addCompanionMarker() const {
    QFile marker(programDir() + QStringLiteral("/zukanzen.exe"));
    require(marker.open(QIODevice::WriteOnly), QStringLiteral("marker"));
}

QString CompanyFolder::programDir() const {
    return root_.path();
}
QString CompanyFolder::dataDir() const {
    return root_.filePath(QStringLiteral("Data"));
}
QString CompanyFolder::companyDir() const {
    return dataDir() + u'/' + company_;
}
QString CompanyFolder::file(File file) const {
    return store::filePath(dataDir(), company_, file);
}

std::unique_ptr<store::Connection> CompanyFolder::open() const {
    return store::openMainConnection(dataDir(), company_);
}

QByteArray CompanyFolder::fingerprint() const {
    QByteArray out;
    for (File each : {File::Kihon, File::Chingin, File::Hyouka, File::Syouyo}) {
        if (!QFileInfo::exists(file(each))) continue;
        store::Connection cn(file(each), store::databasePassword());
        dumpSchema(cn, QStringLiteral("main"), out);
    }
    return out;
}

QByteArray dump(store::Connection& connection) {
    QByteArray out;
    store::Recordset schemas = connection.query(QStringLiteral("SELECT name FROM pragma_database_list"));
    for (; !schemas.eof(); schemas.moveNext())
        if (const QString schema = schemas.value(0).toText(); schema != QStringLiteral("temp"))
            dumpSchema(connection, schema, out);
    return out;
}

QByteArray firstDifference(const QByteArray& before, const QByteArray& after) {
    if (before == after) return {};
    const QList<QByteArray> a = before.split('\n'), b = after.split('\n');
    for (qsizetype i = 0;; ++i) {
        const QByteArray left = i < a.size() ? a[i] : QByteArray("(end)");
        const QByteArray right = i < b.size() ? b[i] : QByteArray("(end)");
        if (left != right) return "before: " + left + "\nafter:  " + right;
    }
}

}  // namespace support
