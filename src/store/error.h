#pragma once
#include <QString>
#include <stdexcept>

namespace store {

/// The world went wrong: a file, a statement or a value could not be used. `text()` is what the user may
/// read: the engine's or our own description, never SQL and never a value of a record. Bugs (a position
/// outside a row, an edit of a read-only recordset) are asserted, not thrown.
class Error : public std::runtime_error {
  public:
    enum class Reason {
        Engine,         ///< any other failure of the storage engine
        NotOpen,        ///< the file cannot be opened (missing, a folder without rights, not keyed with our
                        ///< password)
        Locked,         ///< another connection holds the file
        ReadOnly,       ///< the file or its folder cannot be written
        DiskFull,       ///< no room left
        Damaged,        ///< the file is no database or is damaged
        CommitUnknown,  ///< a commit failed and the files can't be read to learn whether it stands
        Conflict,       ///< optimistic update: the row was changed or removed since it was read
        Type,           ///< a value does not fit its column or its use (Null, no number, no date, too long)
        Overflow,       ///< a number beyond its type
        DivideByZero,
    };
    Error(Reason reason, const QString& text)
        : std::runtime_error(text.toStdString()), reason_(reason), text_(text) {}
    Reason reason() const { return reason_; }
    const QString& text() const { return text_; }

  private:
    Reason reason_;
    QString text_;
};

/// The texts of the conversion errors; the SQL functions answer with the same ones.
inline constexpr char16_t kNullText[] = u"Null の使い方が不正です。";
inline constexpr char16_t kTypeText[] = u"型が一致しません。";
inline constexpr char16_t kOverflowText[] = u"オーバーフローしました。";
inline constexpr char16_t kDateText[] = u"日付の形式が正しくありません。";

[[noreturn]] void throwNull();          ///< "Null の使い方が不正です。"
[[noreturn]] void throwTypeMismatch();  ///< "型が一致しません。"
[[noreturn]] void throwOverflow();      ///< "オーバーフローしました。"
[[noreturn]] void throwDivideByZero();  ///< "0 で除算しました。"

}  // namespace store
