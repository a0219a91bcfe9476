#pragma once
#include <array>

#include "calc/annual.h"
#include "forms/screens.h"
#include "widgets/form.h"

class QComboBox;
class QLabel;

namespace reports {
struct ListTitle;
class SentSheet;
class SheetFolder;
}  // namespace reports

namespace calc {

/// 年間支給額: up to four 基準日, and what every employee received on them, as a printed list or a sheet.
class frmSNenkan : public widgets::Form {
    Q_OBJECT
  public:
    frmSNenkan(forms::House& house, const reports::SheetFolder& sheets, QWidget* parent);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void makeControls();
    QWidget* makeDates();
    QLayout* makeButtons();
    void Form_Load();

    /// Moves on to the first combo without a text; nowhere when all have one.
    void Text入力();
    /// On leaving a combo: a date that another combo has already is refused.
    bool kijunbi_check(QComboBox* combo);
    void DataCombo_Click(QComboBox* combo, bool picked);
    void Command4_Click();
    void Command5_Click();
    void Command6_Click();
    void Command7_Click();

    bool requireDates();
    /// The date of the list that a combo's text names; invalid for an empty or an unknown text.
    QDate boundDate(const QComboBox* combo) const;
    NenkanDates dates() const;
    reports::ListTitle titleOfYear() const;
    NenkanHeads heads(QString (*format)(QDate), const QString& unused) const;

    forms::House& house_;
    const reports::SheetFolder& sheets_;
    std::vector<QDate> choices_;
    std::array<QComboBox*, kNenkanDates> combo_{};
    reports::SentSheet* sent_ = nullptr;
};

}  // namespace calc
