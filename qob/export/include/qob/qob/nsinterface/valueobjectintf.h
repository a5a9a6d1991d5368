#pragma once

#include "qob/qob/nsinterface/objectintf.h"
#include "tessel/any.h"

#include <string>

namespace QOB::NSInterface {

/// A boxed value: a data-type value made into an object. It belongs to no model and is valid in
/// every deviant; it is freed with its last handle.
class QOB_EXPORT ValueObjectIntf : public ObjectIntf {
public:
    using PrimaryBase = ValueObjectIntf;
    using VisitationBases = CooperativeVisitor::internal::Bases<ObjectIntf>;

    CooperativeVisitor::internal::MethodInfo
    getVisitMethod(CooperativeVisitor::internal::MethodTable const& table) const override;
    void* cast(CooperativeVisitor::internal::ClassInfo const& info) const override;

    /// Copies the value into `value`.
    virtual void getValue(Tessel::any& value) const = 0;
    /// The dotted name of the value's data type.
    virtual std::string getValueTypeName() const = 0;
};

} // namespace QOB::NSInterface
