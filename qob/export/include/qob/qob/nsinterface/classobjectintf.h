#pragma once

#include "qob/qob/integer.h"
#include "qob/qob/nsinterface/objectintf.h"
#include "qob/qob/reflection.h"

#include <cstdint>

namespace QOB {

class ClassObject;
class ExternalToolInfo;
class ImmutableClass;
class ImmutableProperty;
class Model;
class StereotypeObject;
struct AppliedStereotypeInstanceTable;
struct ExternalIdTable;
struct ExternalToolInfoTable;
template <class T>
class ImmutableSequence;
template <class T>
class Sequence;

namespace internal {
struct SparseProperties;
} // namespace internal

namespace NSInterface {

/// An instance of a metaclass: it has an id, a model and may have a container. The bodies here are
/// those of the root object and go through the read and the write path; a state overrides them with
/// plain access to its fields. The order of the operations is binding: libraries are compiled
/// against it.
class QOB_EXPORT ClassObjectIntf : public ObjectIntf {
public:
    using PrimaryBase = ClassObjectIntf;
    using VisitationBases = CooperativeVisitor::internal::Bases<ObjectIntf>;

    static constexpr char const* Name = "QOB.ClassObject";
    /// Ids of the properties within this class.
    enum PropertyId : unsigned {
        UriId = 1,
        ModelQOBId = 2,
        ContainerQOBId = 3,
        ContaineeQOBId = 4,
        AppliedStereotypeInstanceId = 5,
        RootModelId = 6,
        ExternalIdId = 7,
        ExternalToolInfoId = 8,
        ObjectIdId = 9
    };
    static IntrospectiveMethods sIntrospectiveMethods;

    ClassObjectIntf() noexcept = default;
    /// A copy of a state takes over what the tables of sparse properties hold for it.
    ClassObjectIntf(ClassObjectIntf const& other) : ObjectIntf(other) {
        if (other.sparse_ != 0) {
            copySparseProperties(other);
        }
    }
    /// Assigns nothing: who an object is stays, and so does what the tables hold for it.
    ClassObjectIntf& operator=(ClassObjectIntf const&) noexcept { return *this; }
    ~ClassObjectIntf() override {
        if (sparse_ != 0) {
            dropSparseProperties();
        }
    }

    CooperativeVisitor::internal::MethodInfo
    getVisitMethod(CooperativeVisitor::internal::MethodTable const& table) const override;
    void* cast(CooperativeVisitor::internal::ClassInfo const& info) const override;
    /// The object's class, seen as a type.
    ImmutableType getMetaType(Deviant deviant) const override;

    /// The live element of the object's class in the meta-registry; empty if it has none. The same
    /// in every deviant. Needs the header of Class.
    virtual ImmutableClass getMetaClass(Deviant deviant) const;

    /// What an outside tool has noted under a key; invalid if there is nothing.
    virtual ExternalToolInfo getExternalToolInfo(Deviant deviant, String key) const;
    /// Notes the text under its key, in the place of what was there. Raises QOB::Exception for an
    /// info without a key.
    virtual void setExternalToolInfo(Deviant deviant, ExternalToolInfo info);
    /// Takes the info out; nothing happens if it isn't there as given.
    virtual void removeExternalToolInfo(Deviant deviant, ExternalToolInfo info);

    /// Properties by their live element or by name, for who doesn't know the class. Inherited ones
    /// are found, and a redefined one is reached through the class that redefines it. Values are
    /// objects: those of value classes are boxed.
    ///
    /// All raise QOB::Exception, and change nothing, for a property that the object's class doesn't
    /// have, for one of a kind that the operation isn't for, and for a value of another type.
    ///
    /// `get` gives all values of a property, also the one or none of a single-valued one, which
    /// then stand in a sequence of their own.
    virtual ImmutableSequence<Object> get(Deviant deviant, ImmutableProperty const& property) const;
    virtual ImmutableSequence<Object> get(Deviant deviant, String name) const;
    /// The value of a single-valued property; empty if there is none.
    virtual Object getOne(Deviant deviant, ImmutableProperty const& property) const;
    virtual Object getOne(Deviant deviant, String name) const;
    /// Whether the property has a value.
    virtual bool has(Deviant deviant, ImmutableProperty const& property) const;
    virtual bool has(Deviant deviant, String name) const;
    /// Sets a single-valued property, or puts the value at the end of a multi-valued one. The
    /// `Only` forms leave the other end of an association alone.
    virtual void setOrAdd(Deviant deviant, ImmutableProperty const& property, Object value);
    virtual void setOrAdd(Deviant deviant, String name, Object value);
    virtual void setOrAddOnly(Deviant deviant, ImmutableProperty const& property, Object value);
    virtual void setOrAddOnly(Deviant deviant, String name, Object value);
    /// Removes all values of a property.
    virtual void remove(Deviant deviant, ImmutableProperty const& property);
    virtual void remove(Deviant deviant, String name);
    /// Removes one value, wherever it stands; nothing happens if it isn't there.
    virtual void remove(Deviant deviant, ImmutableProperty const& property, Object value);
    virtual void remove(Deviant deviant, String name, Object value);
    virtual void removeOnly(Deviant deviant, ImmutableProperty const& property, Object value);
    virtual void removeOnly(Deviant deviant, String name, Object value);
    /// Removes the value of a single-valued property.
    virtual void removeOne(Deviant deviant, ImmutableProperty const& property);
    virtual void removeOne(Deviant deviant, String name);
    virtual void removeOneOnly(Deviant deviant, ImmutableProperty const& property);
    virtual void removeOneOnly(Deviant deviant, String name);

    /// The id belongs to the root object; a state raises "this code should not be hit".
    virtual bool hasObjectId(Deviant deviant) const;
    virtual void removeObjectId(Deviant deviant);
    virtual void setObjectId(Deviant deviant, Integer const& id);
    virtual Integer getObjectId(Deviant deviant) const;

    /// Everything that the object contains: what ends with it. Here that is the applied
    /// stereotypes; classes with composite properties add theirs. Needs the header of Sequence.
    virtual Sequence<ClassObject> getContaineeQOBs(Deviant deviant);
    /// The same; nothing is written at the elements.
    virtual Sequence<ClassObject> getContaineeQOBsWithoutAssociation(Deviant deviant) const;

    /// The URI of an object follows from its model and its id: "<model>#<id>". It is there as long
    /// as both are, and setting or removing it raises QOB::Exception.
    virtual bool hasUri(Deviant deviant) const;
    virtual void removeUri(Deviant deviant);
    virtual void setUri(Deviant deviant, String const& uri);
    virtual String getUri(Deviant deviant) const;

    /// The stereotypes that are applied to the object; it is their container. Needs the header of
    /// StereotypeObject.
    virtual bool hasAppliedStereotypeInstances(Deviant deviant) const;
    virtual Sequence<StereotypeObject> getAppliedStereotypeInstances(Deviant deviant);
    virtual Sequence<StereotypeObject>
    getAppliedStereotypeInstancesWithoutAssociation(Deviant deviant);

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

    /// The model in whose list of objects this one is: the other end of that list. A removal takes
    /// the object out of the list, the `Only` form leaves the list alone.
    virtual bool hasRootModel(Deviant deviant) const;
    virtual void removeRootModel(Deviant deviant);
    virtual Model getRootModel(Deviant deviant) const;
    virtual void removeOnlyRootModel(Deviant deviant);

    /// The name of the object in an outside system; an empty one is none.
    virtual bool hasExternalId(Deviant deviant) const;
    virtual void removeExternalId(Deviant deviant);
    virtual void setExternalId(Deviant deviant, String const& id);
    virtual String getExternalId(Deviant deviant) const;

    virtual bool hasExternalToolInfos(Deviant deviant) const;
    virtual Sequence<ExternalToolInfo> getExternalToolInfos(Deviant deviant);
    virtual Sequence<ExternalToolInfo> getExternalToolInfosWithoutAssociation(Deviant deviant);

    void
    internal_deviationAssign(Deviant deviant, ObjectIntf* source, Deviant sourceDeviant) override;
    /// The part of internal_deviationAssign that the properties of this class are: the applied
    /// stereotypes, the model, the container, the external id and the tool infos.
    void
    internal_assignBlock(Deviant deviant, ClassObjectIntf const* source, Deviant sourceDeviant);

    /// The properties that few objects have, by state: nothing of them lies in a state itself. A
    /// state without an entry is never looked up, and its entries go with it. Need the header of
    /// the tables, "qob/kernel/deviant/sparsetables.h".
    static AppliedStereotypeInstanceTable const& appliedStereotypeInstance_sparse();
    static ExternalIdTable const& externalId_sparse();
    static ExternalToolInfoTable const& externalToolInfo_sparse();

    using ObjectIntf::getReadDeviantI;
    using ObjectIntf::getWriteDeviantI;
    virtual ClassObjectIntf* getReadDeviantI(Deviant deviant, ClassObjectIntf const* tag) const;
    virtual ClassObjectIntf* getWriteDeviantI(Deviant deviant, ClassObjectIntf const* tag) const;

private:
    friend struct QOB::internal::SparseProperties;

    void copySparseProperties(ClassObjectIntf const& other);
    void dropSparseProperties() noexcept;

    /// Which of the tables of sparse properties have an entry for this state.
    std::uint8_t sparse_ = 0;
};

static_assert(sizeof(ClassObjectIntf) == sizeof(ObjectIntf), "a state pays nothing for the tables");

} // namespace NSInterface
} // namespace QOB
