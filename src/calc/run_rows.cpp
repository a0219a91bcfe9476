#include "calc/run_rows.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

#include "calc/rounding.h"
#include "design/run_filter.h"
#include "schema/catalog.h"

namespace calc {
namespace {

namespace run_t = schema::tables::S実行個人別計算;
namespace pool_t = schema::tables::S実行総額配分;

using domain::Base;
using domain::CoefficientKind;

// Both calculations read and write these positions of their own tables, the coefficients beside them.
static_assert(int{run_t::基礎額Ａ} == int{pool_t::基礎額Ａ} && int{run_t::評価} == int{pool_t::評価} &&
              int{run_t::支給係数} == int{pool_t::賞与係数});

/// Reads the rows of a run: the coefficients that act nowhere are not even looked at.
class RunReader {
  public:
    RunReader(store::Connection& connection, const QString& table, const domain::RunKey& run,
              const ActiveCoefficients& active)
        : active_(active), rows_(connection.prepare(select(table, active))) {
        rows_.bindAll(design::runBinds(run));
    }
    bool next() { return rows_.step(); }
    FrozenRow freeze() {
        FrozenRow frozen;
        frozen.id = rows_.toInteger(0);
        frozen.number = rows_.toInteger(1);
        frozen.syainCode = rows_.toText(2);
        if (active_.useKisoA) frozen.kisoA = rows_.toMoney(read_ = 3);
        if (active_.useKisoB) frozen.kisoB = rows_.toMoney(read_ = 4);
        if (!rows_.isNull(5)) frozen.hyouka = rows_.toText(5);
        if (!rows_.isNull(6)) frozen.payment = rows_.toDouble(6);
        if (!rows_.isNull(7)) frozen.earlierTotal = rows_.toMoney(7);
        int column = 8;
        for (std::size_t k = 0; k < kCoefficients; ++k) {
            const bool acts = active_.a[k] || active_.b[k];
            const double factor = acts ? rows_.toDouble(read_ = column++) : 1.0;
            frozen.keisuuA[k] = active_.a[k] ? factor : 1.0;
            frozen.keisuuB[k] = active_.b[k] ? factor : 1.0;
        }
        return frozen;
    }
    /// Whose row stands, and the column that was read last.
    QString place() const { return rows_.toText(2) + u'　' + rows_.columnName(read_); }

  private:
    static QString select(const QString& table, const ActiveCoefficients& active) {
        const auto& columns = schema::tableNamed(table).columns;
        QStringList names{QStringLiteral("ID, Clng(社員Code), 社員Code, 基礎額Ａ, 基礎額Ｂ, 評価"),
                          columns[run_t::支給係数].name, QStringLiteral("合計")};
        for (const CoefficientKind kind : CoefficientKind::all())
            if (active.a[kind.index()] || active.b[kind.index()]) names << kind.name();
        return QStringLiteral("SELECT %1 FROM %2 WHERE %3").arg(names.join(u','), table, design::kRunFilter);
    }

    const ActiveCoefficients& active_;
    store::Statement rows_;
    int read_ = 0;
};

/// The order of the employees' numbers; rows with the same number keep the order of the table.
template <typename Row>
void sortByNumber(std::vector<Row>& rows) {
    const auto before = [](const Row& left, const Row& right) {
        return std::tie(left.number, left.id) < std::tie(right.number, right.id);
    };
    if (!std::is_sorted(rows.begin(), rows.end(), before)) std::sort(rows.begin(), rows.end(), before);
}

}  // namespace

void throwNoCurrentRow(const QString& cause) {
    throw store::Error(store::Error::Reason::Type, QStringLiteral("現在のレコードがありません。"), cause);
}

void throwNoBudgetRow() {
    throwNoCurrentRow(QStringLiteral("予算の記録がありません。配分基準を選び直してください。"));
}

double checkedFinite(double value) {
    if (!std::isfinite(value)) store::throwOverflow();
    return value;
}

ActiveCoefficients readActiveCoefficients(store::Connection& connection, const domain::RunKey& run,
                                          design::Houshiki houshiki) {
    ActiveCoefficients active;
    const design::Setup setup = design::readSetup(connection, run);
    for (const design::CoefficientUse& use : setup.of(houshiki).coefficients) {
        active.useKisoA |= use.onA;
        active.useKisoB |= use.onB;
        if (!use.kind) continue;
        active.a[use.kind->index()] |= use.onA;
        active.b[use.kind->index()] |= use.onB;
    }
    return active;
}

std::vector<FrozenRow> freezeRunRows(store::Connection& connection, const QString& runTable,
                                     const domain::RunKey& run, const ActiveCoefficients& active) {
    RunReader reader(connection, runTable, run, active);
    std::vector<FrozenRow> frozen;
    while (reader.next()) {
        // The row counter is a 16-bit integer.
        if (frozen.size() == std::numeric_limits<qint16>::max()) store::throwOverflow();
        frozen.push_back(store::named([&] { return reader.place(); }, [&] { return reader.freeze(); }));
    }
    sortByNumber(frozen);
    return frozen;
}

Assignees::Assignees(store::Connection& connection, const domain::RunKey& run, const QString& column,
                     std::size_t needed)
    : connection_(connection), column_(column) {
    auto rows =
        connection.prepare(QStringLiteral("SELECT ID, Clng(社員Code), %1 FROM S配分基準対応社員 WHERE %2")
                               .arg(column, design::kRunFilter));
    rows.bindAll(design::runBinds(run));
    while (rows.step())
        rows_.push_back({rows.toInteger(0), rows.toInteger(1),
                         rows.isNull(2) ? std::nullopt : std::optional(rows.toMoney(2))});
    sortByNumber(rows_);
    if (rows_.size() < needed)
        throwNoCurrentRow(
            QStringLiteral("配分基準に割り当てた社員より、計算の対象のほうが多くなっています。"));
}

store::Value Assignees::write(const std::vector<std::optional<store::Money>>& amounts) {
    auto update =
        connection_.prepare(QStringLiteral("UPDATE S配分基準対応社員 SET %1 = ? WHERE ID = ?").arg(column_));
    for (std::size_t i = 0; i < amounts.size(); ++i) {
        bindOptional(update, 1, amounts[i]);
        update.bind(2, rows_[i].id).run();
    }
    return totalWith(amounts);
}

bool Assignees::hold(const std::vector<std::optional<store::Money>>& amounts) const {
    return std::equal(amounts.begin(), amounts.end(), rows_.begin(),
                      [](const auto& amount, const Row& row) { return amount == row.amount; });
}

store::Value Assignees::totalWith(const std::vector<std::optional<store::Money>>& amounts) const {
    std::optional<store::Money> sum;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const auto& amount = i < amounts.size() ? amounts[i] : rows_[i].amount;
        if (amount) sum = sum.value_or(store::Money()) + *amount;
    }
    return sum ? store::Value(*sum) : store::Value();
}

std::optional<double> Rounding::operator()(double amount) const {
    return roundByTable(amount, tanka, hasuu);
}

Rounding readRounding(store::Connection& connection, const domain::RunKey& run) {
    auto row = connection.prepare(
        QStringLiteral("SELECT 単価, 端数処理 FROM Tanka_hasuu WHERE 基準日 = ? ORDER BY ID LIMIT 1"));
    row.bind(1, store::Value(run.kijunbi));
    if (!row.step())
        throwNoCurrentRow(QStringLiteral("端数処理が未設定です。配分実行メニューで決めてください。"));
    return {row.toText(0), row.toText(1)};
}

void deleteRunRows(store::Connection& connection, const QString& table, const domain::RunKey& run) {
    connection.execute(QStringLiteral("DELETE FROM %1 WHERE %2").arg(table, design::kRunFilter),
                       design::runBinds(run));
}

void bindOptional(store::Statement& statement, int parameter, const std::optional<store::Money>& amount) {
    if (amount)
        statement.bind(parameter, *amount);
    else
        statement.bindNull(parameter);
}

void writeBudgetTotal(store::Connection& connection, const domain::RunKey& run, const QString& column,
                      const store::Value& total) {
    store::Binds binds{total};
    for (const store::Value& value : design::runBinds(run)) binds.push_back(value);
    if (connection.execute(
            QStringLiteral("UPDATE S実行予算 SET %1 = ? WHERE %2").arg(column, design::kRunFilter), binds) ==
        0)
        throwNoBudgetRow();
}

}  // namespace calc
