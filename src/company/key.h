#pragma once
#include <QByteArray>
#include <QString>

#include "store/key.h"

/// What opens the files of a company.
///
/// The files of all companies carry one password, so that companion programs reach them. A company may lock
/// its files with a key of its own instead: 32 random bytes that stand nowhere. A small file in its folder
/// holds them twice, sealed under the company's password and under a recovery code (Argon2id and secretbox).
/// Without one of the two neither this program nor another reads the files. The small file goes with every
/// copy of the folder, and a copy opens with the password of its time.
namespace company {

/// The password that files carry which no own key locks.
store::Key sharedKey();

/// The file that seals a company's own key.
inline const QString kKeyFile = QStringLiteral("会社の鍵.json");

/// Whether the files in a folder are locked with a key of their own.
bool filesLocked(const QString& folder);
/// The key of the files in a folder. Throws Error(NotOpen) while their own key is not known to this process,
/// Error(Damaged) where its file can't be read.
store::Key keyOf(const QString& folder);
/// Whether keyOf() would tell it.
bool keyKnown(const QString& folder);
/// Learns the own key of a folder from the password or the recovery code; false when it is neither. Dear to
/// compute on purpose: a third of a second.
bool learnKey(const QString& folder, const QString& secret);
/// Forgets all own keys but that of a folder.
void forgetKeys(const QString& exceptOf = {});

/// A key of its own for a company that gets or changes it.
class OwnKey {
  public:
    explicit OwnKey(const QString& password);
    const store::Key& key() const { return key_; }
    /// Five groups of five letters and digits, to be printed and kept by the user; it stands nowhere else.
    const QString& recoveryCode() const { return recoveryCode_; }
    /// Writes the key's file into a folder, durably. From here on this process knows the key.
    void write(const QString& folder) const;

  private:
    store::Key key_;
    QString recoveryCode_;
    QByteArray file_;
};

/// Seals the key of a folder, which is known, under another password. The files and the recovery code stay.
void changeKeyPassword(const QString& folder, const QString& password);

/// The bytes of a password, the same however an input method composes it.
QByteArray passwordBytes(const QString& password);
/// Throws store::Error when the library that guards passwords can't be used.
void requireSodium();
/// What Argon2id takes for a password: passes and bytes.
inline constexpr unsigned long long kPasswordPasses = 3;
inline constexpr std::size_t kPasswordMemory = std::size_t(64) << 20;

}  // namespace company
