#pragma once
#include <array>
#include <memory>

#include "forms/global_record.h"
#include "forms/guard.h"
#include "forms/screens.h"
#include "personnel/person_import.h"
#include "widgets/form.h"

class QCheckBox;
class QFrame;
class QLabel;
class QPushButton;
class QRadioButton;

namespace widgets {
class RowsModel;
class Table;
}  // namespace widgets

namespace personnel {

/// 社員・異動の取込: takes employees or transfers over from a CSV file. What would become of each row stands
/// in a table before anything is written; with one refused row nothing can be imported.
class frmJinjiTorikomi : public widgets::Form {
    Q_OBJECT
  public:
    frmJinjiTorikomi(forms::House& house, QWidget* parent);

    /// Reads a file and shows what would become of its rows; what is wrong with it is told.
    void load(const QString& path);
    /// Writes the sheet with the headings of the chosen kind.
    void saveTemplate(const QString& path);

  private:
    QWidget* makeKind();
    QWidget* makePreview();
    QLayout* makeButtons();
    void connectEvents();

    void Command1_Click();
    void Command2_Click();
    void Command3_Click();

    ImportKind kind() const;
    void kindChosen();
    /// Judges the sheet in hand anew: another kind, another wish.
    void judge();
    void dropSheet();
    void showPlan();
    store::Connection& cn() const { return *house_.global.cn_main; }

    forms::House& house_;
    std::vector<domain::CsvRow> sheet_;
    QString path_;
    std::shared_ptr<const ImportPlan> plan_;

    std::array<QRadioButton*, 2> option_{};
    QCheckBox* update_ = nullptr;
    QCheckBox* refusedOnly_ = nullptr;
    widgets::RowsModel* model_ = nullptr;
    widgets::Table* table_ = nullptr;
    QLabel* file_ = nullptr;
    QLabel* counts_ = nullptr;
    QPushButton *command1_ = nullptr, *command2_ = nullptr, *command3_ = nullptr;
};

}  // namespace personnel
