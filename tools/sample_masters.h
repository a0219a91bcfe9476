#pragma once
#include <vector>

#include "sample_people.h"
#include "store/connection.h"

namespace sample {

/// The company's own row, and all code lists that an operator fills.
void writeMasters(store::Connection& cn, const SampleOptions& options);
/// Records, transfers, families and qualifications.
void writePeople(store::Connection& cn, const std::vector<Person>& people);

}  // namespace sample
