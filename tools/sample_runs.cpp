#include "sample_runs.h"

#include <QHash>

#include "calc/result_list.h"
#include "calc/run_budget.h"
#include "calc/run_calculation.h"
#include "calc/shikyuu_store.h"
#include "prep/run_setting.h"
#include "prep/snapshot.h"
#include "sample_inputs.h"
#include "sample_writer.h"
#include "store/work.h"

namespace t = schema::tables;

namespace sample {
namespace {

/// 単価 and 端数処理 of the dates: 100円 切り上げ, 1000円 切り捨て, 100円 四捨五入.
struct Rounding {
    int unit;
    int mode;
};
constexpr Rounding kRoundings[kDates] = {{2, 1}, {3, 2}, {2, 0}};

/// 総額配分予算 and 予算総額 a head of a criterion with a pool, in yen.
constexpr int kPoolPerHead[] = {160000, 0, 55000, 0};
constexpr int kTotalPerHead[] = {1100000, 0, 60000, 0};

/// A row of a run with the person to whom it belongs and the criterion in which it stands.
struct RunRow {
    qint64 id;
    const Person* person;
    int criterion;
};

class RunMaker {
  public:
    RunMaker(store::Connection& cn, const SampleOptions& options, const std::vector<Person>& people)
        : cn_(cn), options_(options) {
        for (const Person& person : people) byCode_.insert(person.code, &person);
    }

    void makeDate(int index) {
        const QDate date = kijunbi(index);
        store::Work work(cn_);
        takeDate(index);
        assign(date);
        prep::RunSetting(cn_, date).save(kRoundings[index].unit, kRoundings[index].mode);
        fill(prep::RunTable::KojinBetsu, u'1', date);
        fill(prep::RunTable::SougakuHaibun, u'2', date);
        fillTypedAmounts(date);
        writeBudgets(date);
        work.commit();
    }

    void compute(int index) {
        for (const Criterion& criterion : kCriteria) {
            const domain::RunKey run = runKey(criterion, kijunbi(index));
            calc::openRunBudget(cn_, run);
            store::Work work(cn_);
            if (criterion.kojinbetsu) computeKojinbetsu(run);
            if (criterion.sougaku) computeSougaku(run);
            work.commit();
            calc::updateGrandTotals(cn_, run);
        }
    }

  private:
    void takeDate(int index) {
        const QDate date = kijunbi(index);
        const personnel::PositionDates dates{date, date, date};
        prep::SelectIntoX(cn_, dates);
        prep::addDate(cn_, prep::Side::Jikkou, dates);
        cn_.execute(QStringLiteral("UPDATE Sデータ取込年月日運用 SET 賞与の内容 = ? WHERE 基準日 = ?"),
                    {bonusText(index), date});
    }

    /// Those of the snapshot who have no row yet come in under the criterion of their position.
    void assign(QDate date) {
        for (prep::RunTable table : prep::kRunTables) {
            store::Statement read = cn_.prepare(
                QStringLiteral(
                    "SELECT 社員Code FROM IdoChuusyutsuMax2 WHERE 社員Code NOT IN (SELECT 社員Code "
                    "FROM %1 WHERE 基準日 = ?) ORDER BY Clng(社員Code)")
                    .arg(prep::runTableName(table)));
            read.bind(1, store::Value(date));
            std::vector<QString> codes;
            while (read.step()) codes.push_back(read.toText(0));
            prep::RunRowWriter writer(cn_, table, date);
            for (const QString& code : codes) {
                const int criterion = criterionOf(*byCode_.value(code), date);
                if (criterion >= 0) writer.add(code, kCriteria[criterion].kubun, kCriteria[criterion].kijun);
            }
        }
    }

    int criterionOf(const Person& person, QDate date) const {
        return options_.spread == Spread::OneCriterion ? 0 : criterionAt(person, date);
    }

    std::vector<RunRow> rowsOf(prep::RunTable table, QDate date) {
        store::Statement read = cn_.prepare(
            QStringLiteral("SELECT ID, 社員Code, 配分区分, 配分基準 FROM %1 WHERE 基準日 = ? ORDER BY ID")
                .arg(prep::runTableName(table)));
        read.bind(1, store::Value(date));
        std::vector<RunRow> rows;
        while (read.step()) {
            const QString key = read.toText(2) + read.toText(3);
            for (int i = 0; i < static_cast<int>(std::size(kCriteria)); ++i)
                if (key == QString::fromUtf16(kCriteria[i].kubun) + QString::fromUtf16(kCriteria[i].kijun))
                    rows.push_back({read.toInteger(0), byCode_.value(read.toText(1)), i});
        }
        return rows;
    }

    /// 基礎額Ａ to 評価 of every row, and 支給係数 of the individual rows.
    void fill(prep::RunTable table, char16_t method, QDate date) {
        using namespace t::S実行個人別計算;
        const schema::Table& described = schema::tableNamed(prep::runTableName(table));
        const int last = method == u'1' ? 支給係数 : 評価;
        QStringList sets;
        for (int position = 基礎額Ａ; position <= last; ++position)
            sets << described.columns[static_cast<std::size_t>(position)].name + QStringLiteral(" = ?");
        const std::vector<RunRow> rows = rowsOf(table, date);
        store::Statement update = cn_.prepare(QStringLiteral("UPDATE %1 SET %2 WHERE ID = ?")
                                                  .arg(described.name, sets.join(QStringLiteral(", "))));
        for (const RunRow& row : rows) {
            const RunInputs inputs = inputsOf(*row.person, row.criterion, method, date);
            store::Binds values{store::Money::fromYen(inputs.baseA), store::Money::fromYen(inputs.baseB)};
            values.insert(values.end(), inputs.coefficients.begin(), inputs.coefficients.end());
            values.push_back(inputs.grade.isNull() ? QStringLiteral("") : inputs.grade);
            if (method == u'1') values.push_back(inputs.payment);
            values.push_back(row.id);
            update.bindAll(values);
            update.run();
        }
    }

    void fillTypedAmounts(QDate date) {
        const std::vector<RunRow> rows = rowsOf(prep::RunTable::TaiouSyain, date);
        store::Statement update = cn_.prepare(
            QStringLiteral("UPDATE S配分基準対応社員 SET 金一封 = ?, 特別加算金 = ? WHERE ID = ?"));
        for (const RunRow& row : rows) {
            const TypedAmounts amounts = typedAmountsOf(*row.person, row.criterion, date);
            update.bindAll(
                {store::Money::fromYen(amounts.kinIppuu), store::Money::fromYen(amounts.tokubetsu), row.id});
            update.run();
        }
    }

    /// The budgets and the totals of what was typed; the computed totals stay empty until a calculation.
    void writeBudgets(QDate date) {
        struct Sums {
            int heads = 0;
            store::Money kinIppuu, tokubetsu;
        };
        std::array<Sums, std::size(kCriteria)> sums;
        for (const RunRow& row : rowsOf(prep::RunTable::TaiouSyain, date)) {
            const TypedAmounts amounts = typedAmountsOf(*row.person, row.criterion, date);
            Sums& sum = sums[static_cast<std::size_t>(row.criterion)];
            ++sum.heads;
            sum.kinIppuu += store::Money::fromYen(amounts.kinIppuu);
            sum.tokubetsu += store::Money::fromYen(amounts.tokubetsu);
        }
        TableWriter budgets(cn_, t::S実行予算::kName);
        TableWriter groups(cn_, t::S配分基準グループＹＮ::kName);
        for (std::size_t i = 0; i < sums.size(); ++i) {
            const qint64 heads = sums[i].heads;
            budgets.write({{},
                           kCriteria[i].kubun,
                           kCriteria[i].kijun,
                           date,
                           store::Money::fromYen(heads * kTotalPerHead[i]),
                           store::Money::fromYen(heads * kPoolPerHead[i]),
                           {},
                           {},
                           sums[i].kinIppuu,
                           sums[i].tokubetsu});
            groups.write({{}, kCriteria[i].kubun, kCriteria[i].kijun, date});
        }
    }

    /// The panel as 支給係数修正 opens it, nothing corrected.
    calc::PaymentSimulation panelOf(const domain::RunKey& run) {
        const calc::PaymentDecision decision = calc::decidePaymentPanel(cn_, run);
        calc::PaymentSimulation panel;
        panel.hyougoType = decision.hyougoType.value_or(QString());
        if (const auto* uniform = std::get_if<calc::UniformPanel>(&decision.outcome)) {
            panel.mode = calc::PaymentSimulation::Mode::Uniform;
            panel.uniformRegistered = uniform->registered;
            panel.uniformCorrected = uniform->corrected;
        } else if (const auto* grades = std::get_if<calc::GradePanel>(&decision.outcome)) {
            panel.mode = calc::PaymentSimulation::Mode::Grades;
            for (std::size_t i = 0; i < grades->rows.size(); ++i) panel.grades[i] = grades->rows[i];
        }
        return panel;
    }

    void computeKojinbetsu(const domain::RunKey& run) {
        calc::RunCalculation(cn_, run, QStringLiteral("配分計算")).individually(panelOf(run));
    }

    void computeSougaku(const domain::RunKey& run) {
        const store::Money budget = calc::readRunBudget(cn_, run).sougakuHaibunYosan;
        if (budget == store::Money()) return;
        calc::RunCalculation(cn_, run, QStringLiteral("配分計算")).fromPool(budget);
    }

    store::Connection& cn_;
    const SampleOptions& options_;
    QHash<QString, const Person*> byCode_;
};

}  // namespace

void makeRuns(store::Connection& cn, const SampleOptions& options, const std::vector<Person>& people) {
    RunMaker maker(cn, options, people);
    for (int index = options.earlierRuns ? 0 : kDates - 1; index < kDates; ++index) {
        maker.makeDate(index);
        if (index < kDates - 1) maker.compute(index);
    }
    TableWriter(cn, t::Sデータ取込年月日設計::kName)
        .write({designKijunbi(), designKijunbi(), designKijunbi()});
}

}  // namespace sample
