#pragma once
#include <vector>

#include "calc/run_rows.h"
#include "design/criteria.h"

/// What the latest calculation of a run decided, one row per employee in S実行個人別計算決定 or
/// S実行総額配分決定: its inputs with everything neutral that does not apply, and its results. Written and
/// read here alone; `houshiki` is Kojinbetsu or Sougaku.
namespace calc {

/// The decision table of a 算定方式.
const QString& decisionTable(design::Houshiki houshiki);

struct DecisionRow {
    QString syainCode;
    std::optional<double> keisuu;  ///< the effective 支給係数; of the pool its 賞与係数
};
/// In the order in which they were written.
std::vector<DecisionRow> decisionRows(store::Connection& connection, const domain::RunKey& run,
                                      design::Houshiki houshiki);
/// Whether the run was calculated and somebody was in it.
bool isDecided(store::Connection& connection, const domain::RunKey& run, design::Houshiki houshiki);

/// Inserts decision rows. What is the same for the whole run is bound once.
class DecisionInsert {
  public:
    DecisionInsert(store::Connection& connection, design::Houshiki houshiki, const domain::RunKey& run,
                   const ActiveCoefficients& active);
    /// Binds positions 1 to 43 of a row. The caller binds the rest, parameter p being position p, and runs
    /// it.
    store::Statement& bind(const FrozenRow& row);

  private:
    struct Acting {
        std::size_t index;  ///< of the kind
        int parameter;
    };
    std::vector<Acting> actingA_, actingB_;
    store::Statement insert_;
};

}  // namespace calc
