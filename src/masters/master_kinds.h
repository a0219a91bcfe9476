#pragma once
#include <QString>
#include <vector>

#include "personnel/code_references.h"
#include "store/connection.h"

/// The code masters that a company edits.
namespace masters {

/// One of the nineteen masters and what sets it apart: its screen, its columns, its range of codes.
struct MasterKind {
    QString screen;  ///< frmMastaSyain
    personnel::Referent referent;
    const schema::Table* table;
    int code = 0;  ///< positions in the table
    int name = 1;
    int date = -1;  ///< 設定年月日: the first date on which the entry may be chosen
    int other = -1;  ///< the code of an entry of another master: 所属大 of 所属小, 続柄グループ of 続柄
    int age = -1;  ///< 対応年齢
    /// 1 to 5: a free attribute, called as 会社テーブル says.
    int attribute = 0;
    int highest = 99;       ///< codes run from 1
    bool required = false;  ///< ★: to be filled before people can be entered
    /// The other code belongs to the key: the entry is unique under it, and it must be chosen.
    bool underOther = false;

    int help = 3020;  ///< its page; most masters share one

    QString tableName() const;
    QString column(int position) const;
    QString nameColumn() const { return column(name); }
};

/// In the order of the master menu.
const std::vector<MasterKind>& masterKinds();

/// The value that switches a free attribute off.
inline const QString kSwitchedOff = QStringLiteral("未設定");
/// The company's names of the free attributes, five of them.
std::vector<QString> attributeNames(store::Connection& cn);
/// How the entry is called: the name column, or the company's word for a free attribute.
QString captionOf(const MasterKind& kind, const std::vector<QString>& attributes);

}  // namespace masters
