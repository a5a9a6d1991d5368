#pragma once

#include "qob/qob/nsinterface/classobjectintf.h"

namespace QOB {

/// What every interface class of the kernel's own metaclasses has besides its properties: its
/// identity and its pair of states. `Self` derives from it and stands below `Base` in the tree.
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
