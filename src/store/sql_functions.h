#pragma once

struct sqlite3;

namespace store {

/// Adds CodeKey, Clng, Cint and CDate to a connection. CodeKey orders the codes of masters and people by
/// number, and those that are none behind them, so that such a row stays visible and can be put right. The
/// others raise an error on Null, on text that is no number or date
/// and on a number outside the type (32 bits, 16 bits), so that sorting codes by number means what it says.
/// Numbers are rounded to even; CDate gives the stored form of a date, which sorts by time.
void registerSqlFunctions(sqlite3* db);

}  // namespace store
