#pragma once
#include <QString>
#include <optional>
#include <vector>

#include "prep/run_input.h"

namespace prep {

/// One line of a block "社員コード … value" from a spreadsheet, beside the grid's employee of that code.
struct PastedPerson {
    enum class Fate { Changes, Same, Nobody, Refused };
    QString syainCode, shimei;
    QString before, text;
    Fate fate = Fate::Nobody;
    QString why;   ///< of a refusal
    int row = -1;  ///< in the grid
};

/// The lines of a clipboard text of two columns or more, judged by what the cells admit; none for a single
/// column. With a heading line the columns are those under 社員コード (or 社員Code) and under the value's
/// heading (refused without one, unless there is but one other column), otherwise the first and the last one.
/// Codes are compared as they stand, then as numbers, as spreadsheets drop their zeros. Refused are a code
/// that comes twice or may mean two employees, and a line with another number of columns than the first. What
/// is refused comes first, then who is not found, then the rest.
std::optional<std::vector<PastedPerson>> readPastedPeople(const QString& clipboard,
                                                          const std::vector<InputRow>& rows,
                                                          const CellRules& rules);

}  // namespace prep
