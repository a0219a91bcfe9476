#pragma once
#include <gtest/gtest.h>

#include <map>
#include <utility>
#include <vector>

#include "shell/run_key.h"
#include "store/catalog.h"
#include "store/error.h"
#include "support/company_fixture.h"

namespace calctest {

inline QString u(const char16_t* text) {
    return QString::fromUtf16(text);
}
inline store::Money yen(qint64 amount) {
    return store::Money::fromYen(amount);
}

/// An employee's inputs; a missing coefficient is 1. Null where the test wants none.
struct Employee {
    const char16_t* code = u"000001";
    store::Value kisoA = yen(10000);
    store::Value kisoB = yen(10000);
    std::map<int, store::Value> keisuu = {};  ///< by 設定名称, 1 to 18
    store::Value hyouka = u"";
    store::Value payment = 1.0;
};

/// An empty company with one run in it; rows are written by column name.
class RunCompany {
  public:
    RunCompany() {
        folder_.makeEmpty();
        cn_ = folder_.open();
    }
    store::Connection& cn() { return *cn_; }

    const shell::RunKey run{QDate(2026, 12, 10), u(u"01"), u(u"02")};
    const shell::RunKey otherRun{QDate(2026, 12, 10), u(u"01"), u(u"03")};

    void insert(const char16_t* table, const std::vector<std::pair<QString, store::Value>>& cells) {
        QStringList names, marks;
        store::Binds binds;
        for (const auto& [name, value] : cells) {
            names << name;
            marks << u(u"?");
            binds.push_back(value);
        }
        cn_->execute(u(u"INSERT INTO %1(%2) VALUES(%3)").arg(u(table), names.join(u','), marks.join(u',')),
                     binds);
    }
    /// A row of S係数設定: coefficient k acts on the bases.
    void coefficient(int k, bool onA, bool onB, const char16_t* santei = u"1") {
        insert(u"S係数設定", {{u(u"配分区分Code"), run.haibunKubun},
                              {u(u"配分基準Code"), run.haibunKijun},
                              {u(u"設定名称"), u(u"%1").arg(k, 2, 10, QLatin1Char('0'))},
                              {u(u"算定方式"), santei},
                              {u(u"係数"), u(u"出来")},
                              {u(u"基礎額Ａ"), onA},
                              {u(u"基礎額Ｂ"), onB}});
    }
    void rounding(const char16_t* tanka, const char16_t* hasuu) {
        cn_->execute(u(u"DELETE FROM Tanka_hasuu"));
        insert(u"Tanka_hasuu", {{u(u"基準日"), run.kijunbi}, {u(u"単価"), tanka}, {u(u"端数処理"), hasuu}});
    }
    void budgetRow() { insert(u"S実行予算", keys(run)); }
    void assignee(const char16_t* code, store::Value individual = yen(0), store::Value pool = yen(0)) {
        auto cells = keys(run);
        cells.insert(cells.end(), {{u(u"社員Code"), code},
                                   {u(u"個人別計算"), individual},
                                   {u(u"総額配分"), pool},
                                   {u(u"金一封"), yen(7)},
                                   {u(u"特別加算金"), yen(8)},
                                   {u(u"合計"), yen(9)}});
        insert(u"S配分基準対応社員", cells);
    }
    void runRow(const char16_t* table, const Employee& employee, const shell::RunKey& key) {
        const auto& columns = store::tableNamed(u(table)).columns;
        auto cells = keys(key);
        cells.insert(cells.end(), {{u(u"社員Code"), employee.code},
                                   {u(u"基礎額Ａ"), employee.kisoA},
                                   {u(u"基礎額Ｂ"), employee.kisoB},
                                   {u(u"評価"), employee.hyouka},
                                   {columns[26].name, employee.payment}});
        for (int k = 1; k <= 18; ++k) {
            const auto given = employee.keisuu.find(k);
            cells.push_back({columns[static_cast<std::size_t>(6 + k)].name,
                             given == employee.keisuu.end() ? 1.0 : given->second});
        }
        insert(table, cells);
    }
    /// The employee's row of S実行個人別計算 and of S配分基準対応社員.
    void individual(const Employee& employee) {
        runRow(u"S実行個人別計算", employee, run);
        assignee(employee.code);
    }
    void pool(const Employee& employee) {
        runRow(u"S実行総額配分", employee, run);
        assignee(employee.code);
    }

    /// The cells of one column of a table, in stored order.
    std::vector<store::Value> column(const char16_t* table, const char16_t* name) {
        auto rows = cn_->prepare(u(u"SELECT %1 FROM %2 ORDER BY rowid").arg(u(name), u(table)));
        std::vector<store::Value> cells;
        while (rows.step()) cells.push_back(rows.value(0));
        return cells;
    }
    store::Value cell(const char16_t* table, const char16_t* name, std::size_t row = 0) {
        const auto cells = column(table, name);
        return row < cells.size() ? cells[row] : store::Value(u"(行なし)");
    }

    /// Runs a calculation as the screen does; what was there before comes back when it fails.
    template <typename Calculation>
    void inTransaction(Calculation&& calculation) {
        store::Transaction transaction(*cn_);
        calculation();
        transaction.commit();
    }
    /// Runs a calculation that must fail for this reason and leave nothing behind.
    template <typename Calculation>
    void expectRefusal(store::Error::Reason reason, Calculation&& calculation) {
        const QByteArray before = support::dump(*cn_);
        try {
            inTransaction(calculation);
            ADD_FAILURE() << "no failure";
        } catch (const store::Error& error) {
            EXPECT_EQ(error.reason(), reason) << error.what();
        }
        EXPECT_EQ(support::firstDifference(before, support::dump(*cn_)).toStdString(), "");
    }

  private:
    static std::vector<std::pair<QString, store::Value>> keys(const shell::RunKey& key) {
        return {{u(u"配分区分"), key.haibunKubun},
                {u(u"配分基準"), key.haibunKijun},
                {u(u"基準日"), key.kijunbi}};
    }

    support::CompanyFolder folder_;
    std::unique_ptr<store::Connection> cn_;
};

/// A readable message where two cells differ.
inline void expectCell(const store::Value& actual, const store::Value& expected, const char* what) {
    EXPECT_EQ(actual, expected) << what << ": " << actual.toText().toStdString() << ", expected "
                                << expected.toText().toStdString();
}

}  // namespace calctest
