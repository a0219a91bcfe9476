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

constexpr int kPaperA4 = 9;
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

/// Paper lies across, as wide as the list; each page repeats the headings and says whose it is.
void setPage(lxw_worksheet* sheet, const Sheet& named) {
    const auto heading = static_cast<lxw_row_t>(named.grid.headingRow() - 1);
    worksheet_set_landscape(sheet);
    worksheet_set_paper(sheet, kPaperA4);
    worksheet_fit_to_pages(sheet, 1, 0);
    check(worksheet_repeat_rows(sheet, heading, heading));
    const QString origin = QString(named.origin).replace(u'&', QStringLiteral("&&"));
    check(worksheet_set_footer(sheet, QStringLiteral("&L%1&R&P / &N").arg(origin).toUtf8().constData()));
}

/// A workbook that is freed on every path. close() writes the file and frees it.
class Workbook {
  public:
    explicit Workbook(const QString& path) : book_(workbook_new(QFile::encodeName(path).constData())) {
        if (!book_) check(LXW_ERROR_MEMORY_MALLOC_FAILED);
        amount_ = withFormat("#,##0");
        factor_ = withFormat("0.000");
        date_ = withFormat("yyyy/m/d");
        heading_ = workbook_add_format(book_);
        format_set_align(heading_, LXW_ALIGN_RIGHT);
    }
    ~Workbook() {
        if (book_) lxw_workbook_free(book_);
    }
    Workbook(const Workbook&) = delete;
    Workbook& operator=(const Workbook&) = delete;

    void add(const Sheet& sheet);
    void close() { check(workbook_close(std::exchange(book_, nullptr))); }

  private:
    void writeCell(lxw_worksheet* sheet, int row, int column, const SheetGrid::Cell& cell,
                   lxw_format* ofText);
    lxw_format* withFormat(const char* pattern) {
        lxw_format* made = workbook_add_format(book_);
        format_set_num_format(made, pattern);
        return made;
    }
    lxw_workbook* book_;
    lxw_format *amount_, *factor_, *date_, *heading_;
};

void Workbook::writeCell(lxw_worksheet* sheet, int row, int column, const SheetGrid::Cell& cell,
                         lxw_format* ofText) {
    const auto r = static_cast<lxw_row_t>(row - 1);
    const auto c = static_cast<lxw_col_t>(column - 1);
    if (const auto* text = std::get_if<QString>(&cell)) {
        check(worksheet_write_string(sheet, r, c, carried(*text).constData(), ofText));
    } else if (const auto* date = std::get_if<QDate>(&cell); date && date->year() < kFirstYear) {
        check(worksheet_write_string(sheet, r, c, store::formatDate(*date).toUtf8().constData(), ofText));
    } else if (date) {
        lxw_datetime day{date->year(), date->month(), date->day(), 0, 0, 0};
        check(worksheet_write_datetime(sheet, r, c, &day, date_));
    } else {
        const auto& number = std::get<SheetGrid::Number>(cell);
        lxw_format* look = number.look == NumberLook::Amount   ? amount_
                           : number.look == NumberLook::Factor ? factor_
                                                               : nullptr;
        check(worksheet_write_number(sheet, r, c, number.value, look));
    }
}

void Workbook::add(const Sheet& named) {
    lxw_worksheet* sheet = workbook_add_worksheet(book_, named.name.toUtf8().constData());
    if (!sheet) check(LXW_ERROR_SHEETNAME_ALREADY_USED);
    const SheetGrid& grid = named.grid;
    for (int column = 1; column <= grid.columnCount(); ++column) {
        const auto c = static_cast<lxw_col_t>(column - 1);
        check(worksheet_set_column(sheet, c, c, grid.columnWidth(column), nullptr));
    }
    int last = grid.headingRow();
    for (const auto& [row, cells] : grid.rows()) {
        last = row;
        for (const auto& [column, cell] : cells) {
            const bool heads = row == grid.headingRow() && grid.holdsNumbers(column);
            writeCell(sheet, row, column, cell, heads ? heading_ : nullptr);
        }
    }
    writeCell(sheet, last + 2, 1, named.origin, nullptr);
    worksheet_freeze_panes(sheet, static_cast<lxw_row_t>(grid.headingRow()), 0);
    setPage(sheet, named);
    // Codes are text on purpose: no warning marks in their cells.
    check(worksheet_ignore_errors(sheet, LXW_IGNORE_NUMBER_STORED_AS_TEXT, "A1:XFD1048576"));
    QByteArray title = named.title.toUtf8();
    lxw_doc_properties properties{};
    properties.title = title.data();
    check(workbook_set_properties(book_, &properties));
}

}  // namespace

void writeXlsx(const QString& path, const Sheet& sheet) {
    Workbook book(path);
    book.add(sheet);
    book.close();
    Package(path).requireWhole();
}

}  // namespace reports
