#pragma once
#include <QAbstractBarSeries>
#include <QChart>
#include <QGraphicsItem>
#include <memory>
#include <vector>

#include "reports/chart.h"
#include "reports/ui_report_painter.h"
#include "widgets/theme.h"

namespace reports {

/// The marks of a chart of points as one item: a scatter series makes an item of each point, and thousands of
/// employees would make every move of the window wait. On paper the marks stay sharp.
class PointMarks : public QGraphicsItem {
  public:
    PointMarks(QChart* chart, const Points& points, const QColor& ink, const QColor& ring);
    void setRanges(const QRectF& ranges);  ///< what x and y run over, from the least of both
    void setArea(const QRectF& area);      ///< where that lies in the chart
    int nearest(QPointF place) const;      ///< the point within reach of a place; -1 for none
    void setMarked(int point);             ///< ringed; -1 for none

    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

  private:
    QPointF position(std::size_t point) const;

    Points points_;
    QColor ink_, ring_;
    QRectF ranges_{0, 0, 1, 1};
    QRectF area_;
    int marked_ = -1;
};

/// A chart drawn: axes, bars or marks, legend, title, in the given colours.
class ChartPicture : public QChart {
    Q_OBJECT
  public:
    ChartPicture(Chart chart, const widgets::ChartColors& colors);

    const Chart& chart() const { return content_; }
    /// The class, point or group at a place of the picture; -1 for none.
    int itemAt(QPointF position) const;
    void setMarked(int item);

  private:
    void dress(const widgets::ChartColors& colors);
    void fill(const Distribution& distribution, const widgets::ChartColors& colors);
    void fill(const Points& points, const widgets::ChartColors& colors);
    void fill(const Stack& stack, const widgets::ChartColors& colors);
    void place(QAbstractAxis* axis, Qt::Alignment side, const QString& title,
               const widgets::ChartColors& colors);
    int barOf(int item) const;

    Chart content_;
    PointMarks* marks_ = nullptr;
    QAbstractBarSeries* bars_ = nullptr;
};

/// Draws a chart into an area of any painter, in the colours of paper.
void paintChart(QPainter& painter, const QRectF& area, const Chart& chart);

/// The pages that show the charts behind a report: two on an upright page, one on a wide one.
std::vector<ReportPainter::ExtraPage> chartPages(const std::vector<Chart>& charts, bool upright);

}  // namespace reports
