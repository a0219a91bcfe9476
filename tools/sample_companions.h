#pragma once
#include <array>
#include <vector>

#include "sample_design.h"
#include "sample_people.h"
#include "store/connection.h"

namespace sample {

/// The monthly pay of an employee at one wage date, in yen; 0 for an item that the employee has no row of.
struct Wage {
    QDate date;
    std::array<int, std::size(kBasicPay)> basicPay{};
    std::array<int, std::size(kAllowances)> allowances{};
    /// What a base amount on 設定方法 "3" adds up.
    int baseAmount() const;
};
/// All wage rows of a person, ascending by date; none for people without monthly pay by grade.
std::vector<Wage> wagesOf(const Person& person);

/// The grade of a person's evaluation at one of the dates on which results exist, on the scale of the
/// person's criterion; a null QChar for nobody evaluated.
struct EvaluationDate {
    QDate date;
    const char16_t* bunrui;  ///< 分類Code: 01 summer bonus, 02 winter bonus, 03 raise
};
extern const std::vector<EvaluationDate> kEvaluationDates;
QChar gradeAt(const Person& person, QDate evaluationDate);

/// The tables of the wage companion, reached over the company's main connection.
void writeWages(store::Connection& cn, const std::vector<Person>& people);
/// The tables of the evaluation companion, on a connection of their own file.
void writeEvaluationSheets(store::Connection& hyouka, const std::vector<Person>& people);
/// Ｈ評価実績.
void writeEvaluations(store::Connection& cn, const std::vector<Person>& people);

}  // namespace sample
