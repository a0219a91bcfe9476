#include "calc/shikyuu_store.h"

#include "calc/run_rows.h"
#include "design/run_filter.h"
#include "design/setup.h"
#include "schema/catalog.h"

namespace calc {
namespace {

store::Binds criterionBinds(const domain::RunKey& run) {
    return {run.haibunKubun, run.haibunKijun};
}

/// "##,##0.000", empty for Null.
QString coefficientText(const store::Statement& row, int column) {
    return row.isNull(column) ? QString() : store::formatCoefficient(row.toDouble(column));
}

/// The payment set-up of a criterion: the first of its rows counts.
std::optional<design::PaymentUse> paymentOf(const design::Setup& setup) {
    return setup.payments.empty() ? std::nullopt : std::optional(setup.payments.front());
}
QString uniformText(const design::PaymentUse& payment) {
    return payment.uniform ? store::formatCoefficient(*payment.uniform) : QString();
}

store::Value valueOf(const std::optional<QString>& text) {
    return text ? store::Value(*text) : store::Value();
}

/// A row over all columns behind the counter; the set-up that they come from is written by a companion.
void insert(store::Connection& connection, const QString& name, const store::Binds& values) {
    const schema::Table& table = schema::tableNamed(name);
    QStringList columns;
    for (std::size_t i = 1; i < table.columns.size(); ++i) columns << table.columns[i].name;
    const QStringList marks(columns.size(), QStringLiteral("?"));
    connection
        .prepare(
            QStringLiteral("INSERT INTO %1(%2) VALUES(%3)").arg(name, columns.join(u','), marks.join(u',')))
        .into(schema::typesOf(table, columns))
        .bindAll(values)
        .run();
}

void storeUniform(store::Connection& connection, const domain::RunKey& run, const QString& text4) {
    const auto payment = paymentOf(design::readSetup(connection, run));
    if (!payment) throwNoCurrentRow(QStringLiteral("支給係数が設定されていません。"));
    insert(connection, QString::fromUtf16(schema::tables::Sshikyuukeisuu::kName),
           {run.haibunKubun, run.haibunKijun, valueOf(payment->methodCode), valueOf(payment->gradeScale),
            text4.isEmpty() ? 1.0 : coefficientOfText(text4), run.kijunbi});
}

void storeGrade(store::Connection& connection, const domain::RunKey& run, const PanelGrade& grade) {
    auto row =
        connection.prepare(QStringLiteral("SELECT 評価 FROM S支給係数評価あり WHERE 配分区分 = ? AND "
                                          "配分基準 = ? AND 評価Code = ? ORDER BY ID LIMIT 1"));
    row.bindAll({run.haibunKubun, run.haibunKijun, grade.hyoukaCode});
    if (!row.step())
        throwNoCurrentRow(
            QStringLiteral("評価「%1」の支給係数が登録からなくなっています。").arg(grade.hyouka));
    insert(connection, QString::fromUtf16(schema::tables::SshikyuukeisuuHA::kName),
           {run.haibunKubun, run.haibunKijun, row.value(0), coefficientOfText(grade.corrected),
            grade.hyoukaCode, run.kijunbi});
}

/// The names of 評価係数 in the individual calculation's set-up: one row means that it acts.
QStringList evaluationCoefficients(const design::Setup& setup) {
    QStringList names;
    for (const design::CoefficientUse& use : setup.of(design::Houshiki::Kojinbetsu).coefficients)
        if (use.kind == domain::kGradeCoefficient) names << use.name;
    return names;
}

bool hasGradeTable(store::Connection& connection, const domain::RunKey& run) {
    auto row = connection.prepare(
        QStringLiteral("SELECT Count(*) FROM S係数評価 WHERE 配分区分 = ? AND 配分基準 = ?"));
    row.bindAll(criterionBinds(run));
    return row.step() && row.toInteger(0) >= 2;
}

UniformPanel uniformPanel(store::Connection& connection, const domain::RunKey& run,
                          const QString& registered) {
    auto row =
        connection.prepare(QStringLiteral("SELECT 一律係数 FROM Sshikyuukeisuu WHERE %1 ORDER BY ID LIMIT 1")
                               .arg(design::kRunFilter));
    row.bindAll(design::runBinds(run));
    return {registered, row.step() ? coefficientText(row, 0) : registered};
}

std::vector<PanelGrade> registeredGrades(store::Connection& connection, const domain::RunKey& run) {
    auto rows =
        connection.prepare(QStringLiteral("SELECT 評価, 支給係数, 評価Code FROM S支給係数評価あり WHERE "
                                          "配分区分 = ? AND 配分基準 = ? ORDER BY Cint(評価Code), ID"));
    rows.bindAll(criterionBinds(run));
    std::vector<PanelGrade> grades;
    while (rows.step()) {
        const QString registered = coefficientText(rows, 1);
        grades.push_back({rows.toText(0), registered, registered, rows.toText(2)});
    }
    return grades;
}

QStringList correctedGrades(store::Connection& connection, const domain::RunKey& run) {
    auto rows = connection.prepare(
        QStringLiteral("SELECT 支給係数 FROM SshikyuukeisuuHA WHERE %1 ORDER BY Cint(評価Code), ID")
            .arg(design::kRunFilter));
    rows.bindAll(design::runBinds(run));
    QStringList corrected;
    while (rows.step()) corrected << coefficientText(rows, 0);
    return corrected;
}

GradePanel gradePanel(store::Connection& connection, const domain::RunKey& run) {
    GradePanel panel{registeredGrades(connection, run)};
    if (panel.rows.size() < 2) return {};
    const QStringList corrected = correctedGrades(connection, run);
    // What an earlier run of this date used goes back row for row, whatever the registered grades are by now.
    if (corrected.size() >= 2) {
        panel.rows.resize(std::max(panel.rows.size(), static_cast<std::size_t>(corrected.size())));
        for (std::size_t i = 0; i < panel.rows.size(); ++i)
            panel.rows[i].corrected = corrected.value(static_cast<qsizetype>(i));
    }
    if (panel.rows.size() > PaymentSimulation::kGrades)
        throw store::Error(store::Error::Reason::Type,
                           QStringLiteral("評価の数が9を超えています。支給係数は9段階まで修正できます。"));
    return panel;
}

PaymentOutcome outcomeOf(store::Connection& connection, const domain::RunKey& run,
                         const design::PaymentUse& payment, const QStringList& evaluation) {
    switch (payment.method) {
        case design::Method::Typed:
            return RunTimeInput{};
        case design::Method::Uniform:
            return uniformPanel(connection, run, uniformText(payment));
        case design::Method::Derived:
            break;
        default:
            return NothingToDo{};
    }
    if (!evaluation.isEmpty()) return DoubleEvaluation{evaluation.first()};
    return gradePanel(connection, run);
}

}  // namespace

void storePaymentCoefficients(store::Connection& connection, const domain::RunKey& run,
                              const PaymentSimulation& panel) {
    deleteRunRows(connection, QStringLiteral("Sshikyuukeisuu"), run);
    storeUniform(connection, run, panel.uniformCorrected);
    deleteRunRows(connection, QStringLiteral("SshikyuukeisuuHA"), run);
    if (panel.grades[0].corrected.isEmpty()) return;
    for (const PanelGrade& grade : panel.grades)
        if (!grade.registered.isEmpty()) storeGrade(connection, run, grade);
}

PaymentDecision decidePaymentPanel(store::Connection& connection, const domain::RunKey& run) {
    const design::Setup setup = design::readSetup(connection, run);
    const QStringList evaluation = evaluationCoefficients(setup);
    if (evaluation.size() > 1) return {};
    if (!evaluation.isEmpty() && !hasGradeTable(connection, run))
        return {MissingGrades{evaluation.first()}, std::nullopt};
    const auto payment = paymentOf(setup);
    if (!payment) return {MissingSetup{}, std::nullopt};
    return {outcomeOf(connection, run, *payment, evaluation), payment->gradeScale.value_or(QString())};
}

}  // namespace calc
