#pragma once
#include <QString>

/// What has to survive a power failure, and how a system is told so. The one place that knows the systems'
/// ways. Every failure throws store::Error with a text for the user.
namespace store {

/// Returns when the file's contents are on the disk.
void syncFile(const QString& path);
/// Returns when the names in the folder are on the disk; where a system keeps no folder back, at once.
void syncFolder(const QString& path);
/// Puts `from` in the place of the file `to`, which may stand: at any moment one of the two is there.
void replaceFile(const QString& from, const QString& to);
/// Gives a folder another name, which must be free. A program that looks into the folder for a moment (a
/// virus scanner) is waited for where the system makes that necessary.
void renameFolder(const QString& from, const QString& to);
/// A copy of a file that is on the disk when this returns. `to` must not stand.
void copyFile(const QString& from, const QString& to);
/// Removes a folder with what is in it; a link in it goes, what it points to stays. Nothing there is fine.
void removeFolder(const QString& path);

}  // namespace store
