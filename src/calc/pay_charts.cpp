#include "calc/pay_charts.h"

#include <QMap>
#include <algorithm>
#include <tuple>

#include "personnel/people_at_date.h"
#include "store/date_text.h"

namespace calc {
namespace {

using personnel::PersonAt;
using personnel::Post;
using reports::Chart;
using store::Money;

const QString kUnit = QStringLiteral("円");
const QString kAmount = QStringLiteral("支給額（円）");
constexpr int kCodeWidth = 4;
/// Who stands under no code comes behind all who do.
const QString kBehindAll(QChar(0xffff));

struct Paid {
    QString syainCode;
    QString simei;
    Money amount;
    PersonAt person;
    QString label() const { return syainCode + u' ' + simei; }
};

/// People at a date, their ages at the date that goes with it.
QHash<QString, PersonAt> peopleOn(store::Connection& cn, QDate kijunbi) {
    auto row = cn.prepare(QStringLiteral(
        "SELECT 年齢算出年月日 FROM Sデータ取込年月日運用 WHERE 基準日 = ? AND 年齢算出年月日 IS "
        "NOT NULL"));
    row.bind(1, kijunbi);
    return personnel::peopleAt(cn, kijunbi, row.step() ? row.toDate(0) : kijunbi);
}

/// Codes stand in the order of their numbers.
QString keyOf(const Post& post) {
    return post.code.isEmpty() ? kBehindAll : post.code.rightJustified(kCodeWidth, u'0');
}
QString nameOf(const Post& post) {
    if (!post.name.isEmpty()) return post.name;
    return post.code.isEmpty() ? QStringLiteral("（なし）") : QStringLiteral("コード %1").arg(post.code);
}

QString countOf(std::size_t people) {
    return QStringLiteral("%1人").arg(store::formatGrouped(Money::fromYen(static_cast<qint64>(people))));
}

Chart distributionOf(const std::vector<Paid>& all) {
    std::vector<double> amounts;
    Money sum;
    for (const Paid& paid : all) {
        amounts.push_back(paid.amount.toDouble());
        sum += paid.amount;
    }
    QString note;
    if (!all.empty())
        note = QStringLiteral("%1　合計 %2円　平均 %3円")
                   .arg(countOf(all.size()), store::formatGrouped(sum),
                        store::formatGrouped(
                            Money::fromDouble(sum.toDouble() / static_cast<double>(all.size()))));
    return {QStringLiteral("金額の分布"),
            QStringLiteral("支給額の分布"),
            note,
            kAmount,
            QStringLiteral("人数（人）"),
            kUnit,
            reports::distribute(amounts),
            {}};
}

Chart againstAge(const std::vector<Paid>& all) {
    reports::Points points;
    for (const Paid& paid : all)
        if (paid.person.age)
            points.points.push_back(
                {static_cast<double>(*paid.person.age), paid.amount.toDouble(), paid.label()});
    std::sort(points.points.begin(), points.points.end(), [](const auto& left, const auto& right) {
        return std::tie(left.x, left.y) < std::tie(right.x, right.y);
    });
    QString note = countOf(points.points.size());
    if (const auto without = all.size() - points.points.size())
        note += QStringLiteral("（生年月日の入っていない %1を除く）").arg(countOf(without));
    return {QStringLiteral("年齢"),
            QStringLiteral("年齢と支給額"),
            note,
            QStringLiteral("年齢"),
            kAmount,
            kUnit,
            std::move(points),
            {}};
}

Chart againstTokyu(const std::vector<Paid>& all) {
    std::vector<reports::CategoryItem> items;
    for (const Paid& paid : all)
        items.push_back(
            {keyOf(paid.person.tokyu), nameOf(paid.person.tokyu), paid.amount.toDouble(), paid.label()});
    return {QStringLiteral("等級"),
            QStringLiteral("等級と支給額"),
            countOf(items.size()),
            QStringLiteral("等級"),
            kAmount,
            kUnit,
            reports::overCategories(std::move(items)),
            {}};
}

std::vector<Chart> chartsOfPaid(const std::vector<Paid>& all) {
    return {distributionOf(all), againstAge(all), againstTokyu(all)};
}

std::vector<Chart> withEmptyText(std::vector<Chart> charts, const QString& empty) {
    for (Chart& chart : charts) chart.empty = empty;
    return charts;
}

/// What everybody was paid on one date, an employee's rows summed up.
std::vector<Paid> paidOn(store::Connection& cn, QDate kijunbi) {
    auto row =
        cn.prepare(QStringLiteral("SELECT S配分基準対応社員.社員Code, 履歴書テーブル.氏名, Sum(個人別計算 + "
                                  "総額配分 + 金一封 + 特別加算金)"
                                  " FROM S配分基準対応社員 INNER JOIN 履歴書テーブル"
                                  " ON 履歴書テーブル.社員Code = S配分基準対応社員.社員Code"
                                  " WHERE 基準日 = ? GROUP BY S配分基準対応社員.社員Code"));
    row.bind(1, kijunbi);
    const auto people = peopleOn(cn, kijunbi);
    std::vector<Paid> all;
    while (row.step())
        if (!row.isNull(2))
            all.push_back({row.toText(0), row.toText(1), row.toMoney(2), people.value(row.toText(0))});
    return all;
}

Chart stacked(const std::vector<std::vector<Paid>>& byDate, const QStringList& dates, Post PersonAt::*post,
              const QString& kind) {
    std::vector<reports::StackItem> items;
    for (std::size_t date = 0; date < byDate.size(); ++date)
        for (const Paid& paid : byDate[date])
            items.push_back(
                {keyOf(paid.person.*post), nameOf(paid.person.*post), date, paid.amount.toDouble()});
    return {kind + u'別',
            kind + QStringLiteral("別の支給額"),
            QStringLiteral("基準日の時点の%1で数えます。").arg(kind),
            kAmount,
            kind,
            kUnit,
            reports::stackGroups(dates, items),
            {}};
}

}  // namespace

std::vector<Chart> chartsOfRun(store::Connection& cn, const domain::RunKey& run) {
    constexpr std::size_t kPayments = 4;  // the fifth amount of a row is their stored sum, which may be older
    const auto people = peopleOn(cn, run.kijunbi);
    std::vector<Paid> all;
    for (const ResultRow& row : resultRows(cn, run)) {
        const auto end = row.amounts.begin() + kPayments;
        if (std::any_of(row.amounts.begin(), end, [](const auto& amount) { return !amount; })) continue;
        Money sum;
        for (auto amount = row.amounts.begin(); amount != end; ++amount) sum += **amount;
        all.push_back({row.syainCode, row.simei, sum, people.value(row.syainCode)});
    }
    return withEmptyText(
        chartsOfPaid(all),
        QStringLiteral("金額のある社員がいません。\n［計算］を押してから、もう一度開いてください。"));
}

std::vector<Chart> chartsOfYear(store::Connection& cn, const NenkanDates& dates) {
    std::vector<QDate> chosen;
    std::copy_if(dates.begin(), dates.end(), std::back_inserter(chosen),
                 [](QDate date) { return date.isValid(); });
    std::sort(chosen.begin(), chosen.end());
    QStringList names;
    std::vector<std::vector<Paid>> byDate;
    QMap<QString, Paid> together;
    for (const QDate date : chosen) {
        names << store::formatDate(date);
        byDate.push_back(paidOn(cn, date));
        for (Paid paid : byDate.back()) {
            if (const auto earlier = together.constFind(paid.syainCode); earlier != together.cend())
                paid.amount += earlier->amount;
            together.insert(paid.syainCode, paid);
        }
    }
    auto charts = chartsOfPaid({together.cbegin(), together.cend()});
    charts.push_back(stacked(byDate, names, &PersonAt::syozoku, QStringLiteral("所属")));
    charts.push_back(stacked(byDate, names, &PersonAt::yakusyoku, QStringLiteral("役職")));
    return withEmptyText(
        std::move(charts),
        QStringLiteral("選んだ基準日に、支給の対象となった社員がいません。\n基準日を選び直してください。"));
}

}  // namespace calc
