#pragma once
#include <QString>
#include <optional>

#include "schema/catalog.h"

namespace schema {

/// <会社>基本db.mdb and so on.
QString fileName(const QString& company, File file);
/// The full path of a company's file: <dataDir>/<company>/<company>基本db.mdb.
QString filePath(const QString& dataDir, const QString& company, File file);
/// Which of a company's files that is; nothing for another file.
std::optional<File> fileOf(const QString& path);

}  // namespace schema
