#pragma once
#include <vector>

#include "sample_people.h"
#include "store/connection.h"

namespace sample {

/// The dates with their imports, assignments and inputs; all but the newest computed.
void makeRuns(store::Connection& cn, const SampleOptions& options, const std::vector<Person>& people);

}  // namespace sample
