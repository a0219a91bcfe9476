#pragma once
#include <QWidget>

#include "reports/ui_chart_picture.h"

namespace reports {

/// A chart in a window. The mouse points at a class, point or group; the arrow keys, Home and End move
/// through them. What is pointed at is ringed or stands out, and is told beside the mouse and to the window.
class ChartView : public QWidget {
    Q_OBJECT
  public:
    ChartView(const Chart& chart, QWidget* parent);

    const ChartPicture& picture() const { return picture_; }

  Q_SIGNALS:
    void pointed(const QString& text);  ///< empty when nothing is pointed at any more

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QString point(int item);

    ChartPicture picture_;
    int item_ = -1;
};

}  // namespace reports
