#pragma once
#include <QString>
#include <array>
#include <optional>
#include <vector>

#include "shell/run_key.h"
#include "store/connection.h"

namespace calc {

/// The filter that names one run in every table of a run, and the values of its three parameters.
inline const QString kRunFilter = QStringLiteral("基準日 = ? AND 配分区分 = ? AND 配分基準 = ?");
store::Binds runBinds(const shell::RunKey& run);

/// The error of a walk that finds no further row: "現在のレコードがありません。".
[[noreturn]] void throwNoCurrentRow();

inline constexpr int kCoefficients = 18;
using Factors = std::array<double, kCoefficients>;

/// Which coefficients act on which base, from S係数設定.
struct ActiveCoefficients {
    bool useKisoA = false;  ///< any row at all is set on base A; without one the base counts 0
    bool useKisoB = false;
    std::array<bool, kCoefficients> a{};
    std::array<bool, kCoefficients> b{};
};
ActiveCoefficients readActiveCoefficients(store::Connection& connection, const shell::RunKey& run,
                                          const QString& santeiHoushiki);

/// One employee's row of a run as the arithmetic sees it: what does not apply is neutral (a base 0, a factor
/// 1).
struct FrozenRow {
    qint64 id = 0;  ///< the row of the run table
    QString syainCode;
    std::optional<QString> hyouka;
    store::Money kisoA, kisoB;
    Factors keisuuA{}, keisuuB{};
    std::optional<double> stored26;        ///< 支給係数 as stored (the pool calculation does not use it)
    std::optional<store::Money> stored30;  ///< the pool's earlier 合計

    /// Base × 18 factors, strictly left to right. Not checked for overflow.
    double productA() const { return product(kisoA, keisuuA); }
    double productB() const { return product(kisoB, keisuuB); }

  private:
    static double product(store::Money base, const Factors& factors) {
        double value = base.toDouble();
        for (double factor : factors) value *= factor;
        return value;
    }
};

/// Reads the rows of a run in the order of Clng(社員Code) and freezes them. Throws Error(Overflow) above
/// 32,767 rows, Error(Type) for a Null in a base or coefficient that acts, and what Clng throws for a
/// 社員Code that is no number.
std::vector<FrozenRow> freezeRunRows(store::Connection& connection, const QString& runTable,
                                     const shell::RunKey& run, const ActiveCoefficients& active);

/// The sum of two products as it goes on, checked: Error(Overflow) for an infinity or NaN.
double checkedFinite(double value);

/// The rows of S配分基準対応社員 of a run with one of their money columns, in the order of Clng(社員Code).
/// They pair with the run's rows by position; nothing compares the codes.
class Assignees {
  public:
    /// Throws Error(Type) "現在のレコードがありません。" when there are fewer than `needed` rows.
    Assignees(store::Connection& connection, const shell::RunKey& run, const QString& column,
              std::size_t needed);
    /// Writes amount i to row i. Rows beyond the amounts keep their value. Returns the sum over all rows,
    /// Nulls left out; Null when no row holds an amount.
    store::Value write(const std::vector<std::optional<store::Money>>& amounts);

  private:
    struct Row {
        qint64 id;
        std::optional<store::Money> amount;
    };
    store::Connection& connection_;
    QString column_;
    std::vector<Row> rows_;
};

/// The run date's rounding. Throws Error(Type) "現在のレコードがありません。" when Tanka_hasuu has no row of
/// the date.
struct Rounding {
    QString tanka;
    QString hasuu;
    std::optional<double> operator()(double amount) const;
};
Rounding readRounding(store::Connection& connection, const shell::RunKey& run);

/// Removes a run's rows of a table.
void deleteRunRows(store::Connection& connection, const QString& table, const shell::RunKey& run);

/// "INSERT INTO <table>(…) VALUES(?,…)" over all columns but the counter: parameter p is position p.
QString insertStatement(const QString& table);

void bindOptional(store::Statement& statement, int parameter, const std::optional<store::Money>& amount);

/// Binds positions 1 to 43 of a decision row.
void bindFrozen(store::Statement& insert, const shell::RunKey& run, const FrozenRow& row);

/// Writes a total into the run's row of S実行予算. Throws Error(Type) when the run has none.
void writeBudgetTotal(store::Connection& connection, const shell::RunKey& run, const QString& column,
                      const store::Value& total);

}  // namespace calc
