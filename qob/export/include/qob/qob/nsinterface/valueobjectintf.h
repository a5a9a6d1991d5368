#pragma once

#include "qob/qob/nsinterface/objectintf.h"
#include "tessel/any.h"

#include <string>
#include <typeinfo>

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

    /// The element of a metamodel that was registered for the value's data type, if any.
    ImmutableType getMetaType(Deviant deviant) const override;

    /// Copies the value into `value`.
    virtual void getValue(Tessel::any& value) const = 0;
    /// The dotted name of the value's data type.
    virtual std::string getValueTypeName() const = 0;
    /// The value's address if it has exactly the given type, otherwise null. Owned by the object.
    /// Null in a class that doesn't hold its value as such; getValue serves them all.
    virtual void const* findValue(std::type_info const& type) const noexcept;
};

} // namespace QOB::NSInterface
