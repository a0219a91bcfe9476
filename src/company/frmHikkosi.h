#pragma once
#include <memory>

#include "company/migration.h"
#include "forms/screens.h"
#include "widgets/form.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace widgets {
class RowsModel;
class Table;
}  // namespace widgets

namespace company {

/// 引っ越し: shows what the databases of another form hold, table by table, what of it can't be carried, and
/// makes a company of it. The old files stay as they are.
class frmHikkosi : public widgets::Form {
    Q_OBJECT
  public:
    frmHikkosi(forms::House& house, QWidget* parent);

    /// Reads a folder and shows what it holds; what is wrong with it is told.
    void load(const QString& folder);

  private:
    void build();
    void Command1_Click();
    void Command2_Click();
    void showPlan();

    forms::House& house_;
    std::shared_ptr<const Migration> plan_;
    QLabel *folder_ = nullptr, *counts_ = nullptr;
    widgets::Table* table_ = nullptr;
    widgets::RowsModel* rows_ = nullptr;
    QLineEdit* name_ = nullptr;
    QPushButton* start_ = nullptr;
};

}  // namespace company
