#pragma once
#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <variant>
#include <vector>

#include "store/value.h"

namespace reports {

/// Two title rows and the headings stand above a list; its rows begin at row 4.
inline constexpr int kFirstListRow = 4;
/// The counter of a list's rows is a 16-bit number.
inline constexpr int kMaxListRows = 32767;

/// The cells of one sheet. Rows and columns count from 1. A row beyond the counter's limit throws
/// Error(Overflow) "オーバーフローしました。".
class SheetGrid {
  public:
    using Cell = std::variant<QString, double, QDate>;

    void setText(int row, int column, const QString& text);
    void setNumber(int row, int column, double number);
    /// A value as it comes from a recordset: a number stays a number, a date a date, text stays text; Null
    /// leaves the cell empty.
    void setValue(int row, int column, const store::Value& value);

    /// In characters of the sheet's normal font; without it the writer fits the column to its cells from the
    /// headings on.
    void setColumnWidth(int column, double characters);
    /// Amounts that are sent as text stand at the right all the same, from the headings on.
    void setRightAligned(int column);

    using Row = std::vector<std::pair<int, Cell>>;  ///< (column, content), in the order of writing
    const std::map<int, Row>& rows() const { return rows_; }
    bool isRightAligned(int column) const;
    double columnWidth(int column) const;  ///< the set one, or the fitted one
    int columnCount() const { return columns_; }

  private:
    void set(int row, int column, Cell cell);
    std::map<int, Row> rows_;
    std::map<int, double> widths_;
    std::vector<int> rightAligned_;
    int columns_ = 0;
};

struct NamedSheet {
    QString name;
    std::shared_ptr<const SheetGrid> grid;
};

/// The name as a sheet may bear it: at most 31 characters, none of [ ] : * ? / \ (their full-width forms
/// instead), no apostrophe at either end, not empty, not "History", and none of `taken`, case ignored.
QString safeSheetName(const QString& wanted, const QStringList& taken);

/// Writes sheets to a file that is there already and empty, the first sheet in front. Throws store::Error.
using WorkbookWriter = std::function<void(const QString& path, const std::vector<NamedSheet>& sheets)>;
/// The writer of .xlsx files.
void writeXlsx(const QString& path, const std::vector<NamedSheet>& sheets);

/// The sheets that were sent in this run of the program. Each send makes a new file, with the new sheet in
/// front and the earlier ones behind it, the latest first. A file that was written is never written again.
class ExportSession {
  public:
    struct Options {
        QString folder;                           ///< made when it is missing
        QString prefix = QStringLiteral("賞与");  ///< begins every file name
        std::function<QDateTime()> now = [] { return QDateTime::currentDateTime(); };
        WorkbookWriter writer = writeXlsx;
    };
    explicit ExportSession(Options options);
    /// The user's documents folder/ひなた堂ミント.
    static QString defaultFolder();

    /// Writes the next file, 賞与_20261122_143005_1.xlsx, and returns its full path. Throws store::Error with
    /// a text for the user when it cannot be written; then no file is left behind and the sheet is not kept.
    QString send(const SheetGrid& grid, const QString& sheetName);

    const QString& folder() const { return options_.folder; }

  private:
    QString freePath() const;
    Options options_;
    std::vector<NamedSheet> sheets_;  ///< the latest first
    int sent_ = 0;
};

}  // namespace reports
