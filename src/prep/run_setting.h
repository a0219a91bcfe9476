#pragma once
#include <QDate>

#include "store/connection.h"

namespace prep {

/// Unit and rounding mode of one run: the row of Tanka_hasuu of its date, created with 1円 and 四捨五入 where
/// it is missing. A row outlives its date and is found again when the date is taken anew.
class RunSetting {
  public:
    static constexpr int kUnits = 5;      ///< 1, 10, 100, 1000, 10000 yen
    static constexpr int kRoundings = 3;  ///< 四捨五入, 切り上げ, 切り捨て

    /// Creates the row when there is none. `cn` must outlive the setting.
    RunSetting(store::Connection& cn, QDate kijunbi);

    int unit() const;      ///< 0 to 4; -1 for a value that is no unit
    int rounding() const;  ///< 0 to 2; -1 for a value that is no mode
    /// Stores both choices; -1 leaves what is stored.
    void save(int unit, int rounding);

  private:
    store::Connection& cn_;
    QDate kijunbi_;
    store::Recordset row_;
};

}  // namespace prep
