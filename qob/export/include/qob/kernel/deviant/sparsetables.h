#pragma once

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/qob/stereotypeobject.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <memory>

namespace QOB {

/// Tables of the properties that few objects have, each by the state that it belongs to; see
/// ClassObjectIntf. A sequence stands apart from its table, so that it stays where it is.
struct AppliedStereotypeInstanceTable
    : boost::unordered_flat_map<NSInterface::ClassObjectIntf const*,
                                std::unique_ptr<MultiIndexImpl<StereotypeObject>>> {};
struct ExternalIdTable : boost::unordered_flat_map<NSInterface::ClassObjectIntf const*, String> {};
struct ExternalToolInfoTable
    : boost::unordered_flat_map<NSInterface::ClassObjectIntf const*,
                                std::unique_ptr<MultiIndexImpl<ExternalToolInfo>>> {};

} // namespace QOB
