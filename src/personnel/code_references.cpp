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
using OnRemoval = Reference::OnRemoval;

/// A column of some table; positions are those of the catalogue.
struct Place {
    const char16_t* table;
    int column;
    int nameColumn = -1;
};
/// A column of a table that holds codes of several masters.
struct Held {
    Referent refersTo;
    int column;
    int parentColumn = -1;
};

constexpr Place kEmployeeRuns[] = {
    {t::S実行個人別計算::kName, t::S実行個人別計算::社員Code},
    {t::S実行個人別計算決定::kName, t::S実行個人別計算決定::社員Code},
    {t::S実行総額配分::kName, t::S実行総額配分::社員Code},
    {t::S実行総額配分決定::kName, t::S実行総額配分決定::社員Code},
    {t::S配分基準対応社員::kName, t::S配分基準対応社員::社員Code},
};
constexpr Place kEmployeeWages[] = {
    {t::C修正基本給::kName, t::C修正基本給::社員Code},
    {t::C従前賃金::kName, t::C従前賃金::社員Code},
    {t::C新賃金体系::kName, t::C新賃金体系::社員Code},
    {t::C新賃金体系基本給::kName, t::C新賃金体系基本給::社員Code},
    {t::C新賃金体系手当::kName, t::C新賃金体系手当::社員Code},
    {t::C改定シミュレーションテーブル::kName, t::C改定シミュレーションテーブル::社員Code,
     t::C改定シミュレーションテーブル::氏名},
    {t::C改定テーブル::kName, t::C改定テーブル::社員Code, t::C改定テーブル::氏名},
    {t::C改定ベア新賃金体系基本給::kName, t::C改定ベア新賃金体系基本給::社員Code},
    {t::C改定ベア新賃金体系手当::kName, t::C改定ベア新賃金体系手当::社員Code},
    {t::C改定昇給修正基本給::kName, t::C改定昇給修正基本給::社員Code},
    {t::C改定昇給新賃金体系基本給::kName, t::C改定昇給新賃金体系基本給::社員Code},
    {t::C改定昇給新賃金体系手当::kName, t::C改定昇給新賃金体系手当::社員Code},
};
/// Behind the ten evaluators of a group, of which each is an employee too.
constexpr Place kEmployeeEvaluations[] = {
    {t::H評価シート対応社員::kName, t::H評価シート対応社員::社員Code},
    {t::H評価入力::kName, t::H評価入力::社員Code},
    {t::H評価入力::kName, t::H評価入力::評価者Code},
    {t::H評価入力＿決定::kName, t::H評価入力＿決定::社員Code},
    {t::H評価入力計得点::kName, t::H評価入力計得点::社員Code},
    {t::H評価入力計得点::kName, t::H評価入力計得点::評価者Code},
    {t::H評価入力計得点＿決定::kName, t::H評価入力計得点＿決定::社員Code},
    {t::H評価入力要素グループ得点::kName, t::H評価入力要素グループ得点::社員Code},
    {t::H評価入力要素グループ得点::kName, t::H評価入力要素グループ得点::評価者Code},
    {t::H評価入力要素グループ得点＿決定::kName, t::H評価入力要素グループ得点＿決定::社員Code},
};
/// The company's own: people first, then what is filled anew by each use.
constexpr Place kEmployeeOwn[] = {
    {t::異動テーブル::kName, t::異動テーブル::社員Code},
    {t::家族テーブル::kName, t::家族テーブル::社員Code},
    {t::資格免許テーブル::kName, t::資格免許テーブル::社員Code},
    {t::Ｈ評価実績::kName, t::Ｈ評価実績::社員Code},
    {t::社員絞込::kName, t::社員絞込::社員Code},
};
constexpr Place kEmployeeWork[] = {
    {t::IdoChuusyutsuNen::kName, t::IdoChuusyutsuNen::社員Code},
    {t::IdoChuusyutsuMax::kName, t::IdoChuusyutsuMax::社員Code},
    {t::IdoChuusyutsuMax2::kName, t::IdoChuusyutsuMax2::社員Code},
    {t::IdoChuusyutsuMax3::kName, t::IdoChuusyutsuMax3::社員Code, t::IdoChuusyutsuMax3::氏名},
    {t::S実行自動入力判定::kName, t::S実行自動入力判定::社員Code},
    {t::SNenkan::kName, t::SNenkan::社員Code, t::SNenkan::氏名},
    {t::SNenkanhojo::kName, t::SNenkanhojo::社員Code, t::SNenkanhojo::氏名},
};

/// Of both matrices of the wage file: their layouts agree.
constexpr Held kMatrix[] = {
    {R::SyainKubun, t::C基本給マトリックス::社員区分},
    {R::SyozokuDai, t::C基本給マトリックス::所属大},
    {R::SyozokuSyo, t::C基本給マトリックス::所属小, t::C基本給マトリックス::所属大},
    {R::Yakusyoku, t::C基本給マトリックス::役職},
    {R::Syokusyu, t::C基本給マトリックス::職種},
    {R::Course, t::C基本給マトリックス::コース},
    {R::Gakureki, t::C基本給マトリックス::最終学歴},
    {R::Jyutaku, t::C基本給マトリックス::住宅区分},
    {R::Saiyou, t::C基本給マトリックス::採用区分},
    {R::Jiyuu1, t::C基本給マトリックス::自由1},
    {R::Jiyuu2, t::C基本給マトリックス::自由2},
    {R::Jiyuu3, t::C基本給マトリックス::自由3},
    {R::Jiyuu4, t::C基本給マトリックス::自由4},
    {R::Jiyuu5, t::C基本給マトリックス::自由5},
};
static_assert(+t::C基本給マトリックス::社員区分 == +t::C手当マトリックス::社員区分 &&
              +t::C基本給マトリックス::自由5 == +t::C手当マトリックス::自由5);

constexpr Held kEvaluationGroup[] = {
    {R::SyainKubun, t::H評価シート対応グループ::社員区分Code},
    {R::SyozokuDai, t::H評価シート対応グループ::所属大Code},
    {R::SyozokuSyo, t::H評価シート対応グループ::所属小Code, t::H評価シート対応グループ::所属大Code},
    {R::Yakusyoku, t::H評価シート対応グループ::役職Code},
};

/// The coefficient of each entry; the key stands at the same place in all of them.
constexpr struct {
    Referent refersTo;
    const char16_t* table;
} kCoefficients[] = {
    {R::SyainKubun, t::S係数社員区分::kName}, {R::SyozokuDai, t::S係数所属大::kName},
    {R::Yakusyoku, t::S係数役職::kName},      {R::Syokusyu, t::S係数職種::kName},
    {R::Course, t::S係数コース::kName},       {R::Jiyuu1, t::S係数自由1::kName},
    {R::Jiyuu2, t::S係数自由2::kName},        {R::Jiyuu3, t::S係数自由3::kName},
    {R::Jiyuu4, t::S係数自由4::kName},        {R::Jiyuu5, t::S係数自由5::kName},
};
constexpr int kCoefficientKey = t::S係数社員区分::社員区分;

constexpr Held kPerson[] = {
    {R::Gakureki, t::履歴書テーブル::最終学歴}, {R::Syussinchi, t::履歴書テーブル::出身地},
    {R::Jyutaku, t::履歴書テーブル::住宅区分},  {R::Saiyou, t::履歴書テーブル::採用区分},
    {R::Jiyuu1, t::履歴書テーブル::自由1},      {R::Jiyuu2, t::履歴書テーブル::自由2},
    {R::Jiyuu3, t::履歴書テーブル::自由3},      {R::Jiyuu4, t::履歴書テーブル::自由4},
    {R::Jiyuu5, t::履歴書テーブル::自由5},
};
constexpr Held kTransfer[] = {
    {R::IdouJiyuu, t::異動テーブル::異動事由},
    {R::SyainKubun, t::異動テーブル::社員区分},
    {R::SyozokuDai, t::異動テーブル::所属大},
    {R::SyozokuSyo, t::異動テーブル::所属小, t::異動テーブル::所属大},
    {R::Yakusyoku, t::異動テーブル::役職},
    {R::Syokusyu, t::異動テーブル::職種},
    {R::Course, t::異動テーブル::コース},
};
/// Of IdoChuusyutsuMax2 and IdoChuusyutsuMax3: the second repeats the first.
constexpr Held kPosition[] = {
    {R::SyainKubun, t::IdoChuusyutsuMax2::社員区分},
    {R::SyozokuDai, t::IdoChuusyutsuMax2::所属大},
    {R::SyozokuSyo, t::IdoChuusyutsuMax2::所属小, t::IdoChuusyutsuMax2::所属大},
    {R::Yakusyoku, t::IdoChuusyutsuMax2::役職},
    {R::Syokusyu, t::IdoChuusyutsuMax2::職種},
    {R::Course, t::IdoChuusyutsuMax2::コース},
};
static_assert(+t::IdoChuusyutsuMax2::コース == +t::IdoChuusyutsuMax3::コース);

/// Collects the map, file by file and in each file in the order of a rename.
class Builder {
  public:
    std::vector<Reference> map;

    template <std::size_t N>
    void employee(const Place (&places)[N]) {
        for (const Place& place : places) {
            map.push_back(of(R::Syain, place.table, place.column));
            map.back().nameColumn = place.nameColumn;
        }
    }
    template <std::size_t N>
    void masters(const char16_t* table, const Held (&held)[N], OnRemoval onRemoval) {
        for (const Held& column : held) {
            map.push_back(of(column.refersTo, table, column.column, onRemoval));
            map.back().parentColumn = column.parentColumn;
        }
    }
    void one(Referent refersTo, const char16_t* table, int column, OnRemoval onRemoval = OnRemoval::RowGoes) {
        map.push_back(of(refersTo, table, column, onRemoval));
    }

  private:
    static Reference of(Referent refersTo, const char16_t* table, int column,
                        OnRemoval onRemoval = OnRemoval::RowGoes) {
        return {.refersTo = refersTo,
                .table = &schema::tableNamed(QString::fromUtf16(table)),
                .column = column,
                .onRemoval = onRemoval};
    }
};

void addBonus(Builder& add) {
    add.employee(kEmployeeRuns);
    for (const auto& coefficient : kCoefficients)
        add.one(coefficient.refersTo, coefficient.table, kCoefficientKey);
}

void addWages(Builder& add) {
    add.employee(kEmployeeWages);
    for (Reference& reference : add.map)
        reference.lastInRemoval |= reference.table->name.startsWith(QStringLiteral("C改定ベア"));
    for (const char16_t* matrix : {t::C基本給マトリックス::kName, t::C手当マトリックス::kName})
        add.masters(matrix, kMatrix, OnRemoval::RowGoes);
    add.one(R::SyainKubun, t::C新賃金体系Group::kName, t::C新賃金体系Group::社員区分Code);
    add.one(R::SyainKubun, t::C新賃金体系Group手当::kName, t::C新賃金体系Group手当::社員区分Code);
}

void addEvaluations(Builder& add) {
    for (int i = t::H評価シート対応グループ::一次評価者; i <= t::H評価シート対応グループ::多面評価者７; ++i)
        add.one(R::Syain, t::H評価シート対応グループ::kName, i);
    add.employee(kEmployeeEvaluations);
    add.masters(t::H評価シート対応グループ::kName, kEvaluationGroup, OnRemoval::RowGoes);
    add.one(R::SyainKubun, t::H評価者ウエイトグループ::kName, t::H評価者ウエイトグループ::社員区分Code);
}

void addOwn(Builder& add) {
    add.employee(kEmployeeOwn);
    add.masters(t::履歴書テーブル::kName, kPerson, OnRemoval::Refused);
    add.masters(t::異動テーブル::kName, kTransfer, OnRemoval::Refused);
    add.one(R::Zokugara, t::家族テーブル::kName, t::家族テーブル::続柄, OnRemoval::Refused);
    add.one(R::Shikaku, t::資格免許テーブル::kName, t::資格免許テーブル::資格免許, OnRemoval::Refused);
    add.one(R::SyozokuDai, t::所属小マスタ::kName, t::所属小マスタ::所属大, OnRemoval::Refused);
    add.one(R::ZokugaraGroup, t::続柄マスタ::kName, t::続柄マスタ::続柄グループ, OnRemoval::Refused);
}

void addWork(Builder& add) {
    add.employee(kEmployeeWork);
    for (const char16_t* work : {t::IdoChuusyutsuMax2::kName, t::IdoChuusyutsuMax3::kName})
        add.masters(work, kPosition, OnRemoval::CodeIsCleared);
}

/// The procedures of a cascade. The last two are this company's own tables: the step that updates the row
/// itself carries them too, behind the cascade.
enum class Part { Bonus, Wages, Evaluations, Own, Work };
constexpr std::size_t kParts = 5;

const std::vector<Reference>& partOf(Part part) {
    static const auto parts = [] {
        std::array<Builder, kParts> built;
        addBonus(built[0]);
        addWages(built[1]);
        addEvaluations(built[2]);
        addOwn(built[3]);
        addWork(built[4]);
        return built;
    }();
    return parts[static_cast<std::size_t>(part)].map;
}

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
        for (const Reference& reference : partOf(part))
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

/// The row of the code itself as a place that holds it.
Reference entryOf(Referent referent) {
    Reference entry{.refersTo = referent, .table = &schema::tableNamed(entryTable(referent)), .column = 0};
    if (referent == R::SyozokuSyo) {
        entry.column = t::所属小マスタ::Code;
        entry.parentColumn = t::所属小マスタ::所属大;
    }
    return entry;
}

constexpr const char16_t* kEntryTables[] = {
    t::履歴書テーブル::kName,     t::社員区分マスタ::kName, t::所属大マスタ::kName,
    t::役職マスタ::kName,         t::職種マスタ::kName,     t::コースマスタ::kName,
    t::所属小マスタ::kName,       t::異動事由マスタ::kName, t::住宅区分マスタ::kName,
    t::最終学歴マスタ::kName,     t::採用区分マスタ::kName, t::資格免許マスタ::kName,
    t::続柄グループマスタ::kName, t::続柄マスタ::kName,     t::出身地マスタ::kName,
    t::自由マスタ1::kName,        t::自由マスタ2::kName,    t::自由マスタ3::kName,
    t::自由マスタ4::kName,        t::自由マスタ5::kName,
};
static_assert(std::size(kEntryTables) == static_cast<std::size_t>(R::Jiyuu5) + 1);

}  // namespace

QString entryTable(Referent referent) {
    return QString::fromUtf16(kEntryTables[static_cast<std::size_t>(referent)]);
}

Referent referentOf(const QString& entryTable) {
    for (std::size_t i = 0; i < std::size(kEntryTables); ++i)
        if (entryTable == QString::fromUtf16(kEntryTables[i])) return static_cast<Referent>(i);
    store::throwTypeMismatch();
}

const std::vector<Reference>& codeReferences() {
    static const std::vector<Reference> all = [] {
        std::vector<Reference> joined;
        for (std::size_t part = 0; part < kParts; ++part)
            for (const Reference& reference : partOf(static_cast<Part>(part))) joined.push_back(reference);
        return joined;
    }();
    return all;
}

std::vector<CodeUse> codeUsage(store::Connection& cn_main, Referent referent, const CodeKey& key) {
    std::vector<CodeUse> uses;
    for (const Reference& reference : partOf(Part::Own))
        if (reference.refersTo == referent && reference.onRemoval == OnRemoval::Refused)
            count(cn_main, reference, key, uses);
    return uses;
}

std::vector<CodeUse> employeeHistory(store::Connection& cn_main, const QString& syainCode) {
    std::vector<CodeUse> uses;
    const QString selection = QString::fromUtf16(t::社員絞込::kName);
    for (const Part part : {Part::Own, Part::Bonus})
        for (const Reference& reference : partOf(part))
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
    count(cn_main, entryOf(referent), key, uses);
    return !uses.empty();
}

void renameEntry(store::Connection& cn_main, Referent referent, const CodeKey& from, const CodeKey& to) {
    rename(cn_main, entryOf(referent), from, to, {});
}

void removeEntry(store::Connection& cn_main, Referent referent, const CodeKey& key) {
    remove(cn_main, entryOf(referent), key);
}

}  // namespace personnel
