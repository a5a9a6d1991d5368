#pragma once

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/qob/stereotypeobject.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <memory>

namespace QOB {

/// Tables of the properties that few objects have, by state; see ClassObjectIntf. Sequences are
/// allocated separately from their table, so that their addresses don't change.
struct AppliedStereotypeInstanceTable
    : boost::unordered_flat_map<NSInterface::ClassObjectIntf const*,
                                std::unique_ptr<MultiIndexImpl<StereotypeObject>>> {};
struct ExternalIdTable : boost::unordered_flat_map<NSInterface::ClassObjectIntf const*, String> {};
struct ExternalToolInfoTable
    : boost::unordered_flat_map<NSInterface::ClassObjectIntf const*,
                                std::unique_ptr<MultiIndexImpl<ExternalToolInfo>>> {};

} // namespace QOB
