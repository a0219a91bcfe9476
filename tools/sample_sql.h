#pragma once
#include <QString>

namespace sample {

/// Writes 基本db and 賞与db of a company as scripts that make them again, layout, version and rows:
/// <folder>/kihon.sql and syouyo.sql. Packed with gzip they are what the tests keep of each layout. Throws
/// store::Error.
void writeAsSql(const QString& dataDir, const QString& company, const QString& folder);

}  // namespace sample
