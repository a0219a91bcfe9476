#pragma once
#include <array>

#include "personnel/ui_person_record.h"

namespace widgets {
class ReadingCapture;
}

namespace personnel {

/// 家族情報: the family members of one employee, one row per 続柄.
class frmJinjiKazoku : public PersonRecordForm {
    Q_OBJECT
  public:
    frmJinjiKazoku(forms::House& house, QWidget* parent);

  protected:
    QList<QWidget*> fieldOrder() const override;
    QStringList keyColumns() const override { return {QStringLiteral("続柄")}; }
    QString removalQuestion() const override;

  private:
    void makeControls();
    void bindFields();
    QLayout* arrangeFields();
    bool checkZokugaraField();

    QLineEdit* shimei_ = nullptr;
    QLineEdit* furigana_ = nullptr;
    QLineEdit* seinengappi_ = nullptr;
    widgets::CodeCombo* zokugara_ = nullptr;
    std::array<widgets::OptionRow*, 4> options_{};
    QWidget* readingForms_ = nullptr;
};

}  // namespace personnel
