#include "sample_companions.h"

#include <QHash>
#include <algorithm>
#include <functional>

#include "sample_random.h"
#include "sample_writer.h"

namespace t = schema::tables;

namespace sample {

const std::vector<EvaluationDate> kEvaluationDates = {
    {QDate(2025, 11, 20), u"02"},
    {QDate(2026, 3, 20), u"03"},
    {QDate(2026, 6, 20), u"01"},
    {QDate(2026, 11, 20), u"02"},
};

namespace {

constexpr int kFew = 8;  ///< people in the tables that no run reads

const std::vector<QDate>& wageDates() {
    static const std::vector<QDate> dates{QDate(2025, 4, 1), QDate(2025, 10, 1), QDate(2026, 4, 1),
                                          QDate(2026, 10, 1)};
    return dates;
}

int titleAllowance(const Position& position) {
    static constexpr int kYen[] = {80000, 60000, 50000, 20000, 10000, 0};
    return kYen[position.yakusyoku[1] - u'1'];
}

Wage wageAt(const Person& person, const Position& position, QDate date) {
    Random random(person.number, Purpose::Wage);
    const int age = wholeYears(person.birth, date);
    Wage wage;
    wage.date = date;
    wage.basicPay = {150000 + age * 1800 + random.below(40) * 100, position.toukyuu * 8500};
    wage.allowances = {titleAllowance(position), random.chance(50) ? 12000 + 5000 * random.below(3) : 0,
                       5000 + random.below(30) * 500};
    return wage;
}

/// A cell of a companion's table that the program only keeps in step: by the meaning of its column's name.
store::Value companionCell(const QString& column, const Person& person, const Position& position) {
    static const QString kEvaluator = QStringLiteral("000003");
    const QString name = QString(column).remove(QStringLiteral("Code"));
    const QHash<QString, store::Value> cells{
        {QStringLiteral("社員"), person.code},
        {QStringLiteral("氏名"), person.name},
        {QStringLiteral("評価者"), kEvaluator},
        {QStringLiteral("基準日"), QDate(2026, 4, 1)},
        {QStringLiteral("社員区分"), text(position.syainKubun)},
        {QStringLiteral("所属大"), text(position.syozokuDai)},
        {QStringLiteral("所属小"), text(position.syozokuSyou)},
        {QStringLiteral("役職"), text(position.yakusyoku)},
        {QStringLiteral("職種"), text(position.syokusyu)},
        {QStringLiteral("コース"), text(position.course)},
        {QStringLiteral("等級"), QString::number(position.toukyuu)},
        {QStringLiteral("年齢"), wholeYears(person.birth, QDate(2026, 4, 1))},
        {QStringLiteral("勤続年数"), wholeYears(person.joined, QDate(2026, 4, 1))},
        {QStringLiteral("最終学歴"), text(person.gakureki)},
        {QStringLiteral("採用区分"), text(person.saiyou)},
        {QStringLiteral("自由1"), text(person.jiyuu1)},
        {QStringLiteral("自由2"), text(person.jiyuu2)},
        {QStringLiteral("自由3"), text(person.jiyuu3)},
        {QStringLiteral("金額"), store::Money::fromYen(200000 + person.number * 1000)},
        {QStringLiteral("得点"), 60.0 + person.number % 40},
        {QStringLiteral("ウエイト"), 0.5},
        {QStringLiteral("基本給"), text(kBasicPay[0])},
        {QStringLiteral("手当"), text(column == QStringLiteral("手当Code") ? u"01" : kAllowances[0])},
        {QStringLiteral("パターン"), u"01"},
        {QStringLiteral("グループ"), u"01"},
        {QStringLiteral("シミュレーション"), u"01"},
        {QStringLiteral("シート"), u"01"},
        {QStringLiteral("グループ名"), u"一般グループ"},
        {QStringLiteral("区分"), u"01"},
        {QStringLiteral("１次評価者"), kEvaluator},
        {QStringLiteral("２次評価者"), QStringLiteral("000004")},
        {QStringLiteral("多面評価者１"), QStringLiteral("000006")},
    };
    if (column == QStringLiteral("基本給Code")) return u"01";
    return cells.value(name);
}

/// A few rows in each permanent table of a file that no other step fills, so that a changed code or a deleted
/// employee has rows to reach.
void writeFewRows(store::Connection& cn, schema::File file, const std::vector<Person>& people,
                  const std::function<bool(const QString&)>& skip) {
    for (const schema::Table& table : schema::catalog()) {
        if (table.file != file || table.lifetime != schema::Lifetime::Permanent || skip(table.name)) continue;
        TableWriter writer(cn, reinterpret_cast<const char16_t*>(table.name.utf16()));
        int written = 0;
        for (const Person& person : people) {
            if (written == kFew) break;
            if (person.history.empty() || criterionAt(person, newestKijunbi()) < 0) continue;
            store::Binds row;
            for (const schema::Column& column : table.columns)
                row.push_back(companionCell(column.name, person, person.history.back()));
            writer.write(row);
            ++written;
        }
    }
}

void writeWageRow(TableWriter& basicPay, TableWriter& allowances, const Person& person, const Wage& wage) {
    for (std::size_t i = 0; i < wage.basicPay.size(); ++i) {
        using namespace t::C新賃金体系基本給;
        store::Binds row = basicPay.blank();
        row[社員Code] = person.code;
        row[基準日] = wage.date;
        row[パターンCode] = u"01";
        row[基本給Code] = QStringLiteral("0%1").arg(i + 1);
        row[基本給] = text(kBasicPay[i]);
        row[金額] = store::Money::fromYen(wage.basicPay[i]);
        basicPay.write(row);
    }
    for (std::size_t i = 0; i < wage.allowances.size(); ++i) {
        using namespace t::C新賃金体系手当;
        if (wage.allowances[i] == 0) continue;
        store::Binds row = allowances.blank();
        row[社員Code] = person.code;
        row[基準日] = wage.date;
        row[グループCode] = u"01";
        row[手当Code] = QStringLiteral("0%1").arg(i + 1);
        row[区分] = u"01";
        row[手当] = text(kAllowances[i]);
        row[金額] = store::Money::fromYen(wage.allowances[i]);
        allowances.write(row);
    }
}

void writeWageSetUp(store::Connection& cn) {
    TableWriter dates(cn, t::Cデータ取込年月日::kName);
    for (QDate date : wageDates()) dates.write({date, date, date});
    TableWriter basicPay(cn, t::C基本給設定テーブル::kName);
    TableWriter pattern(cn, t::C基本給組合せパターンの設定::kName);
    for (std::size_t i = 0; i < std::size(kBasicPay); ++i) {
        const QString code = QStringLiteral("0%1").arg(i + 1);
        basicPay.write({{}, code, text(kBasicPay[i])});
        pattern.write({{}, u"01", code});
    }
    TableWriter allowances(cn, t::C手当設定テーブル::kName);
    for (std::size_t i = 0; i < std::size(kAllowances); ++i)
        allowances.write({{}, QStringLiteral("0%1").arg(i + 1), text(kAllowances[i])});
    TableWriter(cn, t::C基本給組合せパターン名称::kName).write({{}, u"01", u"本給＋職能給"});
}

bool isSetUp(const QString& table) {
    static const QStringList own{
        QString::fromUtf16(t::Cデータ取込年月日::kName),
        QString::fromUtf16(t::C基本給設定テーブル::kName),
        QString::fromUtf16(t::C手当設定テーブル::kName),
        QString::fromUtf16(t::C新賃金体系基本給::kName),
        QString::fromUtf16(t::C基本給組合せパターンの設定::kName),
        QString::fromUtf16(t::C新賃金体系手当::kName),
        QString::fromUtf16(t::C基本給組合せパターン名称::kName),
    };
    return own.contains(table);
}

/// Grades fall around the middle of a scale.
QChar gradeOf(int criterion, Random& random) {
    const QString scale = scaleOf(hyougoTypeOf(criterion).value_or(0));
    if (scale.isEmpty()) return {};
    const int middle = static_cast<int>(scale.size() - 1) / 2;
    const int place = middle + (random.chance(55) ? 0 : random.between(-2, 2));
    return scale[std::clamp(place, 0, static_cast<int>(scale.size()) - 1)];
}

}  // namespace

int Wage::baseAmount() const {
    int sum = 0;
    for (int yen : basicPay) sum += yen;
    for (std::size_t i = 0; i < static_cast<std::size_t>(kAllowancesInBase); ++i) sum += allowances[i];
    return sum;
}

std::vector<Wage> wagesOf(const Person& person) {
    std::vector<Wage> wages;
    for (QDate date : wageDates()) {
        const Position* const position = positionAt(person, date);
        if (!position || (person.retired.isValid() && person.retired < date)) continue;
        if (position->syainKubun[1] == u'1' || position->syainKubun[1] == u'2')
            wages.push_back(wageAt(person, *position, date));
    }
    return wages;
}

QChar gradeAt(const Person& person, QDate evaluationDate) {
    const int criterion = criterionAt(person, evaluationDate);
    const bool gone = person.retired.isValid() && person.retired < evaluationDate;
    if (criterion < 0 || gone) return {};
    Random random(person.number * 16 + evaluationDate.month(), Purpose::Hyouka);
    return gradeOf(criterion, random);
}

void writeWages(store::Connection& cn, const std::vector<Person>& people) {
    writeWageSetUp(cn);
    TableWriter basicPay(cn, t::C新賃金体系基本給::kName);
    TableWriter allowances(cn, t::C新賃金体系手当::kName);
    for (const Person& person : people)
        for (const Wage& wage : wagesOf(person)) writeWageRow(basicPay, allowances, person, wage);
    writeFewRows(cn, schema::File::Chingin, people, isSetUp);
}

void writeEvaluationSheets(store::Connection& hyouka, const std::vector<Person>& people) {
    writeFewRows(hyouka, schema::File::Hyouka, people, [](const QString&) { return false; });
}

void writeEvaluations(store::Connection& cn, const std::vector<Person>& people) {
    TableWriter writer(cn, t::Ｈ評価実績::kName);
    for (const EvaluationDate& evaluation : kEvaluationDates)
        for (const Person& person : people) {
            const QChar grade = gradeAt(person, evaluation.date);
            if (!grade.isNull())
                writer.write({person.code, evaluation.date, QString(grade), text(evaluation.bunrui)});
        }
}

}  // namespace sample
