#pragma once
#include <QString>
#include <functional>
#include <vector>

#include "reports/chart.h"
#include "reports/list_title.h"
#include "reports/ui_report_painter.h"
#include "widgets/form.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QSpinBox;

namespace reports {

class PageView;

/// The preview of a report: page moves, zoom, print, PDF. It holds the report with its own copy of the rows.
/// Shown modally by the screen that prints (widgets::Form::showChild).
class frmReport : public widgets::Form {
    Q_OBJECT
  public:
    /// `whose` stands at the foot of each page and names the PDF file.
    frmReport(Report report, const ListTitle& whose, QWidget* parent);

    const Report& report() const { return painter_.report(); }
    int page() const { return page_; }  ///< from 1
    int pageCount() const { return painter_.pageCount(); }
    void showPage(int page);  ///< moved into the range of pages
    /// 50 to 200 per cent of the paper's size; the window's own modes are fit width and fit page.
    void setZoom(int percent);

    /// Offers to put charts behind the report's own pages, in the preview, on paper and in the PDF file.
    /// `charts` reads them when they are wanted; it may throw store::Error.
    void offerCharts(std::function<std::vector<Chart>()> charts);

    /// Writes all pages to a PDF file, replacing it only when the whole was written. False when it could not
    /// be, after telling why, or when the user stopped it.
    bool savePdf(const QString& path);

  private:
    void buildToolbar();
    void connectKeys();
    void attachCharts(bool attach);
    void showPageCount();
    void stepZoom(int direction);
    void printWithDialog();
    void savePdfWithDialog();
    bool printOn(QPagedPaintDevice& device, int first, int last);

    ReportPainter painter_;
    QString fileStem_;  ///< of the PDF file
    int page_ = 1;
    PageView* view_;
    QPushButton* first_ = nullptr;
    QPushButton* previous_ = nullptr;
    QPushButton* next_ = nullptr;
    QPushButton* last_ = nullptr;
    QSpinBox* pageField_ = nullptr;
    QLabel* pages_ = nullptr;
    QComboBox* zoom_ = nullptr;
    QCheckBox* withCharts_ = nullptr;
    std::function<std::vector<Chart>()> charts_;
};

}  // namespace reports
