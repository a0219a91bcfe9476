#pragma once
#include <QString>
#include <QStringList>

#include "store/connection.h"

namespace schema {

/// The tables that <会社>賞与db.mdb reaches in the other two files, in the program's order.
const QStringList& chinginLinks();  ///< six
const QStringList& kihonLinks();    ///< thirty-five

enum class LinkPass { Chingin, Kihon };

/// The connection text of a link to that file: ";DATABASE=<path>;PWD=…;".
QString linkText(const QString& path, const store::Key& key);

/// Attaches a file of a company under the connection's own key, unless it is attached already: as "kihon" or
/// "chingin", or under a name of its own. The schema's name.
QString attachFile(store::Connection& connection, const QString& path);

/// Rewrites the link table of the bonus database `dao_db` for one pass: every link of the pass's list gets
/// the connection text ";DATABASE=<target>;PWD=…", and each is checked to be a real table of the target.
/// Stops at the first failure: false, and `link_error_text` := "<table name> : <description, which names the
/// file>"; links visited before stay rewritten. The target stays attached to `dao_db`.
bool refresh_links(store::Connection& dao_db, const QString& link_saki_path, LinkPass pass,
                   QString& link_error_text);

/// The files that the links name, without duplicates, in the order of the list.
QStringList linkedFiles(store::Connection& dao_db);

}  // namespace schema
