#pragma once
#include <QString>
#include <array>
#include <optional>
#include <vector>

#include "domain/run_key.h"
#include "store/connection.h"

/// What a run works on: the kinds of allocation (配分区分), the criteria of each (配分基準), what a criterion
/// pays and who falls under it. Only what the design set-up shows (表示) is ever offered.
namespace design {

struct Kubun {
    QString code;
    QString name;
};
/// The offered 配分区分, ordered by code as a number.
std::vector<Kubun> kubunList(store::Connection& cn);

/// The four kinds of payment, in the order of the screens' options and of the flags of S配分基準.
enum class Houshiki { Kojinbetsu, Sougaku, Kinippu, Tokubetsu };
inline constexpr int kHoushikiCount = 4;
/// The code that the global record carries: "1" to "4".
QString houshikiCode(Houshiki houshiki);

/// Something that holds for some of them.
using PaymentFlags = std::array<bool, kHoushikiCount>;

struct Kijun {
    QString code;
    QString name;
    PaymentFlags uses{};  ///< which kinds of payment the criterion may use
};
/// What a criterion pays as the screens of a run offer it: one that names no kind of payment counts as one
/// with all.
PaymentFlags offeredPayments(const Kijun& kijun);
/// The offered 配分基準 of a 配分区分, ordered by code as a number.
std::vector<Kijun> kijunList(store::Connection& cn, const QString& kubun);
/// One offered criterion; none when it is not there or not shown.
std::optional<Kijun> kijunOf(store::Connection& cn, const QString& kubun, const QString& kijun);

/// Whether anybody falls under the criterion at the reference date.
bool hasEmployees(store::Connection& cn, const domain::RunKey& run);

}  // namespace design
