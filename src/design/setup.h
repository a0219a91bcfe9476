#pragma once
#include <QString>
#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

#include "design/criteria.h"
#include "domain/coefficients.h"
#include "store/connection.h"

/// The set-up of a criterion as those who run it read it: what its bases, coefficients and its payment
/// coefficient are made of. Read once, one ordered query a table; what the tables hold beyond the codes that
/// are known here stays visible and is told apart (Other), so that a companion's row never passes for
/// another.
namespace design {

using domain::Base;

/// How a coefficient of a base gets its value (入力区分Code).
enum class Input {
    None,       ///< Null
    Typed,      ///< "1": at the run
    Automatic,  ///< "2": from its look-up table
    Other,
};
/// How a base amount or the payment coefficient is set (設定方法).
enum class Method {
    None,     ///< Null
    Typed,    ///< "1": at the run
    Uniform,  ///< "2": one for all
    Derived,  ///< "3": a base is the sum of wage items, the payment coefficient goes by the grade
    Other,
};

/// A coefficient that the criterion uses.
struct CoefficientUse {
    QString code;                                 ///< 設定名称 as it stands
    std::optional<domain::CoefficientKind> kind;  ///< none where the code is of no kind
    QString name;                                 ///< as the criterion calls it
    Input input = Input::None;
    bool onA = false;  ///< acts on base A
    bool onB = false;
    bool acts() const { return onA || onB; }
    bool actsOn(Base base) const { return base == Base::A ? onA : onB; }
    /// 評価係数, filled by the employee's grade.
    bool isAutomaticGrade() const { return kind == domain::kGradeCoefficient && input == Input::Automatic; }
};

/// One way of setting a base amount.
struct BaseUse {
    std::optional<Base> base;  ///< none where 処理区分 is neither
    Method method = Method::None;
    std::optional<store::Money> uniform;  ///< 一律金額, the amount of Method::Uniform
};

/// What a criterion uses under one 算定方式; empty for those that have neither bases nor coefficients.
struct MethodSetup {
    std::vector<CoefficientUse> coefficients;  ///< in the order in which they were set up
    std::vector<BaseUse> bases;                ///< likewise

    template <typename Condition>
    bool anyCoefficient(Condition condition) const {
        return std::any_of(coefficients.begin(), coefficients.end(), condition);
    }
    /// Those that meet the condition, in the order of their codes as numbers. Throws store::Error where one
    /// of these codes is no 16-bit number.
    template <typename Condition>
    std::vector<CoefficientUse> inOrder(Condition condition) const {
        std::vector<CoefficientUse> found;
        std::copy_if(coefficients.begin(), coefficients.end(), std::back_inserter(found), condition);
        return sorted(std::move(found));
    }
    /// Whether a coefficient acts on the base; without one the base counts nothing.
    bool baseActs(Base base) const;
    /// The rows of the base; automatic input acts where exactly one has its method.
    std::vector<BaseUse> basesOf(Base base) const;

  private:
    static std::vector<CoefficientUse> sorted(std::vector<CoefficientUse> coefficients);
};

/// One way of setting the payment coefficient (支給係数).
struct PaymentUse {
    std::optional<QString> methodCode;  ///< 設定方法 as it stands
    Method method = Method::None;
    std::optional<QString> gradeScale;  ///< 評語タイプ: which words the grades are
    std::optional<double> uniform;      ///< 一律係数, the coefficient of Method::Uniform
};

struct Setup {
    std::array<MethodSetup, kHoushikiCount> methods;
    std::vector<PaymentUse> payments;   ///< of 個人別計算, in the order in which they were set up
    std::optional<QString> gradeScale;  ///< 評語タイプ of 評価係数; none where it is not set up

    const MethodSetup& of(Houshiki houshiki) const& { return methods[static_cast<std::size_t>(houshiki)]; }
    MethodSetup of(Houshiki houshiki) && { return std::move(methods[static_cast<std::size_t>(houshiki)]); }
    /// By the code that the global record carries; nothing is set up under any other.
    MethodSetup of(const QString& santeiHoushiki) const&;
    std::vector<PaymentUse> paymentsBy(Method method) const;
};
/// What is set up for 配分区分 and 配分基準 of the run; the date plays no part.
/// Throws store::Error.
Setup readSetup(store::Connection& cn, const domain::RunKey& run);

}  // namespace design
