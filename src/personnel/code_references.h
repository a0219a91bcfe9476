#pragma once
#include <QString>
#include <vector>

#include "domain/code_map.h"
#include "store/connection.h"

namespace schema {
enum class File;
}  // namespace schema

/// What is done with the map of codes (domain/code_map): what a code is used by, its rename and its removal
/// through all files of a company.
namespace personnel {

using domain::CodeKey;
using domain::codeReferences;
using domain::entryTable;
using domain::Reference;
using domain::Referent;
using domain::referentOf;

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
/// The uses that forbid a removal, most personal first; retired people count. Of 配分区分 and 配分基準 they
/// are what was assigned, typed in and computed in runs, of 配分区分 its 配分基準 too.
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
/// tables. Throws store::Error while a row forbids it (the caller has asked codeUsage() and told which): then
/// nothing is removed anywhere.
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
