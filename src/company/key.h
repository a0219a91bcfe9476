#pragma once
#include "store/key.h"

namespace company {

/// The password that all files of every company carry.
store::Key sharedKey();

}  // namespace company
