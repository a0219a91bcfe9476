#pragma once
#include <QString>

#include "store/connection.h"

namespace calc {

/// Scratch tables are dropped and made anew at each use, and dropped when it ends. Their users keep all of it
/// in one transaction, so that no failure leaves one behind. A table that is not there is dropped silently.
void dropScratch(store::Connection& cn, const QString& table);
/// Drops the table and makes it as the catalogue describes it.
void createScratch(store::Connection& cn, const QString& table);

}  // namespace calc
