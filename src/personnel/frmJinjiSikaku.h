#pragma once
#include "personnel/ui_person_record.h"

namespace personnel {

/// 資格・免許保有状況: the qualifications of one employee, one row per 資格・免許.
class frmJinjiSikaku : public PersonRecordForm {
    Q_OBJECT
  public:
    frmJinjiSikaku(forms::House& house, QWidget* parent);

  protected:
    QStringList keyColumns() const override { return {QStringLiteral("資格・免許")}; }
    QString removalQuestion() const override;

  private:
    void makeControls();
    void bindFields();
    QLayout* arrangeFields();
    bool checkShikakuField();

    widgets::CodeCombo* shikaku_ = nullptr;
    widgets::OptionRow* hitsuyousei_ = nullptr;
    QLineEdit* text1_ = nullptr;
};

}  // namespace personnel
