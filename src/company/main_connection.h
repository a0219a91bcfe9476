#pragma once
#include <QString>
#include <memory>

#include "store/connection.h"

namespace company {

/// Makes a connection on <会社>賞与db.mdb the main one: attaches every file that its links name and that
/// exists, clears away what a crash left, and brings older layouts up.
void makeMain(store::Connection& connection, const QString& company);
/// Opens <会社>賞与db.mdb and makes it the main connection.
std::unique_ptr<store::Connection> openMainConnection(const QString& dataDir, const QString& company);

}  // namespace company
