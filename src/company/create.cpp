#include "company/create.h"

#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>
#include <QUuid>
#include <functional>

#include "company/key.h"
#include "domain/coefficients.h"
#include "schema/files.h"
#include "schema/links.h"
#include "schema/upgrade.h"
#include "store/connection.h"
#include "store/work.h"

namespace company {
namespace {

/// A company's name names a folder and the start of four file names, on every system.
void requireCompanyName(const QString& company) {
    bool usable = !company.isEmpty() && company == company.trimmed() && !company.startsWith(u'.') &&
                  !company.endsWith(u'.');
    for (const QChar c : company) usable = usable && c >= u' ' && !QStringLiteral("\\/:*?\"<>|").contains(c);
    if (!usable)
        throw store::Error(store::Error::Reason::Type,
                           QStringLiteral("会社名に使用できない文字が含まれています。"));
}

[[noreturn]] void throwNotCreated(const QString& what) {
    throw store::Error(store::Error::Reason::NotOpen,
                       QStringLiteral("会社のフォルダ「%1」を作成できません。").arg(what));
}

void insertRow(store::Connection& connection, const schema::Table& table, const store::Binds& values) {
    QStringList marks;
    for (std::size_t i = 0; i < values.size(); ++i) marks << QStringLiteral("?");
    connection.execute(QStringLiteral("insert into %1 values(%2)").arg(table.name, marks.join(u',')), values);
}

/// The masters that every company has alike; "1" means not stated.
void fillFixedMasters(store::Connection& kihon) {
    struct Master {
        const char16_t* table;
        const char16_t* second;
        const char16_t* third;
    };
    static constexpr Master kMasters[] = {
        {schema::tables::性別マスタ::kName, u"男", u"女"},
        {schema::tables::婚姻区分マスタ::kName, u"既婚", u"未婚"},
        {schema::tables::世帯主区分マスタ::kName, u"世帯主", u"非世帯主"},
        {schema::tables::扶養マスタ::kName, u"扶養", u"非扶養"},
        {schema::tables::同居マスタ::kName, u"同居", u"別居"},
        {schema::tables::障害マスタ::kName, u"有", u"無"},
        {schema::tables::業務必要性マスタ::kName, u"有", u"無"},
    };
    for (const Master& master : kMasters) {
        const schema::Table& table = schema::tableNamed(QString::fromUtf16(master.table));
        insertRow(kihon, table, {u"1", u"－"});
        insertRow(kihon, table, {u"2", master.second});
        insertRow(kihon, table, {u"3", master.third});
    }
}

void fillSingleRows(store::Connection& kihon) {
    namespace company = schema::tables::会社テーブル;
    store::Binds row(company::kColumns);
    row[company::会社名] = u"";
    for (std::size_t i = company::自由マスタ1; i <= company::自由マスタ5; ++i) row[i] = u"未設定";
    insertRow(kihon, schema::tableNamed(QString::fromUtf16(company::kName)), row);
    namespace input = schema::tables::入力可不可テーブル;
    insertRow(kihon, schema::tableNamed(QString::fromUtf16(input::kName)),
              store::Binds(input::kColumns, store::Value(true)));
}

/// The eighteen coefficients under their standard names, as a company starts with them.
void fillCoefficientNames(store::Connection& syouyo) {
    const schema::Table& table = schema::tableNamed(QString::fromUtf16(schema::tables::S係数名称設定::kName));
    for (const domain::CoefficientKind kind : domain::CoefficientKind::all())
        insertRow(syouyo, table, {store::Value(), kind.code(), kind.name(), kind.name()});
}

void fillLinks(store::Connection& syouyo, const QString& dataDir, const QString& company) {
    const schema::Table& table =
        schema::tableNamed(QString::fromUtf16(schema::tables::Sリンクテーブル::kName));
    const auto fill = [&](const QStringList& names, schema::File file) {
        const QString text = schema::linkText(schema::filePath(dataDir, company, file), sharedKey());
        for (const QString& name : names) insertRow(syouyo, table, {store::Value(), name, text, name});
    };
    fill(schema::chinginLinks(), schema::File::Chingin);
    fill(schema::kihonLinks(), schema::File::Kihon);
}

void createFile(const QString& path, schema::File file, const std::function<void(store::Connection&)>& fill) {
    store::Connection connection(path, sharedKey(), store::Connection::Mode::Create);
    store::Work work(connection);
    schema::createTables(connection, file);
    fill(connection);
    work.commit();
}

}  // namespace

void createCompany(const QString& dataDir, const QString& company, CompanionFiles companions) {
    requireCompanyName(company);
    const QDir data(dataDir);
    const QString folder = data.absoluteFilePath(company);
    if (QFileInfo::exists(folder))
        throw store::Error(store::Error::Reason::NotOpen,
                           QStringLiteral("会社「%1」は既に存在します。").arg(company));
    // Built aside and then renamed: half a company never shows in a list of companies.
    const QString aside =
        data.absoluteFilePath(QStringLiteral(".%1").arg(QUuid::createUuid().toString(QUuid::Id128)));
    if (!data.mkpath(aside)) throwNotCreated(company);
    auto cleanUp = qScopeGuard([&aside] { QDir(aside).removeRecursively(); });
    const auto pathOf = [&](schema::File file) {
        return QDir(aside).filePath(schema::fileName(company, file));
    };
    const auto nothing = [](store::Connection&) {};
    createFile(pathOf(schema::File::Kihon), schema::File::Kihon, [](store::Connection& kihon) {
        fillFixedMasters(kihon);
        fillSingleRows(kihon);
    });
    if (companions.chingin) createFile(pathOf(schema::File::Chingin), schema::File::Chingin, nothing);
    if (companions.hyouka) createFile(pathOf(schema::File::Hyouka), schema::File::Hyouka, nothing);
    createFile(pathOf(schema::File::Syouyo), schema::File::Syouyo, [&](store::Connection& syouyo) {
        fillCoefficientNames(syouyo);
        fillLinks(syouyo, dataDir, company);
    });
    if (!QDir().rename(aside, folder)) throwNotCreated(company);
    cleanUp.dismiss();
}

}  // namespace company
