#pragma once
#include <memory>
#include <optional>

#include "personnel/person_import.h"
#include "personnel/person_rules.h"
#include "store/statement.h"

/// One row of an import: its items, its judgment, its writing. person_import.h is what screens use.
namespace personnel {

/// A column that an import fills.
struct ImportItem {
    enum class Kind { Key, Text, Date, Option, Choice };
    QString column;
    QString heading;  ///< as the staff sheet heads it
    Kind kind;
    bool isKey = false;  ///< names the row: its heading must be there
};

/// All items, entered or not, in the order of the table; the keys come first.
std::vector<ImportItem> importItems(const EntryItems& entered, ImportKind kind);

/// Judges the rows of one sheet in their order (a later row of one key is a duplicate of the first).
class RowJudge {
  public:
    virtual ~RowJudge() = default;
    virtual const std::vector<ImportItem>& items() const = 0;
    /// `cells` as items().
    virtual ImportRow judge(int line, const QStringList& cells) = 0;
};
std::unique_ptr<RowJudge> makeRowJudge(store::Connection& cn, ImportKind kind, const ImportWish& wish);

/// One prepared statement for the new rows, one for the changed ones.
class ImportWriter {
  public:
    ImportWriter(store::Connection& cn, ImportKind kind);
    void write(const ImportRow& row);

  private:
    store::Statement insert_;
    store::Statement update_;
};

}  // namespace personnel
