#include "personnel/code_references.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <array>
#include <functional>

#include "personnel/code_change.h"
#include "schema/catalog.h"
#include "schema/files.h"
#include "store/work.h"

namespace t = schema::tables;
using schema::File;

namespace personnel {
namespace {

using R = Referent;
using domain::Part;
using OnRemoval = Reference::OnRemoval;

QString columnName(const Reference& reference, int column) {
    return reference.table->columns[static_cast<std::size_t>(column)].name;
}

/// "where" and its values: the rows of the reference that hold the key.
struct Where {
    QString text;
    store::Binds binds;
};
Where rowsOf(const Reference& reference, const CodeKey& key) {
    Where where{QStringLiteral(" where %1 = ?").arg(columnName(reference, reference.column)), {key.code}};
    if (reference.parentColumn >= 0) {
        where.text += QStringLiteral(" and %1 = ?").arg(columnName(reference, reference.parentColumn));
        where.binds.push_back(key.parent);
    }
    return where;
}

/// A scratch table stands only between two uses. Only the main schema is read: a look into another file
/// would reserve it for the rest of the caller's transaction.
bool stands(store::Connection& cn, const schema::Table& table) {
    if (table.lifetime != schema::Lifetime::Scratch) return true;
    return !cn.query(QStringLiteral("select 1 from main.sqlite_schema where name = ?"), {table.name})
                .isEmpty();
}

/// What is done to one reference, on the connection that reaches its table.
using Step = std::function<void(store::Connection&, const Reference&)>;

void rename(store::Connection& cn, const Reference& reference, const CodeKey& from, const CodeKey& to,
            const QString& shimei) {
    QStringList columns{columnName(reference, reference.column)};
    store::Binds binds{to.code};
    const auto also = [&](int column, const QString& value) {
        columns << columnName(reference, column);
        binds.push_back(value);
    };
    if (reference.parentColumn >= 0 && from.parent != to.parent) also(reference.parentColumn, to.parent);
    if (reference.nameColumn >= 0 && !shimei.isEmpty()) also(reference.nameColumn, shimei);
    const Where where = rowsOf(reference, from);
    binds.insert(binds.end(), where.binds.begin(), where.binds.end());
    const QString sets = columns.join(QStringLiteral(" = ?, ")) + QStringLiteral(" = ?");
    cn.prepare(QStringLiteral("update %1 set %2%3").arg(reference.table->name, sets, where.text))
        .into(schema::typesOf(*reference.table, columns))
        .bindAll(binds)
        .run();
}

void remove(store::Connection& cn, const Reference& reference, const CodeKey& key) {
    const Where where = rowsOf(reference, key);
    const QString& table = reference.table->name;
    switch (reference.onRemoval) {
        case OnRemoval::RowGoes:
            cn.execute(QStringLiteral("delete from ") + table + where.text, where.binds);
            break;
        case OnRemoval::CodeIsCleared:
            cn.execute(QStringLiteral("update %1 set %2 = null")
                               .arg(table, columnName(reference, reference.column)) +
                           where.text,
                       where.binds);
            break;
        case OnRemoval::Refused:
            break;
    }
}

/// Goes through the files: the main one on the caller's connection, then the others in the order that belongs
/// to it, each on a connection of its own.
class Walk {
  public:
    Walk(const CompanyDatabases& company, Referent referent, Step step, bool removal)
        : company_(company), referent_(referent), step_(std::move(step)), removal_(removal) {}

    void run() {
        for (const auto& [file, part] : order()) {
            if (isMain(file))
                visit(company_.cn_main, part);
            else if (QFile::exists(pathOf(file)))
                visitSecondary(pathOf(file), part);
        }
        visit(company_.cn_main, Part::Own);
        visit(company_.cn_main, Part::Work);
        if (isMain(File::Syouyo) && !secondaries().empty()) forgetChange(company_.cn_main);
    }

    struct Stop {
        File file;
        Part part;
    };
    /// The stops at files of their own.
    std::vector<Stop> secondaries() const {
        std::vector<Stop> stops;
        for (const Stop& stop : order())
            if (!isMain(stop.file) && !visited(stop.part).empty() && QFile::exists(pathOf(stop.file)))
                stops.push_back(stop);
        return stops;
    }
    void runSecondaries() {
        for (const Stop& stop : secondaries()) visitSecondary(pathOf(stop.file), stop.part);
    }

  private:
    QString pathOf(File file) const { return schema::filePath(company_.dataDir, company_.company, file); }
    bool isMain(File file) const {
        const QString main = QFileInfo(company_.cn_main.path()).fileName();
        return main == schema::fileName(company_.company, file);
    }

    std::array<Stop, 3> order() const {
        constexpr Stop wages{File::Chingin, Part::Wages};
        constexpr Stop evaluations{File::Hyouka, Part::Evaluations};
        constexpr Stop bonus{File::Syouyo, Part::Bonus};
        if (isMain(File::Chingin)) return {wages, evaluations, bonus};
        if (isMain(File::Hyouka)) return {evaluations, wages, bonus};
        return {bonus, wages, evaluations};
    }

    void visitSecondary(const QString& path, Part part) const {
        if (visited(part).empty()) return;
        store::Connection secondary(path, company_.cn_main.key());
        store::Work work(secondary);
        visit(secondary, part);
        work.commit();
    }

    void visit(store::Connection& cn, Part part) const {
        for (const Reference* reference : visited(part))
            if (stands(cn, *reference->table)) step_(cn, *reference);
    }

    std::vector<const Reference*> visited(Part part) const {
        std::vector<const Reference*> found;
        for (const Reference& reference : domain::referencesOf(part))
            if (reference.refersTo == referent_) found.push_back(&reference);
        if (removal_)
            std::stable_partition(found.begin(), found.end(),
                                  [](const Reference* reference) { return !reference->lastInRemoval; });
        return found;
    }

    const CompanyDatabases& company_;
    Referent referent_;
    Step step_;
    bool removal_;
};

/// How the screens call a table.
QString labelOf(const QString& table) {
    static const std::pair<const char16_t*, QString> labels[] = {
        {t::履歴書テーブル::kName, QStringLiteral("履歴書")},
        {t::異動テーブル::kName, QStringLiteral("異動履歴")},
        {t::家族テーブル::kName, QStringLiteral("家族情報")},
        {t::資格免許テーブル::kName, QStringLiteral("資格・免許保有状況")},
        {t::Ｈ評価実績::kName, QStringLiteral("評価実績")},
        {t::S配分基準対応社員::kName, QStringLiteral("配分基準の対応")},
        {t::S実行個人別計算::kName, QStringLiteral("個人別計算")},
        {t::S実行総額配分::kName, QStringLiteral("総額配分")},
        {t::S実行個人別計算決定::kName, QStringLiteral("個人別計算の決定")},
        {t::S実行総額配分決定::kName, QStringLiteral("総額配分の決定")},
        {t::S実行予算::kName, QStringLiteral("配分の予算")},
        {t::Sshikyuukeisuu::kName, QStringLiteral("支給係数の修正")},
        {t::SshikyuukeisuuHA::kName, QStringLiteral("評価別の支給係数の修正")},
        {t::S配分基準グループＹＮ::kName, QStringLiteral("配分基準のグループ")},
        {t::S配分基準::kName, QStringLiteral("配分基準")},
    };
    for (const auto& [name, label] : labels)
        if (table == QString::fromUtf16(name)) return label;
    return table;
}

/// Adds the reference when rows hold the key.
void count(store::Connection& cn, const Reference& reference, const CodeKey& key,
           std::vector<CodeUse>& uses) {
    const Where where = rowsOf(reference, key);
    const QString& table = reference.table->name;
    const qint64 rows = cn.query(QStringLiteral("select count(*) from ") + table + where.text, where.binds)
                            .value(0)
                            .toInteger();
    if (rows > 0) uses.push_back({table, labelOf(table), rows});
}

Step renaming(const CodeKey& from, const CodeKey& to, const QString& shimei) {
    return
        [&](store::Connection& cn, const Reference& reference) { rename(cn, reference, from, to, shimei); };
}

}  // namespace

std::vector<CodeUse> codeUsage(store::Connection& cn_main, Referent referent, const CodeKey& key) {
    std::vector<CodeUse> uses;
    for (const Part part : {Part::Own, Part::Bonus})
        for (const Reference& reference : domain::referencesOf(part))
            if (reference.refersTo == referent && reference.onRemoval == OnRemoval::Refused)
                count(cn_main, reference, key, uses);
    return uses;
}

std::vector<CodeUse> employeeHistory(store::Connection& cn_main, const QString& syainCode) {
    std::vector<CodeUse> uses;
    const QString selection = QString::fromUtf16(t::社員絞込::kName);
    for (const Part part : {Part::Own, Part::Bonus})
        for (const Reference& reference : domain::referencesOf(part))
            if (reference.refersTo == R::Syain && reference.table->name != selection)
                count(cn_main, reference, {syainCode, {}}, uses);
    return uses;
}

void renameCode(const CompanyDatabases& company, Referent referent, const CodeKey& from, const CodeKey& to,
                const QString& shimei) {
    if (from == to) return;
    Walk(company, referent, renaming(from, to, shimei), false).run();
}

void renameInSecondaries(const CompanyDatabases& company, Referent referent, const CodeKey& from,
                         const CodeKey& to, const QString& shimei) {
    Walk(company, referent, renaming(from, to, shimei), false).runSecondaries();
}

void removeCode(const CompanyDatabases& company, Referent referent, const CodeKey& key) {
    if (!codeUsage(company.cn_main, referent, key).empty())
        throw store::Error(store::Error::Reason::Type,
                           QStringLiteral("使用中のデータがあるため削除できません。"));
    const Step step = [&](store::Connection& cn, const Reference& reference) { remove(cn, reference, key); };
    Walk(company, referent, step, true).run();
}

std::vector<File> secondaryFiles(const CompanyDatabases& company, Referent referent) {
    std::vector<File> files;
    for (const auto& [file, part] : Walk(company, referent, {}, false).secondaries()) files.push_back(file);
    return files;
}

bool holdsCode(const CompanyDatabases& company, File secondary, Referent referent, const CodeKey& key) {
    store::Connection cn(schema::filePath(company.dataDir, company.company, secondary),
                         company.cn_main.key());
    std::vector<CodeUse> uses;
    for (const Reference& reference : codeReferences())
        if (reference.refersTo == referent && reference.table->file == secondary)
            count(cn, reference, key, uses);
    return !uses.empty();
}

bool entryStands(store::Connection& cn_main, Referent referent, const CodeKey& key) {
    std::vector<CodeUse> uses;
    count(cn_main, domain::entryOf(referent), key, uses);
    return !uses.empty();
}

void renameEntry(store::Connection& cn_main, Referent referent, const CodeKey& from, const CodeKey& to) {
    rename(cn_main, domain::entryOf(referent), from, to, {});
}

void removeEntry(store::Connection& cn_main, Referent referent, const CodeKey& key) {
    remove(cn_main, domain::entryOf(referent), key);
}

}  // namespace personnel
