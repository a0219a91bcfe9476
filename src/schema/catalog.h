#pragma once
#include <QString>
#include <QStringList>
#include <vector>

#include "store/column_type.h"

namespace schema {

/// The files of a company. Each table belongs to one.
enum class File {
    Kihon,    ///< <会社>基本db.mdb: people and masters
    Chingin,  ///< <会社>賃金db.mdb: the wage-design companion's tables; optional
    Hyouka,   ///< <会社>評価db.mdb: the evaluation companion's tables; optional
    Syouyo,   ///< <会社>賞与db.mdb: the bonus tables
};

/// When a table comes to be.
enum class Lifetime {
    Permanent,      ///< created with the company's files
    CreatedAtOpen,  ///< created with the company's files, or at the next open of a company that lacks it
    Derived,        ///< created with the company's files, filled at each use from the others
    Scratch,        ///< dropped and created at each use
};

struct Column {
    QString name;
    store::ColumnType type;
};

struct Table {
    QString name;
    File file;
    Lifetime lifetime;
    std::vector<Column> columns;       ///< in binding order: the index is the position
    std::vector<QStringList> indexes;  ///< none is unique: the screens alone keep keys unique
};

/// Every table of a company, described once. Definitions, positions, width checks and the sample company come
/// from it.
const std::vector<Table>& catalog();
/// The table of that name; a name that is not there is a bug.
const Table& tableNamed(const QString& name);
/// The types of these columns, in this order; a column that the table does not have is a bug.
std::vector<store::ColumnType> typesOf(const Table& table, const QStringList& columns);
/// "<name> <type>" with the check of its form in the tables that are ours and hold what nothing else holds.
QString columnDefinition(const Table& table, const Column& column);
/// "CREATE TABLE …" and, in Table::indexes, its "CREATE INDEX …" statements.
QStringList createStatements(const Table& table);

/// Positions as constants, one namespace a table: tables::S実行個人別計算::基礎額Ａ is 5. A column whose name
/// is no identifier drops the offending characters (資格・免許 is 資格免許).
// clang-format off
namespace tables {
#define TABLE(id, name, file, lifetime) \
    namespace id {                      \
    inline constexpr const char16_t* kName = u"" name; \
    enum Position : int {
#define COLUMN(id, type) id,
#define COLUMN_NAMED(id, name, type) id,
#define INDEX(...)
#define END \
    kColumns }; }
#include "schema/catalog.def"
#undef TABLE
#undef COLUMN
#undef COLUMN_NAMED
#undef INDEX
#undef END
}  // namespace tables
// clang-format on

}  // namespace schema
