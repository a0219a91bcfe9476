#pragma once
#include "schema/catalog.h"
#include "store/connection.h"

namespace schema {

/// The layout's version (PRAGMA user_version) of every file this program writes.
inline constexpr int kSchemaVersion = 2;

/// Makes the tables of `file` in the empty database `connection` and gives it the version.
void createTables(store::Connection& connection, File file);

/// A row of a table of `main`: a value for each column, in their order.
void insertRow(store::Connection& connection, const Table& table, const store::Binds& values);

/// At each open, in this order: Sshikyuukeisuu, SshikyuukeisuuHA, Tanka_hasuu, S開始パスワード are created
/// where they are missing.
void createMissingTables(store::Connection& cnMain);

/// Throws store::Error where an attached file of ours is newer than the program; before anything is written
/// into it.
void refuseNewer(store::Connection& connection);
/// Whether an attached file of ours is older than the program.
bool isOlder(store::Connection& connection);
/// Brings an older layout up by numbered steps, one transaction. Refuses what is newer.
void upgradeSchema(store::Connection& connection);

}  // namespace schema
