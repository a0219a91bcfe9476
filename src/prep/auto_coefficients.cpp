#include "prep/auto_coefficients.h"

#include <QHash>
#include <QStringList>
#include <algorithm>
#include <limits>

#include "design/run_filter.h"
#include "schema/catalog.h"

namespace prep {
namespace {

namespace t = schema::tables;
namespace run_t = schema::tables::S実行個人別計算;
namespace judged = schema::tables::S実行自動入力判定;
namespace snapshot = schema::tables::IdoChuusyutsuMax3;
namespace person = schema::tables::履歴書テーブル;

// Both run tables hold the coefficients at the same positions.
static_assert(int{run_t::年齢係数} == int{t::S実行総額配分::年齢係数} &&
              int{run_t::自由5係数} == int{t::S実行総額配分::自由5係数});

enum class Source {
    Years,     ///< a number of the snapshot: it always has a value
    Snapshot,  ///< a code of the snapshot
    Person,    ///< a code of the employee's record
    Grade,     ///< the grade of the run's row
};

/// One coefficient: its 設定名称, look-up table (key at position 3, coefficient at 4), where the employee's
/// key comes from, and where coefficient and judgment go.
struct Kind {
    const char16_t* setteiMeisyou;
    const char16_t* table;
    Source source;
    int key;
    int target;
    int judgment;
};
constexpr int kKey = 3;
constexpr int kCoefficient = 4;

constexpr Kind kKinds[] = {
    {u"01", t::S係数年齢2::kName, Source::Years, snapshot::年齢, run_t::年齢係数, judged::年齢係数},
    {u"02", t::S係数勤続年数2::kName, Source::Years, snapshot::勤続年数, run_t::勤続年数係数,
     judged::勤続年数係数},
    {u"03", t::S係数等級::kName, Source::Snapshot, snapshot::等級, run_t::等級係数, judged::等級係数},
    {u"04", t::S係数評価::kName, Source::Grade, run_t::評価, run_t::評価係数, judged::評価係数},
    {u"06", t::S係数社員区分::kName, Source::Snapshot, snapshot::社員区分, run_t::社員区分係数,
     judged::社員区分係数},
    {u"07", t::S係数所属大::kName, Source::Snapshot, snapshot::所属大, run_t::所属大係数, judged::所属大係数},
    {u"08", t::S係数役職::kName, Source::Snapshot, snapshot::役職, run_t::役職係数, judged::役職係数},
    {u"09", t::S係数職種::kName, Source::Snapshot, snapshot::職種, run_t::職種係数, judged::職種係数},
    {u"10", t::S係数コース::kName, Source::Snapshot, snapshot::コース, run_t::コース係数, judged::コース係数},
    {u"11", t::S係数自由1::kName, Source::Person, person::自由1, run_t::自由1係数, judged::自由1係数},
    {u"12", t::S係数自由2::kName, Source::Person, person::自由2, run_t::自由2係数, judged::自由2係数},
    {u"13", t::S係数自由3::kName, Source::Person, person::自由3, run_t::自由3係数, judged::自由3係数},
    {u"14", t::S係数自由4::kName, Source::Person, person::自由4, run_t::自由4係数, judged::自由4係数},
    {u"15", t::S係数自由5::kName, Source::Person, person::自由5, run_t::自由5係数, judged::自由5係数},
};

/// Which coefficients of the criterion are automatic.
class SetUp {
  public:
    explicit SetUp(const AutoRun& run) {
        auto rows = run.cn.prepare(QStringLiteral(
            "SELECT 設定名称, 入力区分Code, coalesce(基礎額Ａ, 0) <> 0, coalesce(基礎額Ｂ, 0) <> 0 "
            "FROM S係数設定 WHERE 配分区分Code = ? AND 配分基準Code = ? AND 算定方式 = ? "
            "AND (基礎額Ａ <> 0 OR 基礎額Ｂ <> 0) ORDER BY Cint(設定名称)"));
        rows.bindAll({run.key.haibunKubun, run.key.haibunKijun, run.santeiHoushiki});
        int slotsOfA = 0;
        int slotsOfB = 0;
        while (rows.step()) {
            const int a = rows.toInteger(2) != 0 ? 1 : 0;
            const int b = rows.toInteger(3) != 0 ? 1 : 0;
            slotsOfA += a;
            slotsOfB += b;
            if (rows.toText(1) != QStringLiteral("2")) continue;
            Rows& found = automatic_[rows.toText(0)];
            found.a += a;
            found.b += b;
        }
        if (std::max(slotsOfA, slotsOfB) > kSlots)
            throw store::Error(store::Error::Reason::Type,
                               QStringLiteral("係数の設定が18種類を超えています。"));
    }

    /// Exactly one row answers on one of the bases.
    bool isAutomatic(const Kind& kind) const {
        const Rows rows = automatic_.value(QString::fromUtf16(kind.setteiMeisyou));
        return rows.a == 1 || rows.b == 1;
    }

  private:
    static constexpr int kSlots = 18;
    struct Rows {
        int a = 0;
        int b = 0;
    };
    QHash<QString, Rows> automatic_;
};

/// The key values of the run's people out of one table, read in one go.
class Keys {
  public:
    /// `positions` are the columns that will be asked for; none reads nothing.
    Keys(const AutoRun& run, const QString& table, std::vector<int> positions)
        : positions_(std::move(positions)) {
        if (positions_.empty()) return;
        QStringList names;
        for (int position : positions_) names << design::columnName(table, position);
        auto rows = run.cn.prepare(QStringLiteral("SELECT 社員Code, %1 FROM %2 WHERE 社員Code IN "
                                                  "(SELECT 社員Code FROM %3 WHERE %4)")
                                       .arg(names.join(u','), table, run.table, design::kRunFilter));
        rows.bindAll(design::runBinds(run.key));
        QHash<QString, std::size_t> firstKey;
        while (rows.step()) {
            const QString code = rows.toText(0);
            if (firstKey.contains(code)) continue;
            firstKey.insert(code, keys_.size());
            for (int i = 1; i <= static_cast<int>(positions_.size()); ++i) keys_.push_back(rows.toText(i));
        }
        // Looked up once for all items.
        firstKey_.reserve(run.rows.size());
        for (const AutoRun::Row& row : run.rows) firstKey_.push_back(firstKey.value(row.syainCode, kNone));
    }

    int column(int position) const {
        return static_cast<int>(std::find(positions_.begin(), positions_.end(), position) -
                                positions_.begin());
    }
    /// Of the run's row at this place.
    const QString& of(std::size_t row, int column) const {
        if (firstKey_[row] == kNone)
            throw store::Error(store::Error::Reason::Type, QStringLiteral("現在のレコードがありません。"),
                               QStringLiteral("社員の記録がありません。"));
        return keys_[firstKey_[row] + static_cast<std::size_t>(column)];
    }

  private:
    static constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

    std::vector<int> positions_;
    std::vector<std::size_t> firstKey_;  ///< by the run's row: where its keys begin
    std::vector<QString> keys_;
};

/// The look-up table of a criterion. Keys are compared as numbers: "07" and "7" are one code.
class LookUp {
  public:
    LookUp(const AutoRun& run, const QString& table) {
        const QString key = design::columnName(table, kKey);
        const auto rows = run.cn.query(
            QStringLiteral(
                "SELECT %1, 係数 FROM %2 WHERE 配分区分 = ? AND 配分基準 = ? ORDER BY Cint(%1), ID")
                .arg(key, table),
            {run.key.haibunKubun, run.key.haibunKijun});
        for (int i = 0; i < rows.recordCount(); ++i) {
            const auto number = store::parseNumber(rows.valueAt(i, 0).toText());
            if (number && !rows_.contains(*number)) rows_.insert(*number, rows.valueAt(i, 1));
        }
    }

    /// Many people share few keys: each is worked out once.
    const AutoCell& find(const QString& key) {
        const auto known = known_.constFind(key);
        return known == known_.constEnd() ? *known_.insert(key, search(key)) : *known;
    }

  private:
    AutoCell search(const QString& key) const {
        const auto number = store::parseNumber(key);
        const auto row = number ? rows_.constFind(*number) : rows_.constEnd();
        if (row == rows_.constEnd()) return {};
        return {row->toDouble(), true};
    }
    QHash<double, store::Value> rows_;
    QHash<QString, AutoCell> known_;
};

/// "000012　年齢係数"
QString placeOf(const AutoRun& run, const AutoRun::Row& row, int target) {
    return row.syainCode + u'　' + design::columnName(run.table, target);
}

AutoItem lookUpAll(const AutoRun& run, const Kind& kind, const Keys& keys) {
    AutoItem item{kind.target, kind.judgment, {}};
    item.cells.reserve(run.rows.size());
    std::optional<LookUp> table;
    const int column = keys.column(kind.key);
    const auto cellOf = [&](std::size_t row) {
        const QString& key = keys.of(row, column);
        if (key.isEmpty() && kind.source == Source::Years) store::throwNull();
        if (!key.isEmpty() && !table) table.emplace(run, QString::fromUtf16(kind.table));
        return key.isEmpty() ? AutoCell() : table->find(key);
    };
    for (std::size_t row = 0; row < run.rows.size(); ++row)
        item.cells.push_back(store::named([&] { return placeOf(run, run.rows[row], kind.target); },
                                          [&] { return cellOf(row); }));
    return item;
}

/// The walk by grade. `found` and `kei` are not reset from one employee to the next: that is the rule.
AutoItem walkGrades(const AutoRun& run, const QString& table, int target, int judgment) {
    const auto rows = run.cn.query(
        QStringLiteral("SELECT %1, %2 FROM %3 WHERE 配分区分 = ? AND 配分基準 = ? "
                       "ORDER BY Cint(評価Code), ID")
            .arg(design::columnName(table, kKey), design::columnName(table, kCoefficient), table),
        {run.key.haibunKubun, run.key.haibunKijun});
    QHash<QString, store::Value> grades;
    for (int i = 0; i < rows.recordCount(); ++i)
        if (!rows.valueAt(i, 0).isNull()) grades.insert(rows.valueAt(i, 0).toText(), rows.valueAt(i, 1));
    AutoItem item{target, judgment, {}};
    item.cells.reserve(run.rows.size());
    bool found = false;
    double kei = 0;
    for (const AutoRun::Row& row : run.rows) {
        const auto match = grades.constFind(row.hyouka);
        if (match != grades.constEnd()) {
            found = true;
            kei = store::named([&] { return placeOf(run, row, target); }, [&] { return match->toDouble(); });
        }
        item.cells.push_back(found ? AutoCell{kei, true} : AutoCell());
    }
    return item;
}

std::vector<int> keysOf(const std::vector<Kind>& kinds, std::initializer_list<Source> sources) {
    std::vector<int> positions;
    for (const Kind& kind : kinds)
        if (std::find(sources.begin(), sources.end(), kind.source) != sources.end())
            positions.push_back(kind.key);
    return positions;
}

}  // namespace

std::vector<AutoItem> keisuu(const AutoRun& run) {
    const SetUp setUp(run);
    std::vector<Kind> kinds;
    for (const Kind& kind : kKinds)
        if (setUp.isAutomatic(kind)) kinds.push_back(kind);
    const Keys inSnapshot(run, QString::fromUtf16(snapshot::kName),
                          keysOf(kinds, {Source::Years, Source::Snapshot}));
    const Keys inRecord(run, QString::fromUtf16(person::kName), keysOf(kinds, {Source::Person}));
    std::vector<AutoItem> items;
    for (const Kind& kind : kinds) {
        if (kind.source == Source::Grade)
            items.push_back(walkGrades(run, QString::fromUtf16(kind.table), kind.target, kind.judgment));
        else
            items.push_back(lookUpAll(run, kind, kind.source == Source::Person ? inRecord : inSnapshot));
    }
    return items;
}

std::optional<AutoItem> keisuu_shikyuu(const AutoRun& run) {
    const auto setting = [&](const char16_t* setteiHouhou) {
        return run.cn.query(QStringLiteral("SELECT 一律係数 FROM S支給係数設定 WHERE 配分区分 = ? AND "
                                           "配分基準 = ? AND 設定方法 = ?"),
                            {run.key.haibunKubun, run.key.haibunKijun, setteiHouhou});
    };
    std::optional<AutoItem> item;
    if (setting(u"3").recordCount() == 1)
        item = walkGrades(run, QString::fromUtf16(t::S支給係数評価あり::kName), run_t::支給係数,
                          judged::支給係数);
    const auto uniform = setting(u"2");
    if (uniform.recordCount() == 1) {
        const double coefficient = uniform.valueAt(0, 0).toDouble();
        const AutoCell cell{coefficient, coefficient != 0};
        item = AutoItem{run_t::支給係数, judged::支給係数, std::vector<AutoCell>(run.rows.size(), cell)};
    }
    return item;
}

}  // namespace prep
