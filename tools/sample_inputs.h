#pragma once
#include <QString>
#include <array>
#include <vector>

#include "sample_design.h"
#include "sample_people.h"

namespace sample {

/// What stands in an employee's run row before a calculation.
struct RunInputs {
    int baseA = 10000;  ///< yen
    int baseB = 10000;
    std::array<double, 18> coefficients{};  ///< by kind, from 0
    QString grade;
    double payment = 1;
};

/// The inputs of a person in a criterion at a date, as automatic and typed input would leave them. `method`
/// is '1' for the individual row, '2' for the pool row.
RunInputs inputsOf(const Person& person, int criterion, char16_t method, QDate kijunbi);

/// 金一封 and 特別加算金 of a person, in yen.
struct TypedAmounts {
    int kinIppuu = 0;
    int tokubetsu = 0;
};
TypedAmounts typedAmountsOf(const Person& person, int criterion, QDate kijunbi);

}  // namespace sample
