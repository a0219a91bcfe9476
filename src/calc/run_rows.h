#pragma once
#include <QString>
#include <array>
#include <optional>
#include <vector>

#include "design/setup.h"
#include "domain/coefficients.h"
#include "domain/run_key.h"
#include "store/connection.h"

namespace calc {

/// The error of a walk that finds no further row: "現在のレコードがありません。". `cause` says what is
/// missing and where it is put right.
[[noreturn]] void throwNoCurrentRow(const QString& cause);
[[noreturn]] void throwNoBudgetRow();  ///< the run has no row in S実行予算

using domain::kCoefficients;
using Factors = std::array<double, kCoefficients>;

/// Which coefficients act on which base.
struct ActiveCoefficients {
    bool useKisoA = false;  ///< any row at all is set on base A; without one the base counts 0
    bool useKisoB = false;
    std::array<bool, kCoefficients> a{};
    std::array<bool, kCoefficients> b{};
};
ActiveCoefficients readActiveCoefficients(store::Connection& connection, const domain::RunKey& run,
                                          design::Houshiki houshiki);

/// One employee's row of a run as the arithmetic sees it: what does not apply is neutral (a base 0, a factor
/// 1).
struct FrozenRow {
    qint64 id = 0;      ///< the row of the run table
    qint64 number = 0;  ///< Clng(社員Code)
    QString syainCode;
    std::optional<QString> hyouka;
    store::Money kisoA, kisoB;
    Factors keisuuA{}, keisuuB{};
    std::optional<double> payment;  ///< position 26 as stored: 支給係数 (the pool's 賞与係数 is not used)
    std::optional<store::Money> earlierTotal;  ///< 合計 of an earlier calculation

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
                                     const domain::RunKey& run, const ActiveCoefficients& active);

/// The value itself; Error(Overflow) for an infinity or NaN. Both survive every further product, so that the
/// end of a chain tells about all of it.
double checkedFinite(double value);

/// The rows of S配分基準対応社員 of a run with one of their money columns, in the order of Clng(社員Code).
/// They pair with the run's rows by position; nothing compares the codes.
class Assignees {
  public:
    /// Throws Error(Type) "現在のレコードがありません。" when there are fewer than `needed` rows.
    Assignees(store::Connection& connection, const domain::RunKey& run, const QString& column,
              std::size_t needed);
    /// Writes amount i to row i. Rows beyond the amounts keep their value. Returns the sum over all rows,
    /// Nulls left out; Null when no row holds an amount.
    store::Value write(const std::vector<std::optional<store::Money>>& amounts);
    /// The sum that write() would return, without writing.
    store::Value totalWith(const std::vector<std::optional<store::Money>>& amounts) const;
    /// Whether write() would leave every row as it is.
    bool hold(const std::vector<std::optional<store::Money>>& amounts) const;

  private:
    struct Row {
        qint64 id = 0;
        qint64 number = 0;
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
Rounding readRounding(store::Connection& connection, const domain::RunKey& run);

/// Removes a run's rows of a table.
void deleteRunRows(store::Connection& connection, const QString& table, const domain::RunKey& run);

void bindOptional(store::Statement& statement, int parameter, const std::optional<store::Money>& amount);

/// Writes a total into the run's row of S実行予算. Throws Error(Type) when the run has none.
void writeBudgetTotal(store::Connection& connection, const domain::RunKey& run, const QString& column,
                      const store::Value& total);

}  // namespace calc
