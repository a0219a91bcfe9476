#pragma once
#include <vector>

#include "company/compaction.h"
#include "forms/screens.h"
#include "widgets/form.h"

class QLabel;

namespace widgets {
class CodeList;
class RowsModel;
class Table;
}  // namespace widgets

namespace company {

/// データベース最適化: writes the databases of one company anew, each with its own message, and shows how
/// large they were and are.
class frmSaiteki : public widgets::Form {
    Q_OBJECT
  public:
    frmSaiteki(forms::House& house, QWidget* parent);

  private:
    void build();
    void showSizes();
    void Saiteki_Click();
    Compaction compact(const CompanyLock* lock, const QString& path) const;
    void tell(const Compaction& done);

    forms::House& house_;
    std::vector<Compaction> sizes_;  ///< of the chosen company's files
    widgets::CodeList* list1_ = nullptr;
    widgets::Table* table_ = nullptr;
    widgets::RowsModel* rows_ = nullptr;
};

}  // namespace company
