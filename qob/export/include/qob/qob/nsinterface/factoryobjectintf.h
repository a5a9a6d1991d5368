#pragma once

#include "qob/qob/nsinterface/classobjectintf.h"
#include "qob/qob/object.h"

namespace QOB::NSInterface {

/// Makes objects and values by the names of their types, for readers of models that know only
/// names. The factory of a package overrides all three; here they know no name.
class QOB_EXPORT FactoryObjectIntf : public ClassObjectIntf {
public:
    using VisitationBases = CooperativeVisitor::internal::Bases<ClassObjectIntf>;

    static constexpr char const* Name = "QOB.FactoryObject";
    static IntrospectiveMethods sIntrospectiveMethods;

    CooperativeVisitor::internal::MethodInfo
    getVisitMethod(CooperativeVisitor::internal::MethodTable const& table) const override;
    void* cast(CooperativeVisitor::internal::ClassInfo const& info) const override;
    /// A factory lies in its model, which keeps no list of factories.
    void setContainerQOB(Deviant deviant, ClassObject const& container) override;

    /// A new object in the factory's model under the next free id, or a new value. `type` is a
    /// short or a dotted name; the result is empty for one that is not known.
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
