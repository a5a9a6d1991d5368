#pragma once

#include "qob/qob/nsinterface/classobjectintf.h"

namespace sample {

/// What an interface class has besides its properties: its identity and its pair of states. `Self`
/// derives from it and stands below `Base` in the tree.
template <class Self, class Base>
class InterfaceOf : public Base {
public:
    using VisitationBases = QOB::CooperativeVisitor::internal::Bases<Base>;

    QOB::CooperativeVisitor::internal::MethodInfo
    getVisitMethod(QOB::CooperativeVisitor::internal::MethodTable const& table) const override {
        return QOB::CooperativeVisitor::internal::visitMethod(static_cast<Self const*>(this),
                                                              table);
    }
    void* cast(QOB::CooperativeVisitor::internal::ClassInfo const& info) const override {
        return QOB::CooperativeVisitor::internal::castTo(static_cast<Self const*>(this), info);
    }

    using Base::getReadDeviantI;
    using Base::getWriteDeviantI;
    virtual Self* getReadDeviantI(QOB::Deviant, Self const* /*tag*/) const { return nullptr; }
    virtual Self* getWriteDeviantI(QOB::Deviant, Self const* /*tag*/) const { return nullptr; }
};

} // namespace sample
