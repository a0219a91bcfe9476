#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QTemporaryDir>
#include <stdexcept>

#include "calc/kojinbetsu.h"
#include "calc/sougaku.h"
#include "company/create.h"
#include "company/main_connection.h"
#include "measure.h"
#include "schema/catalog.h"
#include "store/work.h"

// Each measurement takes turns between the calculation and two yardsticks on the same keyed files: the floor
// (the same values written into the same tables by bare prepared statements) and the same formula as
// set-based SQL.
namespace {

using schema::tableNamed;

QString u(const char16_t* text) {
    return QString::fromUtf16(text);
}

/// What differs between the two calculations.
struct Method {
    const char16_t* santei;
    const char16_t* runTable;
    const char16_t* decisionTable;
    const char16_t* payColumn;     ///< of S配分基準対応社員
    const char16_t* budgetColumn;  ///< of S実行予算
    int firstResult;               ///< first of the result positions of the run table
};
const Method kIndividual{u"1",          u"S実行個人別計算", u"S実行個人別計算決定",
                         u"個人別計算", u"個人別計算合計",  27};
const Method kPool{u"2", u"S実行総額配分", u"S実行総額配分決定", u"総額配分", u"総額配分合計", 26};
const store::Money kBudget = store::Money::fromYen(1000000000);

QStringList columnNames(const QString& table, int first, int last) {
    QStringList names;
    for (int position = first; position <= last; ++position)
        names << tableNamed(table).columns[static_cast<std::size_t>(position)].name;
    return names;
}

/// A company on disk whose one run has n employees with inputs of their own.
class Company {
  public:
    explicit Company(int employees) {
        company::createCompany(folder_.path(), u(u"計測"), {});
        cn_ = company::openMainConnection(folder_.path(), u(u"計測"));
        store::Work work(*cn_);
        for (const Method& method : {kIndividual, kPool}) {
            fillRun(method, employees);
            for (int k : {1, 3, 4, 5, 8})
                cn_->execute(u(u"INSERT INTO S係数設定(配分区分Code, 配分基準Code, 設定名称, 算定方式, "
                               u"基礎額Ａ, 基礎額Ｂ)"
                               u" VALUES('01', '01', ?, ?, -1, ?)"),
                             {u(u"0%1").arg(k), method.santei, k > 3});
        }
        cn_->execute(kNumbers + u(u" INSERT INTO S配分基準対応社員(社員Code, 配分区分, 配分基準, 基準日, "
                                  u"個人別計算, 総額配分,"
                                  u" 金一封, 特別加算金, 合計) SELECT printf('%06d', n), '01', '01', ?, 0, "
                                  u"0, 0, 0, 0 FROM 番"),
                     {employees, run.kijunbi});
        cn_->execute(u(u"INSERT INTO S実行予算(配分区分, 配分基準, 基準日) VALUES('01', '01', ?)"),
                     {run.kijunbi});
        cn_->execute(u(u"INSERT INTO Tanka_hasuu(単価, 端数処理, 基準日) VALUES('2', '0', ?)"),
                     {run.kijunbi});
        work.commit();
    }
    store::Connection& cn() { return *cn_; }

    const domain::RunKey run{QDate(2026, 12, 10), QStringLiteral("01"), QStringLiteral("01")};

  private:
    void fillRun(const Method& method, int employees) {
        const QString table = u(method.runTable);
        QStringList factors;
        for (int k = 1; k <= 18; ++k) factors << u(u"1 + (n * %1) % 97 / 100.0").arg(k);
        cn_->execute(
            kNumbers +
                u(u" INSERT INTO %1(%2) SELECT printf('%06d', n), '01', '01', ?, 2000000000 + n * 10000,"
                  u" 500000000 + n * 5000, %3, 'A', 1.5 FROM 番")
                    .arg(table, columnNames(table, 1, 26).join(u','), factors.join(u',')),
            {employees, run.kijunbi});
    }

    inline static const QString kNumbers =
        u(u"WITH RECURSIVE 番(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM 番 WHERE n < ?)");
    QTemporaryDir folder_;
    std::unique_ptr<store::Connection> cn_;
};

void calculate(Company& c, const Method& method) {
    store::Work work(c.cn());
    if (method.payColumn == kIndividual.payColumn) {
        calc::Kojinbetsu calculation(c.cn(), c.run, {});
        calculation.keisan1_kojinbetsu();
        calculation.keisan2_kojinbetsu();
    } else {
        calc::Sougaku calculation(c.cn(), c.run);
        calculation.keisan1_sougaku();
        calculation.keisan2_sougaku();
        calculation.keisan3_sougaku(kBudget);
    }
    work.commit();
}

/// A bare statement of the engine.
class Bare {
  public:
    Bare(sqlite3* db, const QString& sql) : db_(db) {
        check(sqlite3_prepare_v2(db, sql.toUtf8(), -1, &stmt_, nullptr));
    }
    ~Bare() { sqlite3_finalize(stmt_); }
    Bare(const Bare&) = delete;
    Bare& operator=(const Bare&) = delete;
    void bind(int parameter, sqlite3_value* value) { sqlite3_bind_value(stmt_, parameter, value); }
    void run() {
        sqlite3_step(stmt_);
        check(sqlite3_reset(stmt_));
    }
    sqlite3_stmt* get() { return stmt_; }

  private:
    void check(int code) {
        if (code != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(db_));
    }
    sqlite3* db_;
    sqlite3_stmt* stmt_ = nullptr;
};

/// Rows of a query kept in memory, as the engine's own values.
class Rows {
  public:
    Rows(sqlite3* db, const QString& sql) {
        Bare query(db, sql);
        columns_ = sqlite3_column_count(query.get());
        while (sqlite3_step(query.get()) == SQLITE_ROW)
            for (int i = 0; i < columns_; ++i)
                values_.push_back(sqlite3_value_dup(sqlite3_column_value(query.get(), i)));
    }
    ~Rows() {
        for (sqlite3_value* value : values_) sqlite3_value_free(value);
    }
    Rows(const Rows&) = delete;
    Rows& operator=(const Rows&) = delete;
    /// Runs the statement once for each row, the row's values as its parameters.
    void write(sqlite3* db, const QString& sql) const {
        Bare statement(db, sql);
        for (std::size_t i = 0; i < values_.size(); statement.run())
            for (int p = 1; p <= columns_; ++p) statement.bind(p, values_[i++]);
    }

  private:
    int columns_ = 0;
    std::vector<sqlite3_value*> values_;
};

const QString kRunFilter = u(u"基準日 = '2026-12-10' AND 配分区分 = '01' AND 配分基準 = '01'");

/// Everything that the calculation wrote, written again and nothing else done.
class Floor {
  public:
    Floor(Company& c, const Method& method)
        : db_(c.cn().handle()),
          decision_(u(method.decisionTable)),
          decisionColumns_(columnNames(decision_, 1, last(decision_))),
          results_(columnNames(u(method.runTable), method.firstResult, last(u(method.runTable)))),
          method_(method),
          decisionRows_(db_, u(u"SELECT %1 FROM %2 ORDER BY ID").arg(decisionColumns_.join(u','), decision_)),
          runRows_(db_, u(u"SELECT %1, ID FROM %2 ORDER BY ID").arg(results_.join(u','), u(method.runTable))),
          paid_(db_, u(u"SELECT %1, ID FROM S配分基準対応社員 ORDER BY ID").arg(u(method.payColumn))),
          budget_(db_, u(u"SELECT %1, ID FROM S実行予算").arg(u(method.budgetColumn))) {}

    void operator()() const {
        Bare(db_, u(u"BEGIN IMMEDIATE")).run();
        Bare(db_, u(u"DELETE FROM %1 WHERE %2").arg(decision_, kRunFilter)).run();
        runRows_.write(
            db_, u(u"UPDATE %1 SET %2 = ? WHERE ID = ?").arg(u(method_.runTable), results_.join(u" = ?,")));
        decisionRows_.write(db_, u(u"INSERT INTO %1(%2) VALUES(?%3)")
                                     .arg(decision_, decisionColumns_.join(u','),
                                          u(u",?").repeated(decisionColumns_.size() - 1)));
        paid_.write(db_, u(u"UPDATE S配分基準対応社員 SET %1 = ? WHERE ID = ?").arg(u(method_.payColumn)));
        budget_.write(db_, u(u"UPDATE S実行予算 SET %1 = ? WHERE ID = ?").arg(u(method_.budgetColumn)));
        Bare(db_, u(u"COMMIT")).run();
    }

  private:
    static int last(const QString& table) { return static_cast<int>(tableNamed(table).columns.size()) - 1; }
    sqlite3* db_;
    QString decision_;
    QStringList decisionColumns_, results_;
    const Method& method_;
    Rows decisionRows_, runRows_, paid_, budget_;
};

/// The same formula in the engine, a statement for each table. Base B takes 評価, 出勤 and 役職係数 only.
class SetBased {
  public:
    SetBased(Company& c, const Method& method) : db_(c.cn().handle()), method_(method) {
        const bool pool = method.payColumn == kPool.payColumn;
        const QString table = u(method.runTable);
        const QString decision = u(method.decisionTable);
        const QString payment = pool ? QString() : u(u" * 支給係数");
        QStringList a, b, factorsA, factorsB;
        const QStringList names = columnNames(table, 7, 24);
        for (int k = 1; k <= 18; ++k) {
            const bool onB = k == 4 || k == 5 || k == 8;
            const bool onA = onB || k == 1 || k == 3;
            a << (onA ? names[k - 1] : u(u"1.0"));
            b << (onB ? names[k - 1] : u(u"1.0"));
        }
        const QString sideA = u(u"基礎額Ａ / 10000.0 * ") + a.join(u" * ") + payment;
        const QString sideB = u(u"基礎額Ｂ / 10000.0 * ") + b.join(u" * ") + payment;
        const QString sum = u(u"(Ａ計算額 + Ｂ計算額)");
        const QString rounded = u(u"trunc((%1 + 50) / 100) * 1000000");
        statements_
            << u(u"BEGIN IMMEDIATE") << u(u"DELETE FROM %1 WHERE %2").arg(decision, kRunFilter)
            << u(u"UPDATE %1 SET Ａ計算額 = %2, Ｂ計算額 = %3 WHERE %4").arg(table, sideA, sideB, kRunFilter);
        if (pool)
            statements_ << u(u"UPDATE S実行総額配分 SET 支給対象額計 = round(%1 * 10000) WHERE %2")
                               .arg(sum, kRunFilter)
                        << u(u"UPDATE S実行総額配分 SET 賞与係数 = 1e13 / (SELECT Sum(支給対象額計) FROM "
                             u"S実行総額配分"
                             u" WHERE %1) WHERE %1")
                               .arg(kRunFilter)
                        << u(u"UPDATE S実行総額配分 SET 合計 = %1 WHERE %2")
                               .arg(rounded.arg(u(u"賞与係数 * 支給対象額計 / 10000.0")), kRunFilter);
        else
            statements_
                << u(u"UPDATE S実行個人別計算 SET 合計 = %1 WHERE %2").arg(rounded.arg(sum), kRunFilter);
        const int end = static_cast<int>(tableNamed(table).columns.size()) - 1;
        statements_
            << u(u"INSERT INTO %1(%2) SELECT 社員Code, 配分区分, 配分基準, 基準日, 基礎額Ａ, %3, 基礎額Ｂ, "
                 u"%4, %5"
                 u" FROM %6 WHERE %7 ORDER BY Clng(社員Code)")
                   .arg(decision,
                        columnNames(decision, 1, static_cast<int>(tableNamed(decision).columns.size()) - 1)
                            .join(u','),
                        a.join(u','), b.join(u','), columnNames(table, 25, end).join(u','), table, kRunFilter)
            // The limit keeps the engine from a nested walk over both tables.
            << u(u"UPDATE S配分基準対応社員 SET %1 = (SELECT 合計 FROM (SELECT 社員Code, 合計 FROM %2 WHERE "
                 u"%3 LIMIT -1) AS 計"
                 u" WHERE 計.社員Code = S配分基準対応社員.社員Code) WHERE %3")
                   .arg(u(method.payColumn), table, kRunFilter)
            << u(u"UPDATE S実行予算 SET %1 = (SELECT Sum(%2) FROM S配分基準対応社員 WHERE %3) WHERE %3")
                   .arg(u(method.budgetColumn), u(method.payColumn), kRunFilter)
            << u(u"COMMIT");
    }
    void operator()() const {
        for (const QString& sql : statements_) Bare(db_, sql).run();
    }

  private:
    sqlite3* db_;
    const Method& method_;
    QStringList statements_;
};

void measure(benchmark::State& state, const Method& method) {
    const int employees = static_cast<int>(state.range(0));
    Company& c = measured::company<Company>(employees);
    calculate(c, method);  // the values that the floor writes, and a first decision to replace
    const Floor floor(c, method);
    const SetBased setBased(c, method);
    std::vector<double> own, bare, sql;
    for (auto _ : state) {
        own.push_back(measured::seconds([&] { calculate(c, method); }));
        bare.push_back(measured::seconds(floor));
        sql.push_back(measured::seconds(setBased));
        state.SetIterationTime(own.back());
    }
    state.counters["per_employee_us"] = measured::median(own) * 1e6 / employees;
    state.counters["floor_ms"] = measured::median(bare) * 1e3;
    state.counters["set_based_ms"] = measured::median(sql) * 1e3;
    state.counters["times_floor"] = measured::median(own) / measured::median(bare);
}

void BM_Kojinbetsu(benchmark::State& state) {
    measure(state, kIndividual);
}
void BM_Sougaku(benchmark::State& state) {
    measure(state, kPool);
}

#define SIZES Arg(100)->Arg(1000)->Arg(10000)->Arg(32767)->UseManualTime()->Unit(benchmark::kMillisecond)
BENCHMARK(BM_Kojinbetsu)->SIZES;
BENCHMARK(BM_Sougaku)->SIZES;

}  // namespace
