#pragma once
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "personnel/code_references.h"
#include "schema/catalog.h"

/// A renamed or removed code reaches the files of the companions one by one, each in a transaction of its
/// own. So that no end of the program leaves them in two minds without a word, the company notes what is
/// intended before the first of them is touched: announceRename() or announceRemoval() before the transaction
/// on cn_main begins, renameCode() or removeCode() in it, which take the note away with it. A note that still
/// stands tells what was cut off. It holds codes, no names.
namespace personnel {

/// A change that did not come to its end: the main file holds the old code everywhere.
struct CutOffChange {
    Referent referent;
    CodeKey from;
    CodeKey to = {};      ///< empty when the code is being removed
    QString shimei = {};  ///< of an employee, as 履歴書テーブル has it
    bool removal = false;
    std::vector<schema::File> holders = {};  ///< the companions' files that held the old code before
    QStringList changed = {};  ///< the files (names without folder) in which the change stands; never empty
    QStringList unchanged = {};
    /// False when somebody else bears the new code by now, so that nobody can tell whose rows those are: both
    /// ways of settling then leave them alone and take the note away.
    bool clear = true;
};

/// Notes the change, in a transaction of its own; nothing is noted where no file of a companion holds the
/// code. What was cut off before and not settled yet is taken back first, unless it is this very change.
/// Outside of any transaction on cn_main. Throws store::Error; then nothing may be changed.
void announceRename(const CompanyDatabases& company, Referent referent, const CodeKey& from,
                    const CodeKey& to);
void announceRemoval(const CompanyDatabases& company, Referent referent, const CodeKey& key);
/// Before a code comes into use: what was cut off is taken back, so that its rows never fall to somebody
/// else.
void settleChange(const CompanyDatabases& company);
/// Takes the note away, in the caller's transaction.
void forgetChange(store::Connection& cn_main);

/// What was cut off, if anything was: a note without any effect is taken away at once. Throws store::Error.
std::optional<CutOffChange> cutOffChange(const CompanyDatabases& company);
/// Carries the change through all files, the row of the code itself included.
void finishChange(const CompanyDatabases& company, const CutOffChange& change);
/// Gives the companions' files the old code again, with the name that 履歴書テーブル has. Removed rows do not
/// come back: then the note alone goes, and what is left stays.
void takeBackChange(const CompanyDatabases& company, const CutOffChange& change);
// Both may be repeated after a failure or an end of the program at any moment: the note goes last.

}  // namespace personnel
