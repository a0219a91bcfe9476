#include "calc/annual.h"

#include <QHash>

#include "calc/run_rows.h"
#include "calc/scratch_tables.h"
#include "schema/catalog.h"
#include "store/work.h"

namespace calc {
namespace {

using store::Money;
namespace nenkan_t = schema::tables::SNenkan;
namespace hojo_t = schema::tables::SNenkanhojo;

const QString kNenkan = QString::fromUtf16(nenkan_t::kName);
const QString kHojo = QString::fromUtf16(hojo_t::kName);

static_assert(nenkan_t::合計 - nenkan_t::kijunbi_1 == int{kNenkanDates} &&
              int{nenkan_t::kijunbi_1} == int{hojo_t::kijunbi_1});

/// One row of SNenkanhojo per row of S配分基準対応社員; a Null among the four amounts makes a Null.
void collect(store::Connection& cn, std::size_t column, QDate date) {
    cn.execute(
        QStringLiteral(
            "INSERT INTO %1(社員Code, 氏名, %2) SELECT S配分基準対応社員.社員Code, 履歴書テーブル.氏名,"
            " S配分基準対応社員.個人別計算 + S配分基準対応社員.総額配分 + S配分基準対応社員.金一封"
            " + S配分基準対応社員.特別加算金"
            " FROM 履歴書テーブル INNER JOIN S配分基準対応社員"
            " ON 履歴書テーブル.社員Code = S配分基準対応社員.社員Code"
            " WHERE 基準日 = ? ORDER BY Clng(S配分基準対応社員.社員Code), S配分基準対応社員.ID")
            .arg(kHojo, schema::tableNamed(kHojo).columns[hojo_t::kijunbi_1 + column].name),
        {date});
}

/// What an employee's rows of SNenkanhojo come to.
struct Year {
    QString simei;
    std::array<std::optional<Money>, kNenkanDates> cells;
    Money total;
};

QHash<QString, Year> readYears(store::Connection& cn) {
    auto row = cn.prepare(QStringLiteral("SELECT * FROM %1 ORDER BY rowid").arg(kHojo));
    QHash<QString, Year> years;
    while (row.step()) {
        const QString code = row.toText(hojo_t::社員Code);
        auto year = years.find(code);
        if (year == years.end()) year = years.insert(code, {row.toText(hojo_t::氏名), {}, {}});
        for (std::size_t n = 0; n < kNenkanDates; ++n) {
            const int column = hojo_t::kijunbi_1 + static_cast<int>(n);
            if (row.isNull(column) || row.toMoney(column) == Money()) continue;
            year->cells[n] = row.toMoney(column);
            year->total += *year->cells[n];
        }
    }
    return years;
}

void writeYears(store::Connection& cn, const QHash<QString, Year>& years) {
    auto insert = cn.prepare(
        QStringLiteral("INSERT INTO %1(%2) VALUES(?,?,?,?,?,?,?)").arg(kNenkan, nenkanColumns().join(u',')));
    auto employee = cn.prepare(QStringLiteral("SELECT 社員Code FROM 履歴書テーブル"));
    while (employee.step()) {
        const QString code = employee.toText(0);
        const auto year = years.constFind(code);
        if (year == years.cend()) continue;
        insert.bind(1, code).bind(2, year->simei);
        for (std::size_t n = 0; n < kNenkanDates; ++n)
            bindOptional(insert, nenkan_t::kijunbi_1 + 1 + static_cast<int>(n), year->cells[n]);
        insert.bind(nenkan_t::合計 + 1, year->total).run();
    }
}

std::vector<ResultRow> readNenkan(store::Connection& cn) {
    auto row = cn.prepare(QStringLiteral("SELECT * FROM %1 ORDER BY Clng(社員Code), rowid").arg(kNenkan));
    std::vector<ResultRow> rows;
    while (row.step()) {
        ResultRow line{row.toText(nenkan_t::社員Code), row.toText(nenkan_t::氏名), {}};
        for (std::size_t i = 0; i < line.amounts.size(); ++i) {
            const int column = nenkan_t::kijunbi_1 + static_cast<int>(i);
            if (!row.isNull(column)) line.amounts[i] = row.toMoney(column);
        }
        rows.push_back(std::move(line));
    }
    return rows;
}

}  // namespace

std::vector<QDate> nenkanChoices(store::Connection& cn) {
    auto row = cn.prepare(QStringLiteral("SELECT 基準日 FROM Sデータ取込年月日運用 ORDER BY CDate(基準日)"));
    std::vector<QDate> dates;
    while (row.step()) dates.push_back(row.toDate(0));
    return dates;
}

std::vector<ResultRow> nenkanRows(store::Connection& cn, const NenkanDates& dates) {
    store::Work work(cn);
    for (const QString& table : {kNenkan, kHojo}) createScratch(cn, table);
    for (std::size_t n = 0; n < kNenkanDates; ++n)
        if (dates[n].isValid()) collect(cn, n, dates[n]);
    writeYears(cn, readYears(cn));
    auto rows = readNenkan(cn);
    for (const QString& table : {kNenkan, kHojo}) dropScratch(cn, table);
    work.commit();
    return rows;
}

QStringList nenkanColumns() {
    QStringList names;
    for (const schema::Column& column : schema::tableNamed(kNenkan).columns) names << column.name;
    return names;
}

QStringList nenkanHeadings(const NenkanHeads& heads) {
    QStringList headings{QStringLiteral("社員Code"), QStringLiteral("氏名")};
    for (const QString& head : heads) headings << head;
    return headings << QStringLiteral("合計");
}

reports::SheetGrid nenkanSheet(const NenkanHeads& heads, const std::vector<ResultRow>& rows) {
    reports::SheetGrid grid;
    grid.setText(1, 1, QStringLiteral("年間賞与支給額"));
    grid.setTexts(reports::kFirstListRow - 1, nenkanHeadings(heads));
    addResultRows(grid, rows);
    return grid;
}

}  // namespace calc
