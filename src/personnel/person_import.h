#pragma once
#include <QByteArray>
#include <QDate>
#include <QString>
#include <QStringList>
#include <vector>

#include "domain/csv.h"
#include "store/connection.h"

/// Taking employees or transfers over from a sheet: every row is judged by the rules of the screens before
/// anything is written, and all rows are written or none.
namespace personnel {

enum class ImportKind {
    Employees,  ///< 履歴書テーブル
    Transfers,  ///< 異動テーブル
};

inline constexpr qint64 kMaxImportBytes = 20 * 1024 * 1024;

/// A sheet with the headings of what this company enters and no row: UTF-8 with its mark, as spreadsheet
/// programs open it.
QByteArray importTemplate(store::Connection& cn, ImportKind kind);

/// The rows of a file, headings first. Throws Error(Type) with what to do for a file that is too large, a
/// workbook, a text in another code or without rows.
std::vector<domain::CsvRow> readImportFile(const QString& path);

/// What becomes of one row of the sheet.
struct ImportRow {
    enum class Outcome { Add, Update, Refused };
    int line;         ///< of the file
    QString code;     ///< 社員Code
    QString subject;  ///< 氏名, or 異動日
    Outcome outcome;
    QStringList reasons;  ///< why it is refused, each names its field; what to look at before an update
    store::Binds values;  ///< of an accepted row, as the import's columns
};

struct ImportPlan {
    ImportKind kind;
    std::vector<ImportRow> rows;
    QStringList ignored;  ///< headings that are no item

    int count(ImportRow::Outcome outcome) const;
    bool mayRun() const { return !rows.empty() && count(ImportRow::Outcome::Refused) == 0; }
};

struct ImportWish {
    bool updateExisting = false;  ///< otherwise a row of somebody (or a transfer) that is there is refused
    QDate today;
};

/// Judges the sheet; reads only. A cell names an entry of a master by code or by name. In a row that updates,
/// an empty cell or a missing column keeps what stands. Throws Error(Type) for headings that are missing or
/// double.
ImportPlan planImport(store::Connection& cn, ImportKind kind, const std::vector<domain::CsvRow>& sheet,
                      const ImportWish& wish);

/// Writes all rows of a plan that may run. Runs in the caller's transaction.
void runImport(store::Connection& cn, const ImportPlan& plan);

}  // namespace personnel
