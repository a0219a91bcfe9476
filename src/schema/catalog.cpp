#include "schema/catalog.h"

#include <QHash>
#include <QtGlobal>

namespace schema {
namespace {

constexpr store::ColumnType counter() {
    return {store::TypeKind::Counter, 0};
}
constexpr store::ColumnType text(int width) {
    return {store::TypeKind::Text, width};
}
constexpr store::ColumnType currency() {
    return {store::TypeKind::Currency, 0};
}
constexpr store::ColumnType number() {
    return {store::TypeKind::Double, 0};
}
constexpr store::ColumnType dateTime() {
    return {store::TypeKind::DateTime, 0};
}
constexpr store::ColumnType boolean() {
    return {store::TypeKind::Boolean, 0};
}
constexpr store::ColumnType integer() {
    return {store::TypeKind::Integer, 0};
}

/// Collects one table while catalog.def is read.
struct Builder {
    Table table;
    Builder& column(const char* name, store::ColumnType type) {
        table.columns.push_back({QString::fromUtf8(name), type});
        return *this;
    }
    Builder& index(std::initializer_list<const char*> columns) {
        QStringList names;
        for (const char* name : columns) names << QString::fromUtf8(name);
        table.indexes.push_back(names);
        return *this;
    }
};

std::vector<Table> build() {
    std::vector<Table> tables;
    // clang-format off
#define TABLE(id, name, file, lifetime) \
    tables.push_back(Builder{{QString::fromUtf8(name), File::file, Lifetime::lifetime, {}, {}}}
#define COLUMN(id, type) .column(#id, type)
#define COLUMN_NAMED(id, name, type) .column(name, type)
#define INDEX(...) .index({__VA_ARGS__})
#define END .table);
#include "schema/catalog.def"
#undef TABLE
#undef COLUMN
#undef COLUMN_NAMED
#undef INDEX
#undef END
    // clang-format on
    return tables;
}

/// One form of each value, so that a comparison in a statement means what it says. Null is always allowed.
QString checkOf(const Column& column) {
    switch (column.type.kind) {
        case store::TypeKind::Boolean:
            return QStringLiteral(" CHECK(%1 in (0,-1))").arg(column.name);
        case store::TypeKind::DateTime:
            return QStringLiteral(" CHECK(%1 glob '[0-9][0-9][0-9][0-9]-[01][0-9]-[0-3][0-9]')")
                .arg(column.name);
        case store::TypeKind::Currency:
            return QStringLiteral(" CHECK(%1 = cast(%1 as integer))").arg(column.name);
        default:
            return {};
    }
}

}  // namespace

const std::vector<Table>& catalog() {
    static const std::vector<Table> tables = build();
    return tables;
}

const Table& tableNamed(const QString& name) {
    static const QHash<QString, const Table*> byName = [] {
        QHash<QString, const Table*> map;
        for (const Table& table : catalog()) map.insert(table.name, &table);
        return map;
    }();
    const Table* found = byName.value(name);
    Q_ASSERT_X(found, "tableNamed", "no such table");
    return *found;
}

QString columnDefinition(const Table& table, const Column& column) {
    const QString plain = column.name + u' ' + store::declarationOf(column.type);
    // The companions' files are theirs: what they store there is read as it comes.
    if (table.file != File::Kihon && table.file != File::Syouyo) return plain;
    // These repeat values that were checked, a row an employee at each use.
    if (table.lifetime == Lifetime::Derived || table.lifetime == Lifetime::Scratch) return plain;
    return plain + checkOf(column);
}

std::vector<store::ColumnType> typesOf(const Table& table, const QStringList& columns) {
    std::vector<store::ColumnType> types;
    for (const QString& name : columns) {
        const auto column = std::find_if(table.columns.begin(), table.columns.end(),
                                         [&](const Column& known) { return known.name == name; });
        Q_ASSERT_X(column != table.columns.end(), "typesOf", "no such column");
        types.push_back(column->type);
    }
    return types;
}

QStringList createStatements(const Table& table) {
    QStringList columns;
    for (const Column& column : table.columns) columns << columnDefinition(table, column);
    QStringList statements{QStringLiteral("CREATE TABLE %1(%2)").arg(table.name, columns.join(u','))};
    for (std::size_t i = 0; i < table.indexes.size(); ++i)
        statements << QStringLiteral("CREATE INDEX %1＿索引%2 ON %1(%3)")
                          .arg(table.name)
                          .arg(i + 1)
                          .arg(table.indexes[i].join(u','));
    return statements;
}

}  // namespace schema
