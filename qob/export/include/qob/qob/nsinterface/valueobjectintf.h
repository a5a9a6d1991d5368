#pragma once

#include "qob/qob/nsinterface/objectintf.h"
#include "tessel/any.h"

#include <string>
#include <typeinfo>

namespace QOB::NSInterface {

/// A boxed value: a value of a data type as an object. It belongs to no model, is valid in every
/// deviant and is freed with its last handle.
class QOB_EXPORT ValueObjectIntf : public ObjectIntf {
public:
    using PrimaryBase = ValueObjectIntf;
    using VisitationBases = CooperativeVisitor::internal::Bases<ObjectIntf>;

    ValueObjectIntf() noexcept { setInNoModel(); }
    ValueObjectIntf(ValueObjectIntf const& other) noexcept : ObjectIntf(other) { setInNoModel(); }
    ValueObjectIntf& operator=(ValueObjectIntf const&) noexcept = default;
    ~ValueObjectIntf() override = default;

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
    /// Null in a class that doesn't store its value as such; getValue works for all classes.
    virtual void const* findValue(std::type_info const& type) const noexcept;
};

} // namespace QOB::NSInterface

namespace QOB {

/// The object as a boxed value; null if it isn't one. Only values say that they are in no model.
inline NSInterface::ValueObjectIntf const*
valueObject(NSInterface::ObjectIntf const* object) noexcept {
    return object != nullptr && internal::isInNoModel(object)
               ? static_cast<NSInterface::ValueObjectIntf const*>(object)
               : nullptr;
}

} // namespace QOB
