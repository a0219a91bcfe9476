#pragma once
#include <array>

#include "personnel/code_choices.h"
#include "personnel/ui_person_record.h"

namespace personnel {

/// 異動履歴: where one employee stands from which day on, the newest first. The row in force on a date is the
/// one with the greatest 異動日 not after it: what is entered here is what every list and every bonus run of
/// that date sees. All rows of the person stand in a table beside the fields; the one in force today is
/// marked.
class frmJinjiIdou2 : public PersonRecordForm {
    Q_OBJECT
  public:
    frmJinjiIdou2(forms::House& house, QWidget* parent);

  protected:
    QStringList keyColumns() const override { return {QStringLiteral("異動日")}; }
    QString removalQuestion() const override;
    void rowsRead() override;
    void rowShown() override;
    void stateChanged() override;
    void rowWritten(store::RowEdit& row) override;
    QString gridText(int row, int column) const override;

  private:
    static constexpr std::size_t kCombos = 7;
    enum Combo { Jiyuu, SyainKubun, SyozokuDai, SyozokuSyou, Yakusyoku, Syokusyu, Course };

    void makeControls();
    void bindFields();
    QLayout* arrangeFields();
    bool checkIdoubiField();
    bool checkTokyuField();
    bool checkCombo(std::size_t index);
    bool listHasRows(std::size_t index);
    /// Before the user chooses: only what was set up by the 異動日 is offered.
    void enterCombo(std::size_t index);
    bool offer(std::size_t index);
    void sendBackToDate(const QString& text);
    void dropSyozokuSyou();
    /// The whole masters, so that a row shows its names whenever they were set up.
    void showWholeLists();
    QDate enteredDate() const;
    QString nameOf(std::size_t index, const QString& code, const QString& parent) const;

    EntryItems items_;
    std::array<std::vector<CodeChoice>, kCombos> masters_;
    int inForce_ = -1;  ///< the row in force today
    std::array<QLineEdit*, 3> txtFields_{};
    std::array<widgets::CodeCombo*, kCombos> combo_{};
    std::array<QLabel*, 2> kept_{};  ///< Label3: 号俸, 評語
};

}  // namespace personnel
