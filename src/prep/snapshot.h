#pragma once
#include <QDate>
#include <QString>
#include <optional>
#include <vector>

#include "personnel/position_in_force.h"
#include "store/connection.h"

/// The dates of bonus runs: opening a new one, loading one, deleting one.
namespace prep {

/// The two sides of the system keep a list of dates each.
enum class Side {
    Sekkei,  ///< 配分設計: Sデータ取込年月日設計
    Jikkou,  ///< 配分実行: Sデータ取込年月日運用
};
QString dateTable(Side side);

/// All dates of a side in ascending order.
std::vector<QDate> listDates(store::Connection& cn, Side side);
bool hasDate(store::Connection& cn, Side side, QDate kijunbi);
/// The three dates under which `kijunbi` was taken; none when the side has no such date.
std::optional<personnel::PositionDates> readDates(store::Connection& cn, Side side, QDate kijunbi);

/// The snapshot at a date: the position in force of all who are employed at it (leaving on the date itself
/// included). All or nothing: a failure leaves the work tables as they were.
void SelectIntoX(store::Connection& cn, const personnel::PositionDates& dates);
/// Nobody came into the snapshot: the date can hold no run.
bool snapshotIsEmpty(store::Connection& cn);

/// Saves a new date and, when S配分基準対応社員 has no row of it yet, carries the employees' rows forward.
/// Runs in the caller's transaction.
void addDate(store::Connection& cn, Side side, const personnel::PositionDates& dates);
/// Deletes a date; on the run side all its run tables with it. Runs in the caller's transaction.
void removeDate(store::Connection& cn, Side side, QDate kijunbi);

/// What a bonus is called: 賞与の内容 of a date of the run side ("2026年冬季賞与"), empty when it has none.
/// At most 50 bytes.
QString bonusTextOf(store::Connection& cn, QDate kijunbi);
void storeBonusText(store::Connection& cn, QDate kijunbi, const QString& text);
inline constexpr int kBonusTextBytes = 50;

/// What a removal of a date takes with it on the run side.
struct DateContents {
    qint64 people = 0;   ///< under some criterion at the date
    store::Money total;  ///< of all four amounts, computed or typed in, as they are stored
};
DateContents contentsOf(store::Connection& cn, QDate kijunbi);

/// Carrying forward: gives everybody of the snapshot, per table on its own, a new row at `kijunbi` with the
/// 配分区分 and 配分基準 of the latest earlier date (of several rows at it the first one made), and defaults
/// for everything else. Who has no earlier row, or a row at `kijunbi` already, gets none. Runs in the
/// caller's transaction.
void datasakusei(store::Connection& cn, QDate kijunbi);
/// Empties the nine run tables of a date. Tanka_hasuu keeps its row. Runs in the caller's transaction.
void sakusyuukei(store::Connection& cn, QDate kijunbi);

/// The three tables in which an employee of a run has a row.
enum class RunTable { TaiouSyain, KojinBetsu, SougakuHaibun };
inline constexpr RunTable kRunTables[] = {RunTable::TaiouSyain, RunTable::KojinBetsu,
                                          RunTable::SougakuHaibun};
QString runTableName(RunTable table);

/// Makes new rows of a run with the defaults of an employee who starts in it: amounts 0 in S配分基準対応社員;
/// in the other two 10000 for both base amounts, 1 for the 18 coefficients and for 支給係数 or 賞与係数, 評価
/// the empty text. Results stay Null until they are computed. One prepared statement for all rows.
class RunRowWriter {
  public:
    RunRowWriter(store::Connection& cn, RunTable table, QDate kijunbi);
    void add(const QString& syainCode, const store::Value& haibunKubun, const store::Value& haibunKijun);

  private:
    store::Statement insert_;
};

}  // namespace prep
