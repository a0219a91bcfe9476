#include "domain/code_map.h"

#include <array>
#include <optional>

#include "domain/coefficients.h"
#include "schema/catalog.h"
#include "store/error.h"

namespace t = schema::tables;

namespace domain {
namespace {

using R = Referent;
using OnRemoval = Reference::OnRemoval;

/// A column of some table; positions are those of the catalogue.
struct Place {
    const char16_t* table = nullptr;
    int column = -1;
    int nameColumn = -1;
};
/// A column of a table that holds codes of several masters.
struct Held {
    Referent refersTo{};
    int column = -1;
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

/// A table with the codes of a criterion.
struct Criterion {
    const char16_t* table;
    int kubun;
    int kijun;
};
#define CRITERION(table) \
    { t::table::kName, t::table::配分区分, t::table::配分基準 }
/// What was assigned, typed in, computed and paid at a date: it outlives the set-up.
constexpr Criterion kRuns[] = {
    CRITERION(S配分基準対応社員), CRITERION(S実行個人別計算),   CRITERION(S実行個人別計算決定),
    CRITERION(S実行総額配分),     CRITERION(S実行総額配分決定), CRITERION(S実行予算),
    CRITERION(Sshikyuukeisuu),    CRITERION(SshikyuukeisuuHA),  CRITERION(S配分基準グループＹＮ),
};
/// How the criterion computes: of no use without it.
constexpr Criterion kSetups[] = {
    CRITERION(S基礎額設定),   CRITERION(S基礎額基本給),
    CRITERION(S基礎額手当),   {t::S係数設定::kName, t::S係数設定::配分区分Code, t::S係数設定::配分基準Code},
    CRITERION(S支給係数設定), CRITERION(S支給係数評価あり),
    CRITERION(S係数評価),     CRITERION(S係数評価段階設定),
    CRITERION(S係数年齢2),    CRITERION(S係数勤続年数2),
    CRITERION(S係数等級),     CRITERION(S係数社員区分),
    CRITERION(S係数所属大),   CRITERION(S係数役職),
    CRITERION(S係数職種),     CRITERION(S係数コース),
    CRITERION(S係数自由1),    CRITERION(S係数自由2),
    CRITERION(S係数自由3),    CRITERION(S係数自由4),
    CRITERION(S係数自由5),
};
#undef CRITERION
constexpr Criterion kCriteriaAtWork[] = {
    {t::IdoChuusyutsuMax3::kName, t::IdoChuusyutsuMax3::配分区分Code, t::IdoChuusyutsuMax3::配分基準Code}};

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
    template <std::size_t N>
    void criteria(const Criterion (&places)[N], OnRemoval onRemoval) {
        for (const auto& [table, kubun, kijun] : places) {
            map.push_back(of(R::HaibunKubun, table, kubun, onRemoval));
            map.push_back(of(R::HaibunKijun, table, kijun, onRemoval));
            map.back().parentColumn = kubun;
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

/// Whose code a column is, among these.
template <std::size_t N>
std::optional<Referent> referentAt(const Held (&held)[N], int column) {
    for (const Held& place : held)
        if (place.column == column) return place.refersTo;
    return std::nullopt;
}

/// The look-up table of a kind is keyed by the code that the employee is looked up with.
void addCoefficients(Builder& add) {
    using From = CoefficientKind::KeySource;
    for (const CoefficientKind kind : CoefficientKind::all()) {
        const auto& lookUp = kind.lookUp();
        if (!lookUp || (lookUp->source != From::Position && lookUp->source != From::Person)) continue;
        const auto refersTo = lookUp->source == From::Person ? referentAt(kPerson, lookUp->employeeKey)
                                                             : referentAt(kPosition, lookUp->employeeKey);
        if (refersTo) add.one(*refersTo, lookUp->table, lookUp->keyColumn);
    }
}

void addBonus(Builder& add) {
    add.employee(kEmployeeRuns);
    addCoefficients(add);
    add.criteria(kRuns, OnRemoval::Refused);
    add.one(R::HaibunKubun, t::S配分基準::kName, t::S配分基準::配分区分, OnRemoval::Refused);
    add.criteria(kSetups, OnRemoval::RowGoes);
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
    add.criteria(kCriteriaAtWork, OnRemoval::CodeIsCleared);
}

constexpr const char16_t* kEntryTables[] = {
    t::履歴書テーブル::kName,     t::社員区分マスタ::kName, t::所属大マスタ::kName,
    t::役職マスタ::kName,         t::職種マスタ::kName,     t::コースマスタ::kName,
    t::所属小マスタ::kName,       t::異動事由マスタ::kName, t::住宅区分マスタ::kName,
    t::最終学歴マスタ::kName,     t::採用区分マスタ::kName, t::資格免許マスタ::kName,
    t::続柄グループマスタ::kName, t::続柄マスタ::kName,     t::出身地マスタ::kName,
    t::自由マスタ1::kName,        t::自由マスタ2::kName,    t::自由マスタ3::kName,
    t::自由マスタ4::kName,        t::自由マスタ5::kName,    t::S配分区分::kName,
    t::S配分基準::kName,
};
static_assert(std::size(kEntryTables) == kReferents);

}  // namespace

QString entryTable(Referent referent) {
    return QString::fromUtf16(kEntryTables[static_cast<std::size_t>(referent)]);
}

Referent referentOf(const QString& entryTable) {
    for (std::size_t i = 0; i < std::size(kEntryTables); ++i)
        if (entryTable == QString::fromUtf16(kEntryTables[i])) return static_cast<Referent>(i);
    store::throwTypeMismatch();
}

const std::vector<Reference>& referencesOf(Part part) {
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

const std::vector<Reference>& codeReferences() {
    static const std::vector<Reference> all = [] {
        std::vector<Reference> joined;
        for (int part = 0; part < kParts; ++part)
            for (const Reference& reference : referencesOf(static_cast<Part>(part)))
                joined.push_back(reference);
        return joined;
    }();
    return all;
}

Reference entryOf(Referent referent) {
    Reference entry{.refersTo = referent, .table = &schema::tableNamed(entryTable(referent)), .column = 0};
    if (referent == R::SyozokuSyo) {
        entry.column = t::所属小マスタ::Code;
        entry.parentColumn = t::所属小マスタ::所属大;
    } else if (referent == R::HaibunKubun) {
        entry.column = t::S配分区分::Code;
    } else if (referent == R::HaibunKijun) {
        entry.column = t::S配分基準::Code;
        entry.parentColumn = t::S配分基準::配分区分;
    }
    return entry;
}

}  // namespace domain
