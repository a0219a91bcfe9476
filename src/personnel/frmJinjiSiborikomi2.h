#pragma once
#include "personnel/ui_selection_form.h"

class QLineEdit;

namespace personnel {

/// 退職者検索: selects retired people by the day they left, for the printed list of them or to bring one
/// back.
class frmJinjiSiborikomi2 : public SelectionForm {
    Q_OBJECT
  public:
    frmJinjiSiborikomi2(forms::House& house, const reports::SheetFolder& sheets, QWidget* parent);

  protected:
    Query query() override;
    void clearConditions() override;
    QDate referenceDate() override;
    QString printedDate() override;
    void restore(const QString& code) override;

  private:
    QLayout* makeConditions();

    QLineEdit* text1_;
    QLineEdit* text2_;
    QString asked_;  ///< the days of the people found, as printed
};

}  // namespace personnel
