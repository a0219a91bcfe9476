#pragma once
#include <QColor>
#include <QRectF>
#include <QString>
#include <vector>

#include "reports/chart.h"
#include "reports/ui_report_painter.h"
#include "widgets/theme.h"

class QPainter;

namespace reports {

/// A chart laid out in a size: title, legend, axes, bars or marks, in the given colours. The same layout is
/// drawn on the screen, into a picture and on paper. Writing never overlaps: what has no room is wrapped,
/// stands upright, ends in an ellipsis, or is left out where every second or third label says enough.
class ChartPicture {
  public:
    ChartPicture(Chart chart, const widgets::ChartColors& colors);

    const Chart& chart() const { return chart_; }
    void resize(const QSizeF& size);
    /// Draws what lies in `exposed`; `marked` is the class, point or group that is read, -1 for none.
    void paint(QPainter& painter, const QRectF& exposed, int marked = -1) const;

    /// Where bars and marks lie; empty for a chart without content.
    const QRectF& plotArea() const { return plot_; }
    /// The class, point or group at a place of the picture; -1 for none.
    int itemAt(QPointF place) const;
    /// What changes its look when the item becomes the marked one.
    QRectF markedArea(int item) const;

    struct Writing {
        QRectF area;  ///< the text's own room, all lines of it
        QString text;
        QColor ink;
        bool bold = false;
        bool heading = false;  ///< in the full size; labels are a little smaller
        bool upright = false;  ///< turned by a quarter, read from below
        Qt::Alignment alignment = Qt::AlignCenter;
    };
    const std::vector<Writing>& writings() const { return writings_; }

  private:
    struct Tick {
        double at;
        QString text;
    };
    /// What runs along one side of the plot: numbers at round places, or names each in the middle of a room.
    struct Axis {
        double first, last;
        std::vector<Tick> ticks;
        QString title;
        bool names = false;
        bool grid = true;
        double room(double length) const { return length / (last - first); }
    };
    struct Bar {
        QRectF area;
        int item = -1;
        std::size_t series = 0;
    };

    static Axis numbers(const Scale& scale, const QString& title);
    static Axis named(const QStringList& names, const QString& title);
    double layHead(const QRectF& all);
    double layLegend(const QRectF& all, double top);
    void layAxes(const QRectF& room, Axis across, Axis up);
    double leftRoom(const QRectF& room, const Axis& up) const;
    double bottomRoom(const QRectF& room, double width, const Axis& across) const;
    void labelBelow(const Axis& across, double height);
    void labelLeft(const Axis& up, double left);
    void lay(const Distribution& distribution, const QRectF& room);
    void lay(const Points& points, const QRectF& room);
    void lay(const Stack& stack, const QRectF& room);
    QPointF place(double x, double y) const;
    QColor seriesColor(std::size_t series, bool marked) const;

    Chart chart_;
    widgets::ChartColors colors_;
    QRectF all_, plot_;
    QRectF ranges_{0, 0, 1, 1};  ///< what x and y run over in the plot, from the least of both
    std::vector<Writing> writings_;
    std::vector<QLineF> grid_;
    std::vector<Bar> bars_;
    std::vector<Bar> swatches_;  ///< of the legend
    std::vector<QPointF> marks_;
};

/// Draws a chart into an area of any painter, in the colours of paper.
void paintChart(QPainter& painter, const QRectF& area, const Chart& chart);

/// The pages that show the charts behind a report: two on an upright page, one on a wide one.
std::vector<ReportPainter::ExtraPage> chartPages(const std::vector<Chart>& charts, bool upright);

}  // namespace reports
