#pragma once

#include "qob/qob/integer.h"
#include "qob/qob/nsinterface/objectintf.h"
#include "qob/qob/reflection.h"

namespace QOB {

class ClassObject;
class Model;

namespace NSInterface {

/// An instance of a metaclass: it has an id, a model and may have a container. The bodies here are
/// those of the root object and go through the read and the write path; a state overrides them with
/// plain access to its fields.
class QOB_EXPORT ClassObjectIntf : public ObjectIntf {
public:
    using PrimaryBase = ClassObjectIntf;
    using VisitationBases = CooperativeVisitor::internal::Bases<ObjectIntf>;

    /// Ids of the properties within this class.
    static constexpr char const* Name = "QOB.ClassObject";
    enum PropertyId : unsigned { ModelQOBId = 2, ContainerQOBId = 3 };
    static IntrospectiveMethods sIntrospectiveMethods;

    CooperativeVisitor::internal::MethodInfo
    getVisitMethod(CooperativeVisitor::internal::MethodTable const& table) const override;
    void* cast(CooperativeVisitor::internal::ClassInfo const& info) const override;

    /// The id belongs to the root object; a state raises "this code should not be hit".
    virtual bool hasObjectId(Deviant deviant) const;
    virtual void removeObjectId(Deviant deviant);
    virtual void setObjectId(Deviant deviant, Integer const& id);
    virtual Integer getObjectId(Deviant deviant) const;

    /// The URI of an object follows from its model and its id: "<model>#<id>". It is there as long
    /// as both are, and setting or removing it raises QOB::Exception.
    virtual bool hasUri(Deviant deviant) const;
    virtual void removeUri(Deviant deviant);
    virtual void setUri(Deviant deviant, String const& uri);
    virtual String getUri(Deviant deviant) const;

    /// The model that the object belongs to in a deviant.
    virtual bool hasModelQOB(Deviant deviant) const;
    virtual void removeModelQOB(Deviant deviant);
    virtual void setModelQOB(Deviant deviant, Model const& model);
    virtual Model getModelQOB(Deviant deviant) const;
    virtual void removeOnlyModelQOB(Deviant deviant);
    virtual void setOnlyModelQOB(Deviant deviant, Model const& model);

    /// The object that owns this one, if any. A container of another model raises QOB::Exception.
    virtual bool hasContainerQOB(Deviant deviant) const;
    virtual void removeContainerQOB(Deviant deviant);
    virtual void setContainerQOB(Deviant deviant, ClassObject const& container);
    virtual ClassObject getContainerQOB(Deviant deviant) const;
    virtual void removeOnlyContainerQOB(Deviant deviant);
    virtual void setOnlyContainerQOB(Deviant deviant, ClassObject const& container);

    void
    internal_deviationAssign(Deviant deviant, ObjectIntf* source, Deviant sourceDeviant) override;
    /// The part of internal_deviationAssign that the properties of this class are: the model and
    /// the container.
    void
    internal_assignBlock(Deviant deviant, ClassObjectIntf const* source, Deviant sourceDeviant);

    using ObjectIntf::getReadDeviantI;
    using ObjectIntf::getWriteDeviantI;
    virtual ClassObjectIntf* getReadDeviantI(Deviant deviant, ClassObjectIntf const* tag) const;
    virtual ClassObjectIntf* getWriteDeviantI(Deviant deviant, ClassObjectIntf const* tag) const;
};

} // namespace NSInterface
} // namespace QOB
