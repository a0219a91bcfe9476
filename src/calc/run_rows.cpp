#include "calc/run_rows.h"

#include <cmath>
#include <limits>

#include "calc/rounding.h"
#include "store/catalog.h"

namespace calc {
namespace {

namespace run_t = store::tables::S実行個人別計算;
namespace pool_t = store::tables::S実行総額配分;
namespace decision_t = store::tables::S実行個人別計算決定;
namespace pool_decision_t = store::tables::S実行総額配分決定;

// Both calculations read and write these positions of their own tables.
static_assert(int{run_t::基礎額Ａ} == int{pool_t::基礎額Ａ} &&
              int{run_t::年齢係数} == int{pool_t::年齢係数} && int{run_t::評価} == int{pool_t::評価} &&
              int{run_t::支給係数} == int{pool_t::賞与係数});
static_assert(int{decision_t::年齢係数Ａ} == int{pool_decision_t::年齢係数Ａ} &&
              int{decision_t::年齢係数Ｂ} == int{pool_decision_t::年齢係数Ｂ} &&
              int{decision_t::評価} == int{pool_decision_t::評価});
static_assert(run_t::入力3係数 - run_t::年齢係数 + 1 == kCoefficients);
static_assert(decision_t::入力3係数Ｂ - decision_t::年齢係数Ｂ + 1 == kCoefficients);

Factors readFactors(const store::Statement& row, const std::array<bool, kCoefficients>& active) {
    Factors factors;
    for (int k = 0; k < kCoefficients; ++k) {
        const auto i = static_cast<std::size_t>(k);
        factors[i] = active[i] ? row.toDouble(run_t::年齢係数 + k) : 1.0;
    }
    return factors;
}

FrozenRow freeze(const store::Statement& row, const ActiveCoefficients& active) {
    FrozenRow frozen;
    frozen.id = row.toInteger(run_t::ID);
    frozen.syainCode = row.toText(run_t::社員Code);
    if (!row.isNull(run_t::評価)) frozen.hyouka = row.toText(run_t::評価);
    if (active.useKisoA) frozen.kisoA = row.toMoney(run_t::基礎額Ａ);
    if (active.useKisoB) frozen.kisoB = row.toMoney(run_t::基礎額Ｂ);
    frozen.keisuuA = readFactors(row, active.a);
    frozen.keisuuB = readFactors(row, active.b);
    if (!row.isNull(run_t::支給係数)) frozen.stored26 = row.toDouble(run_t::支給係数);
    if (row.columnCount() > pool_t::合計 && !row.isNull(pool_t::合計))
        frozen.stored30 = row.toMoney(pool_t::合計);
    return frozen;
}

void bindFactors(store::Statement& insert, int first, const Factors& factors) {
    for (double factor : factors) insert.bind(first++, factor);
}

}  // namespace

store::Binds runBinds(const shell::RunKey& run) {
    return {run.kijunbi, run.haibunKubun, run.haibunKijun};
}

void throwNoCurrentRow() {
    throw store::Error(store::Error::Reason::Type, QStringLiteral("現在のレコードがありません。"));
}

double checkedFinite(double value) {
    if (!std::isfinite(value)) store::throwOverflow();
    return value;
}

ActiveCoefficients readActiveCoefficients(store::Connection& connection, const shell::RunKey& run,
                                          const QString& santeiHoushiki) {
    auto rows = connection.prepare(QStringLiteral(
        "SELECT 設定名称, coalesce(基礎額Ａ, 0) <> 0, coalesce(基礎額Ｂ, 0) <> 0 FROM S係数設定"
        " WHERE 配分区分Code = ? AND 配分基準Code = ? AND 算定方式 = ?"));
    rows.bindAll({run.haibunKubun, run.haibunKijun, santeiHoushiki});
    ActiveCoefficients active;
    while (rows.step()) {
        const bool onA = rows.toInteger(1) != 0;
        const bool onB = rows.toInteger(2) != 0;
        active.useKisoA |= onA;
        active.useKisoB |= onB;
        const QString name = rows.toText(0);
        for (std::size_t k = 0; k < kCoefficients; ++k) {
            if (name != QStringLiteral("%1").arg(k + 1, 2, 10, QLatin1Char('0'))) continue;
            active.a[k] |= onA;
            active.b[k] |= onB;
        }
    }
    return active;
}

std::vector<FrozenRow> freezeRunRows(store::Connection& connection, const QString& runTable,
                                     const shell::RunKey& run, const ActiveCoefficients& active) {
    auto rows = connection.prepare(
        QStringLiteral("SELECT * FROM %1 WHERE %2 ORDER BY Clng(社員Code), ID").arg(runTable, kRunFilter));
    rows.bindAll(runBinds(run));
    std::vector<FrozenRow> frozen;
    while (rows.step()) {
        // The row counter is a 16-bit integer.
        if (frozen.size() == std::numeric_limits<qint16>::max()) store::throwOverflow();
        frozen.push_back(freeze(rows, active));
    }
    return frozen;
}

Assignees::Assignees(store::Connection& connection, const shell::RunKey& run, const QString& column,
                     std::size_t needed)
    : connection_(connection), column_(column) {
    auto rows = connection.prepare(
        QStringLiteral("SELECT ID, %1 FROM S配分基準対応社員 WHERE %2 ORDER BY Clng(社員Code), ID")
            .arg(column, kRunFilter));
    rows.bindAll(runBinds(run));
    while (rows.step())
        rows_.push_back({rows.toInteger(0), rows.isNull(1) ? std::nullopt : std::optional(rows.toMoney(1))});
    if (rows_.size() < needed) throwNoCurrentRow();
}

store::Value Assignees::write(const std::vector<std::optional<store::Money>>& amounts) {
    auto update =
        connection_.prepare(QStringLiteral("UPDATE S配分基準対応社員 SET %1 = ? WHERE ID = ?").arg(column_));
    for (std::size_t i = 0; i < amounts.size(); ++i) {
        rows_[i].amount = amounts[i];
        bindOptional(update, 1, amounts[i]);
        update.bind(2, rows_[i].id).run();
    }
    std::optional<store::Money> sum;
    for (const Row& row : rows_)
        if (row.amount) sum = sum.value_or(store::Money()) + *row.amount;
    return sum ? store::Value(*sum) : store::Value();
}

std::optional<double> Rounding::operator()(double amount) const {
    return roundByTable(amount, tanka, hasuu);
}

Rounding readRounding(store::Connection& connection, const shell::RunKey& run) {
    auto row = connection.prepare(
        QStringLiteral("SELECT 単価, 端数処理 FROM Tanka_hasuu WHERE 基準日 = ? ORDER BY ID LIMIT 1"));
    row.bind(1, store::Value(run.kijunbi));
    if (!row.step()) throwNoCurrentRow();
    return {row.toText(0), row.toText(1)};
}

void deleteRunRows(store::Connection& connection, const QString& table, const shell::RunKey& run) {
    connection.execute(QStringLiteral("DELETE FROM %1 WHERE %2").arg(table, kRunFilter), runBinds(run));
}

QString insertStatement(const QString& table) {
    QStringList names;
    QStringList marks;
    const auto& columns = store::tableNamed(table).columns;
    for (std::size_t position = 1; position < columns.size(); ++position) {
        names << columns[position].name;
        marks << QStringLiteral("?");
    }
    return QStringLiteral("INSERT INTO %1(%2) VALUES(%3)").arg(table, names.join(u','), marks.join(u','));
}

void bindOptional(store::Statement& statement, int parameter, const std::optional<store::Money>& amount) {
    if (amount)
        statement.bind(parameter, *amount);
    else
        statement.bindNull(parameter);
}

void bindFrozen(store::Statement& insert, const shell::RunKey& run, const FrozenRow& row) {
    insert.bind(decision_t::社員Code, store::Value(row.syainCode));
    insert.bind(decision_t::配分区分, store::Value(run.haibunKubun));
    insert.bind(decision_t::配分基準, store::Value(run.haibunKijun));
    insert.bind(decision_t::基準日, store::Value(run.kijunbi));
    insert.bind(decision_t::基礎額Ａ, row.kisoA);
    bindFactors(insert, decision_t::年齢係数Ａ, row.keisuuA);
    insert.bind(decision_t::基礎額Ｂ, row.kisoB);
    bindFactors(insert, decision_t::年齢係数Ｂ, row.keisuuB);
    insert.bind(decision_t::評価, row.hyouka ? store::Value(*row.hyouka) : store::Value());
}

void writeBudgetTotal(store::Connection& connection, const shell::RunKey& run, const QString& column,
                      const store::Value& total) {
    store::Binds binds{total};
    for (const store::Value& value : runBinds(run)) binds.push_back(value);
    if (connection.execute(QStringLiteral("UPDATE S実行予算 SET %1 = ? WHERE %2").arg(column, kRunFilter),
                           binds) == 0)
        throwNoCurrentRow();
}

}  // namespace calc
