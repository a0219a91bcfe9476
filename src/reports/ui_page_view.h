#pragma once
#include <QScrollArea>

namespace reports {

class ReportPainter;

/// One page of a report on the screen, in a scroll area. Only the shown page is painted.
class PageView : public QScrollArea {
    Q_OBJECT
  public:
    enum class Zoom { FitWidth, FitPage, Percent };

    /// The painter must outlive the view.
    PageView(const ReportPainter& painter, QWidget* parent);

    void showPage(int page);  ///< and scrolls to its top
    void setZoom(Zoom zoom, int percent = 100);
    int effectivePercent() const;  ///< of the paper's real size

  Q_SIGNALS:
    void pageWheeled(int pages);  ///< the wheel was turned beyond the upper (-1) or lower (1) end

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    class Sheet;
    void fit();
    const ReportPainter& painter_;
    Sheet* sheet_;
    Zoom zoom_ = Zoom::FitWidth;
    int percent_ = 100;
};

}  // namespace reports
