#pragma once
#include <QHash>
#include <vector>

#include "store/recordset.h"

namespace store {

/// What rows and the edit of a row share; private to the room.
struct Recordset::Data {
    struct Row {
        qint64 rowid = 0;  ///< the engine's key; of a table's rows only
        std::vector<Value> values;
    };
    QString table;  ///< empty for rows of a query
    QStringList names;
    std::vector<ColumnType> types;
    QHash<QString, int> positions;
    std::vector<Row> rows;

    void describe(const Statement& statement, int hidden);
    void read(Statement& statement);
};

}  // namespace store
