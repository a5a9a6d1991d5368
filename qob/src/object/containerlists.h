#pragma once

#include "qob/qob/nsinterface/classobjectintf.h"

namespace QOB::property {

/// Raises: the container has no list for objects of this class.
[[noreturn]] void failNoList(NSInterface::ClassObjectIntf const* container,
                             NSInterface::ClassObjectIntf const* object);

} // namespace QOB::property
