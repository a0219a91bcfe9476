#include "reports/ui_chart_picture.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "store/money.h"

namespace reports {
namespace {

constexpr double kMargin = 10;     // around everything, in the picture's units
constexpr double kGap = 6;         // between a label and what it stands at, and between labels
constexpr double kMark = 7;        // a mark across
constexpr double kMarked = 13;     // the one that is read
constexpr double kReach = 12;      // how far from a mark it still counts as pointed at
constexpr double kAxisText = 0.9;  // of the interface font
constexpr int kMarkOpacity = 150;  // of 255: where many stand on one another it grows darker
constexpr int kAmountSteps = 6;
constexpr int kNumberSteps = 10;
constexpr double kGroupBar = 0.7;    // a group's bar, of the group's room
constexpr double kNamesShare = 0.3;  // what names may take of the picture's width or height
constexpr int kNameLines = 3;
constexpr double kLeastWrap = 4;     // characters of a line that is worth wrapping to
constexpr double kAbove = 1.6;       // lines above the plot: its title, and half a label with a little air
constexpr double kPaperWidth = 800;  // a chart's width on paper in its own units

/// In pixels: a size in points would be taken for the printer's points, and then be enlarged with the
/// picture.
QFont chartFont(double share = 1, bool bold = false) {
    QFont font = QGuiApplication::font();
    font.setPixelSize(qRound(QFontInfo(font).pixelSize() * share));
    font.setBold(bold);
    return font;
}

QFontMetricsF labelMetrics() {
    return QFontMetricsF(chartFont(kAxisText));
}

/// The text in lines of a width, the last one with an ellipsis where the text is longer still.
QString wrapped(QString text, const QFontMetricsF& metrics, double width, int lines) {
    QStringList done;
    while (done.size() + 1 < lines && metrics.horizontalAdvance(text) > width) {
        qsizetype length = text.size();
        while (length > 1 && metrics.horizontalAdvance(text.left(length)) > width) --length;
        if (text[length - 1].isHighSurrogate()) length += length > 1 ? -1 : 1;
        done << text.left(length).trimmed();
        text = text.mid(length).trimmed();
    }
    return (done << metrics.elidedText(text, Qt::ElideRight, width)).join(u'\n');
}

double heightOf(const QString& text, const QFontMetricsF& metrics) {
    return metrics.lineSpacing() * static_cast<double>(text.count(u'\n') + 1);
}

/// As wide as its widest line; a little more, because a printer's glyphs differ by a hair.
QSizeF sizeOf(const QString& text, const QFontMetricsF& metrics) {
    double widest = 0;
    for (const QString& line : text.split(u'\n')) widest = std::max(widest, metrics.horizontalAdvance(line));
    return {widest + 2, heightOf(text, metrics)};
}

template <typename Ticks>
double widestOf(const Ticks& ticks) {
    const QFontMetricsF metrics = labelMetrics();
    double widest = 0;
    for (const auto& tick : ticks) widest = std::max(widest, sizeOf(tick.text, metrics).width());
    return widest;
}

/// Every how many labels one has room, when each needs `needed` and they stand `apart`.
std::size_t everyHowMany(double needed, double apart) {
    return static_cast<std::size_t>(std::max(1.0, std::ceil(needed / std::max(apart, 0.1))));
}

/// From zero, unless all amounts lie close to one another far above it.
Scale amountScale(double least, double most) {
    const bool apart = least > most / 2 && least < most;
    return roundScale(apart ? least : std::min(0.0, least), most, kAmountSteps, 1);
}

std::pair<double, double> range(const Points& points, double Points::Point::*member) {
    const auto [least, most] =
        std::minmax_element(points.points.begin(), points.points.end(),
                            [&](const auto& a, const auto& b) { return a.*member < b.*member; });
    return {(*least).*member, (*most).*member};
}

bool standUpright(double slot, double widest) {
    return widest > slot - kGap && slot - kGap < kLeastWrap * labelMetrics().height();
}

}  // namespace

ChartPicture::ChartPicture(Chart chart, const widgets::ChartColors& colors)
    : chart_(std::move(chart)), colors_(colors) {}

void ChartPicture::resize(const QSizeF& size) {
    all_ = QRectF(QPointF(), size);
    plot_ = QRectF();
    writings_.clear();
    grid_.clear();
    bars_.clear();
    swatches_.clear();
    marks_.clear();
    QRectF room = all_.adjusted(kMargin, kMargin, -kMargin, -kMargin);
    room.setTop(layHead(room));
    if (itemCount(chart_) == 0) {
        const QFontMetricsF metrics(chartFont());
        writings_.push_back(
            {room, wrapped(chart_.empty, metrics, room.width(), kNameLines), colors_.muted, false, true});
        return;
    }
    std::visit([&](const auto& content) { lay(content, room); }, chart_.content);
}

/// Title, note and legend; where the rest begins.
double ChartPicture::layHead(const QRectF& all) {
    double top = all.top();
    const auto line = [&](const QString& text, bool bold, int lines) {
        if (text.isEmpty()) return;
        const QFontMetricsF metrics(chartFont(bold ? 1 : kAxisText, bold));
        const QString shown = wrapped(text, metrics, all.width() - 2, lines);
        const QRectF area(all.left(), top, all.width(), heightOf(shown, metrics));
        writings_.push_back(
            {area, shown, bold ? colors_.text : colors_.muted, bold, bold, false, Qt::AlignLeft});
        top = area.bottom() + 2;
    };
    line(chart_.title, true, 1);
    line(chart_.note, false, 2);
    return layLegend(all, top) + kGap;
}

double ChartPicture::layLegend(const QRectF& all, double top) {
    const auto* stack = std::get_if<Stack>(&chart_.content);
    if (!stack || stack->series.size() < 2) return top;
    const QFontMetricsF metrics = labelMetrics();
    const double swatch = metrics.ascent() * 0.8;
    double left = all.left();
    for (std::size_t s = 0; s < stack->series.size(); ++s) {
        const QString name =
            metrics.elidedText(stack->series[s].name, Qt::ElideRight, all.width() / 2 - swatch - 2 * kGap);
        const double width = sizeOf(name, metrics).width();
        if (left > all.left() && left + swatch + kGap + width > all.right()) {
            left = all.left();
            top += metrics.lineSpacing();
        }
        swatches_.push_back({{left, top + (metrics.lineSpacing() - swatch) / 2, swatch, swatch}, -1, s});
        left += swatch + kGap;
        writings_.push_back({{left, top, width, metrics.lineSpacing()}, name, colors_.text});
        left += width + 3 * kGap;
    }
    return top + metrics.lineSpacing();
}

ChartPicture::Axis ChartPicture::numbers(const Scale& scale, const QString& title) {
    Axis axis{scale.first, scale.last(), {}, title};
    for (int i = 0; i <= scale.steps; ++i) {
        const double at = scale.first + scale.step * i;
        axis.ticks.push_back({at, store::formatGrouped(store::Money::fromDouble(at))});
    }
    return axis;
}

ChartPicture::Axis ChartPicture::named(const QStringList& names, const QString& title) {
    Axis axis{-0.5, static_cast<double>(names.size()) - 0.5, {}, title, true, false};
    for (qsizetype i = 0; i < names.size(); ++i) axis.ticks.push_back({static_cast<double>(i), names[i]});
    return axis;
}

double ChartPicture::leftRoom(const QRectF& room, const Axis& up) const {
    const double widest = widestOf(up.ticks);
    return (up.names ? std::min(widest, kNamesShare * room.width()) : widest) + kGap;
}

double ChartPicture::bottomRoom(const QRectF& room, double width, const Axis& across) const {
    const QFontMetricsF metrics = labelMetrics();
    if (!across.names) return metrics.lineSpacing();
    const double slot = across.room(width);
    const double widest = widestOf(across.ticks);
    if (standUpright(slot, widest)) return std::min(widest, kNamesShare * room.height());
    double highest = 0;
    for (const Tick& tick : across.ticks)
        highest = std::max(highest, heightOf(wrapped(tick.text, metrics, slot - kGap, kNameLines), metrics));
    return highest;
}

/// The plot is what the labels leave. The title of the upward axis stands above it, to be read without
/// turning the head.
void ChartPicture::layAxes(const QRectF& room, Axis across, Axis up) {
    const QFontMetricsF metrics = labelMetrics();
    const double line = metrics.lineSpacing();
    // The last number stands half beyond the plot's edge.
    const double beyond = across.names ? 0 : widestOf(across.ticks) / 2;
    const double left = std::max(leftRoom(room, up), beyond);
    const double width = room.width() - left - beyond;
    const double labels = bottomRoom(room, width, across);
    const double below = line / 2 + labels + kGap + line;
    plot_ = QRectF(room.left() + left, room.top() + kAbove * line, std::max(width, 1.0),
                   std::max(room.height() - kAbove * line - below, 1.0));
    ranges_ = {across.first, up.first, across.last - across.first, up.last - up.first};
    const auto title = [&](const QString& text, const QRectF& area, Qt::Alignment alignment) {
        writings_.push_back({area, metrics.elidedText(text, Qt::ElideRight, area.width()), colors_.muted,
                             false, false, false, alignment});
    };
    title(up.title, {room.left(), room.top(), room.width(), line}, Qt::AlignLeft);
    title(across.title, {plot_.left(), room.bottom() - line, plot_.width(), line}, Qt::AlignHCenter);
    labelBelow(across, labels);
    labelLeft(up, room.left());
    grid_.emplace_back(plot_.bottomLeft(), plot_.bottomRight());
    grid_.emplace_back(plot_.topLeft(), plot_.bottomLeft());
}

void ChartPicture::labelBelow(const Axis& across, double height) {
    const QFontMetricsF metrics = labelMetrics();
    const double widest = widestOf(across.ticks);
    const double slot =
        across.names ? across.room(plot_.width()) : plot_.width() / double(across.ticks.size() - 1);
    const bool upright = across.names && standUpright(slot, widest);
    const std::size_t every = everyHowMany(upright        ? metrics.lineSpacing()
                                           : across.names ? 0
                                                          : widest + kGap,
                                           slot);
    const double top = plot_.bottom() + metrics.lineSpacing() / 2;
    for (std::size_t i = 0; i < across.ticks.size(); i += every) {
        const double x = place(across.ticks[i].at, 0).x();
        if (across.grid) grid_.emplace_back(x, plot_.top(), x, plot_.bottom());
        const QString text = upright        ? metrics.elidedText(across.ticks[i].text, Qt::ElideRight, height)
                             : across.names ? wrapped(across.ticks[i].text, metrics, slot - kGap, kNameLines)
                                            : across.ticks[i].text;
        QSizeF size = sizeOf(text, metrics);
        if (upright) size.transpose();
        writings_.push_back({{x - size.width() / 2, top, size.width(), size.height()},
                             text,
                             colors_.text,
                             false,
                             false,
                             upright});
    }
}

void ChartPicture::labelLeft(const Axis& up, double left) {
    const QFontMetricsF metrics = labelMetrics();
    const double line = metrics.lineSpacing();
    const double slot = up.names ? up.room(plot_.height()) : plot_.height() / double(up.ticks.size() - 1);
    const double width = plot_.left() - kGap - left;
    const std::size_t every = everyHowMany(line, slot);
    for (std::size_t i = 0; i < up.ticks.size(); i += every) {
        const double y = place(0, up.ticks[i].at).y();
        if (up.grid) grid_.emplace_back(plot_.left(), y, plot_.right(), y);
        const QString text =
            up.names ? wrapped(up.ticks[i].text, metrics, width, std::max(1, std::min(2, int(slot / line))))
                     : up.ticks[i].text;
        const double height = heightOf(text, metrics);
        writings_.push_back(
            {{left, y - height / 2, width, height}, text, colors_.text, false, false, false, Qt::AlignRight});
    }
}

void ChartPicture::lay(const Distribution& distribution, const QRectF& room) {
    // The edges of the classes are told, not their middles.
    Axis edges = numbers(distribution.classes, chart_.xTitle);
    edges.grid = false;
    const int most = *std::max_element(distribution.counts.begin(), distribution.counts.end());
    layAxes(room, edges, numbers(roundScale(0, most, kAmountSteps, 1), chart_.yTitle));
    const Scale& classes = distribution.classes;
    for (int i = 0; i < classes.steps; ++i)
        bars_.push_back({QRectF(place(classes.first + classes.step * i, distribution.counts[size_t(i)]),
                                place(classes.first + classes.step * (i + 1), 0)),
                         i, 0});
}

void ChartPicture::lay(const Points& points, const QRectF& room) {
    const auto [leastY, mostY] = range(points, &Points::Point::y);
    const auto [leastX, mostX] = range(points, &Points::Point::x);
    layAxes(room,
            points.categories.isEmpty() ? numbers(roundScale(leastX, mostX, kNumberSteps, 1), chart_.xTitle)
                                        : named(points.categories, chart_.xTitle),
            numbers(amountScale(leastY, mostY), chart_.yTitle));
    marks_.reserve(points.points.size());
    for (const Points::Point& point : points.points) marks_.push_back(place(point.x, point.y));
}

/// Groups stand from above in their order, the pieces of a bar from zero outwards: what is added to the
/// right, what is taken off to the left.
void ChartPicture::lay(const Stack& stack, const QRectF& room) {
    const auto groups = static_cast<std::size_t>(stack.groups.size());
    std::vector<double> taken(groups), added(groups);
    for (const Stack::Series& series : stack.series)
        for (std::size_t group = 0; group < groups; ++group)
            (series.values[group] < 0 ? taken : added)[group] += series.values[group];
    Axis names = named(stack.groups, chart_.yTitle);
    for (Tick& tick : names.ticks) tick.at = static_cast<double>(groups - 1) - tick.at;
    layAxes(room,
            numbers(roundScale(*std::min_element(taken.begin(), taken.end()),
                               *std::max_element(added.begin(), added.end()), kAmountSteps, 1),
                    chart_.xTitle),
            names);
    for (std::size_t group = 0; group < groups; ++group) {
        const double middle = names.ticks[group].at;
        double left = 0, right = 0;
        for (std::size_t s = 0; s < stack.series.size(); ++s) {
            const double value = stack.series[s].values[group];
            double& end = value < 0 ? left : right;
            bars_.push_back(
                {QRectF(place(end, middle + kGroupBar / 2), place(end + value, middle - kGroupBar / 2))
                     .normalized(),
                 static_cast<int>(group), s});
            end += value;
        }
    }
}

QPointF ChartPicture::place(double x, double y) const {
    return {plot_.left() + (x - ranges_.left()) / ranges_.width() * plot_.width(),
            plot_.bottom() - (y - ranges_.top()) / ranges_.height() * plot_.height()};
}

int ChartPicture::itemAt(QPointF at) const {
    if (!marks_.empty()) {
        int found = -1;
        double least = kReach * kReach;
        for (std::size_t i = 0; i < marks_.size(); ++i) {
            const QPointF away = marks_[i] - at;
            const double distance = QPointF::dotProduct(away, away);
            if (distance >= least) continue;
            least = distance;
            found = static_cast<int>(i);
        }
        return found;
    }
    if (!plot_.contains(at)) return -1;
    const double along = std::holds_alternative<Stack>(chart_.content)
                             ? (at.y() - plot_.top()) / plot_.height()
                             : (at.x() - plot_.left()) / plot_.width();
    return std::clamp(static_cast<int>(along * itemCount(chart_)), 0, itemCount(chart_) - 1);
}

QRectF ChartPicture::markedArea(int item) const {
    if (item < 0) return {};
    if (!marks_.empty())
        return {marks_[std::size_t(item)] - QPointF(kMarked, kMarked), QSizeF(2 * kMarked, 2 * kMarked)};
    QRectF area;
    for (const Bar& bar : bars_)
        if (bar.item == item) area |= bar.area;
    return area.adjusted(-1, -1, 1, 1);
}

QColor ChartPicture::seriesColor(std::size_t series, bool marked) const {
    const QColor colour = colors_.series[static_cast<qsizetype>(series) % colors_.series.size()];
    if (!marked) return colour;
    return colors_.ground.lightness() < 128 ? colour.lighter(120) : colour.darker(135);
}

void ChartPicture::paint(QPainter& painter, const QRectF& exposed, int marked) const {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(exposed & all_, colors_.ground);
    painter.setPen(QPen(colors_.line, 1));
    for (const QLineF& line : grid_) painter.drawLine(line);
    painter.setPen(QPen(colors_.ground, 1));
    for (const auto* bars : {&bars_, &swatches_})
        for (const Bar& bar : *bars)
            if (!bar.area.isEmpty()) {
                painter.setBrush(seriesColor(bar.series, marked >= 0 && bar.item == marked));
                painter.drawRect(bar.area);
            }
    // Only what was uncovered: thousands of marks would make every move of the mouse wait.
    const QRectF shown = exposed.adjusted(-kMark, -kMark, kMark, kMark);
    QColor ink = seriesColor(0, false);
    ink.setAlpha(kMarkOpacity);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    for (const QPointF& mark : marks_)
        if (shown.contains(mark)) painter.drawEllipse(mark, kMark / 2, kMark / 2);
    if (marked >= 0 && !marks_.empty()) {
        painter.setPen(QPen(colors_.text, 2));
        painter.drawEllipse(marks_[std::size_t(marked)], kMarked / 2, kMarked / 2);
    }
    for (const Writing& writing : writings_) {
        painter.setPen(writing.ink);
        painter.setFont(chartFont(writing.heading ? 1 : kAxisText, writing.bold));
        painter.save();
        QRectF area(QPointF(), writing.area.size());
        if (writing.upright) {
            painter.translate(writing.area.bottomLeft());
            painter.rotate(-90);
            area = area.transposed();
        } else {
            painter.translate(writing.area.topLeft());
        }
        painter.drawText(area, int(writing.alignment | Qt::AlignVCenter) | Qt::TextDontClip, writing.text);
        painter.restore();
    }
    painter.restore();
}

void paintChart(QPainter& painter, const QRectF& area, const Chart& chart) {
    ChartPicture picture(chart, widgets::paperChartColors());
    const QSizeF size(kPaperWidth, kPaperWidth * area.height() / area.width());
    picture.resize(size);
    painter.save();
    painter.translate(area.topLeft());
    painter.scale(area.width() / size.width(), area.height() / size.height());
    picture.paint(painter, QRectF(QPointF(), size));
    painter.restore();
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
