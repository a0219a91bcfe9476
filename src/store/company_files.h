#pragma once
#include <QString>

#include "store/catalog.h"
#include "store/connection.h"

namespace store {

/// The password that all files of every company carry.
QString databasePassword();

/// <会社>基本db.mdb and so on.
QString fileName(const QString& company, File file);
/// The full path of a company's file: <dataDir>/<company>/<company>基本db.mdb.
QString filePath(const QString& dataDir, const QString& company, File file);

/// Which of the companions' files a new company gets besides 基本db and 賞与db.
struct CompanionFiles {
    bool chingin = false;
    bool hyouka = false;
};

/// Creates the folder and the files of a new company with all their tables, the fixed masters, one row of
/// 入力可・不可テーブル (all True), one row of 会社テーブル and the link table. Throws Error when the folder
/// exists; leaves nothing behind when it fails.
void createCompany(const QString& dataDir, const QString& company, CompanionFiles companions);

/// Attaches a file of a company, unless it is attached already: as "kihon" or "chingin", or under a name of
/// its own. The schema's name.
QString attachFile(Connection& connection, const QString& path);

/// Makes a connection on <会社>賞与db.mdb the main one: attaches every file that its links name and that
/// exists, clears away what a crash left, and brings older layouts up.
void makeMain(Connection& connection, const QString& company);
/// Opens <会社>賞与db.mdb and makes it the main connection.
std::unique_ptr<Connection> openMainConnection(const QString& dataDir, const QString& company);

/// At each open, in this order: Sshikyuukeisuu, SshikyuukeisuuHA, Tanka_hasuu are created where they are
/// missing.
void createMissingTables(Connection& cnMain);

/// The layout's version (PRAGMA user_version) of every file this program writes.
inline constexpr int kSchemaVersion = 2;
/// Throws Error where an attached file of ours is newer than the program; before anything is written into it.
void refuseNewer(Connection& connection);
/// Brings an older layout up by numbered steps, one transaction. Refuses what is newer.
void upgradeSchema(Connection& connection);

}  // namespace store
