#pragma once

#include "qob/qob/nsinterface/classobjectintf.h"
#include "qob/qob/object.h"

namespace QOB::NSInterface {

/// Creates objects and values by the name of their type, for code that reads models from files. The
/// factory of a package overrides all three operations; the ones here know no names.
class QOB_EXPORT FactoryObjectIntf : public ClassObjectIntf {
public:
    using VisitationBases = CooperativeVisitor::internal::Bases<ClassObjectIntf>;

    static constexpr char const* Name = "QOB.FactoryObject";
    static IntrospectiveMethods sIntrospectiveMethods;

    CooperativeVisitor::internal::MethodInfo
    getVisitMethod(CooperativeVisitor::internal::MethodTable const& table) const override;
    void* cast(CooperativeVisitor::internal::ClassInfo const& info) const override;
    /// A factory belongs to its model, which keeps no list of factories.
    void setContainerQOB(Deviant deviant, ClassObject const& container) override;

    /// A new object in the factory's model under the next free id, or a new value. `type` is a
    /// short or a dotted name; the result is empty if the name is unknown.
    virtual Object createFromString(Deviant deviant, String type);
    /// The same with the text of a value; objects take none.
    virtual Object createFromString(Deviant deviant, String type, String text);
    /// The same with an id that the caller gives.
    virtual Object createFromString(Deviant deviant, String type, Integer id);

    using ClassObjectIntf::getReadDeviantI;
    using ClassObjectIntf::getWriteDeviantI;
    virtual FactoryObjectIntf* getReadDeviantI(Deviant deviant, FactoryObjectIntf const* tag) const;
    virtual FactoryObjectIntf* getWriteDeviantI(Deviant deviant,
                                                FactoryObjectIntf const* tag) const;
};

} // namespace QOB::NSInterface
