#pragma once
#include <QString>
#include <vector>

namespace schema {
struct Table;
}  // namespace schema

/// Who refers to whom by code. No table declares a foreign key: this map is what keeps the codes in step. A
/// column that holds a code of an employee, of a master, of a 配分区分 or a 配分基準 and is missing here is a
/// fault (a test walks the catalogue). What is done with the map stands in personnel/code_references.
namespace domain {

/// What a code names: an employee, an entry of one of the nineteen masters, or a part of the allocation's
/// set-up.
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
    HaibunKubun,
    HaibunKijun,  ///< named by its 配分区分 and its own code
};
inline constexpr int kReferents = static_cast<int>(Referent::HaibunKijun) + 1;

/// The name of a thing of this kind; `parent` is the 所属大 of a 所属小, the 配分区分 of a 配分基準, and
/// empty for all others.
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
        Refused,  ///< the code is in use and may not be removed: people hold it, or a run was made with it
    };
    Referent refersTo{};
    const schema::Table* table = nullptr;
    int column = -1;
    int parentColumn = -1;  ///< the column with the other half of the key (CodeKey::parent)
    int nameColumn = -1;    ///< carries a copy of 氏名, kept in step by a rename
    OnRemoval onRemoval = OnRemoval::RowGoes;
    bool lastInRemoval = false;  ///< visited behind the other tables of its file when a code is removed
};

/// The steps in which a change of a code goes through the files. The last two are this company's own tables:
/// they come behind the files.
enum class Part { Bonus, Wages, Evaluations, Own, Work };
inline constexpr int kParts = static_cast<int>(Part::Work) + 1;

/// The map, in each part in the order in which a rename visits it.
const std::vector<Reference>& referencesOf(Part part);
/// All parts.
const std::vector<Reference>& codeReferences();
/// The row of the code itself as a place that holds it.
Reference entryOf(Referent referent);

/// The table that the code itself stands in (履歴書テーブル, the master, S配分区分, S配分基準), and back. A
/// name that is none of them throws store::Error.
QString entryTable(Referent referent);
Referent referentOf(const QString& entryTable);

}  // namespace domain
