#pragma once
#include <QString>
#include <QStringList>
#include <variant>
#include <vector>

/// Pictures of numbers as data: what stands in a chart, not how it is drawn and not where it comes from.
namespace reports {

/// A round scale: `steps` steps of 1, 2 or 5 times a power of ten from `first`.
struct Scale {
    double first = 0;
    double step = 1;
    int steps = 1;
    double last() const { return first + step * steps; }
};
/// The round scale that covers both numbers in about `wanted` steps and never fewer than one, its step no
/// smaller than `leastStep`.
Scale roundScale(double least, double most, int wanted, double leastStep = 0);

/// How many values fall into each class. A class begins at its lower edge and ends below the next one's.
struct Distribution {
    Scale classes;
    std::vector<int> counts;  ///< one for each step of the scale
};
/// Classes of a round width, about as many as the root of the count, 20 at most.
Distribution distribute(const std::vector<double>& values);

/// One mark per item, in the order in which one moves through them. With categories, x counts them from 0 and
/// the marks of a category stand beside one another.
struct Points {
    struct Point {
        double x = 0;
        double y = 0;
        QString label;  ///< who or what it is
    };
    std::vector<Point> points;
    QStringList categories;
};
/// An item of a named category; categories stand in the order of their keys.
struct CategoryItem {
    QString key;
    QString category;
    double y = 0;
    QString label;
};
Points overCategories(std::vector<CategoryItem> items);

/// A bar for each group, made of one piece per series.
struct Stack {
    struct Series {
        QString name;
        std::vector<double> values;  ///< by group
    };
    QStringList groups;
    std::vector<Series> series;
    double total(std::size_t group) const;
};
/// What one series adds to a group.
struct StackItem {
    QString key;
    QString group;
    std::size_t series = 0;
    double value = 0;
};
/// The groups in the order of their keys. Of more than `most`, the largest stay and the rest stands last,
/// summed up as "その他".
Stack stackGroups(const QStringList& seriesNames, const std::vector<StackItem>& items, std::size_t most = 12);

struct Chart {
    QString name;   ///< short, for the tab
    QString title;  ///< above the picture
    QString note;   ///< under the title: what is counted, what is left out
    QString xTitle, yTitle;
    QString unit;  ///< of the amounts: "円"
    std::variant<Distribution, Points, Stack> content;
    QString empty;  ///< says what to do when there is nothing to show
};
/// The classes, points or groups: what one moves through and can read.
int itemCount(const Chart& chart);
QString describeItem(const Chart& chart, int item);

}  // namespace reports
