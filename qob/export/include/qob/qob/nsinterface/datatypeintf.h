#pragma once

#include "qob/qob/nsinterface/typeintf.h"

namespace QOB::NSInterface {

/// A type of values: they have no identity.
class QOB_EXPORT DataTypeIntf : public InterfaceOf<DataTypeIntf, TypeIntf> {
public:
    static constexpr char const* Name = "QOB.DataType";
    static constexpr char const* ImmutableName = "QOB.ImmutableDataType";
};

} // namespace QOB::NSInterface
