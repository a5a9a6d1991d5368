#include "qob/qob/class.h"

#include "metaobject.h"
#include "namedelementstate.h"
#include "propertyindex.h"
#include "qob/kernel/factory/create.h"
#include "qob/kernel/property/assignsparse.h"
#include "qob/kernel/property/mandatoryvalue.h"
#include "qob/kernel/property/multivalued.h"
#include "qob/kernel/property/reflective.h"

#include <array>
#include <memory>

namespace QOB {

using NSInterface::ClassIntf;

namespace {

struct ClassDescription {
    using Interface = ClassIntf;
    static constexpr char const* name = ClassIntf::Name;
    static constexpr reflective::Place place{__FILE__, __LINE__};
    using Properties =
        reflective::List<reflective::Single<ClassIntf::IsAbstractId,
                                            &ClassIntf::isAbstract,
                                            reflective::always,
                                            &ClassIntf::setIsAbstract>,
                         reflective::Many<ClassIntf::CommentsId,
                                          &ClassIntf::getComments,
                                          &ClassIntf::getCommentsWithoutAssociation>,
                         reflective::Many<ClassIntf::SupersId,
                                          &ClassIntf::getSupers,
                                          &ClassIntf::getSupersWithoutAssociation>,
                         reflective::Many<ClassIntf::OwnedAttributesId,
                                          &ClassIntf::getOwnedAttributes,
                                          &ClassIntf::getOwnedAttributesWithoutAssociation>>;
};

} // namespace

namespace NSInterface {

constinit IntrospectiveMethods ClassIntf::sIntrospectiveMethods =
    reflective::methodsOf<ClassDescription>();

void ClassIntf::setIsAbstract(Deviant deviant, Boolean const& isAbstract) {
    property::setMandatory<&ClassIntf::isAbstract, &ClassIntf::setIsAbstract>(
        this, deviant, isAbstract);
}
Boolean ClassIntf::isAbstract(Deviant deviant) const {
    return property::get<&ClassIntf::isAbstract>(this, deviant);
}

Sequence<String> ClassIntf::getComments(Deviant deviant) {
    return getCommentsWithoutAssociation(deviant);
}
Sequence<String> ClassIntf::getCommentsWithoutAssociation(Deviant deviant) {
    return property::elements<String>(this, deviant, sIntrospectiveMethods, CommentsId);
}
Sequence<Class> ClassIntf::getSupers(Deviant deviant) {
    return getSupersWithoutAssociation(deviant);
}
Sequence<Class> ClassIntf::getSupersWithoutAssociation(Deviant deviant) {
    return property::elements<Class>(this, deviant, sIntrospectiveMethods, SupersId);
}
Sequence<Property> ClassIntf::getOwnedAttributes(Deviant deviant) {
    return property::elementsWithOwner<Property>(this,
                                                 deviant,
                                                 sIntrospectiveMethods,
                                                 OwnedAttributesId,
                                                 PropertyIntf::sIntrospectiveMethods,
                                                 PropertyIntf::OwningClassId);
}
Sequence<Property> ClassIntf::getOwnedAttributesWithoutAssociation(Deviant deviant) {
    return property::elements<Property>(this, deviant, sIntrospectiveMethods, OwnedAttributesId);
}

// A state is bound to nothing.

void ClassIntf::internal_bind(ClassBinding const&) {
}
ClassBinding ClassIntf::internal_binding() const {
    return {};
}
QOB::internal::PropertyIndex const& ClassIntf::internal_propertyIndex() const {
    static auto const* const empty = new QOB::internal::PropertyIndex(ClassBinding());
    return *empty;
}

void ClassIntf::internal_deviationAssign(Deviant deviant,
                                         ObjectIntf* source,
                                         Deviant sourceDeviant) {
    property::assignBlocks<ClassIntf, ClassIntf, NamedElementIntf, ClassObjectIntf>(
        this, deviant, source, sourceDeviant);
}

void ClassIntf::internal_assignBlock(Deviant deviant,
                                     ClassIntf const* source,
                                     Deviant sourceDeviant) {
    property::assignEach<
        property::AssignMandatory<&ClassIntf::isAbstract, &ClassIntf::setIsAbstract>,
        property::AssignValues<&ClassIntf::getComments>,
        property::AssignObjects<&ClassIntf::getSupers>,
        property::AssignObjects<&ClassIntf::getOwnedAttributes>>(
        this, deviant, source, sourceDeviant);
}

} // namespace NSInterface

namespace {

class ClassDeviantImpl final
    : public NSImplementation::NamedElementState<ClassDeviantImpl, ClassIntf> {
public:
    struct Fields : NSImplementation::NamedElementFields {
        Boolean isAbstract = false;
        SequenceMember<ListQImpl<String>> comments;
        NSImplementation::OwnedList<Class> supers;
        NSImplementation::OwnedList<Property> ownedAttributes;
    };

    void setIsAbstract(Deviant, Boolean const& isAbstract) override {
        fields_.isAbstract = isAbstract;
    }
    Boolean isAbstract(Deviant) const override { return fields_.isAbstract; }
    Sequence<String> getComments(Deviant deviant) override {
        // For reading only.
        return {const_cast<ListQImpl<String>*>(&fields_.comments.read()), deviant};
    }
    Sequence<String> getCommentsWithoutAssociation(Deviant deviant) override {
        return {&fields_.comments.write(), deviant};
    }
    Sequence<Class> getSupers(Deviant deviant) override { return fields_.supers.read(deviant); }
    Sequence<Class> getSupersWithoutAssociation(Deviant deviant) override {
        return fields_.supers.write(deviant);
    }
    Sequence<Property> getOwnedAttributes(Deviant deviant) override {
        return fields_.ownedAttributes.read(deviant);
    }
    Sequence<Property> getOwnedAttributesWithoutAssociation(Deviant deviant) override {
        return fields_.ownedAttributes.write(deviant);
    }
    std::array<ReferenceStorage const*, 1> ownedObjects() const {
        return {fields_.ownedAttributes.storage()};
    }

    Fields fields_;
};

class ClassImpl final : public NSImplementation::MetaObject<ClassDeviantImpl,
                                                            ClassIntf,
                                                            NSInterface::TypeIntf,
                                                            NSInterface::NamespaceIntf,
                                                            NSInterface::NamedElementIntf> {
    using PropertyIndex = QOB::internal::PropertyIndex;

public:
    void internal_bind(ClassBinding const& binding) override {
        binding_ = binding;
        ++PropertyIndex::generation();
    }
    ClassBinding internal_binding() const override { return binding_; }
    PropertyIndex const& internal_propertyIndex() const override {
        if (index_ == nullptr || generation_ != PropertyIndex::generation()) {
            index_ = std::make_unique<PropertyIndex>(binding_);
            generation_ = PropertyIndex::generation();
        }
        return *index_;
    }

private:
    ClassBinding binding_;
    mutable std::unique_ptr<PropertyIndex> index_; // made at the first need
    mutable unsigned generation_ = 0;
};

} // namespace

Class Class::create(Model const& model) {
    return createObject<Class, ClassImpl>(model, NSImplementation::Unnamed());
}
Class Class::create(Model const& model, String const& name) {
    return createObject<Class, ClassImpl>(model, NSImplementation::Named{name});
}
Class Class::createWithId(Model const& model, Integer const& id) {
    return createObject<Class, ClassImpl>(model, id);
}

} // namespace QOB
