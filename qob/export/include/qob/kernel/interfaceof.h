#pragma once

#include "qob/qob/nsinterface/classobjectintf.h"

namespace QOB {

/// The part of the kernel's own interface classes that isn't properties: the identity and the
/// access to the states. `Self` derives from it and is a subclass of `Base`.
template <class Self, class Base>
class InterfaceOf : public Base {
public:
    using VisitationBases = CooperativeVisitor::internal::Bases<Base>;

    CooperativeVisitor::internal::MethodInfo
    getVisitMethod(CooperativeVisitor::internal::MethodTable const& table) const override {
        return CooperativeVisitor::internal::visitMethod(static_cast<Self const*>(this), table);
    }
    void* cast(CooperativeVisitor::internal::ClassInfo const& info) const override {
        return CooperativeVisitor::internal::castTo(static_cast<Self const*>(this), info);
    }

    using Base::getReadDeviantI;
    using Base::getWriteDeviantI;
    virtual Self* getReadDeviantI(Deviant, Self const* /*tag*/) const { return nullptr; }
    virtual Self* getWriteDeviantI(Deviant, Self const* /*tag*/) const { return nullptr; }
};

} // namespace QOB
