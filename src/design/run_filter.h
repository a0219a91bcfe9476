#pragma once
#include <QString>

#include "domain/run_key.h"
#include "schema/catalog.h"
#include "store/connection.h"

namespace design {

/// The filter that names one run in its tables, and the values of its three parameters.
inline const QString kRunFilter = QStringLiteral("基準日 = ? AND 配分区分 = ? AND 配分基準 = ?");
inline store::Binds runBinds(const domain::RunKey& run) {
    return {run.kijunbi, run.haibunKubun, run.haibunKijun};
}

/// The column at a position of a table, for a statement's text.
inline const QString& columnName(const QString& table, int position) {
    return schema::tableNamed(table).columns[static_cast<std::size_t>(position)].name;
}

}  // namespace design
