#include <xlsxwriter.h>

#include <QFile>
#include <QRegularExpression>
#include <utility>

#include "reports/package.h"
#include "reports/workbook.h"
#include "store/date_text.h"
#include "store/error.h"

namespace reports {

using store::Error;

namespace {

constexpr int kHeadingRow = kFirstListRow - 1;
constexpr int kFirstYear = 1900;  // a sheet knows no earlier date: such a one goes as text

void check(lxw_error code) {
    if (code == LXW_NO_ERROR) return;
    const bool storage = code == LXW_ERROR_CREATING_XLSX_FILE || code == LXW_ERROR_CREATING_TMPFILE ||
                         (code >= LXW_ERROR_READING_TMPFILE && code <= LXW_ERROR_ZIP_CLOSE);
    throw Error(storage ? Error::Reason::DiskFull : Error::Reason::Type,
                storage
                    ? QStringLiteral("Excel ファイルを書き込めません。ディスクの空き容量を確認してください。")
                    : QStringLiteral("Excel のシートに書き込めない値があります。(%1)")
                          .arg(QString::fromUtf8(lxw_strerror(code))));
}

/// A text as a workbook can carry it. The writer ends a text at a NUL, and two more characters make the whole
/// file unreadable: they become the replacement character. "_x0041_" is a sheet's way to write "A", so the
/// underscore of a text that looks like it is written in that way itself.
QByteArray carried(QString text) {
    static const QRegularExpression kEscape(QStringLiteral("_(?=x[0-9A-Fa-f]{4}_)"));
    for (QChar& c : text)
        if (c.isNull() || c.unicode() >= 0xFFFE) c = QChar::ReplacementCharacter;
    return text.replace(kEscape, QStringLiteral("_x005F_")).toUtf8();
}

/// A workbook that is freed on every path. close() writes the file and frees it.
class Workbook {
  public:
    explicit Workbook(const QString& path) : book_(workbook_new(QFile::encodeName(path).constData())) {
        if (!book_) check(LXW_ERROR_MEMORY_MALLOC_FAILED);
    }
    ~Workbook() {
        if (book_) lxw_workbook_free(book_);
    }
    Workbook(const Workbook&) = delete;
    Workbook& operator=(const Workbook&) = delete;

    void add(const NamedSheet& sheet);
    void close() { check(workbook_close(std::exchange(book_, nullptr))); }

  private:
    void writeCell(lxw_worksheet* sheet, int row, int column, const SheetGrid::Cell& cell,
                   lxw_format* format);
    lxw_format* format(bool right, bool date);
    lxw_workbook* book_;
    lxw_format* formats_[2][2] = {};
};

lxw_format* Workbook::format(bool right, bool date) {
    if (!right && !date) return nullptr;
    lxw_format*& made = formats_[right][date];
    if (!made) {
        made = workbook_add_format(book_);
        if (right) format_set_align(made, LXW_ALIGN_RIGHT);
        if (date) format_set_num_format(made, "yyyy/m/d");
    }
    return made;
}

void Workbook::writeCell(lxw_worksheet* sheet, int row, int column, const SheetGrid::Cell& cell,
                         lxw_format* look) {
    const auto r = static_cast<lxw_row_t>(row - 1);
    const auto c = static_cast<lxw_col_t>(column - 1);
    if (const auto* text = std::get_if<QString>(&cell)) {
        check(worksheet_write_string(sheet, r, c, carried(*text).constData(), look));
    } else if (const auto* date = std::get_if<QDate>(&cell); date && date->year() < kFirstYear) {
        check(worksheet_write_string(sheet, r, c, store::formatDate(*date).toUtf8().constData(), look));
    } else if (date) {
        lxw_datetime day{date->year(), date->month(), date->day(), 0, 0, 0};
        check(worksheet_write_datetime(sheet, r, c, &day, look));
    } else {
        check(worksheet_write_number(sheet, r, c, std::get<double>(cell), look));
    }
}

void Workbook::add(const NamedSheet& named) {
    lxw_worksheet* sheet = workbook_add_worksheet(book_, named.name.toUtf8().constData());
    if (!sheet) check(LXW_ERROR_SHEETNAME_ALREADY_USED);
    const SheetGrid& grid = *named.grid;
    for (int column = 1; column <= grid.columnCount(); ++column) {
        const auto c = static_cast<lxw_col_t>(column - 1);
        check(worksheet_set_column(sheet, c, c, grid.columnWidth(column), nullptr));
    }
    for (const auto& [row, cells] : grid.rows())
        for (const auto& [column, cell] : cells) {
            const bool right = row >= kHeadingRow && grid.isRightAligned(column);
            writeCell(sheet, row, column, cell, format(right, std::holds_alternative<QDate>(cell)));
        }
    // Codes and amounts are text on purpose: no warning marks in their cells.
    check(worksheet_ignore_errors(sheet, LXW_IGNORE_NUMBER_STORED_AS_TEXT, "A1:XFD1048576"));
}

}  // namespace

void writeXlsx(const QString& path, const std::vector<NamedSheet>& sheets) {
    Workbook book(path);
    for (const NamedSheet& sheet : sheets) book.add(sheet);
    book.close();
    Package(path).requireWhole();
}

}  // namespace reports
