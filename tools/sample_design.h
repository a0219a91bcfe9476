#pragma once
#include <QString>
#include <optional>
#include <vector>

#include "sample_company.h"
#include "store/connection.h"

namespace sample {

/// A coefficient kind as a criterion uses it under one 算定方式; kinds without a line have no row.
struct CoefficientUse {
    int criterion;
    char16_t method;
    int kind;    ///< 1 to 18
    bool typed;  ///< 入力区分Code "1" run-time input, else "2" automatic
    bool a, b;   ///< acts on base A, on base B
};
extern const std::vector<CoefficientUse> kCoefficientUses;

/// How a base amount of a criterion comes to be.
struct BaseUse {
    int criterion;
    char16_t method;
    char16_t side;  ///< 処理区分: '1' base A, '2' base B
    char16_t way;   ///< 設定方法: '1' typed, '2' uniform, '3' wage items
    int uniform;    ///< yen
};
extern const std::vector<BaseUse> kBaseUses;

/// The payment coefficient of a criterion.
struct PaymentUse {
    int criterion;
    char16_t way;  ///< 設定方法: '1' typed, '2' uniform, '3' by grade
    const char16_t* hyougoType;
    int uniform;  ///< thousandths
};
extern const std::vector<PaymentUse> kPaymentUses;

/// Wage items of base amounts on 設定方法 "3".
inline constexpr const char16_t* kBasicPay[] = {u"本給", u"職能給"};
inline constexpr const char16_t* kAllowances[] = {u"役職手当", u"家族手当", u"通勤手当"};
inline constexpr int kAllowancesInBase = 1;  ///< only 役職手当 counts

/// The letters of a 評語タイプ, best first.
QString scaleOf(int hyougoType);
/// The scale of a criterion's grades; none where the criterion uses no grades.
std::optional<int> hyougoTypeOf(int criterion);

/// The entry of a look-up table in thousandths; none where the table has no such key.
std::optional<int> coefficientOf(int criterion, int kind, const QString& key);
/// 支給係数 of a grade in thousandths.
int paymentOf(int criterion, QChar grade);

/// All design set-up tables.
void writeDesign(store::Connection& cn, bool wageItems);

}  // namespace sample
