#pragma once
#include <array>

#include "personnel/ui_selection_form.h"
#include "widgets/code_combo.h"

class QButtonGroup;
class QGridLayout;
class QLineEdit;

namespace personnel {

/// 検索条件: selects current staff by code, reading, sex, position, age and tenure as of a reference date,
/// and sends the people on to where the menu entry leads: the record, a printed list, a sheet, the
/// retirement.
class frmJinjiSiborikomi : public SelectionForm {
    Q_OBJECT
  public:
    frmJinjiSiborikomi(forms::House& house, const reports::SheetFolder& sheets, QWidget* parent);

  protected:
    Query query() override;
    void clearConditions() override;
    QDate referenceDate() override;
    QString printedDate() override;

  private:
    QLayout* makeConditions();
    void makeTexts();
    QLayout* makeSex();
    void makePosition(QGridLayout* grid);
    QLayout* range(QLineEdit* from, const QString& between, QLineEdit* to, const QString& behind);
    void connectEvents();

    void txtFields_Change();
    bool txtFields_LostFocus();
    bool years_LostFocus(QLineEdit* edit);
    void DataCombo1_GotFocus(std::size_t index);

    /// Empties all conditions beside the code.
    void clearOthers();
    void offerLeaving();
    SelectionConditions conditions() const;

    std::array<QLineEdit*, 2> txtFields_{};
    QButtonGroup* sex_ = nullptr;
    std::array<widgets::CodeCombo*, kPositionItems.size()> combo_{};
    QLineEdit* text1_ = nullptr;
    std::array<QLineEdit*, 4> years_{};  ///< Text2 to Text5
    bool byCode_ = false;                ///< a code is typed: nothing else may be
};

}  // namespace personnel
