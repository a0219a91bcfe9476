#include "support/company_fixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <map>
#include <stdexcept>
#include <tuple>

#include "company/key.h"
#include "company/main_connection.h"
#include "schema/links.h"

namespace support {
namespace {

using namespace Qt::StringLiterals;
using schema::File;

void require(bool done, const QString& what) {
    if (!done) throw std::runtime_error(("company fixture: " + what).toStdString());
}

void copyFolder(const QString& from, const QString& to) {
    require(QDir().mkpath(to), u"mkpath"_s);
    for (const QString& file : QDir(from).entryList(QDir::Files))
        require(QFile::copy(from + u'/' + file, to + u'/' + file), u"copy"_s);
}

/// The folder of a company with these options, made at the first call in this process.
QString originalOf(sample::SampleOptions options) {
    using Key = std::tuple<QString, int, bool, bool, bool, sample::Spread>;
    static std::map<Key, std::unique_ptr<QTemporaryDir>> roots;
    auto& root = roots[Key{options.company, options.employees, options.companions, options.wageItems,
                           options.earlierRuns, options.spread}];
    if (!root) {
        auto made = std::make_unique<QTemporaryDir>();
        options.dataDir = made->filePath(u"Data"_s);
        sample::makeSampleCompany(options);
        root = std::move(made);
    }
    return root->filePath(u"Data/"_s + options.company);
}

QByteArray cell(const store::Statement& row, int column) {
    if (row.isNull(column)) return "NULL";
    if (row.columnType(column).kind == store::TypeKind::Double)
        return QByteArray::number(row.toDouble(column), 'g', 17);
    return row.value(column).toText().toUtf8();
}

}  // namespace

CompanyFolder::CompanyFolder() {
    require(root_.isValid() && QDir().mkpath(dataDir()), u"temporary folder"_s);
}

void CompanyFolder::makeSample(sample::SampleOptions options) {
    company_ = options.company;
    copyFolder(originalOf(options), companyDir());
    store::Connection cn(file(File::Syouyo), company::sharedKey());
    QString error;
    for (const auto& [target, pass] : {std::pair(File::Chingin, schema::LinkPass::Chingin),
                                       std::pair(File::Kihon, schema::LinkPass::Kihon)})
        if (QFileInfo::exists(file(target)))
            require(schema::refresh_links(cn, file(target), pass, error), error);
}

void CompanyFolder::makeEmpty(const QString& company, company::CompanionFiles companions) {
    company_ = company;
    company::createCompany(dataDir(), company, companions);
}

void CompanyFolder::addCompanionMarker() const {
    QFile marker(programDir() + u"/zukanzen.exe"_s);
    require(marker.open(QIODevice::WriteOnly), u"marker"_s);
}

std::unique_ptr<store::Connection> CompanyFolder::open() const {
    return company::openMainConnection(dataDir(), company_);
}

QByteArray CompanyFolder::fingerprint() const {
    QByteArray out;
    for (File each : {File::Kihon, File::Chingin, File::Hyouka, File::Syouyo}) {
        if (!QFileInfo::exists(file(each))) continue;
        store::Connection cn(file(each), company::sharedKey());
        out += dump(cn);
    }
    return out;
}

QByteArray dump(store::Connection& connection) {
    QByteArray out;
    for (const QString& schema : connection.schemas())
        for (const QString& table : connection.tables(schema)) {
            out += "# " + table.toUtf8() + '\n';
            if (table == u"Sリンクテーブル"_s) continue;
            store::Statement rows =
                connection.prepare(u"SELECT * FROM %1.\"%2\" ORDER BY rowid"_s.arg(schema, table));
            while (rows.step()) {
                out += table.toUtf8();
                for (int column = 0; column < rows.columnCount(); ++column) out += '\t' + cell(rows, column);
                out += '\n';
            }
        }
    return out;
}

QStringList textRows(store::Connection& connection, const QString& query, const store::Binds& binds) {
    QStringList lines;
    store::Statement row = connection.prepare(query);
    row.bindAll(binds);
    while (row.step()) {
        QStringList cells;
        for (int i = 0; i < row.columnCount(); ++i) cells << (row.isNull(i) ? u"-"_s : row.value(i).toText());
        lines << cells.join(u'|');
    }
    return lines;
}

QByteArray firstDifference(const QByteArray& before, const QByteArray& after) {
    if (before == after) return {};
    const QList<QByteArray> a = before.split('\n'), b = after.split('\n');
    qsizetype line = 0;
    while (a.value(line, "(end)") == b.value(line, "(end)")) ++line;
    return "before: " + a.value(line, "(end)") + "\nafter:  " + b.value(line, "(end)");
}

}  // namespace support
