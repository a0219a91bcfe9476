#pragma once
#include <QDate>
#include <QString>
#include <QStringList>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <variant>
#include <vector>

#include "reports/list_title.h"
#include "store/value.h"

namespace reports {

/// Two title rows and the headings stand above a list; its rows begin at row 4.
inline constexpr int kFirstListRow = 4;
/// The counter of a list's rows is a 16-bit number.
inline constexpr int kMaxListRows = 32767;

/// How a cell shows its number; the number itself is never rounded.
enum class NumberLook {
    Plain,   ///< as many decimals as it has
    Amount,  ///< "#,##0"
    Factor,  ///< "0.000"
};

/// The cells of one sheet. Rows and columns count from 1. A row beyond the counter's limit throws
/// Error(Overflow) "オーバーフローしました。".
class SheetGrid {
  public:
    struct Number {
        double value = 0;
        NumberLook look = NumberLook::Plain;
        bool operator==(const Number&) const = default;
    };
    using Cell = std::variant<QString, Number, QDate>;

    void setText(int row, int column, const QString& text);
    void setTexts(int row, const QStringList& texts);  ///< from column 1 on
    void setNumber(int row, int column, double number, NumberLook look = NumberLook::Plain);
    void setAmount(int row, int column, const std::optional<store::Money>& amount);  ///< none: left empty
    /// A value as it comes from a recordset: a number stays a number, a date a date, text stays text; Null
    /// leaves the cell empty.
    void setValue(int row, int column, const store::Value& value);

    /// In characters of the sheet's normal font; without it the writer fits the column to its cells from the
    /// headings on.
    void setColumnWidth(int column, double characters);
    /// The row of the headings, the one above the list unless it is set. It stays in sight while the list
    /// scrolls.
    void setHeadingRow(int row) { headingRow_ = row; }

    using Row = std::vector<std::pair<int, Cell>>;  ///< (column, content), in the order of writing
    const std::map<int, Row>& rows() const { return rows_; }
    int headingRow() const { return headingRow_; }
    bool holdsNumbers(int column) const { return numeric_.contains(column); }
    double columnWidth(int column) const;  ///< the set one, or the fitted one
    int columnCount() const { return columns_; }

  private:
    void set(int row, int column, Cell cell);
    std::map<int, Row> rows_;
    std::map<int, double> widths_;
    std::set<int> numeric_;
    int columns_ = 0;
    int headingRow_ = kFirstListRow - 1;
};

/// The name as a sheet may bear it: at most 31 characters, none of [ ] : * ? / \ (their full-width forms
/// instead), no apostrophe at either end, not empty, not "History".
QString safeSheetName(const QString& wanted);
/// One sheet on its way into a file.
struct Sheet {
    const SheetGrid& grid;
    QString name;    ///< safe already
    QString title;   ///< property of the document
    QString origin;  ///< under the list and at the foot of each page
};
/// Writes a sheet to a file that is there already and empty. Throws store::Error.
using WorkbookWriter = std::function<void(const QString& path, const Sheet& sheet)>;
/// The writer of .xlsx files.
void writeXlsx(const QString& path, const Sheet& sheet);

/// Where sheets are sent. Each send makes a file of its own with that one sheet in it, so nothing of an
/// earlier list, and nothing of another company, is ever in it. A file that was written is never written
/// again.
class SheetFolder {
  public:
    struct Options {
        QString folder;  ///< made when it is missing
        WorkbookWriter writer = writeXlsx;
    };
    explicit SheetFolder(Options options);
    /// The user's documents folder/ひなた堂ミント.
    static QString defaultFolder();

    /// Writes the file, " (2)" and so on behind its name where one stands already, and returns its full path.
    /// Throws store::Error with a text for the user when it cannot be written; then no file is left behind.
    QString send(const SheetGrid& grid, const ListTitle& title) const;

    const QString& folder() const { return options_.folder; }

  private:
    Options options_;
};

}  // namespace reports
