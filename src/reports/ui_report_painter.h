#pragma once
#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QRectF>
#include <QString>
#include <functional>
#include <vector>

#include "reports/report.h"

class QPagedPaintDevice;
class QPainter;

namespace reports {

/// Draws pages of one report on any painter: preview, printer and PDF get the same page.
class ReportPainter {
  public:
    explicit ReportPainter(Report report);

    const Report& report() const { return report_; }
    int pageCount() const { return pagination_.pageCount() + static_cast<int>(appendix_.size()); }

    /// Pages behind the report's own, with its page numbers. Each draws into an area in twips.
    using ExtraPage = std::function<void(QPainter& painter, const QRectF& area)>;
    void setAppendix(std::vector<ExtraPage> pages) { appendix_ = std::move(pages); }
    double aspectRatio() const;  ///< width of the paper over its height

    /// Draws page `number` (from 1) so that the whole sheet of paper fills `target`.
    void paint(QPainter& painter, const QRectF& target, int number) const;

    /// Told after each page; false stops.
    using Progress = std::function<bool(int pagesDone)>;
    /// Makes the device's paper that of the design. Before a print dialog, in which the user may choose
    /// another.
    void setPaper(QPagedPaintDevice& device) const;
    /// Draws the pages `first` to `last` on the device's paper, in the design's proportions. False when the
    /// device takes no page or `progress` stopped it.
    bool print(QPagedPaintDevice& device, int first, int last, const Progress& progress = {}) const;

  private:
    void paintOwnPage(QPainter& painter, int number) const;
    void paintExtraPage(QPainter& painter, std::size_t number) const;
    void paintBand(QPainter& painter, Section section, int top, int row, int page, bool firstOnPage) const;
    void paintText(QPainter& painter, const Control& control, const QRectF& box, const QString& text) const;

    /// A style made ready for painting: measuring a cell must not search for its font again.
    struct Look {
        explicit Look(Style style);
        QFont font;
        QFontMetricsF metrics;
        QColor ink;
    };

    Report report_;
    Pagination pagination_;
    std::vector<ExtraPage> appendix_;
    std::vector<Look> looks_;  ///< by Style
};

}  // namespace reports
