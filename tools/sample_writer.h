#pragma once
#include <QString>

#include "schema/catalog.h"
#include "store/connection.h"

namespace sample {

/// Writes rows of one table with one prepared statement made from the catalogue.
class TableWriter {
  public:
    TableWriter(store::Connection& cn, const char16_t* table);

    /// A row of Nulls, one for each column; fill it by the table's position constants.
    store::Binds blank() const { return store::Binds(columns_); }
    void write(const store::Binds& row);

  private:
    std::size_t columns_;
    store::Statement insert_;
};

/// A code or another fixed text as a value; null is Null.
inline store::Value text(const char16_t* fixed) {
    return fixed ? store::Value(fixed) : store::Value();
}

}  // namespace sample
