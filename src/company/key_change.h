#pragma once
#include "company/instance_lock.h"
#include "company/key.h"
#include "store/database_copy.h"

namespace company {

/// Writes all databases of a company anew under its own key, or without one under the shared one: beside the
/// company, verified, and put in its place as a whole. Files of companions that this program can't open stay
/// as they are. Its present key must be known. Nobody may have the company open, and no link may stand in its
/// folder. False: `progress` stopped it, and the company is as it was; so is it after a store::Error.
bool changeKey(const CompanyLock& lock, const OwnKey* own, const store::Progress& progress = {});

}  // namespace company
