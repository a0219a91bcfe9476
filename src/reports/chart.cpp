#include "reports/chart.h"

#include <QHash>
#include <QMap>
#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <tuple>

#include "store/money.h"

namespace reports {
namespace {

constexpr double kMostClasses = 20;
/// The part of a category's room over which its marks are spread.
constexpr double kSpread = 0.6;
/// Steps of this part of the room never come to stand on one another.
constexpr double kGolden = 0.6180339887498949;

double roundStep(double rough) {
    const double power = std::pow(10, std::floor(std::log10(rough)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (rough <= factor * power * (1 + 1e-9)) return factor * power;
    return 10 * power;
}

QString grouped(double amount) {
    return store::formatGrouped(store::Money::fromDouble(amount));
}

QString describe(const Distribution& distribution, const Chart& chart, std::size_t i) {
    const double lower = distribution.classes.first + distribution.classes.step * static_cast<double>(i);
    return QStringLiteral("%1%4 以上 %2%4 未満　%3人")
        .arg(grouped(lower), grouped(lower + distribution.classes.step), grouped(distribution.counts[i]),
             chart.unit);
}

QString describe(const Points& points, const Chart& chart, std::size_t i) {
    const Points::Point& point = points.points[i];
    const QString at = points.categories.isEmpty()
                           ? QStringLiteral("%1 %2").arg(chart.xTitle, grouped(point.x))
                           : points.categories.value(qRound(point.x));
    return QStringLiteral("%1　%2　%3%4").arg(point.label, at, grouped(point.y), chart.unit);
}

QString describe(const Stack& stack, const Chart& chart, std::size_t i) {
    QString text = stack.groups[static_cast<qsizetype>(i)];
    for (const Stack::Series& series : stack.series)
        text += QStringLiteral("　%1 %2%3").arg(series.name, grouped(series.values[i]), chart.unit);
    if (stack.series.size() > 1)
        text += QStringLiteral("　合計 %1%2").arg(grouped(stack.total(i)), chart.unit);
    return text;
}

/// The groups that stay, and for every key the place of its group.
struct Places {
    QStringList groups;
    QHash<QString, std::size_t> of;
};

Places placesOf(const std::vector<StackItem>& items, std::size_t most) {
    QMap<QString, QString> names;
    QHash<QString, double> totals;
    for (const StackItem& item : items) {
        names.insert(item.key, item.group);
        totals[item.key] += item.value;
    }
    QStringList largest = names.keys();
    std::stable_sort(largest.begin(), largest.end(),
                     [&](const QString& left, const QString& right) { return totals[left] > totals[right]; });
    const bool fits = std::size_t(largest.size()) <= most;
    if (!fits) largest.resize(static_cast<qsizetype>(most) - 1);
    Places places;
    for (auto it = names.cbegin(); it != names.cend(); ++it) {
        if (!largest.contains(it.key())) continue;
        places.of.insert(it.key(), static_cast<std::size_t>(places.groups.size()));
        places.groups << it.value();
    }
    if (!fits) places.groups << QStringLiteral("その他（%1）").arg(names.size() - largest.size());
    return places;
}

}  // namespace

Scale roundScale(double least, double most, int wanted, double leastStep) {
    Scale scale;
    const double span = most - least;
    // One value alone still stands on a scale of its own size.
    const double rough = span > 0 ? span / wanted : std::max(std::abs(most), 1.0) / wanted;
    scale.step = std::max(roundStep(rough), leastStep);
    scale.first = std::floor(least / scale.step) * scale.step;
    scale.steps = std::max(1, static_cast<int>(std::ceil((most - scale.first) / scale.step - 1e-9)));
    return scale;
}

Distribution distribute(const std::vector<double>& values) {
    if (values.empty()) return {};
    const auto [least, most] = std::minmax_element(values.begin(), values.end());
    const double wanted =
        std::clamp(std::ceil(std::sqrt(static_cast<double>(values.size()))), 4.0, kMostClasses);
    Distribution distribution{roundScale(*least, *most, static_cast<int>(wanted), 1), {}};
    Scale& classes = distribution.classes;
    // A value on the upper edge belongs to a class of its own.
    if (*most >= classes.last()) ++classes.steps;
    distribution.counts.resize(static_cast<std::size_t>(classes.steps));
    for (const double value : values) {
        const auto place = static_cast<int>(std::floor((value - classes.first) / classes.step));
        ++distribution.counts[static_cast<std::size_t>(std::clamp(place, 0, classes.steps - 1))];
    }
    return distribution;
}

Points overCategories(std::vector<CategoryItem> items) {
    std::sort(items.begin(), items.end(), [](const CategoryItem& left, const CategoryItem& right) {
        return std::tie(left.key, left.y) < std::tie(right.key, right.y);
    });
    QMap<QString, QString> names;
    for (const CategoryItem& item : items) names.insert(item.key, item.category);
    const QStringList keys = names.keys();
    QHash<QString, int> place;
    for (int i = 0; i < keys.size(); ++i) place.insert(keys[i], i);
    Points points{{}, names.values()};
    points.points.reserve(items.size());
    std::vector<int> met(static_cast<std::size_t>(keys.size()));
    for (const CategoryItem& item : items) {
        const int category = place.value(item.key);
        const double part = std::fmod(0.5 + kGolden * met[static_cast<std::size_t>(category)]++, 1.0);
        points.points.push_back({category + (part - 0.5) * kSpread, item.y, item.label});
    }
    return points;
}

double Stack::total(std::size_t group) const {
    return std::accumulate(series.begin(), series.end(), 0.0,
                           [&](double sum, const Series& one) { return sum + one.values[group]; });
}

Stack stackGroups(const QStringList& seriesNames, const std::vector<StackItem>& items, std::size_t most) {
    const Places places = placesOf(items, most);
    Stack stack{places.groups, {}};
    const auto count = static_cast<std::size_t>(stack.groups.size());
    for (const QString& name : seriesNames) stack.series.push_back({name, std::vector<double>(count)});
    for (const StackItem& item : items)
        stack.series[item.series].values[places.of.value(item.key, count - 1)] += item.value;
    return stack;
}

int itemCount(const Chart& chart) {
    if (const auto* distribution = std::get_if<Distribution>(&chart.content))
        return static_cast<int>(distribution->counts.size());
    if (const auto* points = std::get_if<Points>(&chart.content))
        return static_cast<int>(points->points.size());
    return static_cast<int>(std::get<Stack>(chart.content).groups.size());
}

QString describeItem(const Chart& chart, int item) {
    return std::visit(
        [&](const auto& content) { return describe(content, chart, static_cast<std::size_t>(item)); },
        chart.content);
}

}  // namespace reports
