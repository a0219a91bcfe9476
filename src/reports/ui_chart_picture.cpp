#include "reports/ui_chart_picture.h"

#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QGraphicsLayout>
#include <QGraphicsScene>
#include <QGuiApplication>
#include <QHorizontalStackedBarSeries>
#include <QLegend>
#include <QPainter>
#include <QStyleOptionGraphicsItem>
#include <QValueAxis>
#include <algorithm>

namespace reports {
namespace {

constexpr double kMark = 7;        // across, in the chart's units
constexpr double kMarked = 13;     // the one that is read
constexpr double kReach = 12;      // how far from a mark it still counts as pointed at
constexpr double kAxisText = 0.9;  // of the interface font
constexpr int kMarkOpacity = 150;  // of 255: where many stand on one another it grows darker
constexpr int kAmountSteps = 6;
constexpr int kNumberSteps = 10;
constexpr int kMostClassLabels = 8;
constexpr double kCategoryRoom = 700;  // category names that need more than this stand upright
constexpr double kPaperWidth = 800;    // a chart's width on paper in its own units

/// In pixels: a size in points would be taken for the printer's points, and then be enlarged with the
/// picture.
QFont chartFont(double share = 1, bool bold = false) {
    QFont font = QGuiApplication::font();
    font.setPixelSize(qRound(QFontInfo(font).pixelSize() * share));
    font.setBold(bold);
    return font;
}

QValueAxis* valueAxis(const Scale& scale) {
    auto* axis = new QValueAxis;
    axis->setRange(scale.first, scale.last());
    axis->setTickCount(scale.steps + 1);
    axis->setLabelFormat(QStringLiteral("%.0f"));
    return axis;
}

/// Counts the places of `count` things, each in the middle of its room.
QValueAxis* placeAxis(int count) {
    auto* axis = new QValueAxis;
    axis->setRange(-0.5, count - 0.5);
    axis->setVisible(false);
    return axis;
}

/// What the names need side by side, all as wide as the widest.
double widthOf(const QStringList& names) {
    const QFontMetricsF metrics(chartFont(kAxisText));
    double widest = 0;
    for (const QString& name : names) widest = std::max(widest, metrics.horizontalAdvance(name));
    return (widest + kMark) * static_cast<double>(names.size());
}

QRectF aroundMark(QPointF place) {
    return {place - QPointF(kMarked, kMarked), QSizeF(2 * kMarked, 2 * kMarked)};
}

/// From zero, unless all amounts lie close to one another far above it.
Scale amountScale(double least, double most) {
    const bool apart = least > most / 2 && least < most;
    return roundScale(apart ? least : std::min(0.0, least), most, kAmountSteps, 1);
}

QBarSet* barSet(const QString& name, const QColor& colour, const QColor& ground) {
    auto* set = new QBarSet(name);
    set->setColor(colour);
    set->setBorderColor(ground);
    set->setSelectedColor(ground.lightness() < 128 ? colour.lighter(120) : colour.darker(135));
    return set;
}

}  // namespace

PointMarks::PointMarks(QChart* chart, const Points& points, const QColor& ink, const QColor& ring)
    : QGraphicsItem(chart), points_(points), ink_(ink), ring_(ring) {
    setZValue(100);                        // above the grid and the frame
    setFlag(ItemUsesExtendedStyleOption);  // to draw no more than what was uncovered
    ink_.setAlpha(kMarkOpacity);
}

void PointMarks::setRanges(const QRectF& ranges) {
    ranges_ = ranges;
}

void PointMarks::setArea(const QRectF& area) {
    prepareGeometryChange();
    area_ = area;
}

QPointF PointMarks::position(std::size_t point) const {
    const Points::Point& at = points_.points[point];
    return {area_.left() + (at.x - ranges_.left()) / ranges_.width() * area_.width(),
            area_.bottom() - (at.y - ranges_.top()) / ranges_.height() * area_.height()};
}

int PointMarks::nearest(QPointF place) const {
    int found = -1;
    double least = kReach * kReach;
    for (std::size_t i = 0; i < points_.points.size(); ++i) {
        const QPointF away = position(i) - place;
        const double distance = QPointF::dotProduct(away, away);
        if (distance >= least) continue;
        least = distance;
        found = static_cast<int>(i);
    }
    return found;
}

void PointMarks::setMarked(int point) {
    for (const int changed : {marked_, point})
        if (changed >= 0) update(aroundMark(position(static_cast<std::size_t>(changed))));
    marked_ = point;
}

QRectF PointMarks::boundingRect() const {
    return area_.adjusted(-kMarked, -kMarked, kMarked, kMarked);
}

void PointMarks::paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget*) {
    const QRectF shown = option->exposedRect.adjusted(-kMark, -kMark, kMark, kMark);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(ink_);
    const QPointF half(kMark / 2, kMark / 2);
    for (std::size_t i = 0; i < points_.points.size(); ++i)
        if (const QPointF at = position(i); shown.contains(at))
            painter->drawEllipse(QRectF(at - half, QSizeF(kMark, kMark)));
    if (marked_ < 0) return;
    painter->setPen(QPen(ring_, 2));
    painter->drawEllipse(position(static_cast<std::size_t>(marked_)), kMarked / 2, kMarked / 2);
}

ChartPicture::ChartPicture(Chart chart, const widgets::ChartColors& colors) : content_(std::move(chart)) {
    dress(colors);
    legend()->hide();
    QString note = content_.note;
    if (itemCount(content_) > 0)
        std::visit([&](const auto& content) { fill(content, colors); }, content_.content);
    else
        note = content_.empty;
    setTitle(QStringLiteral("<b>%1</b>&nbsp;&nbsp;&nbsp;%2")
                 .arg(content_.title.toHtmlEscaped(), note.toHtmlEscaped()));
}

void ChartPicture::dress(const widgets::ChartColors& colors) {
    setAnimationOptions(QChart::NoAnimation);
    setBackgroundBrush(colors.ground);
    setBackgroundPen(Qt::NoPen);
    setBackgroundRoundness(0);
    layout()->setContentsMargins(0, 0, 0, 0);
    setTitleFont(chartFont());
    setTitleBrush(colors.text);
    setLocalizeNumbers(true);  // "##,##0"
    setLocale(QLocale(QLocale::Japanese, QLocale::Japan));
    legend()->setFont(chartFont(kAxisText));
    legend()->setLabelColor(colors.text);
    legend()->setAlignment(Qt::AlignTop);
}

void ChartPicture::place(QAbstractAxis* axis, Qt::Alignment side, const QString& title,
                         const widgets::ChartColors& colors) {
    axis->setLabelsFont(chartFont(kAxisText));
    axis->setLabelsColor(colors.text);
    axis->setTitleText(title);
    axis->setTitleFont(chartFont(kAxisText));
    axis->setTitleBrush(colors.muted);
    axis->setGridLineColor(colors.line);
    axis->setLinePenColor(colors.line);
    addAxis(axis, side);
}

void ChartPicture::fill(const Distribution& distribution, const widgets::ChartColors& colors) {
    auto* bars = new QBarSeries(this);
    auto* set = barSet(content_.name, colors.series[0], colors.ground);
    for (const int count : distribution.counts) *set << count;
    bars->append(set);
    bars->setBarWidth(1);
    addSeries(bars);
    bars_ = bars;
    const Scale& classes = distribution.classes;
    auto* places = placeAxis(classes.steps);
    addAxis(places, Qt::AlignBottom);
    bars->attachAxis(places);

    // The edges of the classes are told, not their middles.
    auto* edges = valueAxis(classes);
    edges->setTickType(QValueAxis::TicksDynamic);
    edges->setTickAnchor(classes.first);
    edges->setTickInterval(classes.step * ((classes.steps + kMostClassLabels - 1) / kMostClassLabels));
    edges->setGridLineVisible(false);
    place(edges, Qt::AlignBottom, content_.xTitle, colors);
    const int most = *std::max_element(distribution.counts.begin(), distribution.counts.end());
    auto* counts = valueAxis(roundScale(0, most, kAmountSteps, 1));
    place(counts, Qt::AlignLeft, content_.yTitle, colors);
    bars->attachAxis(counts);
}

void ChartPicture::fill(const Points& points, const widgets::ChartColors& colors) {
    const auto range = [&](double Points::Point::*member) {
        const auto [least, most] = std::minmax_element(
            points.points.begin(), points.points.end(),
            [&](const auto& left, const auto& right) { return left.*member < right.*member; });
        return std::pair((*least).*member, (*most).*member);
    };
    const auto [leastY, mostY] = range(&Points::Point::y);
    const Scale amounts = amountScale(leastY, mostY);
    QAbstractAxis* across = nullptr;
    double left = -0.5;
    double width = static_cast<double>(points.categories.size());
    if (points.categories.isEmpty()) {
        const auto [leastX, mostX] = range(&Points::Point::x);
        const Scale numbers = roundScale(leastX, mostX, kNumberSteps, 1);
        left = numbers.first;
        width = numbers.last() - numbers.first;
        across = valueAxis(numbers);
    } else {
        auto* names = new QBarCategoryAxis;
        names->append(points.categories);
        if (widthOf(points.categories) > kCategoryRoom) names->setLabelsAngle(-90);
        across = names;
    }
    place(across, Qt::AlignBottom, content_.xTitle, colors);
    place(valueAxis(amounts), Qt::AlignLeft, content_.yTitle, colors);
    marks_ = new PointMarks(this, points, colors.series[0], colors.text);
    marks_->setRanges({left, amounts.first, width, amounts.last() - amounts.first});
    marks_->setArea(plotArea());
    connect(this, &QChart::plotAreaChanged, this, [this](const QRectF& area) { marks_->setArea(area); });
}

void ChartPicture::fill(const Stack& stack, const widgets::ChartColors& colors) {
    auto* bars = new QHorizontalStackedBarSeries(this);
    const auto groups = stack.groups.size();
    for (std::size_t s = 0; s < stack.series.size(); ++s) {
        const Stack::Series& series = stack.series[s];
        auto* set = barSet(series.name, colors.series[qsizetype(s) % colors.series.size()], colors.ground);
        // The lowest bar comes first.
        for (auto group = groups; group-- > 0;) *set << series.values[static_cast<std::size_t>(group)];
        bars->append(set);
    }
    bars->setBarWidth(0.7);
    addSeries(bars);
    bars_ = bars;
    auto* names = new QBarCategoryAxis;
    names->append(QStringList(stack.groups.crbegin(), stack.groups.crend()));
    names->setGridLineVisible(false);
    place(names, Qt::AlignLeft, content_.yTitle, colors);
    bars->attachAxis(names);
    double least = 0;
    double most = 0;
    for (std::size_t group = 0; group < static_cast<std::size_t>(groups); ++group) {
        least = std::min(least, stack.total(group));
        most = std::max(most, stack.total(group));
    }
    auto* amounts = valueAxis(roundScale(least, most, kAmountSteps, 1));
    place(amounts, Qt::AlignBottom, content_.xTitle, colors);
    bars->attachAxis(amounts);
    legend()->setVisible(stack.series.size() > 1);
}

/// Bars are counted as they stand: those of groups from below.
int ChartPicture::barOf(int item) const {
    return std::holds_alternative<Stack>(content_.content) ? itemCount(content_) - 1 - item : item;
}

int ChartPicture::itemAt(QPointF position) const {
    if (marks_) return marks_->nearest(position);
    if (!bars_ || !plotArea().contains(position)) return -1;
    const QPointF value = const_cast<ChartPicture*>(this)->mapToValue(position, bars_);
    const double along = std::holds_alternative<Stack>(content_.content) ? value.y() : value.x();
    return std::clamp(barOf(qRound(along)), 0, itemCount(content_) - 1);
}

void ChartPicture::setMarked(int item) {
    if (marks_) marks_->setMarked(item);
    if (!bars_) return;
    for (QBarSet* set : bars_->barSets()) {
        set->deselectAllBars();
        if (item >= 0) set->selectBar(barOf(item));
    }
}

void paintChart(QPainter& painter, const QRectF& area, const Chart& chart) {
    QGraphicsScene scene;
    auto* picture = new ChartPicture(chart, widgets::paperChartColors());
    scene.addItem(picture);
    picture->resize(kPaperWidth, kPaperWidth * area.height() / area.width());
    scene.render(&painter, area, picture->geometry());
}

std::vector<ReportPainter::ExtraPage> chartPages(const std::vector<Chart>& charts, bool upright) {
    const std::size_t onPage = upright ? 2 : 1;
    std::vector<ReportPainter::ExtraPage> pages;
    for (std::size_t first = 0; first < charts.size(); first += onPage) {
        const auto begin = charts.begin() + static_cast<std::ptrdiff_t>(first);
        std::vector<Chart> here(begin,
                                begin + static_cast<std::ptrdiff_t>(std::min(onPage, charts.size() - first)));
        pages.push_back([onPage, here = std::move(here)](QPainter& painter, const QRectF& area) {
            QRectF part(area.topLeft(), QSizeF(area.width(), area.height() / static_cast<double>(onPage)));
            for (const Chart& chart : here) {
                paintChart(painter, part, chart);
                part.moveTop(part.bottom());
            }
        });
    }
    return pages;
}

}  // namespace reports
