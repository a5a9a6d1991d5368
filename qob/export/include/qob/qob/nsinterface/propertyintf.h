#pragma once

#include "qob/qob/nsinterface/namedelementintf.h"

namespace QOB::NSInterface {

/// A property of a metaclass as a live element of the meta-registry.
class QOB_EXPORT PropertyIntf : public InterfaceOf<PropertyIntf, NamedElementIntf> {
public:
    static constexpr char const* Name = "QOB.Property";
    static constexpr char const* ImmutableName = "QOB.ImmutableProperty";
};

} // namespace QOB::NSInterface
