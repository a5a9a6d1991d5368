#pragma once

#include "qob/qob/nsinterface/objectintf.h"

#include <string>

namespace QOB::internal {

/// "the object (<type>, id <id>)", or "the model" for null.
std::string describe(NSInterface::ObjectIntf const* object);

} // namespace QOB::internal
