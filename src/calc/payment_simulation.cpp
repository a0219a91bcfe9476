#include "calc/payment_simulation.h"

#include "calc/run_rows.h"

namespace calc {
namespace {

double ratio(const QString& corrected, const QString& registered) {
    const double divisor = coefficientOfText(registered);
    if (divisor == 0)
        throw store::Error(store::Error::Reason::DivideByZero, QStringLiteral("0 で除算しました。"),
                           QStringLiteral("登録値が 0.000 の係数は修正できません。"));
    return checkedFinite(coefficientOfText(corrected) / divisor);
}

}  // namespace

double coefficientOfText(const QString& text) {
    return store::Value(text).toDouble();
}

std::optional<int> gradeIndex(const QString& hyougoType, const QString& grade) {
    static const QStringList scales{
        QStringLiteral("SABCDEFGH"), QStringLiteral("SABCDEFG"), QStringLiteral("SABCDEF"),
        QStringLiteral("SABCDE"),    QStringLiteral("SABCD"),    QStringLiteral("SABC"),
        QStringLiteral("ABCDEFG"),   QStringLiteral("ABCDEF"),   QStringLiteral("ABCDE"),
        QStringLiteral("ABCD"),      QStringLiteral("ABC"),      QStringLiteral("AB")};
    bool isNumber = false;
    const double type = hyougoType.toDouble(&isNumber);
    for (qsizetype i = 0; isNumber && grade.size() == 1 && i < scales.size(); ++i)
        if (type == static_cast<double>(i + 1)) {
            const auto place = scales[i].indexOf(grade);
            return place < 0 ? std::nullopt : std::optional(static_cast<int>(place));
        }
    return std::nullopt;
}

RegisteredGrades readRegisteredGrades(store::Connection& connection, const domain::RunKey& run) {
    auto rows = connection.prepare(QStringLiteral(
        "SELECT 評価 FROM S支給係数評価あり WHERE 配分区分 = ? AND 配分基準 = ? AND 評価 IS NOT NULL"));
    rows.bindAll({run.haibunKubun, run.haibunKijun});
    RegisteredGrades registered;
    while (rows.step()) ++registered[rows.toText(0)];
    return registered;
}

double EffectiveCoefficient::ratioOf(const QString& grade) const {
    if (simulation_.mode == PaymentSimulation::Mode::Uniform)
        return ratio(simulation_.uniformCorrected, simulation_.uniformRegistered);
    const auto index = gradeIndex(simulation_.hyougoType, grade);
    // The employee's coefficient stays unset, and an unset number cannot be calculated with.
    if (registered_.value(grade) != 1 || !index)
        throw store::Error(store::Error::Reason::Type, QString::fromUtf16(store::kNullText),
                           grade.isEmpty()
                               ? QStringLiteral("評価が入っていません。")
                               : QStringLiteral("評価「%1」の支給係数が一つに決まりません。").arg(grade));
    const PanelGrade& row = simulation_.grades[static_cast<std::size_t>(*index)];
    return ratio(row.corrected, row.registered);
}

double EffectiveCoefficient::of(const QString& grade, double stored) {
    if (simulation_.mode == PaymentSimulation::Mode::Closed) return stored;
    const QString key = simulation_.mode == PaymentSimulation::Mode::Uniform ? QString() : grade;
    auto known = ratios_.constFind(key);
    if (known == ratios_.constEnd()) known = ratios_.insert(key, ratioOf(grade));
    return *known * stored;
}

}  // namespace calc
