#pragma once
#include <QDate>
#include <QString>
#include <vector>

#include "domain/run_key.h"

/// A company to try the program on, made of fixed lists and a random sequence with a fixed seed: two makes
/// with the same options hold the same rows, on every machine.
namespace sample {

/// How the employees are spread over the criteria.
enum class Spread {
    Mixed,         ///< over all criteria, by their position; some without a criterion
    OneCriterion,  ///< everybody who counts stands in kCriterion (individual) of every date: for benchmarks
};

struct SampleOptions {
    QString dataDir;  ///< <program>/Data
    QString company = QStringLiteral("見本商事");
    int employees = 50;      ///< 1 to 999,999
    bool companions = true;  ///< with the files of the wage and the evaluation companion
    bool wageItems =
        true;  ///< base amounts out of wage items: such a company opens only beside the wage companion
    bool earlierRuns = true;  ///< the two earlier dates, imported and computed
    Spread spread = Spread::Mixed;
    bool replace = false;  ///< a company of that name may stand; it goes when the new one is complete
};

/// Makes the whole company beside the Data folder and moves it there when it is complete: Data never holds
/// half a company. Throws store::Error (the company stands, the disk is full …) and leaves nothing behind
/// then.
void makeSampleCompany(const SampleOptions& options);

/// A 配分基準 of the sample and the kinds of payment that it uses.
struct Criterion {
    const char16_t* kubun;
    const char16_t* kubunName;
    const char16_t* kijun;
    const char16_t* kijunName;
    bool kojinbetsu;
    bool sougaku;
    bool kinIppuu;
    bool tokubetsu;
};

/// The criteria that the lists show, in their order.
/// 01/01: both methods; base A out of wage items, payment coefficient by grade (scale 4).
/// 01/02: individual only; base A typed, uniform payment coefficient, grade coefficient (scale 9).
/// 02/01: pool only; base A typed, base B uniform, grade coefficient (scale 11).
/// 02/02: individual; base A uniform, none on B, payment coefficient typed; both typed amounts.
/// 配分区分 09 and 配分基準 01/09 stand beside them with 表示 False.
inline constexpr Criterion kCriteria[] = {
    {u"01", u"正社員賞与", u"01", u"一般社員", true, true, true, false},
    {u"01", u"正社員賞与", u"02", u"管理職", true, false, false, true},
    {u"02", u"嘱託・パート賞与", u"01", u"パート", false, true, false, false},
    {u"02", u"嘱託・パート賞与", u"02", u"嘱託", true, false, true, true},
};
/// The dates of the run side. The first two are computed, the last one waits with its inputs filled in.
inline constexpr int kDates = 3;
QDate kijunbi(int index);      ///< 2025/12/10, 2026/7/10, 2026/12/10
QDate newestKijunbi();         ///< kijunbi(2)
QDate designKijunbi();         ///< the one date of the design side, 2025/10/1
QString bonusText(int index);  ///< 賞与の内容: "2025年冬季賞与" and so on

/// The run of a criterion at a date.
domain::RunKey runKey(const Criterion& criterion, QDate kijunbi);

/// Employees of the sample who have a story. Valid from 50 employees on.
struct People {
    static constexpr const char16_t* kRetiredOnFirstDate =
        u"000009";  ///< 退職日 = kijunbi(0): counts there, then no more
    static constexpr const char16_t* kRetiredBeforeFirst = u"000017";  ///< never counted
    static constexpr const char16_t* kRetiredBetween =
        u"000028";  ///< left between the first and the second date
    static constexpr const char16_t* kFutureTransfer = u"000012";   ///< a transfer after the newest date
    static constexpr const char16_t* kFutureTransfer2 = u"000033";  ///< another one
    static constexpr const char16_t* kPromoted =
        u"000020";  ///< 課長 since the last run: carried in 01/01, belongs to 01/02
    static constexpr const char16_t* kJoinedBetween =
        u"000036";  ///< joined between the first and the second date
    static constexpr const char16_t* kJoinedAfterLastRun =
        u"000050";  ///< no earlier row, unassigned at the newest date
    static constexpr const char16_t* kWithoutTransfer = u"000046";  ///< stands in no list of positions
    static constexpr const char16_t* kLongName = u"000005";         ///< 氏名 of 20 bytes
};

}  // namespace sample
