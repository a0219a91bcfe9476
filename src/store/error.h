#pragma once
#include <QString>
#include <stdexcept>

namespace store {

/// The world went wrong: a file, a statement or a value could not be used. `text()` is what the user may
/// read: the engine's or our own description, never SQL and never a value of a record. Bugs (a position
/// outside a row, an edit of a read-only recordset) are asserted, not thrown.
///
/// `cause()` says it in a sentence of the office, with the person and the item that it is about:
/// "000012　基礎額Ａ：値が入っていません。" It is for the screen alone.
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
    /// Without a sentence of its own the cause is told by the text.
    Error(Reason reason, const QString& text, const QString& sentence = {})
        : std::runtime_error(text.toStdString()), reason_(reason), text_(text), sentence_(sentence) {}
    Reason reason() const { return reason_; }
    const QString& text() const { return text_; }
    QString cause() const;
    /// What it is about; the innermost name counts.
    void name(const QString& subject);

  private:
    Reason reason_;
    QString text_, sentence_, subject_;
};

/// An error of `work` gets the name that `subject` gives; nothing is made of it where `work` goes through.
template <class Subject, class Work>
decltype(auto) named(Subject&& subject, Work&& work) {
    try {
        return work();
    } catch (Error& error) {
        error.name(subject());
        throw;
    }
}

/// The texts of the conversion errors; the SQL functions answer with the same ones.
inline constexpr char16_t kNullText[] = u"Null の使い方が不正です。";
inline constexpr char16_t kTypeText[] = u"型が一致しません。";
inline constexpr char16_t kOverflowText[] = u"オーバーフローしました。";
inline constexpr char16_t kDateText[] = u"日付の形式が正しくありません。";

[[noreturn]] void throwNull();          ///< "Null の使い方が不正です。"
[[noreturn]] void throwTypeMismatch();  ///< "型が一致しません。"
[[noreturn]] void throwEnded();         ///< the engine ended the transaction of a work that goes on
[[noreturn]] void throwOverflow();      ///< "オーバーフローしました。"
[[noreturn]] void throwDivideByZero();  ///< "0 で除算しました。"

}  // namespace store
