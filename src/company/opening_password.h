#pragma once
#include <QDateTime>
#include <QString>

#include "company/places.h"
#include "store/connection.h"

/// The password that a company may have of its own, asked before it opens. It keeps a colleague out of the
/// screens. It does not lock the files: whoever has the password that all files share, and a program for
/// such files, reads them without it. Where the files are locked with a key of their own (key.h), that key's
/// password takes its place.
namespace company {

inline constexpr int kShortestPassword = 8;
inline constexpr int kLongestPassword = 64;

/// What is wrong with a new password that was typed twice, for the user; empty when nothing is.
QString newPasswordFault(const QString& password, const QString& again);

bool hasOpeningPassword(store::Connection& cnMain);
/// Kept as a hash that is dear to compute (Argon2id, three passes over 64 MiB). In the caller's work.
void setOpeningPassword(store::Connection& cnMain, const QString& password);
void removeOpeningPassword(store::Connection& cnMain);

struct PasswordAnswer {
    bool right = false;
    int wait = 0;  ///< seconds until the next try counts; this one was not looked at
};
/// Judges a try. From the third wrong one on the next has to wait, twice as long each time, five minutes at
/// most; the company remembers the tries, whichever program makes them. A right one forgets them.
PasswordAnswer tryOpeningPassword(store::Connection& cnMain, const QString& password, const QDateTime& now);
/// The same for the key of the locked files in `folder`, by password or recovery code; the settings remember
/// the tries. The key is known then.
PasswordAnswer tryKey(const Places& places, const QString& folder, const QString& secret,
                      const QDateTime& now);

}  // namespace company
