#pragma once
#include <string>

#include "domain/run_key.h"
#include "prep/run_company.h"
#include "schema/catalog.h"
#include "store/work.h"
#include "support/store_probe.h"

namespace store {
/// How a failed comparison shows a cell.
inline void PrintTo(const Value& value, std::ostream* out) {
    *out << value.toText().toStdString();
}
}  // namespace store

namespace calctest {

using namespace Qt::StringLiterals;
using Reason = store::Error::Reason;

inline store::Money yen(qint64 amount) {
    return store::Money::fromYen(amount);
}

/// What a query gives: cells with blanks, rows with "|" between them, Null as "-".
inline std::string rowsOf(store::Connection& cn, const QString& query, const store::Binds& binds = {}) {
    QStringList lines;
    auto rows = cn.prepare(query);
    rows.bindAll(binds);
    while (rows.step()) {
        QStringList cells;
        for (int i = 0; i < rows.columnCount(); ++i)
            cells << (rows.isNull(i) ? u"-"_s : rows.value(i).toText());
        lines << cells.join(u' ');
    }
    return lines.join(u'|').toStdString();
}

/// An empty company with one run in it.
class OneRun : public preptest::RunCompany {
  public:
    OneRun() : RunCompany(preptest::Content::Empty) {}
    store::Connection& cn() { return cn_; }

    const domain::RunKey run{QDate(2026, 12, 10), u"01"_s, u"02"_s};

    void sql(const char* statement, const store::Binds& binds) {
        cn_.execute(QString::fromUtf8(statement), binds);
    }
    void sql(const char* script) { cn_.executeScript(QString::fromUtf8(script)); }
    std::string read(const char* query) { return rowsOf(cn_, QString::fromUtf8(query)); }

    /// A row of S係数設定: the coefficient acts on the bases.
    void coefficient(int k, bool onA, bool onB, const char16_t* santei = u"1") {
        sql("INSERT INTO S係数設定(配分区分Code, 配分基準Code, 係数, 設定名称, 算定方式, 基礎額Ａ, 基礎額Ｂ)"
            " VALUES('01', '02', '出来', printf('%02d', ?), ?, ?, ?)",
            {k, santei, onA, onB});
    }
    void rounding(const char16_t* tanka, const char16_t* hasuu) {
        sql("DELETE FROM Tanka_hasuu");
        sql("INSERT INTO Tanka_hasuu(基準日, 単価, 端数処理) VALUES(?, ?, ?)", {run.kijunbi, tanka, hasuu});
    }
    void budgetRow() {
        sql("INSERT INTO S実行予算(基準日, 配分区分, 配分基準) VALUES('2026-12-10', '01', '02')");
    }
    /// A row of S配分基準対応社員 with 金一封 7, 特別加算金 8 and 合計 9.
    void assignee(const store::Value& code, store::Value individual = yen(0), store::Value pool = yen(0)) {
        sql("INSERT INTO S配分基準対応社員(基準日, 配分区分, 配分基準, 社員Code, 個人別計算, 総額配分, "
            "金一封,"
            " 特別加算金, 合計) VALUES('2026-12-10', '01', '02', ?, ?, ?, 70000, 80000, 90000)",
            {code, individual, pool});
    }
    /// Inputs of employee 1, bases of 10,000 yen and coefficients of 1, but for the changes (of an UPDATE).
    void runRow(const char* table, const std::string& changes = "ID = ID") {
        const QString name = QString::fromUtf8(table), last = u" WHERE ID = last_insert_rowid()"_s;
        const auto& columns = schema::tableNamed(name).columns;
        QString factors = columns[26].name;
        for (std::size_t i = 7; i <= 24; ++i) factors += u", "_s + columns[i].name;
        cn_.execute(
            u"INSERT INTO %1(基準日, 配分区分, 配分基準, 社員Code, 基礎額Ａ, 基礎額Ｂ, 評価, %2)"
            " VALUES('2026-12-10', '01', '02', '1', 10000 * 10000, 10000 * 10000, ''%3)"_s.arg(
                name, factors, u", 1"_s.repeated(19)));
        cn_.execute(u"UPDATE %1 SET "_s.arg(name) + QString::fromStdString(changes) + last);
    }
    /// The employee's inputs and the row of S配分基準対応社員.
    void person(const char* table, const std::string& changes = "ID = ID") {
        runRow(table, changes);
        const QString query =
            u"SELECT 社員Code FROM %1 ORDER BY ID DESC LIMIT 1"_s.arg(QString::fromUtf8(table));
        assignee(QString::fromStdString(rowsOf(cn_, query)));
    }

    /// Runs a calculation as the screen does.
    template <typename Calculation>
    auto committed(Calculation&& calculation) {
        store::Work work(cn_);
        const auto result = calculation();
        work.commit();
        return result;
    }
    /// Damages the company and runs what must fail for this reason; both are taken back and nothing stays.
    template <typename Calculation>
    void expectRefusal(Reason reason, const char* damage, Calculation&& calculation) {
        SCOPED_TRACE(damage);
        const QByteArray before = support::dump(cn_);
        const auto failure = support::errorOf([&] {
            store::Work work(cn_);
            sql(damage);
            calculation();
            work.commit();
        });
        ASSERT_TRUE(failure);
        EXPECT_EQ(failure->reason(), reason) << failure->what();
        expectUnchanged(before);
    }
};

}  // namespace calctest
