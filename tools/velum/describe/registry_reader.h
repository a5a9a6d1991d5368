#pragma once

#include "describe/metamodel.h"

#include <deque>

namespace velum::describe {

/// Every package of the meta-registry that has types, with them, read of the live elements.
std::deque<Package> readRegistry();

} // namespace velum::describe
