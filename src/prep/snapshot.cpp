#include "prep/snapshot.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include "domain/coefficients.h"
#include "schema/catalog.h"
#include "store/row_edit.h"

namespace prep {
namespace {

namespace t = schema::tables;

/// The run tables of a date in the order in which they are emptied.
constexpr const char16_t* kTablesOfDate[] = {
    t::S実行個人別計算::kName,   t::S実行個人別計算決定::kName, t::S実行総額配分::kName,
    t::S実行総額配分決定::kName, t::S実行予算::kName,           t::S配分基準グループＹＮ::kName,
    t::S配分基準対応社員::kName, t::Sshikyuukeisuu::kName,      t::SshikyuukeisuuHA::kName,
};

/// How a new row of a table starts, position by position behind the key; both calculations begin alike.
store::Binds newRowDefaults(RunTable table) {
    if (table == RunTable::TaiouSyain) return store::Binds(5, store::Money());
    store::Binds defaults(2, store::Money::fromYen(10000));
    defaults.insert(defaults.end(), domain::kCoefficients, 1.0);
    defaults.push_back(QString());
    defaults.push_back(1.0);
    return defaults;
}

/// "INSERT INTO <table>(社員Code, …) VALUES(?, …)" over the columns behind the counter.
QString insertStatement(const QString& table, int columns) {
    QStringList names;
    for (int i = 1; i <= columns; ++i) names << schema::tableNamed(table).columns[std::size_t(i)].name;
    const QStringList marks(columns, QStringLiteral("?"));
    return QStringLiteral("INSERT INTO %1(%2) VALUES(%3)").arg(table, names.join(u','), marks.join(u','));
}

/// 社員Code, 配分区分, 配分基準, 基準日 stand behind the counter in all three tables.
constexpr int kKeyColumns = 4;

/// What carries forward: the criterion of one employee at one earlier date.
struct EarlierRow {
    QDate kijunbi;
    store::Value haibunKubun;
    store::Value haibunKijun;
};

struct EarlierRows {
    QHash<QString, EarlierRow>
        latest;             ///< by 社員Code: the row made first at the latest date before the new one
    QSet<QString> present;  ///< who has a row at the new date already
};

EarlierRows readEarlierRows(store::Connection& cn, const QString& table, QDate kijunbi) {
    EarlierRows rows;
    store::Statement statement = cn.prepare(
        QStringLiteral("SELECT 社員Code,配分区分,配分基準,基準日 FROM %1 WHERE 基準日 <= ? ORDER BY ID")
            .arg(table));
    statement.bind(1, store::Value(kijunbi));
    while (statement.step()) {
        const QString code = statement.toText(0);
        const QDate date = statement.toDate(3);
        if (date == kijunbi) {
            rows.present.insert(code);
            continue;
        }
        EarlierRow& latest = rows.latest[code];
        if (!latest.kijunbi.isValid() || date > latest.kijunbi)
            latest = {date, statement.value(1), statement.value(2)};
    }
    return rows;
}

QStringList snapshotCodes(store::Connection& cn) {
    QStringList codes;
    store::Statement statement =
        cn.prepare(QStringLiteral("SELECT 社員Code FROM IdoChuusyutsuMax2 ORDER BY rowid"));
    while (statement.step()) codes << statement.toText(0);
    return codes;
}

void carryForward(store::Connection& cn, RunTable table, QDate kijunbi, const QStringList& codes) {
    EarlierRows rows = readEarlierRows(cn, runTableName(table), kijunbi);
    RunRowWriter writer(cn, table, kijunbi);
    for (const QString& code : codes) {
        const auto earlier = rows.latest.constFind(code);
        if (earlier == rows.latest.constEnd() || rows.present.contains(code)) continue;
        writer.add(code, earlier->haibunKubun, earlier->haibunKijun);
        rows.present.insert(code);
    }
}

}  // namespace

QString dateTable(Side side) {
    return QString::fromUtf16(side == Side::Sekkei ? t::Sデータ取込年月日設計::kName
                                                   : t::Sデータ取込年月日運用::kName);
}

std::vector<QDate> listDates(store::Connection& cn, Side side) {
    std::vector<QDate> dates;
    store::Statement statement =
        cn.prepare(QStringLiteral("SELECT 基準日 FROM %1 ORDER BY CDate(基準日)").arg(dateTable(side)));
    while (statement.step()) dates.push_back(statement.toDate(0));
    return dates;
}

bool hasDate(store::Connection& cn, Side side, QDate kijunbi) {
    return readDates(cn, side, kijunbi).has_value();
}

std::optional<personnel::PositionDates> readDates(store::Connection& cn, Side side, QDate kijunbi) {
    store::Statement statement =
        cn.prepare(QStringLiteral("SELECT 基準日,年齢算出年月日,勤続年数算出年月日 FROM %1 WHERE 基準日 = ?")
                       .arg(dateTable(side)));
    statement.bind(1, store::Value(kijunbi));
    if (!statement.step()) return std::nullopt;
    return personnel::PositionDates{statement.toDate(0), statement.toDate(1), statement.toDate(2)};
}

void SelectIntoX(store::Connection& cn, const personnel::PositionDates& dates) {
    personnel::SelectIntoX(cn, dates, personnel::WhoCounts::EmployedAtDate);
}

bool snapshotIsEmpty(store::Connection& cn) {
    return !cn.prepare(QStringLiteral("SELECT 社員Code FROM IdoChuusyutsuMax2 LIMIT 1")).step();
}

void addDate(store::Connection& cn, Side side, const personnel::PositionDates& dates) {
    cn.execute(QStringLiteral("INSERT INTO %1(基準日,年齢算出年月日,勤続年数算出年月日) VALUES(?,?,?)")
                   .arg(dateTable(side)),
               {dates.kijunbi, dates.nenrei_kijunbi, dates.kinzoku_kijunbi});
    store::Statement assigned =
        cn.prepare(QStringLiteral("SELECT ID FROM S配分基準対応社員 WHERE 基準日 = ? LIMIT 1"));
    assigned.bind(1, store::Value(dates.kijunbi));
    if (!assigned.step()) datasakusei(cn, dates.kijunbi);
}

void removeDate(store::Connection& cn, Side side, QDate kijunbi) {
    const store::Recordset rows = cn.open({dateTable(side), QStringLiteral("基準日 = ?"), {kijunbi}, {}});
    if (side == Side::Jikkou) sakusyuukei(cn, kijunbi);
    // Two rows of one date are nothing that this program makes: which of them to drop is not ours to guess.
    if (rows.recordCount() == 1) store::RowEdit(cn, rows, 0).remove();
}

QString bonusTextOf(store::Connection& cn, QDate kijunbi) {
    auto row = cn.prepare(QStringLiteral("SELECT 賞与の内容 FROM Sデータ取込年月日運用 WHERE 基準日 = ?"));
    row.bind(1, store::Value(kijunbi));
    return row.step() && !row.isNull(0) ? row.toText(0) : QString();
}

void storeBonusText(store::Connection& cn, QDate kijunbi, const QString& text) {
    cn.prepare(QStringLiteral("UPDATE Sデータ取込年月日運用 SET 賞与の内容 = ? WHERE 基準日 = ?"))
        .into(schema::typesOf(schema::tableNamed(dateTable(Side::Jikkou)), {QStringLiteral("賞与の内容")}))
        .bind(1, text.isEmpty() ? store::Value() : store::Value(text))
        .bind(2, kijunbi)
        .run();
}

DateContents contentsOf(store::Connection& cn, QDate kijunbi) {
    auto row = cn.prepare(QStringLiteral(
        "SELECT Count(DISTINCT 社員Code), Sum(coalesce(個人別計算, 0) + coalesce(総額配分, 0) + "
        "coalesce(金一封, 0) + coalesce(特別加算金, 0)) FROM S配分基準対応社員 WHERE 基準日 = ?"));
    row.bind(1, store::Value(kijunbi));
    row.step();
    return {row.toInteger(0), row.isNull(1) ? store::Money() : row.toMoney(1)};
}

void datasakusei(store::Connection& cn, QDate kijunbi) {
    const QStringList codes = snapshotCodes(cn);
    for (RunTable table : kRunTables) carryForward(cn, table, kijunbi, codes);
}

void sakusyuukei(store::Connection& cn, QDate kijunbi) {
    for (const char16_t* table : kTablesOfDate)
        cn.execute(QStringLiteral("DELETE FROM %1 WHERE 基準日 = ?").arg(QString::fromUtf16(table)),
                   {kijunbi});
}

QString runTableName(RunTable table) {
    switch (table) {
        case RunTable::TaiouSyain:
            return QString::fromUtf16(t::S配分基準対応社員::kName);
        case RunTable::KojinBetsu:
            return QString::fromUtf16(t::S実行個人別計算::kName);
        case RunTable::SougakuHaibun:
            return QString::fromUtf16(t::S実行総額配分::kName);
    }
    Q_UNREACHABLE();
}

RunRowWriter::RunRowWriter(store::Connection& cn, RunTable table, QDate kijunbi)
    : insert_(
          cn.prepare(insertStatement(runTableName(table), kKeyColumns + int(newRowDefaults(table).size())))) {
    const store::Binds defaults = newRowDefaults(table);
    insert_.bind(kKeyColumns, store::Value(kijunbi));
    for (std::size_t i = 0; i < defaults.size(); ++i) insert_.bind(kKeyColumns + 1 + int(i), defaults[i]);
}

void RunRowWriter::add(const QString& syainCode, const store::Value& haibunKubun,
                       const store::Value& haibunKijun) {
    insert_.bind(1, store::Value(syainCode)).bind(2, haibunKubun).bind(3, haibunKijun);
    insert_.run();
}

}  // namespace prep
