#pragma once
#include <vector>

#include "prep/run_input.h"
#include "widgets/edit_table.h"

namespace prep {

/// A list of employees with one column to fill in. One column from a spreadsheet goes to the rows below; two
/// and more go to their employees by 社員コード, after a preview. Object name Picture1, its scroll bar
/// VScroll1.
class InputGrid : public widgets::EditTable {
    Q_OBJECT
  public:
    enum Column { Code, Shimei, Syozoku, Yakusyoku, Value };

    explicit InputGrid(QWidget* parent);

    void setContent(CellRules rules, std::vector<InputRow> rows);
    std::vector<InputRow> rows() const;  ///< with what the cells hold now

  protected:
    bool takesPaste(const QString& clipboard) override;

  private:
    QString headText(int row, int column) const;
    std::vector<InputRow> rows_;
};

}  // namespace prep
