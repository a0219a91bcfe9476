#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QTemporaryDir>
#include <stdexcept>

#include "company/create.h"
#include "company/main_connection.h"
#include "measure.h"
#include "prep/snapshot.h"
#include "schema/catalog.h"
#include "store/work.h"

// Opening a new date: the snapshot and the carrying forward from the date before, in turns with the floor
// (the rows that it leaves, written into the same keyed file by bare prepared statements).
namespace {

using namespace Qt::StringLiterals;

const personnel::PositionDates kSummer{{2026, 7, 10}, {2026, 7, 10}, {2026, 7, 10}};
const personnel::PositionDates kWinter{{2026, 12, 10}, {2026, 12, 31}, {2026, 11, 30}};

/// People with three transfers each, one of them still to come, and with rows of one earlier run.
class Company {
  public:
    explicit Company(int employees) {
        company::createCompany(folder_.path(), u"計測"_s, {});
        cn_ = company::openMainConnection(folder_.path(), u"計測"_s);
        store::Work work(*cn_);
        cn_->execute(kNumbers +
                         u" INSERT INTO 履歴書テーブル(社員Code,生年月日,入社日,退職フラグ) SELECT "
                         "printf('%06d', n), date('1965-01-01', (n * 37 % 14000) || ' days'), "
                         "date('1990-04-01', (n * 53 % 12000) || ' days'), 0 FROM 番"_s,
                     {employees});
        for (const QString& date : {u"2024-04-01"_s, u"2026-04-01"_s, u"2027-04-01"_s})
            cn_->execute(
                kNumbers +
                    u" INSERT INTO 異動テーブル(社員Code,異動日,社員区分,所属大,所属小,役職,職種,"
                    "コース,等級) SELECT printf('%06d', n), ?, '01', printf('%02d', n % 20), '0001', "
                    "'03', '02', '01', n % 9 + 1 FROM 番"_s,
                {employees, date});
        prep::SelectIntoX(*cn_, kSummer);
        for (prep::RunTable table : prep::kRunTables) {
            prep::RunRowWriter writer(*cn_, table, kSummer.kijunbi);
            for (int i = 1; i <= employees; ++i)
                writer.add(QString::number(i).rightJustified(6, u'0'), u"01"_s, u"01"_s);
        }
        prep::addDate(*cn_, prep::Side::Jikkou, kSummer);
        work.commit();
    }
    store::Connection& cn() { return *cn_; }
    void importWinter() {
        prep::SelectIntoX(*cn_, kWinter);
        store::Work work(*cn_);
        prep::addDate(*cn_, prep::Side::Jikkou, kWinter);
        work.commit();
    }
    void removeWinter() {
        store::Work work(*cn_);
        prep::removeDate(*cn_, prep::Side::Jikkou, kWinter.kijunbi);
        work.commit();
    }

  private:
    inline static const QString kNumbers =
        u"WITH RECURSIVE 番(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM 番 WHERE n < ?)"_s;
    QTemporaryDir folder_;
    std::unique_ptr<store::Connection> cn_;
};

/// The rows of one table as the engine's own values, and the bare statement that writes them again.
class Copy {
  public:
    Copy(sqlite3* db, const QString& table, bool ofDate) : db_(db) {
        QStringList columns;
        for (const schema::Column& column : schema::tableNamed(table).columns)
            if (column.type.kind != store::TypeKind::Counter) columns << column.name;
        columns_ = int(columns.size());
        insert_ = u"INSERT INTO %1(%2) VALUES(?%3)"_s.arg(table, columns.join(u','),
                                                          u",?"_s.repeated(columns_ - 1));
        empty_ = ofDate ? QString() : u"DELETE FROM "_s + table;
        sqlite3_stmt* rows = prepare(u"SELECT %1 FROM %2%3"_s.arg(
            columns.join(u','), table, ofDate ? u" WHERE 基準日 = '2026-12-10'"_s : QString()));
        while (sqlite3_step(rows) == SQLITE_ROW)
            for (int i = 0; i < columns_; ++i)
                values_.push_back(sqlite3_value_dup(sqlite3_column_value(rows, i)));
        sqlite3_finalize(rows);
    }
    ~Copy() {
        for (sqlite3_value* value : values_) sqlite3_value_free(value);
    }
    Copy(const Copy&) = delete;
    Copy& operator=(const Copy&) = delete;
    void write() const {
        if (!empty_.isEmpty() && sqlite3_exec(db_, empty_.toUtf8(), nullptr, nullptr, nullptr) != SQLITE_OK)
            fail();
        sqlite3_stmt* insert = prepare(insert_);
        for (std::size_t i = 0; i < values_.size();) {
            for (int p = 1; p <= columns_; ++p) sqlite3_bind_value(insert, p, values_[i++]);
            sqlite3_step(insert);
            if (sqlite3_reset(insert) != SQLITE_OK) fail();
        }
        sqlite3_finalize(insert);
    }

  private:
    [[noreturn]] void fail() const { throw std::runtime_error(sqlite3_errmsg(db_)); }
    sqlite3_stmt* prepare(const QString& sql) const {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(db_, sql.toUtf8(), -1, &statement, nullptr) != SQLITE_OK) fail();
        return statement;
    }
    sqlite3* db_;
    int columns_ = 0;
    QString insert_, empty_;
    std::vector<sqlite3_value*> values_;
};

class Floor {
  public:
    explicit Floor(Company& c) : c_(c) {
        sqlite3* db = c.cn().handle();
        for (const QString& table : {u"IdoChuusyutsuNen"_s, u"IdoChuusyutsuMax"_s, u"IdoChuusyutsuMax2"_s})
            copies_.push_back(std::make_unique<Copy>(db, table, false));
        copies_.push_back(std::make_unique<Copy>(db, prep::dateTable(prep::Side::Jikkou), true));
        for (prep::RunTable table : prep::kRunTables)
            copies_.push_back(std::make_unique<Copy>(db, prep::runTableName(table), true));
    }
    void operator()() const {
        store::Work work(c_.cn());
        for (const auto& copy : copies_) copy->write();
        work.commit();
    }

  private:
    Company& c_;
    std::vector<std::unique_ptr<Copy>> copies_;
};

void BM_SnapshotImport(benchmark::State& state) {
    const int employees = int(state.range(0));
    Company& c = measured::company<Company>(employees);
    c.importWinter();
    const Floor floor(c);
    c.removeWinter();
    std::vector<double> own, bare;
    for (auto _ : state) {
        own.push_back(measured::seconds([&] { c.importWinter(); }));
        c.removeWinter();
        bare.push_back(measured::seconds(floor));
        c.removeWinter();
        state.SetIterationTime(own.back());
    }
    state.counters["per_employee_us"] = measured::median(own) * 1e6 / employees;
    state.counters["floor_ms"] = measured::median(bare) * 1e3;
    state.counters["times_floor"] = measured::median(own) / measured::median(bare);
}

BENCHMARK(BM_SnapshotImport)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(32767)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
