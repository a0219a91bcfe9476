#include "sample_inputs.h"

#include "sample_companions.h"
#include "sample_random.h"

namespace sample {
namespace {

constexpr int kRuns = 64;  ///< sequences of a person: more than there are dates, methods and criteria

Random runRandom(const Person& person, char16_t method, QDate kijunbi) {
    return Random(
        person.number * kRuns + (kijunbi.year() % 4) * 16 + kijunbi.month() + (method == u'2' ? 1 : 0),
        Purpose::RunInput);
}

QString textOf(const char16_t* code) {
    return code ? QString::fromUtf16(code) : QString();
}

/// The employee's key of a look-up table; empty for none.
QString keyOf(const Person& person, const Position& position, int kind, const QString& grade, QDate kijunbi) {
    switch (kind) {
        case 1:
            return QString::number(wholeYears(person.birth, kijunbi));
        case 2:
            return QString::number(wholeYears(person.joined, kijunbi));
        case 3:
            return position.toukyuu > 0 ? QString::number(position.toukyuu) : QString();
        case 4:
            return grade;
        case 6:
            return textOf(position.syainKubun);
        case 7:
            return textOf(position.syozokuDai);
        case 8:
            return textOf(position.yakusyoku);
        case 9:
            return textOf(position.syokusyu);
        case 10:
            return textOf(position.course);
        case 11:
            return textOf(person.jiyuu1);
        case 12:
            return textOf(person.jiyuu2);
        case 13:
            return textOf(person.jiyuu3);
        default:
            return {};
    }
}

/// A coefficient that somebody typed: mostly 1.
double typedCoefficient(int kind, Random& random) {
    if (kind == 5) return random.chance(75) ? 1.0 : (900 + 10 * random.below(10)) / 1000.0;
    return random.chance(80) ? 1.0 : (950 + 25 * random.below(5)) / 1000.0;
}

int typedBase(const Person& person, int criterion, Random& random) {
    switch (criterion) {
        case 1:
            return 380000 + (person.number % 7) * 15000 + random.below(20) * 1000;
        case 2:
            return 60000 + random.below(60) * 1000;
        default:
            return 20000 + random.below(10) * 1000;
    }
}

int wageBase(const Person& person, QDate kijunbi) {
    int yen = 0;
    for (const Wage& wage : wagesOf(person))
        if (wage.date <= kijunbi) yen = wage.baseAmount();
    return yen;
}

int baseOf(const BaseUse& use, const Person& person, QDate kijunbi, Random& random) {
    switch (use.way) {
        case u'3':
            return wageBase(person, kijunbi);
        case u'2':
            return use.uniform;
        default:
            return typedBase(person, use.criterion, random);
    }
}

/// The grade of the latest bonus evaluation before the date; the middle of the scale for who has none.
QString gradeFor(const Person& person, int criterion, QDate kijunbi) {
    const QString scale = scaleOf(hyougoTypeOf(criterion).value_or(0));
    if (scale.isEmpty()) return {};
    QChar grade;
    for (const EvaluationDate& evaluation : kEvaluationDates)
        if (evaluation.date < kijunbi && QString::fromUtf16(evaluation.bunrui) != QStringLiteral("03"))
            grade = gradeAt(person, evaluation.date);
    return scale.contains(grade) && !grade.isNull() ? QString(grade) : QString(scale[(scale.size() - 1) / 2]);
}

bool usesGrade(int criterion, char16_t method) {
    for (const PaymentUse& use : kPaymentUses)
        if (method == u'1' && use.criterion == criterion && use.way == u'3') return true;
    for (const CoefficientUse& use : kCoefficientUses)
        if (use.criterion == criterion && use.method == method && use.kind == 4) return true;
    return false;
}

double paymentFor(int criterion, const QString& grade, Random& random) {
    for (const PaymentUse& use : kPaymentUses) {
        if (use.criterion != criterion) continue;
        if (use.way == u'3') return paymentOf(criterion, grade[0]) / 1000.0;
        return use.way == u'2' ? use.uniform / 1000.0 : (1000 + 100 * random.below(6)) / 1000.0;
    }
    return 1;
}

}  // namespace

RunInputs inputsOf(const Person& person, int criterion, char16_t method, QDate kijunbi) {
    RunInputs inputs;
    inputs.coefficients.fill(1.0);
    const Position* const position = positionAt(person, kijunbi);
    const bool used = method == u'1' ? kCriteria[criterion].kojinbetsu : kCriteria[criterion].sougaku;
    if (!position || !used) return inputs;
    Random random = runRandom(person, method, kijunbi);
    for (const BaseUse& use : kBaseUses)
        if (use.criterion == criterion && use.method == method)
            (use.side == u'1' ? inputs.baseA : inputs.baseB) = baseOf(use, person, kijunbi, random);
    if (usesGrade(criterion, method)) inputs.grade = gradeFor(person, criterion, kijunbi);
    for (const CoefficientUse& use : kCoefficientUses) {
        if (use.criterion != criterion || use.method != method) continue;
        double& coefficient = inputs.coefficients[static_cast<std::size_t>(use.kind - 1)];
        const std::optional<int> found =
            coefficientOf(criterion, use.kind, keyOf(person, *position, use.kind, inputs.grade, kijunbi));
        if (use.typed)
            coefficient = typedCoefficient(use.kind, random);
        else if (found)
            coefficient = *found / 1000.0;
    }
    if (method == u'1') inputs.payment = paymentFor(criterion, inputs.grade, random);
    return inputs;
}

TypedAmounts typedAmountsOf(const Person& person, int criterion, QDate kijunbi) {
    Random random = runRandom(person, u'3', kijunbi);
    TypedAmounts amounts;
    if (kCriteria[criterion].kinIppuu && random.chance(30)) amounts.kinIppuu = 5000 * random.between(1, 6);
    if (kCriteria[criterion].tokubetsu && random.chance(40)) amounts.tokubetsu = 10000 * random.between(1, 5);
    return amounts;
}

}  // namespace sample
