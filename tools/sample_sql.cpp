#include "sample_sql.h"

#include <QDir>
#include <QFile>

#include "company/key.h"
#include "schema/files.h"
#include "store/connection.h"

namespace sample {
namespace {

using namespace Qt::StringLiterals;

QString quoted(QString name) {
    return u'"' + name.replace(u'"', u"\"\""_s) + u'"';
}

QString rowsOf(store::Connection& cn, const QString& table) {
    QStringList columns;
    store::Statement names = cn.prepare(u"select name from pragma_table_info(?)"_s);
    names.bind(1, table);
    while (names.step()) columns << u"quote(%1)"_s.arg(quoted(names.toText(0)));
    QString script;
    store::Statement rows = cn.prepare(u"select %1 from %2"_s.arg(columns.join(u"||','||"), quoted(table)));
    while (rows.step()) script += u"INSERT INTO %1 VALUES(%2);\n"_s.arg(quoted(table), rows.toText(0));
    return script;
}

QString scriptOf(store::Connection& cn) {
    QString script =
        u"PRAGMA user_version=%1;\n"_s.arg(cn.query(u"PRAGMA user_version"_s).value(0).toInteger());
    store::Statement made =
        cn.prepare(u"select sql from sqlite_schema where sql is not null and name not like 'sqlite_%'"_s);
    while (made.step()) script += made.toText(0) + u";\n"_s;
    for (const QString& table : cn.tables(u"main"_s)) script += rowsOf(cn, table);
    return script;
}

}  // namespace

void writeAsSql(const QString& dataDir, const QString& company, const QString& folder) {
    const std::pair<schema::File, QString> files[] = {{schema::File::Kihon, u"kihon.sql"_s},
                                                      {schema::File::Syouyo, u"syouyo.sql"_s}};
    for (const auto& [file, name] : files) {
        store::Connection cn(schema::filePath(dataDir, company, file), company::sharedKey(),
                             store::Connection::Mode::ReadOnly);
        const QByteArray script = scriptOf(cn).toUtf8();
        QFile written(QDir(folder).filePath(name));
        if (!QDir().mkpath(folder) || !written.open(QIODevice::WriteOnly) ||
            written.write(script) != script.size())
            throw store::Error(store::Error::Reason::ReadOnly,
                               u"「%1」に書き込めません。"_s.arg(written.fileName()));
    }
}

}  // namespace sample
