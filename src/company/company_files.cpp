#include "company/company_files.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

#include "company/instance_lock.h"
#include "company/key.h"
#include "schema/files.h"
#include "schema/upgrade.h"
#include "store/durable_files.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;

const QString kKihon = u"基本db.mdb"_s;
const QString kSyouyo = u"賞与db.mdb"_s;

/// What belongs to the moment of one process and not to the company.
bool isPassing(const QString& name, const QString& company) {
    return name == CompanyLock::formerFileName() || name == kManifest || name == kKeyFile + u".new"_s ||
           name.endsWith(u"-journal") || (name.startsWith(company) && name.contains(u".mdb-mj")) ||
           name.endsWith(u".mdbwk");
}

}  // namespace

QStringList databaseNames(const QString& company) {
    using schema::File;
    QStringList names;
    for (const File file : {File::Kihon, File::Chingin, File::Hyouka, File::Syouyo})
        names << schema::fileName(company, file);
    return names << company + u"Hydcdb.mdb"_s << company + u"Compdb.mdb"_s;
}

QString workFileOf(const QString& database) {
    return database + u"wk"_s;
}

QString companyNameFault(const QString& company) {
    constexpr qsizetype kLongest = 40;     // characters; the longest ending has 12 more
    constexpr qsizetype kMostBytes = 200;  // a file name has at most 255
    if (company.trimmed().isEmpty()) return u"会社名を入力してください。"_s;
    if (company != company.trimmed()) return u"会社名のはじめとおわりに空白は使えません。"_s;
    if (company.startsWith(u'.') || company.endsWith(u'.'))
        return u"会社名のはじめとおわりに「.」は使えません。"_s;
    for (const QChar c : company) {
        if (c < u' ' || c == QChar(0x7f) || u"\\/:*?\"<>|'"_s.contains(c))
            return u"会社名に \\ / : * ? \" < > | ' は使えません。"_s;
    }
    if (company.size() > kLongest || company.toUtf8().size() > kMostBytes)
        return u"会社名が長すぎます。%1文字までで入力してください。"_s.arg(kLongest);
    // Names of devices on Windows, with whatever stands behind a dot.
    static const QStringList devices{u"CON"_s, u"PRN"_s, u"AUX"_s, u"NUL"_s, kOwnCopies};
    const QString stem = company.section(u'.', 0, 0).trimmed().toUpper();
    const bool numbered =
        stem.size() == 4 && stem[3].isDigit() && (stem.startsWith(u"COM"_s) || stem.startsWith(u"LPT"_s));
    if (devices.contains(stem) || numbered) return u"「%1」は会社名に使えません。"_s.arg(company);
    return {};
}

QString companyIn(const QString& folder) {
    const QDir place(folder);
    for (const QString& name : place.entryList({u'*' + kKihon}, QDir::Files, QDir::Name)) {
        const QString company = name.chopped(kKihon.size());
        if (!company.isEmpty() && place.exists(company + kSyouyo)) return company;
    }
    return {};
}

CompanyMoment::CompanyMoment(const QString& folder, const QString& company, const QStringList& only)
    : folder_(folder), company_(company) {
    const QDir place(folder);
    const auto belongs = [&only](const QString& name) { return only.isEmpty() || only.contains(name); };
    QStringList databases;
    for (const QString& name : databaseNames(company))
        if (place.exists(name) && belongs(name)) databases << name;
    const auto mode = QFileInfo(folder).isWritable() ? store::Connection::Mode::ReadWrite
                                                     : store::Connection::Mode::ReadOnly;
    const QString syouyo = schema::fileName(company, schema::File::Syouyo);
    files_ = std::make_unique<store::Connection>(place.filePath(syouyo), keyOf(folder), mode);
    for (const QString& name : databases) {
        if (name == syouyo) continue;
        try {
            files_->attach(place.filePath(name), u"file%1"_s.arg(files_->schemas().size()));
        } catch (const store::Error& error) {
            const bool ours = name == schema::fileName(company, schema::File::Kihon);
            const bool noDatabase = error.reason() == store::Error::Reason::NotOpen ||
                                    error.reason() == store::Error::Reason::Damaged;  // empty, cut off
            if (ours || !noDatabase) throw;
            databases.removeOne(name);
        }
    }
    if (!databases.contains(schema::fileName(company, schema::File::Kihon)))
        throw store::Error(store::Error::Reason::NotOpen,
                           u"データベース ファイル「%1」が見つかりません。"_s.arg(company + kKihon));
    QDirIterator entries(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        entries.next();
        const QString path = place.relativeFilePath(entries.filePath());
        if (entries.fileInfo().isSymLink())
            links_ << path;
        else if (entries.fileInfo().isFile() && !databases.contains(path) && belongs(path) &&
                 !isPassing(path, company))
            others_ << path;
    }
    // From here on nobody changes a file: each is held for reading.
    files_->executeScript(u"BEGIN"_s);
    for (const QString& schema : files_->schemas())
        files_->query(u"select count(*) from \"%1\".sqlite_schema"_s.arg(schema));
}

CompanyMoment::~CompanyMoment() = default;  // the connection ends its transaction

QString CompanyMoment::endingOf(const QString& schema) const {
    return QFileInfo(files_->filePath(schema)).fileName().mid(company_.size());
}

CompanySummary CompanyMoment::summary() {
    const auto number = [&](const QString& sql) {
        return static_cast<int>(files_->query(sql).value(0).toInteger());
    };
    CompanySummary told;
    told.people = number(u"select count(*) from 履歴書テーブル"_s);
    told.dates = number(u"select count(distinct 基準日) from Sデータ取込年月日運用"_s);
    const store::Recordset newest = files_->query(u"select max(基準日) from Sデータ取込年月日運用"_s);
    if (told.dates > 0) told.newestDate = QDate::fromString(newest.value(0).toText(), Qt::ISODate);
    const store::Recordset name = files_->query(u"select 会社名 from 会社テーブル"_s);
    if (!name.isEmpty() && !name.value(0).isNull()) told.registeredName = name.value(0).toText();
    for (const QString& schema : files_->schemas()) told.bytes += QFileInfo(files_->filePath(schema)).size();
    for (const QString& other : others_) told.bytes += QFileInfo(folder_ + u'/' + other).size();
    return told;
}

RowCounts CompanyMoment::rowCounts() {
    RowCounts counts;
    for (const QString& schema : files_->schemas())
        for (const QString& table : files_->tables(schema))
            counts[endingOf(schema) + u'.' + table] =
                files_
                    ->query(u"select count(*) from \"%1\".\"%2\""_s.arg(
                        schema, QString(table).replace(u'"', u"\"\""_s)))
                    .value(0)
                    .toInteger();
    return counts;
}

bool CompanyMoment::isNewer() {
    try {
        schema::refuseNewer(*files_);
        return false;
    } catch (const store::Error&) {
        return true;
    }
}

bool CompanyMoment::copyTo(const QString& target, const QString& name, const store::Key& key,
                           const store::Progress& progress) {
    qint64 whole = 0;
    for (const QString& schema : files_->schemas()) whole += QFileInfo(files_->filePath(schema)).size();
    for (const QString& other : others_) whole += QFileInfo(folder_ + u'/' + other).size();
    qint64 before = 0;
    for (const QString& schema : files_->schemas()) {
        const qint64 size = QFileInfo(files_->filePath(schema)).size();
        const auto part = [&](qint64 done, qint64 pages) {
            return !progress || progress(before + size * done / std::max<qint64>(pages, 1), whole);
        };
        if (!store::copyDatabase(*files_, schema, target + u'/' + name + endingOf(schema), key, part))
            return false;
        before += size;
    }
    for (const QString& other : others_) {
        const QString from = folder_ + u'/' + other;
        const QString named =
            other.startsWith(company_) && !other.contains(u'/') ? name + other.mid(company_.size()) : other;
        QDir().mkpath(QFileInfo(target + u'/' + named).path());
        store::copyFile(from, target + u'/' + named);
        before += QFileInfo(from).size();
        if (progress && !progress(before, whole)) return false;
    }
    return true;
}

void CompanyMoment::requireSound() {
    store::requireSound(*files_);
}

void verifyCopy(const QString& folder, const QString& company, const RowCounts& expected) {
    CompanyMoment copy(folder, company);
    copy.requireSound();
    if (copy.rowCounts() != expected)
        throw store::Error(store::Error::Reason::Damaged, u"写しの件数が元のデータと一致しません。"_s);
}

}  // namespace company
