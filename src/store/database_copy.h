#pragma once
#include <QString>
#include <functional>

#include "store/connection.h"

namespace store {

/// Told while something long goes on: how much of the whole is done. False: the user wants it to stop.
using Progress = std::function<bool(qint64 done, qint64 whole)>;

/// Copies a file of the connection page by page, as the transaction of the connection sees it, into the new
/// file `path`, under the key `key`. False when `progress` stopped it; the unfinished file is left to the
/// caller then, as after an error.
bool copyDatabase(Connection& connection, const QString& schema, const QString& path, const Key& key,
                  const Progress& progress = {});
/// Writes the connection's main file without its waste into the new file `path`, under the same key. Not
/// within a transaction.
void compactDatabase(Connection& connection, const QString& path);
/// Reads all of every file: throws Error(Damaged), which names the file, unless it is sound.
void requireSound(Connection& connection);

}  // namespace store
