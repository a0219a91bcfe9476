#include "reports/ui_page_view.h"

#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include "reports/ui_report_painter.h"
#include "widgets/theme.h"

namespace reports {

/// The sheet of paper: a white page with a fine edge on the window's ground.
class PageView::Sheet : public QWidget {
  public:
    Sheet(const ReportPainter& painter, QWidget* parent) : QWidget(parent), painter_(painter) {}
    void setPage(int page) {
        page_ = page;
        update();
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), Qt::white);
        painter_.paint(painter, rect(), page_);
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }

  private:
    const ReportPainter& painter_;
    int page_ = 1;
};

PageView::PageView(const ReportPainter& painter, QWidget* parent)
    : QScrollArea(parent), painter_(painter), sheet_(new Sheet(painter, this)) {
    sheet_->setObjectName(QStringLiteral("Sheet"));
    setWidget(sheet_);
    setAlignment(Qt::AlignCenter);
    setBackgroundRole(QPalette::Mid);
    setFocusPolicy(Qt::StrongFocus);
    // A bar that comes and goes would change the width that the page is fitted to.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setAccessibleName(tr("ページの表示"));
}

void PageView::showPage(int page) {
    sheet_->setPage(page);
    verticalScrollBar()->setValue(0);
}

void PageView::setZoom(Zoom zoom, int percent) {
    zoom_ = zoom;
    percent_ = percent;
    fit();
}

int PageView::effectivePercent() const {
    const double real = double(paperWidth(painter_.report().design().paper)) / kTwipsPerInch * logicalDpiX();
    return qRound(sheet_->width() / real * 100);
}

void PageView::fit() {
    const QSize room = viewport()->size() - QSize(2 * widgets::kGrid, 2 * widgets::kGrid);
    double width = room.width();
    if (zoom_ == Zoom::FitPage) width = std::min(width, room.height() * painter_.aspectRatio());
    if (zoom_ == Zoom::Percent)
        width = double(paperWidth(painter_.report().design().paper)) / kTwipsPerInch * logicalDpiX() *
                percent_ / 100;
    width = std::max(width, 1.0);
    sheet_->resize(qRound(width), qRound(width / painter_.aspectRatio()));
}

void PageView::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    fit();
}

void PageView::wheelEvent(QWheelEvent* event) {
    const QScrollBar* bar = verticalScrollBar();
    const int turn = event->angleDelta().y();
    const bool atEnd = turn < 0 ? bar->value() == bar->maximum() : bar->value() == bar->minimum();
    if (turn == 0 || !atEnd) return QScrollArea::wheelEvent(event);
    Q_EMIT pageWheeled(turn < 0 ? 1 : -1);
    event->accept();
}

}  // namespace reports
