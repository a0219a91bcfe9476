#pragma once
#include <vector>

#include "reports/chart.h"
#include "widgets/form.h"

class QLabel;
class QTabWidget;

namespace reports {

/// Charts side by side on tabs: pointing at them tells the numbers, and each can be saved as a picture. It
/// knows nothing of where the numbers come from. Shown modally by the screen that has them.
class frmChart : public widgets::Form {
    Q_OBJECT
  public:
    /// `subject` stands above the charts: whose numbers they are.
    frmChart(std::vector<Chart> charts, const QString& subject, QWidget* parent);

    /// Writes the chart in sight as a PNG file in the colours of paper, replacing it only when the whole was
    /// written. False when it could not be, after telling why.
    bool savePicture(const QString& path);

  private:
    QWidget* page(const Chart& chart);
    const Chart& inSight() const;
    void tell(const QString& text);
    void saveWithDialog();

    std::vector<Chart> charts_;
    QTabWidget* tabs_ = nullptr;
    QLabel* told_ = nullptr;
};

}  // namespace reports
