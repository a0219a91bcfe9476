#include "prep/run_input.h"

#include <QHash>
#include <QMap>
#include <algorithm>
#include <cmath>

#include "design/run_filter.h"
#include "design/setup.h"
#include "prep/criterion_snapshot.h"
#include "schema/catalog.h"

namespace prep {
namespace {

namespace t = schema::tables;

const QString kInputError = QStringLiteral("入力エラー");
constexpr double kAmountLimit = 100000000;
constexpr double kCoefficientLimit = 1000;

// ---- The two walks in step -------------------------------------------------------------------------------

/// The rows of a run's table in the order in which a grid shows them.
struct TableRows {
    std::vector<qint64> ids;
    QStringList codes;
    std::vector<store::Value> values;
};

TableRows readTableRows(store::Connection& cn, const domain::RunKey& run, const QString& table,
                        const QString& column) {
    store::Statement row =
        cn.prepare(QStringLiteral("SELECT ID, 社員Code, %1 FROM %2 WHERE %3 ORDER BY Clng(社員Code), ID")
                       .arg(column, table, design::kRunFilter));
    row.bindAll(design::runBinds(run));
    TableRows rows;
    while (row.step()) {
        rows.ids.push_back(row.toInteger(0));
        rows.codes << row.toText(1);
        rows.values.push_back(row.value(2));
    }
    return rows;
}

/// Who stands in `codes` more often than in `others`; the first few by code.
QString surplus(const QStringList& codes, const QStringList& others) {
    QMap<QString, int> counts;
    for (const QString& code : codes) ++counts[code];
    for (const QString& code : others) --counts[code];
    QStringList more;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it)
        if (it.value() > 0) more << it.key();
    constexpr int kNamed = 5;
    const QString named = more.mid(0, kNamed).join(u'、');
    return more.size() > kNamed ? named + QStringLiteral(" ほか%1人").arg(more.size() - kNamed) : named;
}

/// As the menus of the run call what a table holds.
QString officeName(RunTable table) {
    switch (table) {
        case RunTable::TaiouSyain:
            return QStringLiteral("対象者⇔配分基準の対応");
        case RunTable::KojinBetsu:
            return QStringLiteral("個人別計算");
        case RunTable::SougakuHaibun:
            return QStringLiteral("総額配分");
    }
    Q_UNREACHABLE();
}

QString difference(RunTable table, const QStringList& inTable, const QStringList& inGrid) {
    QStringList lines{QStringLiteral("画面の社員と「%1」の社員が一致しないため、更新しませんでした。")
                          .arg(officeName(table))};
    const QString onlyTable = surplus(inTable, inGrid);
    const QString onlyGrid = surplus(inGrid, inTable);
    if (!onlyTable.isEmpty()) lines << QStringLiteral("画面にいない社員: ") + onlyTable;
    if (!onlyGrid.isEmpty()) lines << QStringLiteral("登録先にいない社員: ") + onlyGrid;
    if (lines.size() == 1) lines << QStringLiteral("社員の並び順が異なります。");
    lines << QStringLiteral("個人データの取込と、対象者⇔配分基準の対応を確かめてください。");
    return lines.join(u'\n');
}

store::TypeKind kindOf(const QString& table, const QString& column) {
    for (const schema::Column& c : schema::tableNamed(table).columns)
        if (c.name == column) return c.type.kind;
    store::throwTypeMismatch();
}

/// What a typed text is to its column: an amount, a number, or the text itself.
store::Value stored(const QString& text, store::TypeKind kind) {
    if (kind == store::TypeKind::Text) return text;
    if (kind == store::TypeKind::Currency) return store::Value(text).toMoney();
    return store::Value(text).toDouble();
}

/// The list of the criterion by 社員Code. Joined in memory: the engine has no index there to join by.
QHash<QString, InputRow> readPeople(store::Connection& cn) {
    store::Statement row =
        cn.prepare(QStringLiteral("SELECT 氏名, 所属大名, 役職名, 社員Code FROM IdoChuusyutsuMax3"));
    QHash<QString, InputRow> people;
    while (row.step())
        people.insert(row.toText(3), {{}, row.toText(0), row.toText(1), row.toText(2), row.toText(3)});
    return people;
}

// ---- Cells -----------------------------------------------------------------------------------------------

double numberOf(const QString& text) {
    const double number = store::parseNumber(text).value_or(0);
    return std::isfinite(number) ? number : 0;
}

QString formatAmount(const QString& text) {
    const std::optional<double> yen = store::parseNumber(text);
    return yen && std::fabs(*yen) < 1e14 ? store::formatGrouped(store::Money::fromDouble(*yen)) : text;
}

QString formatFactor(const QString& text) {
    const std::optional<double> number = store::parseNumber(text);
    return number && std::isfinite(*number) ? store::formatCoefficient(*number) : text;
}

/// A number a cell may hold; NaN, which fails every comparison, for a text that is none.
double judged(const QString& text) {
    return store::parseNumber(text).value_or(std::nan(""));
}

std::optional<Refusal> refuseNoNumber(const QString& text) {
    if (text.isEmpty()) return refuseEmpty(text);
    if (store::parseNumber(text)) return {};
    QString said = QStringLiteral("「%1」は数字として読めません。").arg(text);
    if (text.contains(u','))
        said +=
            QStringLiteral("\nカンマ（,）は３桁ごとの区切りです。小数点はピリオド（.）で入力してください。");
    return Refusal{said, kInputError};
}

CellRules amountRules(double least, const QString& hint, const Refusal& empty) {
    CellRules rules;
    rules.heading = QStringLiteral("金額");
    rules.hint = hint;
    rules.characters = QStringLiteral("0123456789");
    rules.format = formatAmount;
    rules.settle = formatAmount;
    rules.number = numberOf;
    const auto outside = [least](const QString& text) -> std::optional<Refusal> {
        if (auto refusal = refuseNoNumber(text)) return refusal;
        const double yen = judged(text);
        if (yen >= least && yen < kAmountLimit) return {};
        return Refusal{QStringLiteral("1～99,999,999円を入力してください。"), kInputError};
    };
    rules.leave = [outside, empty](const QString& text) { return text.isEmpty() ? empty : outside(text); };
    rules.save = outside;
    return rules;
}

std::optional<Refusal> leaveCoefficient(const QString& text) {
    const QString one = QStringLiteral("1");
    if (text.isEmpty())
        return Refusal{QStringLiteral("空欄なので1.000にします。"), QStringLiteral("空欄1.000表示"), one};
    const double factor = judged(text);
    if (!(factor >= 0))
        return Refusal{QStringLiteral("不正な入力がありました。暫定的に1.000にします。"), kInputError, one};
    if (factor == 0) return Refusal{QStringLiteral("0.000は暫定的に1.000にします。"), kInputError, one};
    if (factor >= kCoefficientLimit)
        return Refusal{QStringLiteral("999.999以下を入力してください。"), kInputError};
    return {};
}

std::optional<Refusal> saveCoefficient(const QString& text) {
    if (auto refusal = refuseNoNumber(text)) return refusal;
    const double factor = judged(text);
    if (!(factor > 0)) return Refusal{QStringLiteral("0.001以上を入力してください。"), kInputError};
    if (factor >= kCoefficientLimit)
        return Refusal{QStringLiteral("999.999以下を入力してください。"), kInputError};
    return {};
}

}  // namespace

std::vector<InputRow> loadInputRows(store::Connection& cn, const domain::RunKey& run,
                                    const InputTarget& target) {
    SelectIntoX3(cn, run, target.table);
    const QHash<QString, InputRow> people = readPeople(cn);
    store::Statement row =
        cn.prepare(QStringLiteral("SELECT 社員Code, %1 FROM %2 WHERE %3 ORDER BY Clng(社員Code), ID")
                       .arg(target.column, runTableName(target.table), design::kRunFilter));
    row.bindAll(design::runBinds(run));
    std::vector<InputRow> rows;
    while (row.step()) {
        const auto person = people.constFind(row.toText(0));
        if (person == people.cend()) continue;
        rows.push_back(*person);
        rows.back().value = row.value(1);
        rows.back().text = rows.back().read = rows.back().value.toText();
    }
    return rows;
}

std::optional<QString> writeInputRows(store::Connection& cn, const domain::RunKey& run,
                                      const InputTarget& target, const std::vector<InputRow>& rows) {
    const QString table = runTableName(target.table);
    const TableRows there = readTableRows(cn, run, table, target.column);
    QStringList codes;
    for (const InputRow& row : rows) codes << row.syainCode;
    if (codes != there.codes) return difference(target.table, there.codes, codes);

    const store::TypeKind kind = kindOf(table, target.column);
    store::Statement update =
        cn.prepare(QStringLiteral("UPDATE %1 SET %2 = ? WHERE ID = ?").arg(table, target.column));
    update.into(schema::typesOf(schema::tableNamed(table), {target.column}));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const bool untouched = !rows[i].value.isNull() && rows[i].text == rows[i].read;
        const store::Value value = untouched ? rows[i].value : stored(rows[i].text, kind);
        if (value != there.values[i]) update.bind(1, value).bind(2, there.ids[i]).run();
    }
    return {};
}

void storeTypedTotal(store::Connection& cn, const domain::RunKey& run, const QString& column) {
    store::Statement sum = cn.prepare(
        QStringLiteral("SELECT Sum(%1) FROM S配分基準対応社員 WHERE %2").arg(column, design::kRunFilter));
    sum.bindAll(design::runBinds(run));
    sum.step();
    const store::Value total = sum.isNull(0) ? store::Value() : store::Value(sum.toMoney(0));
    sum.reset();

    store::Binds binds = design::runBinds(run);
    binds.insert(binds.begin(), total);
    const QString totalColumn = column + QStringLiteral("合計");
    const int changed =
        cn.execute(QStringLiteral("UPDATE S実行予算 SET %1 = ?1 WHERE ID = (SELECT min(ID) FROM S実行予算 "
                                  "WHERE 基準日 = ?2 AND 配分区分 = ?3 AND 配分基準 = ?4)")
                       .arg(totalColumn),
                   binds);
    if (changed == 0)
        cn.execute(QStringLiteral("INSERT INTO S実行予算(%1, 基準日, 配分区分, 配分基準) VALUES(?, ?, ?, ?)")
                       .arg(totalColumn),
                   binds);
}

// ---- Coefficients ----------------------------------------------------------------------------------------

QString coefficientColumn(const QString& setteiMeisyou) {
    const auto kind = domain::CoefficientKind::ofNumber(setteiMeisyou.toInt());
    if (!kind) store::throwTypeMismatch();
    return kind->name();
}

std::vector<Coefficient> listCoefficients(store::Connection& cn, const domain::RunKey& run,
                                          const QString& santeiHoushiki, bool correction) {
    using design::Input;
    const auto offered = [correction](const design::CoefficientUse& use) {
        return correction ? use.input == Input::Automatic || use.input == Input::Other
                          : use.input == Input::Typed;
    };
    std::vector<Coefficient> list;
    for (const auto& use : design::readSetup(cn, run).of(santeiHoushiki).inOrder(offered))
        list.push_back({use.code, use.name});
    return list;
}

bool sisterTypesIn(store::Connection& cn, const domain::RunKey& run, const QString& otherHoushiki,
                   const QString& setteiMeisyou) {
    const design::MethodSetup setup = design::readSetup(cn, run).of(otherHoushiki);
    return std::count_if(setup.coefficients.begin(), setup.coefficients.end(), [&](const auto& use) {
               return use.code == setteiMeisyou && use.input == design::Input::Typed;
           }) == 1;
}

// ---- Cells -----------------------------------------------------------------------------------------------

std::optional<Refusal> refuseEmpty(const QString& text) {
    if (!text.isEmpty()) return {};
    return Refusal{QStringLiteral("未入力ヶ所があります"), QStringLiteral("未入力")};
}

CellRules typedAmountRules() {
    return amountRules(
        0, QStringLiteral("0～99,999,999円を入力してください"),
        {QStringLiteral("空欄なので0にします。"), QStringLiteral("空欄0表示"), QStringLiteral("0")});
}

CellRules baseAmountRules() {
    return amountRules(1, QStringLiteral("1～99,999,999円を入力してください"),
                       {QStringLiteral("空欄なので10000にします。"), QStringLiteral("空欄10000表示"),
                        QStringLiteral("10000")});
}

CellRules coefficientRules() {
    CellRules rules;
    rules.heading = QStringLiteral("係数");
    rules.hint = QStringLiteral("0.001～999.999を入力してください");
    rules.characters = QStringLiteral("0123456789.");
    rules.format = formatFactor;
    rules.number = numberOf;
    rules.leave = leaveCoefficient;
    rules.save = saveCoefficient;
    return rules;
}

QString keisan(const QString& dividend, const QString& divisor) {
    const QString zero = QStringLiteral("0");
    if (dividend == zero || divisor == zero) return store::formatCoefficient(0);
    const auto clng = [](const QString& text) {
        const qint64 number = store::Value(text).toInteger();
        if (number != static_cast<qint32>(number)) store::throwOverflow();
        return static_cast<double>(number);
    };
    const double below = clng(divisor);
    if (below == 0) store::throwDivideByZero();
    return store::formatCoefficient(clng(dividend) / below);
}

}  // namespace prep
