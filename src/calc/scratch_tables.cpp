#include "calc/scratch_tables.h"

#include "schema/catalog.h"

namespace calc {

void dropScratch(store::Connection& cn, const QString& table) {
    cn.execute(QStringLiteral("DROP TABLE IF EXISTS %1").arg(table));
}

void createScratch(store::Connection& cn, const QString& table) {
    dropScratch(cn, table);
    for (const QString& statement : schema::createStatements(schema::tableNamed(table)))
        cn.execute(statement);
}

}  // namespace calc
