#include "schema/links.h"

#include <QFileInfo>
#include <map>
#include <optional>
#include <vector>

#include "schema/files.h"
#include "store/work.h"

namespace schema {
namespace {

struct Link {
    qint64 id;
    QString table;
    QString connection;
    QString source;
};

std::vector<Link> readLinks(store::Connection& dao_db) {
    std::vector<Link> links;
    store::Statement rows = dao_db.prepare(
        QStringLiteral("select ID,テーブル名,接続,元テーブル from Sリンクテーブル order by ID"));
    while (rows.step()) links.push_back({rows.toInteger(0), rows.toText(1), rows.toText(2), rows.toText(3)});
    return links;
}

bool pointsToFile(const QString& connection) {
    return connection.startsWith(u";DATABASE=") || connection.startsWith(u"MS Access;");
}

/// The path in ";DATABASE=<path>;PWD=…"; empty when there is none.
QString pathOf(const QString& connection) {
    const QString begin = QStringLiteral(";DATABASE=");
    const qsizetype start = connection.indexOf(begin);
    if (start < 0) return {};
    const qsizetype end = connection.lastIndexOf(u";PWD=");
    const qsizetype from = start + begin.size();
    return end >= from ? connection.mid(from, end - from) : connection.mid(from);
}

QString schemaOf(std::optional<File> file) {
    if (file == File::Kihon) return QStringLiteral("kihon");
    if (file == File::Chingin) return QStringLiteral("chingin");
    return {};
}

/// The tables of the link targets, which the connection keeps attached: opening a keyed file is dear, and the
/// main connection needs them all.
class Targets {
  public:
    explicit Targets(store::Connection& dao_db) : dao_db_(dao_db) {}
    void requireTable(const QString& path, const QString& table) {
        auto found = tables_.find(path);
        if (found == tables_.end())
            found = tables_.emplace(path, dao_db_.tables(attachFile(dao_db_, path))).first;
        if (!found->second.contains(table, Qt::CaseInsensitive))
            throw store::Error(store::Error::Reason::Engine,
                               QStringLiteral("リンク先「%1」にテーブル「%2」が見つかりません。")
                                   .arg(QFileInfo(path).fileName(), table));
    }

  private:
    store::Connection& dao_db_;
    std::map<QString, QStringList> tables_;
};

}  // namespace

const QStringList& chinginLinks() {
    static const QStringList names{
        QStringLiteral("C新賃金体系手当"),
        QStringLiteral("C新賃金体系基本給"),
        QStringLiteral("C手当設定テーブル"),
        QStringLiteral("C基本給組合せパターン名称"),
        QStringLiteral("C基本給組合せパターンの設定"),
        QStringLiteral("C基本給設定テーブル"),
    };
    return names;
}

const QStringList& kihonLinks() {
    static const QStringList names{
        QStringLiteral("資格・免許マスタ"), QStringLiteral("資格・免許テーブル"),
        QStringLiteral("採用区分マスタ"),   QStringLiteral("最終学歴マスタ"),
        QStringLiteral("婚姻区分マスタ"),   QStringLiteral("業務必要性マスタ"),
        QStringLiteral("会社テーブル"),     QStringLiteral("家族テーブル"),
        QStringLiteral("異動事由マスタ"),   QStringLiteral("異動テーブル"),
        QStringLiteral("コースマスタ"),     QStringLiteral("Ｈ評価実績"),
        QStringLiteral("障害マスタ"),       QStringLiteral("所属大マスタ"),
        QStringLiteral("所属小マスタ"),     QStringLiteral("出身地マスタ"),
        QStringLiteral("住宅区分マスタ"),   QStringLiteral("社員絞込"),
        QStringLiteral("社員区分マスタ"),   QStringLiteral("自由マスタ5"),
        QStringLiteral("自由マスタ4"),      QStringLiteral("自由マスタ3"),
        QStringLiteral("自由マスタ2"),      QStringLiteral("自由マスタ1"),
        QStringLiteral("履歴書テーブル"),   QStringLiteral("役職マスタ"),
        QStringLiteral("扶養マスタ"),       QStringLiteral("入力可・不可テーブル"),
        QStringLiteral("同居マスタ"),       QStringLiteral("等級マスタ"),
        QStringLiteral("続柄マスタ"),       QStringLiteral("続柄グループマスタ"),
        QStringLiteral("性別マスタ"),       QStringLiteral("世帯主区分マスタ"),
        QStringLiteral("職種マスタ"),
    };
    return names;
}

QString linkText(const QString& path, const store::Key& key) {
    return QStringLiteral(";DATABASE=%1;PWD=%2;").arg(path, key.linkPassword());
}

QString attachFile(store::Connection& connection, const QString& path) {
    const QStringList taken = connection.schemas();
    for (const QString& schema : taken)
        if (QFileInfo(connection.filePath(schema)) == QFileInfo(path)) return schema;
    QString schema = schemaOf(fileOf(path));
    // A link that is never refreshed may name a second file of the same kind.
    if (schema.isEmpty() || taken.contains(schema)) schema = QStringLiteral("link%1").arg(taken.size());
    connection.attach(path, schema);
    return schema;
}

namespace {

/// Checks one link and gives it its new connection text; it is stored later, with the others that changed.
void refresh(Link& link, const QString& linked, Targets& targets, std::vector<Link>& changed) {
    const QString connection = pointsToFile(link.connection) ? linked : link.connection;
    targets.requireTable(pathOf(connection), link.source.isEmpty() ? link.table : link.source);
    if (connection == link.connection) return;
    link.connection = connection;
    changed.push_back(link);
}

/// A company that did not move is only read; one that did is written in one transaction.
void writeLinks(store::Connection& dao_db, const std::vector<Link>& changed) {
    if (changed.empty()) return;
    store::Work work(dao_db);
    store::Statement update = dao_db.prepare(QStringLiteral("update Sリンクテーブル set 接続=? where ID=?"));
    for (const Link& link : changed) update.bind(1, link.connection).bind(2, link.id).run();
    work.commit();
}

}  // namespace

bool refresh_links(store::Connection& dao_db, const QString& link_saki_path, LinkPass pass,
                   QString& link_error_text) {
    const QStringList& names = pass == LinkPass::Chingin ? chinginLinks() : kihonLinks();
    Targets targets(dao_db);
    const QString linked = linkText(link_saki_path, dao_db.key());
    std::vector<Link> changed;
    QString failed;
    for (Link& link : readLinks(dao_db)) {
        if (link.connection.isEmpty() || !names.contains(link.table)) continue;
        try {
            refresh(link, linked, targets, changed);
        } catch (const store::Error& error) {
            failed = link.table + QStringLiteral(" : ") + error.text();
            break;
        }
    }
    try {
        writeLinks(dao_db, changed);
    } catch (const store::Error& error) {
        if (failed.isEmpty()) failed = changed.front().table + QStringLiteral(" : ") + error.text();
    }
    if (failed.isEmpty()) return true;
    link_error_text = failed;
    return false;
}

QStringList linkedFiles(store::Connection& dao_db) {
    QStringList files;
    for (const Link& link : readLinks(dao_db)) {
        const QString path = pathOf(link.connection);
        if (!path.isEmpty() && !files.contains(path)) files << path;
    }
    return files;
}

}  // namespace schema
