#include "prep/auto_base_amounts.h"

#include <QHash>
#include <algorithm>
#include <array>

#include "design/run_filter.h"
#include "schema/catalog.h"

namespace prep {
namespace {

namespace t = schema::tables;
using store::Money;

// Both run tables hold the base amounts at the same positions.
static_assert(int{t::S実行個人別計算::基礎額Ａ} == int{t::S実行総額配分::基礎額Ａ} &&
              int{t::S実行個人別計算::基礎額Ｂ} == int{t::S実行総額配分::基礎額Ｂ});

constexpr std::size_t kSlots = 5;
using Slots = std::array<QString, kSlots>;  ///< names of wage items; an empty one is not used

/// A kind of wage item: what the base is made of, and where the employees' amounts stand.
struct WageKind {
    const char16_t* itemTable;
    const char16_t* wageTable;
    const char16_t* itemColumn;  ///< the same name in both
};
constexpr WageKind kBasicPay{t::S基礎額基本給::kName, t::C新賃金体系基本給::kName, u"基本給"};
constexpr WageKind kAllowance{t::S基礎額手当::kName, t::C新賃金体系手当::kName, u"手当"};

/// The wage items that make up one base.
struct Setting {
    const AutoRun& run;
    Base base;

    Slots items(const WageKind& kind) const {
        const auto rows = run.cn.query(
            QStringLiteral("SELECT %1 FROM %2 WHERE 配分区分 = ? AND 配分基準 = ? AND 算定方式 = ? AND "
                           "処理区分 = ? ORDER BY ID")
                .arg(QString::fromUtf16(kind.itemColumn), QString::fromUtf16(kind.itemTable)),
            {run.key.haibunKubun, run.key.haibunKijun, design::houshikiCode(run.houshiki),
             QString::number(static_cast<int>(base))});
        if (rows.recordCount() > static_cast<int>(kSlots))
            throw store::Error(store::Error::Reason::Type,
                               QStringLiteral("基礎額に使う賃金項目は5つまでです。"));
        Slots names;
        for (int i = 0; i < rows.recordCount(); ++i)
            names[static_cast<std::size_t>(i)] = rows.valueAt(i, 0).toText();
        return names;
    }
};

/// The amounts of one kind of wage item at everybody's wage date.
class WageSums {
  public:
    WageSums(const AutoRun& run, const WageKind& kind, const Slots& names) : names_(names) {
        if (std::all_of(names.begin(), names.end(), [](const QString& name) { return name.isEmpty(); }))
            return;
        store::Statement rows = run.cn.prepare(select(run, kind));
        store::Binds binds = design::runBinds(run.key);
        binds.push_back(run.key.kijunbi);
        for (const QString& name : names) binds.push_back(name.isEmpty() ? store::Value() : name);
        rows.bindAll(binds);
        while (rows.step()) take(rows);
    }

    Money of(const QString& syainCode) const {
        Money sum;
        const auto found = people_.constFind(syainCode);
        if (found == people_.constEnd()) return sum;
        for (std::size_t i = 0; i < kSlots; ++i) {
            const Slot& slot = (*found)[i];
            if (slot.rows != 1) continue;
            store::named([&] { return syainCode + u'　' + names_[i]; },
                         [&] {
                             if (!slot.amount) store::throwNull();
                             sum += *slot.amount;
                         });
        }
        return sum;
    }

  private:
    struct Slot {
        int rows = 0;
        std::optional<Money> amount;
    };

    static QString select(const AutoRun& run, const WageKind& kind) {
        return QStringLiteral(
                   "SELECT 賃金.社員Code, 賃金.%1, 賃金.金額 FROM "
                   "(SELECT 社員Code AS 社員, max(基準日) AS 支給日 FROM C新賃金体系基本給 "
                   "WHERE 社員Code IN (SELECT 社員Code FROM %2 WHERE %3) AND 基準日 <= ? GROUP BY 社員Code) "
                   "JOIN %4 AS 賃金 ON 賃金.社員Code = 社員 AND 賃金.基準日 = 支給日 "
                   "WHERE 賃金.%1 IN (?, ?, ?, ?, ?)")
            .arg(QString::fromUtf16(kind.itemColumn), run.table, design::kRunFilter,
                 QString::fromUtf16(kind.wageTable));
    }

    void take(const store::Statement& row) {
        auto& slots = people_[row.toText(0)];
        const QString name = row.toText(1);
        for (std::size_t i = 0; i < kSlots; ++i) {
            if (names_[i] != name) continue;
            ++slots[i].rows;
            if (!row.isNull(2)) slots[i].amount = row.toMoney(2);
        }
    }

    Slots names_;
    QHash<QString, std::array<Slot, kSlots>> people_;
};

void sumWageItems(const Setting& setting, AutoItem& item) {
    const AutoRun& run = setting.run;
    const Slots ki = setting.items(kBasicPay);
    const Slots te = setting.items(kAllowance);
    const WageSums basicPay(run, kBasicPay, ki);
    const WageSums allowances(run, kAllowance, te);
    for (std::size_t i = 0; i < run.rows.size(); ++i) {
        const Money pay = basicPay.of(run.rows[i].syainCode);
        const Money further = allowances.of(run.rows[i].syainCode);
        item.cells[i] = {pay + further, pay != Money() || further != Money()};
    }
}

}  // namespace

std::optional<AutoItem> kisogaku(const AutoRun& run, Base base) {
    const bool a = base == Base::A;
    AutoItem item{a ? t::S実行個人別計算::基礎額Ａ : t::S実行個人別計算::基礎額Ｂ,
                  a ? t::S実行自動入力判定::基礎額Ａ : t::S実行自動入力判定::基礎額Ｂ,
                  std::vector<AutoCell>(run.rows.size())};
    // Of each way exactly one row answers, or none.
    const auto uses = run.setup.of(run.houshiki).basesOf(base);
    const auto only = [&](design::Method method) -> const design::BaseUse* {
        const auto is = [method](const design::BaseUse& use) { return use.method == method; };
        return std::count_if(uses.begin(), uses.end(), is) == 1 ? &*std::find_if(uses.begin(), uses.end(), is)
                                                                : nullptr;
    };
    const bool byItems = only(design::Method::Derived) != nullptr;
    if (byItems) sumWageItems({run, base}, item);
    if (const auto* uniform = only(design::Method::Uniform)) {
        if (!uniform->uniform) store::throwNull();
        const Money amount = *uniform->uniform;
        std::fill(item.cells.begin(), item.cells.end(), AutoCell{amount, amount != Money()});
    } else if (!byItems) {
        return std::nullopt;
    }
    return item;
}

}  // namespace prep
