#pragma once
#include <QDate>
#include <QHash>
#include <QString>
#include <array>
#include <optional>

#include "store/connection.h"

/// What a field of an employee or of a transfer may hold, field by field in the order of the checks. The
/// screens run a rule when the user leaves the field, the import runs all of them on every row: one wording,
/// one judgment. A rule looks at texts only; whether a code is taken is asked in the tables by the caller.
namespace personnel {

/// Why a text is refused, and the title of the box that says so.
struct Fault {
    QString text;
    QString title;
    bool operator==(const Fault&) const = default;
};
using Finding = std::optional<Fault>;  ///< nothing: the text may stand

/// Which items this company keeps: the row of 入力可・不可テーブル and the names of the free attributes.
/// An item that is not kept is not entered and not demanded.
class EntryItems {
  public:
    static constexpr int kAttributes = 5;

    /// Reads both rows. A missing row keeps everything, a missing name is the column's own (自由1).
    static EntryItems read(store::Connection& cn);

    /// `item` is a column of 履歴書テーブル or 異動テーブル (電話番号, 自由3, コメント). An item without a
    /// flag is always entered; a free attribute that is switched off ("未設定") never is.
    bool entered(const QString& item) const;
    /// The name of a column as the screens show it: the company's own name for 自由1 to 自由5.
    QString caption(const QString& item) const;

  private:
    QHash<QString, bool> flags_;
    std::array<QString, kAttributes> attributes_;
};

// ---- 履歴書テーブル

/// One to five digits get zeros in front, six in all; other texts stay.
QString paddedSyainCode(const QString& typed);
/// A padded code: there, and from 000001 to 999999.
Finding checkSyainCode(const QString& code);
Fault duplicateSyainCode();
/// 氏名, フリガナ, 郵便番号, 住所1, 住所2, 電話番号 or fax番号 (`column`): required or not, quotes, length in
/// bytes.
Finding checkEmployeeText(const QString& column, const QString& text);
Finding checkSeinengappi(const QString& text, QDate today);
/// An invalid `seinengappi` is not compared with.
Finding checkNyuusyabi(const QString& text, QDate seinengappi);
/// 最終学歴, 出身地, 住宅区分, 採用区分, 自由1 to 自由5: whether nothing may be chosen.
Finding checkEmployeeChoice(const EntryItems& items, const QString& column, const QString& chosen);

// ---- 異動テーブル

/// An invalid `nyuusyabi` is not compared with.
Finding checkIdoubi(const QString& text, QDate nyuusyabi);
Fault duplicateIdoubi();
/// A whole number from 1 to 20. A valid one is kept as tokyuText() writes it.
Finding checkTokyu(const QString& text);
/// Format "##,##0": "05" is "5". Text that is no number stays.
QString tokyuText(const QString& text);
/// コメント: optional, at most 100 bytes.
Finding checkComment(const QString& text);
/// 異動事由, 社員区分, 所属大, 所属小, 役職, 職種, コース: whether nothing may be chosen. An empty 異動事由
/// or 所属小 may stand when its list has no rows (`listHasRows`); of 所属小 the list under the chosen 所属大.
Finding checkTransferChoice(const EntryItems& items, const QString& column, const QString& chosen,
                            bool listHasRows);

}  // namespace personnel
