#pragma once
#include <QHash>
#include <QString>
#include <optional>
#include <vector>

#include "personnel/code_choices.h"
#include "personnel/person_rules.h"

namespace personnel {

/// The masters as a sheet speaks of them: by code or by name. Each is read once, when it is first asked for.
class CodeBook {
  public:
    explicit CodeBook(store::Connection& cn) : cn_(cn) {}

    /// Brings a cell to the code: "5" and "05" are the entry 05, otherwise the name counts; the code of one
    /// entry that is the name of another is neither. Dated entries must be open on `on` (unless it is
    /// invalid), a 所属小 must stand under `syozokuDai`. The finding says why there is no such code; then the
    /// cell stays.
    Finding resolve(const QString& item, QString& cell, QDate on = {}, const QString& syozokuDai = {});
    /// Whether the list would offer anything: on any day, of 所属小 under the 所属大.
    bool hasEntries(const QString& item, const QString& syozokuDai = {});

  private:
    const std::vector<CodeChoice>& entries(const QString& item);

    store::Connection& cn_;
    QHash<QString, std::vector<CodeChoice>> books_;
};

}  // namespace personnel
