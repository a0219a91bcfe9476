#include "sample_writer.h"

namespace sample {
namespace {

QString insertText(const schema::Table& table) {
    QStringList marks;
    marks.fill(QStringLiteral("?"), static_cast<qsizetype>(table.columns.size()));
    return QStringLiteral("INSERT INTO %1 VALUES(%2)").arg(table.name, marks.join(u','));
}

}  // namespace

TableWriter::TableWriter(store::Connection& cn, const char16_t* table)
    : columns_(schema::tableNamed(QString::fromUtf16(table)).columns.size()),
      insert_(cn.prepare(insertText(schema::tableNamed(QString::fromUtf16(table))))) {}

void TableWriter::write(const store::Binds& row) {
    Q_ASSERT(row.size() == columns_);
    insert_.bindAll(row);
    insert_.run();
}

}  // namespace sample
