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

/// The companies stand in "Data" beside the program.
inline Places placesOf(const QString& programDir) {
    return {programDir, programDir + QStringLiteral("/Data")};
}

}  // namespace company
