#include "company/create.h"

#include <QDir>
#include <QFileInfo>
#include <functional>

#include "company/company_files.h"
#include "company/company_set.h"
#include "company/master_templates.h"
#include "company/opening_password.h"
#include "domain/coefficients.h"
#include "schema/files.h"
#include "schema/links.h"
#include "schema/upgrade.h"
#include "store/connection.h"
#include "store/work.h"

namespace company {
namespace {

using schema::insertRow;

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

void fillSingleRows(store::Connection& kihon, const NewCompany& made) {
    namespace company = schema::tables::会社テーブル;
    store::Binds row(company::kColumns);
    for (std::size_t i = 0; i < row.size(); ++i) {
        const QString text = made.profile.value(static_cast<qsizetype>(i));
        if (i == company::会社名 || !text.isEmpty()) row[i] = text;
        if (i >= company::自由マスタ1 && text.isEmpty()) row[i] = u"未設定";
    }
    insertRow(kihon, schema::tableNamed(QString::fromUtf16(company::kName)), row);
    const schema::Table& input =
        schema::tableNamed(QString::fromUtf16(schema::tables::入力可不可テーブル::kName));
    store::Binds flags;
    for (const schema::Column& column : input.columns)
        flags.push_back(!made.unusedItems.contains(column.name));
    insertRow(kihon, input, flags);
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
        const QString text = schema::linkText(schema::filePath(dataDir, company, file), syouyo.key());
        for (const QString& name : names) insertRow(syouyo, table, {store::Value(), name, text, name});
    };
    fill(schema::chinginLinks(), schema::File::Chingin);
    fill(schema::kihonLinks(), schema::File::Kihon);
}

void createFile(const QString& path, const store::Key& key,
                const std::function<void(store::Connection&)>& fill) {
    store::Connection connection(path, key, store::Connection::Mode::Create);
    store::Work work(connection);
    fill(connection);
    work.commit();
}

}  // namespace

void createCompany(const QString& dataDir, const NewCompany& made) {
    using schema::File;
    const QString company = made.name;
    if (const QString fault = companyNameFault(company); !fault.isEmpty())
        throw store::Error(store::Error::Reason::Type, fault);
    const QString folder = QDir(dataDir).absoluteFilePath(company);
    if (!QDir().mkpath(dataDir))
        throw store::Error(store::Error::Reason::NotOpen,
                           QStringLiteral("会社のフォルダ「%1」を作成できません。").arg(company));
    const auto lock = CompanyLock::acquire(dataDir, company);
    if (!lock || QFileInfo::exists(folder))
        throw store::Error(store::Error::Reason::NotOpen,
                           QStringLiteral("会社「%1」は既に存在します。").arg(company));
    NewSet set(*lock);
    if (made.ownKey) made.ownKey->write(set.folder());
    const store::Key key = keyOf(set.folder());
    const auto create = [&](File file, const std::function<void(store::Connection&)>& fill = {}) {
        createFile(set.folder() + u'/' + schema::fileName(company, file), key,
                   [&](store::Connection& connection) {
                       schema::createTables(connection, file);
                       if (fill) fill(connection);
                   });
    };
    create(File::Kihon, [&](store::Connection& kihon) {
        fillFixedMasters(kihon);
        fillSingleRows(kihon, made);
        for (const MasterTemplate& master : masterTemplates())
            if (made.masters.contains(master.table)) fillMaster(kihon, master, made.since);
    });
    if (made.companions.chingin) create(File::Chingin);
    if (made.companions.hyouka) create(File::Hyouka);
    create(File::Syouyo, [&](store::Connection& syouyo) {
        fillCoefficientNames(syouyo);
        fillLinks(syouyo, dataDir, company);
        if (!made.password.isEmpty() && !made.ownKey) {
            schema::createMissingTables(syouyo);
            setOpeningPassword(syouyo, made.password);
        }
    });
    if (made.companions.others)
        for (const QString& name : databaseNames(company).mid(4))
            createFile(set.folder() + u'/' + name, key, [](store::Connection& empty) {
                empty.executeScript(
                    QStringLiteral("PRAGMA user_version=1"));  // or the file stays without a page
            });
    if (made.fill) made.fill(set.folder());
    set.putInPlace();
}

}  // namespace company
