#include "prep/auto_coefficients.h"

#include <QHash>
#include <QStringList>
#include <algorithm>
#include <array>
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

using domain::CoefficientKind;
using Source = CoefficientKind::KeySource;

/// The kinds of coefficient that are automatic: exactly one row of the set-up says so for one of the bases.
std::vector<CoefficientKind> automaticKinds(const design::MethodSetup& setup) {
    struct Rows {
        int a = 0;
        int b = 0;
    };
    Rows acting;
    std::array<Rows, domain::kCoefficients> automatic;
    for (const design::CoefficientUse& use : setup.inOrder([](const auto& each) { return each.acts(); })) {
        acting.a += use.onA;
        acting.b += use.onB;
        if (!use.kind || use.input != design::Input::Automatic) continue;
        automatic[use.kind->index()].a += use.onA;
        automatic[use.kind->index()].b += use.onB;
    }
    if (std::max(acting.a, acting.b) > domain::kCoefficients)
        throw store::Error(store::Error::Reason::Type, QStringLiteral("係数の設定が18種類を超えています。"));
    std::vector<CoefficientKind> kinds;
    for (const CoefficientKind kind : CoefficientKind::all())
        if (const Rows rows = automatic[kind.index()]; kind.lookUp() && (rows.a == 1 || rows.b == 1))
            kinds.push_back(kind);
    return kinds;
}

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
    LookUp(const AutoRun& run, const QString& table, int keyColumn) {
        const QString key = design::columnName(table, keyColumn);
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

AutoItem lookUpAll(const AutoRun& run, CoefficientKind kind, const Keys& keys) {
    const CoefficientKind::LookUp& source = *kind.lookUp();
    AutoItem item{kind.runPosition(), source.judgment, {}};
    item.cells.reserve(run.rows.size());
    std::optional<LookUp> table;
    const int column = keys.column(source.employeeKey);
    const auto cellOf = [&](std::size_t row) {
        const QString& key = keys.of(row, column);
        if (key.isEmpty() && source.source == Source::Years) store::throwNull();
        if (!key.isEmpty() && !table) table.emplace(run, QString::fromUtf16(source.table), source.keyColumn);
        return key.isEmpty() ? AutoCell() : table->find(key);
    };
    for (std::size_t row = 0; row < run.rows.size(); ++row)
        item.cells.push_back(store::named([&] { return placeOf(run, run.rows[row], item.target); },
                                          [&] { return cellOf(row); }));
    return item;
}

/// The walk by grade. `found` and `kei` are not reset from one employee to the next: that is the rule.
AutoItem walkGrades(const AutoRun& run, const QString& table, const QString& coefficient, int target,
                    int judgment) {
    const auto rows =
        run.cn.query(QStringLiteral("SELECT 評価, %1 FROM %2 WHERE 配分区分 = ? AND 配分基準 = ? "
                                    "ORDER BY Cint(評価Code), ID")
                         .arg(coefficient, table),
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

std::vector<int> keysOf(const std::vector<CoefficientKind>& kinds, std::initializer_list<Source> sources) {
    std::vector<int> positions;
    for (const CoefficientKind kind : kinds)
        if (std::find(sources.begin(), sources.end(), kind.lookUp()->source) != sources.end())
            positions.push_back(kind.lookUp()->employeeKey);
    return positions;
}

}  // namespace

std::vector<AutoItem> keisuu(const AutoRun& run) {
    const std::vector<CoefficientKind> kinds = automaticKinds(run.setup.of(run.houshiki));
    const Keys inSnapshot(run, QString::fromUtf16(t::IdoChuusyutsuMax3::kName),
                          keysOf(kinds, {Source::Years, Source::Position}));
    const Keys inRecord(run, QString::fromUtf16(t::履歴書テーブル::kName), keysOf(kinds, {Source::Person}));
    std::vector<AutoItem> items;
    for (const CoefficientKind kind : kinds) {
        const CoefficientKind::LookUp& source = *kind.lookUp();
        if (source.source == Source::Grade)
            items.push_back(walkGrades(run, QString::fromUtf16(source.table), QStringLiteral("係数"),
                                       kind.runPosition(), source.judgment));
        else
            items.push_back(lookUpAll(run, kind, source.source == Source::Person ? inRecord : inSnapshot));
    }
    return items;
}

std::optional<AutoItem> keisuu_shikyuu(const AutoRun& run) {
    std::optional<AutoItem> item;
    if (run.setup.paymentsBy(design::Method::Derived).size() == 1)
        item = walkGrades(run, QString::fromUtf16(t::S支給係数評価あり::kName), QStringLiteral("支給係数"),
                          run_t::支給係数, judged::支給係数);
    const auto uniform = run.setup.paymentsBy(design::Method::Uniform);
    if (uniform.size() == 1) {
        if (!uniform.front().uniform) store::throwNull();
        const double coefficient = *uniform.front().uniform;
        const AutoCell cell{coefficient, coefficient != 0};
        item = AutoItem{run_t::支給係数, judged::支給係数, std::vector<AutoCell>(run.rows.size(), cell)};
    }
    return item;
}

}  // namespace prep
