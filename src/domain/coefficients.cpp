#include "domain/coefficients.h"

#include <utility>

#include "schema/catalog.h"

namespace t = schema::tables;

namespace domain {
namespace {

namespace run = t::S実行個人別計算;
namespace pool = t::S実行総額配分;
namespace decision = t::S実行個人別計算決定;
namespace pool_decision = t::S実行総額配分決定;
namespace snapshot = t::IdoChuusyutsuMax3;
namespace person = t::履歴書テーブル;
namespace judged = t::S実行自動入力判定;

// Eighteen in a row, at the same places for both calculations.
static_assert(run::入力3係数 - run::年齢係数 + 1 == kCoefficients);
static_assert(+run::年齢係数 == +pool::年齢係数 && +run::入力3係数 == +pool::入力3係数);
static_assert(decision::入力3係数Ａ - decision::年齢係数Ａ + 1 == kCoefficients &&
              decision::入力3係数Ｂ - decision::年齢係数Ｂ + 1 == kCoefficients);
static_assert(+decision::年齢係数Ａ == +pool_decision::年齢係数Ａ &&
              +decision::年齢係数Ｂ == +pool_decision::年齢係数Ｂ &&
              +decision::入力3係数Ｂ == +pool_decision::入力3係数Ｂ);

using Kind = CoefficientKind;
using From = Kind::KeySource;

constexpr std::array<std::optional<Kind::LookUp>, kCoefficients> kLookUps = [] {
    std::array<std::optional<Kind::LookUp>, kCoefficients> all;
    // By the judgment's place: its columns stand in the order of the kinds.
    const auto add = [&](const Kind::LookUp& found) {
        all[static_cast<std::size_t>(found.judgment - judged::年齢係数)] = found;
    };
#define LOOK_UP(table, key, source, employeeKey, kind) \
    add({t::table::kName, t::table::key, From::source, employeeKey, judged::kind})
    LOOK_UP(S係数年齢2, 年齢, Years, snapshot::年齢, 年齢係数);
    LOOK_UP(S係数勤続年数2, 勤続年数, Years, snapshot::勤続年数, 勤続年数係数);
    LOOK_UP(S係数等級, 等級, Position, snapshot::等級, 等級係数);
    LOOK_UP(S係数評価, 評価, Grade, run::評価, 評価係数);
    LOOK_UP(S係数社員区分, 社員区分, Position, snapshot::社員区分, 社員区分係数);
    LOOK_UP(S係数所属大, 所属大, Position, snapshot::所属大, 所属大係数);
    LOOK_UP(S係数役職, 役職, Position, snapshot::役職, 役職係数);
    LOOK_UP(S係数職種, 職種, Position, snapshot::職種, 職種係数);
    LOOK_UP(S係数コース, コース, Position, snapshot::コース, コース係数);
    LOOK_UP(S係数自由1, 自由1, Person, person::自由1, 自由1係数);
    LOOK_UP(S係数自由2, 自由2, Person, person::自由2, 自由2係数);
    LOOK_UP(S係数自由3, 自由3, Person, person::自由3, 自由3係数);
    LOOK_UP(S係数自由4, 自由4, Person, person::自由4, 自由4係数);
    LOOK_UP(S係数自由5, 自由5, Person, person::自由5, 自由5係数);
#undef LOOK_UP
    return all;
}();
static_assert(judged::自由5係数 - judged::年齢係数 == run::自由5係数 - run::年齢係数);

}  // namespace

const std::array<CoefficientKind, kCoefficients>& CoefficientKind::all() {
    static constexpr auto kAll = []<std::size_t... I>(std::index_sequence<I...>) {
        return std::array{CoefficientKind(I)...};
    }
    (std::make_index_sequence<kCoefficients>());
    return kAll;
}

std::optional<CoefficientKind> CoefficientKind::ofCode(const QString& code) {
    const auto kind = ofNumber(code.toInt());
    return kind && kind->code() == code ? kind : std::nullopt;
}

QString CoefficientKind::code() const {
    return QStringLiteral("%1").arg(index_ + 1, 2, 10, QLatin1Char('0'));
}

const QString& CoefficientKind::name() const {
    static const schema::Table& table = schema::tableNamed(QString::fromUtf16(run::kName));
    return table.columns[static_cast<std::size_t>(runPosition())].name;
}

int CoefficientKind::runPosition() const {
    return run::年齢係数 + static_cast<int>(index_);
}

int CoefficientKind::decisionPosition(Base base) const {
    return (base == Base::A ? decision::年齢係数Ａ : decision::年齢係数Ｂ) + static_cast<int>(index_);
}

const std::optional<CoefficientKind::LookUp>& CoefficientKind::lookUp() const {
    return kLookUps[index_];
}

}  // namespace domain
