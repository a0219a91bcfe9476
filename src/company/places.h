#pragma once
#include <QString>

namespace company {

/// Where the program and the companies live. Nothing else knows how the one follows from the other.
struct Places {
    QString program;  ///< the program's folder, where a companion program stands too
    QString data;     ///< the folder of the companies' folders
    QString settings() const { return program + QStringLiteral("/mint.ini"); }
    /// The folder of the backups: one folder a company, and the program's own copies apart.
    QString backups() const { return program + QStringLiteral("/BackupDB"); }
};

/// The program's folder of this user, on which companies, backups and settings hang: the executable's own
/// where a Data folder stands in it (a folder that is carried about as a whole), otherwise the one that the
/// user chose, otherwise one among the user's own data, which is made.
QString programFolder(const QString& executableDir);
/// Chooses it from the next start on, and provides its Data folder. Throws store::Error where it can't be
/// written.
void chooseProgramFolder(const QString& folder);

/// The key in the settings under which something about one company is kept, whatever its name holds.
QString settingsKey(const QString& what, const QString& company);

/// The companies stand in "Data" beside the program.
inline Places placesOf(const QString& programDir) {
    return {programDir, programDir + QStringLiteral("/Data")};
}

}  // namespace company
