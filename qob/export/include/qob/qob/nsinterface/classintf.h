#pragma once

#include "qob/qob/nsinterface/typeintf.h"

namespace QOB::NSInterface {

/// A metaclass as a live element of the meta-registry.
class QOB_EXPORT ClassIntf : public InterfaceOf<ClassIntf, TypeIntf> {
public:
    static constexpr char const* Name = "QOB.Class";
    static constexpr char const* ImmutableName = "QOB.ImmutableClass";
};

} // namespace QOB::NSInterface
