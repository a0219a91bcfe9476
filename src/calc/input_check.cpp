#include "calc/input_check.h"

#include <QHash>
#include <algorithm>

#include "calc/decision_rows.h"
#include "calc/scratch_tables.h"
#include "design/run_filter.h"
#include "design/setup.h"
#include "schema/catalog.h"
#include "store/work.h"

namespace calc {
namespace {

using design::Houshiki;
namespace run_t = schema::tables::S実行個人別計算;
namespace pool_t = schema::tables::S実行総額配分;
namespace names_t = schema::tables::S係数名称設定;

static_assert(int{run_t::基礎額Ａ} == int{pool_t::基礎額Ａ});

const QString kCheck = QStringLiteral("SJCheck");
const QString kHeadings = QString::fromUtf16(schema::tables::SJCheck2::kName);
constexpr int kBeside = 2;  ///< 社員Code and 氏名 stand before the columns in use

/// What differs between the two methods.
struct Source {
    QString table;
    QString factor;  ///< the coefficient column behind 評価
    QString title;
};
Source sourceOf(Houshiki method) {
    if (method == Houshiki::Kojinbetsu)
        return {QString::fromUtf16(run_t::kName), QStringLiteral("支給係数"),
                QStringLiteral("◆基礎額・係数の入力状況チェック【個人別計算】")};
    return {QString::fromUtf16(pool_t::kName), QStringLiteral("賞与係数"),
            QStringLiteral("◆基礎額・係数の入力状況チェック【総額配分】")};
}

QHash<QString, QString> readNames(store::Connection& cn) {
    QHash<QString, QString> names;
    const auto rows = cn.query(QStringLiteral("select * from S係数名称設定"));
    for (int i = 0; i < rows.recordCount(); ++i)
        names.insert(rows.valueAt(i, names_t::Code).toText(), rows.valueAt(i, names_t::係数名称).toText());
    return names;
}

/// The twelfth kind's name in SJCheck. Names of columns differ in more than the case of a letter.
void nameAfterCompany(std::vector<CheckColumn>& columns, const QString& ownName, const QString& factor) {
    const auto column = std::find_if(columns.begin(), columns.end(),
                                     [&](const CheckColumn& used) { return used.source == ownName; });
    if (column == columns.end() || column->heading == ownName) return;
    const QString wanted = column->heading + QStringLiteral("係数");
    const auto same = [&](const QString& name) { return name.compare(wanted, Qt::CaseInsensitive) == 0; };
    if (!same(factor) && std::none_of(columns.begin(), columns.end(),
                                      [&](const CheckColumn& used) { return same(used.name); }))
        column->name = wanted;
}

/// A column's name in a statement. It may come from the company's own names, so it is quoted.
QString quoted(QString name) {
    return u'"' + name.replace(u'"', QStringLiteral("\"\"")) + u'"';
}

void createCheck(store::Connection& cn, const std::vector<CheckColumn>& columns, const QString& factor) {
    using store::TypeKind;
    const auto column = [](const QString& name, store::ColumnType type) {
        return quoted(name) + u' ' + store::declarationOf(type);
    };
    QStringList all{column(QStringLiteral("社員Code"), {TypeKind::Text, 6}),
                    column(QStringLiteral("氏名"), {TypeKind::Text, 30})};
    for (const CheckColumn& used : columns)
        all << column(used.name, {used.amount ? TypeKind::Currency : TypeKind::Double, 0});
    all << column(QStringLiteral("評価"), {TypeKind::Text, 2}) << column(factor, {TypeKind::Double, 0})
        << column(QStringLiteral("合計"), {TypeKind::Currency, 0})
        << column(QStringLiteral("ID"), {TypeKind::Counter, 0});
    dropScratch(cn, kCheck);
    cn.execute(QStringLiteral("CREATE TABLE %1(%2)").arg(kCheck, all.join(u',')));
}

void fillCheck(store::Connection& cn, const domain::RunKey& run, const Source& source,
               const std::vector<CheckColumn>& columns) {
    createCheck(cn, columns, source.factor);
    QStringList into{QStringLiteral("社員Code"), QStringLiteral("氏名")};
    QStringList from{source.table + QStringLiteral(".社員Code"), QStringLiteral("履歴書テーブル.氏名")};
    for (const CheckColumn& column : columns) {
        into << quoted(column.name);
        from << source.table + u'.' + column.source;
    }
    for (const QString& last : {QStringLiteral("評価"), source.factor, QStringLiteral("合計")}) {
        into << last;
        from << source.table + u'.' + last;
    }
    cn.execute(
        QStringLiteral("INSERT INTO %1(%2) SELECT %3 FROM %4 INNER JOIN 履歴書テーブル ON %4.社員Code = "
                       "履歴書テーブル.社員Code WHERE %5 ORDER BY %4.ID")
            .arg(kCheck, into.join(u','), from.join(u','), source.table, design::kRunFilter),
        design::runBinds(run));
}

QStringList headingLine(store::Connection& cn, const std::vector<CheckColumn>& columns,
                        const QString& factor) {
    createScratch(cn, kHeadings);
    auto insert = cn.prepare(QStringLiteral("INSERT INTO %1(係数名称) VALUES(?)").arg(kHeadings));
    for (const CheckColumn& column : columns) insert.bind(1, column.heading).run();
    QStringList line{QStringLiteral("社員Code"), QStringLiteral("氏名")};
    auto rows = cn.prepare(QStringLiteral("SELECT 係数名称 FROM %1 ORDER BY ID").arg(kHeadings));
    while (rows.step()) line << rows.toText(0);
    return line << QStringLiteral("評価") << factor << QStringLiteral("合計");
}

/// A coefficient or nothing, into a cell.
void setFactor(reports::SheetGrid& grid, int row, int column, const std::optional<double>& factor) {
    if (factor) grid.setNumber(row, column, *factor, reports::NumberLook::Factor);
}
std::optional<double> factorOf(const store::Statement& row, int column) {
    return row.isNull(column) ? std::nullopt : std::optional(row.toDouble(column));
}
std::optional<store::Money> amountOf(const store::Statement& row, int column) {
    return row.isNull(column) ? std::nullopt : std::optional(row.toMoney(column));
}

/// 支給係数 as the calculation used it, by employee; of several rows the first one counts.
QHash<QString, std::optional<double>> usedPaymentFactors(store::Connection& cn, const domain::RunKey& run) {
    QHash<QString, std::optional<double>> factors;
    for (const DecisionRow& row : decisionRows(cn, run, Houshiki::Kojinbetsu))
        if (!factors.contains(row.syainCode)) factors.insert(row.syainCode, row.keisuu);
    return factors;
}

void addEmployees(store::Connection& cn, const domain::RunKey& run, Houshiki method,
                  const std::vector<CheckColumn>& columns, reports::SheetGrid& grid) {
    QHash<QString, std::optional<double>> decided;
    if (method == Houshiki::Kojinbetsu) decided = usedPaymentFactors(cn, run);
    auto row = cn.prepare(QStringLiteral("SELECT * FROM %1 ORDER BY Clng(社員Code), ID").arg(kCheck));
    for (int line = reports::kFirstListRow; row.step(); ++line) {
        grid.setTexts(line, {row.toText(0), row.toText(1)});
        int at = kBeside;
        for (const CheckColumn& column : columns) {
            if (column.amount)
                grid.setAmount(line, at + 1, amountOf(row, at));
            else
                setFactor(grid, line, at + 1, factorOf(row, at));
            ++at;
        }
        grid.setText(line, at + 1, row.toText(at));
        setFactor(grid, line, at + 2,
                  method == Houshiki::Kojinbetsu ? decided.value(row.toText(0)) : factorOf(row, at + 1));
        grid.setAmount(line, at + 3, amountOf(row, at + 2));
    }
}

}  // namespace

std::vector<CheckColumn> checkColumns(store::Connection& cn, const domain::RunKey& run, Houshiki method) {
    const auto& columns = schema::tableNamed(QString::fromUtf16(run_t::kName)).columns;
    const design::MethodSetup inUse = design::readSetup(cn, run).of(method);
    const QHash<QString, QString> names = readNames(cn);
    std::vector<CheckColumn> used;
    const auto addBase = [&](std::size_t position) {
        const QString& name = columns[position].name;
        used.push_back({name, name, name, true});
    };
    if (inUse.baseActs(design::Base::A)) addBase(run_t::基礎額Ａ);
    if (inUse.baseActs(design::Base::B)) addBase(run_t::基礎額Ｂ);
    for (const domain::CoefficientKind kind : domain::CoefficientKind::all()) {
        if (!inUse.anyCoefficient([kind](const auto& use) { return use.kind == kind; })) continue;
        const QString ownName = names.value(kind.code());
        used.push_back({kind.name(), kind.name(), ownName.isEmpty() ? kind.name() : ownName, false});
    }
    nameAfterCompany(used, columns[run_t::自由2係数].name, sourceOf(method).factor);
    return used;
}

reports::SheetGrid inputCheckSheet(store::Connection& cn, const domain::RunKey& run, Houshiki method,
                                   const QString& kubunMei, const QString& kijunMei) {
    const Source source = sourceOf(method);
    const auto columns = checkColumns(cn, run, method);
    store::Work work(cn);
    fillCheck(cn, run, source, columns);
    reports::SheetGrid grid;
    grid.setText(1, 1, QStringLiteral("◆") + kubunMei + QStringLiteral("／") + kijunMei + source.title);
    grid.setTexts(reports::kFirstListRow - 1, headingLine(cn, columns, source.factor));
    addEmployees(cn, run, method, columns, grid);
    for (const QString& table : {kCheck, kHeadings}) dropScratch(cn, table);
    work.commit();
    return grid;
}

}  // namespace calc
