#pragma once

#include "qob/qob/integer.h"
#include "qob/qob/introspection.h"
#include "qob/qob/nsinterface/objectintf.h"

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

/// An instance of a metaclass: it has an id, a model and may have a container. The bodies here run
/// on the root object and take the read or write path; a state overrides them with plain access to
/// its fields. The order of the operations is fixed, because libraries are compiled against it.
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
    /// Copies a state together with its entries in the tables of sparse properties.
    ClassObjectIntf(ClassObjectIntf const& other) : ObjectIntf(other) {
        if (other.sparse_ != 0) {
            copySparseProperties(other);
        }
    }
    /// Assigns nothing: an object keeps its identity and its entries in the tables.
    ClassObjectIntf& operator=(ClassObjectIntf const&) noexcept { return *this; }
    ~ClassObjectIntf() override {
        if (sparse_ != 0) {
            dropSparseProperties();
        }
    }

    CooperativeVisitor::internal::MethodInfo
    getVisitMethod(CooperativeVisitor::internal::MethodTable const& table) const override;
    void* cast(CooperativeVisitor::internal::ClassInfo const& info) const override;
    /// The object's class as a type.
    ImmutableType getMetaType(Deviant deviant) const override;

    /// The live element of the object's class in the meta-registry; empty if it has none. The same
    /// in every deviant. Needs the header of Class.
    virtual ImmutableClass getMetaClass(Deviant deviant) const;

    /// The note of an outside tool under a key; invalid if there is none.
    virtual ExternalToolInfo getExternalToolInfo(Deviant deviant, String key) const;
    /// Stores the note under its key, replacing an earlier one. Raises QOB::Exception for an info
    /// without a key.
    virtual void setExternalToolInfo(Deviant deviant, ExternalToolInfo info);
    /// Removes the note; does nothing if no equal note is there.
    virtual void removeExternalToolInfo(Deviant deviant, ExternalToolInfo info);

    /// Access to properties by their live element or by name, for callers that don't know the
    /// class. Inherited properties are found, and a redefined one is reached through the class that
    /// redefines it. Values are objects; those of value classes are boxed.
    ///
    /// All raise QOB::Exception, and change nothing, if the object's class doesn't have the
    /// property, if the operation doesn't apply to its kind, or if the value has the wrong type.
    ///
    /// `get` returns all values of a property. For a single-valued one the sequence has one element
    /// or none.
    virtual ImmutableSequence<Object> get(Deviant deviant, ImmutableProperty const& property) const;
    virtual ImmutableSequence<Object> get(Deviant deviant, String name) const;
    /// The value of a single-valued property; empty if there is none.
    virtual Object getOne(Deviant deviant, ImmutableProperty const& property) const;
    virtual Object getOne(Deviant deviant, String name) const;
    /// Whether the property has a value.
    virtual bool has(Deviant deviant, ImmutableProperty const& property) const;
    virtual bool has(Deviant deviant, String name) const;
    /// Sets a single-valued property, or appends the value to a multi-valued one. The `Only` forms
    /// don't update the other end of an association.
    virtual void setOrAdd(Deviant deviant, ImmutableProperty const& property, Object value);
    virtual void setOrAdd(Deviant deviant, String name, Object value);
    virtual void setOrAddOnly(Deviant deviant, ImmutableProperty const& property, Object value);
    virtual void setOrAddOnly(Deviant deviant, String name, Object value);
    /// Removes all values of a property.
    virtual void remove(Deviant deviant, ImmutableProperty const& property);
    virtual void remove(Deviant deviant, String name);
    /// Removes one value, wherever it is in the list; does nothing if it isn't there.
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

    /// The contained objects, which are destroyed with this one. Here these are the applied
    /// stereotypes; classes with composite properties add theirs. Needs the header of Sequence.
    virtual Sequence<ClassObject> getContaineeQOBs(Deviant deviant);
    /// The same list; writes to it don't update the elements.
    virtual Sequence<ClassObject> getContaineeQOBsWithoutAssociation(Deviant deviant) const;

    /// The URI of an object is derived from its model and its id: "<model>#<id>". It exists while
    /// both do; setting or removing it raises QOB::Exception.
    virtual bool hasUri(Deviant deviant) const;
    virtual void removeUri(Deviant deviant);
    virtual void setUri(Deviant deviant, String const& uri);
    virtual String getUri(Deviant deviant) const;

    /// The stereotypes applied to the object, which contains them. Needs the header of
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

    /// The model whose list of objects contains this one: the other end of that list. Removing it
    /// removes the object from the list; the `Only` form doesn't touch the list.
    virtual bool hasRootModel(Deviant deviant) const;
    virtual void removeRootModel(Deviant deviant);
    virtual Model getRootModel(Deviant deviant) const;
    virtual void removeOnlyRootModel(Deviant deviant);

    /// The name of the object in an outside system. An empty id counts as none.
    virtual bool hasExternalId(Deviant deviant) const;
    virtual void removeExternalId(Deviant deviant);
    virtual void setExternalId(Deviant deviant, String const& id);
    virtual String getExternalId(Deviant deviant) const;

    virtual bool hasExternalToolInfos(Deviant deviant) const;
    virtual Sequence<ExternalToolInfo> getExternalToolInfos(Deviant deviant);
    virtual Sequence<ExternalToolInfo> getExternalToolInfosWithoutAssociation(Deviant deviant);

    void
    internal_deviationAssign(Deviant deviant, ObjectIntf* source, Deviant sourceDeviant) override;
    /// Assigns the properties of this class, as part of internal_deviationAssign: the applied
    /// stereotypes, the model, the container, the external id and the tool infos.
    void
    internal_assignBlock(Deviant deviant, ClassObjectIntf const* source, Deviant sourceDeviant);

    /// The properties that few objects have, in tables by state; nothing of them is stored in the
    /// state itself. A state without an entry is never looked up, and a freed state takes its
    /// entries along. Needs "qob/kernel/deviant/sparsetables.h".
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
