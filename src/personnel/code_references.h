#pragma once
#include <QString>
#include <vector>

#include "store/connection.h"

namespace schema {
struct Table;
enum class File;
}  // namespace schema

/// Who refers to whom by code. No table declares a foreign key: this map is what keeps the codes in step. A
/// column that holds a code of a master or of an employee and is missing here is a fault (a test walks the
/// catalogue).
namespace personnel {

/// What a code names: an employee, or an entry of one of the nineteen masters.
enum class Referent {
    Syain,
    SyainKubun,
    SyozokuDai,
    Yakusyoku,
    Syokusyu,
    Course,
    SyozokuSyo,  ///< named by its parent's code and its own
    IdouJiyuu,
    Jyutaku,
    Gakureki,
    Saiyou,
    Shikaku,
    ZokugaraGroup,
    Zokugara,
    Syussinchi,
    Jiyuu1,
    Jiyuu2,
    Jiyuu3,
    Jiyuu4,
    Jiyuu5,
};

/// The name of a thing of this kind; `parent` is the 所属大 of a 所属小 and empty for all others.
struct CodeKey {
    QString code;
    QString parent;
    bool operator==(const CodeKey&) const = default;
};

/// One column that holds codes.
struct Reference {
    /// What becomes of the row when the code is removed.
    enum class OnRemoval {
        RowGoes,
        CodeIsCleared,  ///< of work tables: the row describes somebody who stays
        Refused,        ///< the code is in use: the caller asks codeUsage() and does not remove
    };
    Referent refersTo;
    const schema::Table* table;
    int column;
    int parentColumn = -1;  ///< of a 所属小: the column with its 所属大
    int nameColumn = -1;    ///< carries a copy of 氏名, kept in step by a rename
    OnRemoval onRemoval = OnRemoval::RowGoes;
    bool lastInRemoval = false;  ///< visited behind the other tables of its file when a code is removed
};

/// The map, for each file in the order in which a rename visits it.
const std::vector<Reference>& codeReferences();

/// The table that the code itself stands in (履歴書テーブル, the master), and back.
QString entryTable(Referent referent);
Referent referentOf(const QString& entryTable);

/// The company whose files are visited; the file that cn_main is open on decides the order.
struct CompanyDatabases {
    store::Connection& cn_main;
    QString dataDir;
    QString company;  ///< kaisha_folder
};

/// Rows of the tables behind cn_main that use the code.
struct CodeUse {
    QString table;
    QString label;  ///< the table as its screen calls it: 履歴書, 異動履歴, 家族情報, …
    qint64 rows;
};
/// The uses that forbid a removal (of a master's code), most personal first; retired people count.
std::vector<CodeUse> codeUsage(store::Connection& cn_main, Referent referent, const CodeKey& key);
/// What goes with an employee, for the question before: the rows of each table of people, results and runs.
std::vector<CodeUse> employeeHistory(store::Connection& cn_main, const QString& syainCode);

/// Carries a code through every table of every file. In the work of the caller on cn_main (Work
/// of a record form): codehenkou4 there, then codehenkou1_sub and codehenkou2_sub on connections of their
/// own, each in a transaction of its own and skipped when its file is missing, then the company's own tables
/// on cn_main. What a secondary file got stands even if the caller rolls back. The row of the code itself
/// (履歴書テーブル, the master) is the caller's, and so is the announcement before the transaction
/// (code_change.h), which ends here. Equal keys do nothing. `shimei` is the employee's name for
/// the tables that keep a copy. Throws store::Error.
void renameCode(const CompanyDatabases& company, Referent referent, const CodeKey& from, const CodeKey& to,
                const QString& shimei = {});
/// Removes every reference in the same way and order: codesakujo4, codesakujo1_sub, codesakujo2_sub, the own
/// tables. Rows of tables that refuse a removal are left alone (the caller has asked codeUsage()).
void removeCode(const CompanyDatabases& company, Referent referent, const CodeKey& key);

/// The companions' files that a change of such a code reaches: those that stand and can hold it.
std::vector<schema::File> secondaryFiles(const CompanyDatabases& company, Referent referent);
/// Whether a secondary file holds the code anywhere; read by a connection of its own.
bool holdsCode(const CompanyDatabases& company, schema::File secondary, Referent referent,
               const CodeKey& key);
/// renameCode() for the secondary files alone.
void renameInSecondaries(const CompanyDatabases& company, Referent referent, const CodeKey& from,
                         const CodeKey& to, const QString& shimei);

/// The row of the code itself, in the caller's transaction.
bool entryStands(store::Connection& cn_main, Referent referent, const CodeKey& key);
void renameEntry(store::Connection& cn_main, Referent referent, const CodeKey& from, const CodeKey& to);
void removeEntry(store::Connection& cn_main, Referent referent, const CodeKey& key);

}  // namespace personnel
