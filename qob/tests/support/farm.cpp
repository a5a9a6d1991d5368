#include "farm.h"

#include "qob/kernel/meta/metaclassof.h"
#include "qob/kernel/property/mandatoryvalue.h"
#include "qob/kernel/property/multivalued.h"
#include "qob/kernel/property/reference.h"
#include "qob/kernel/property/reflective.h"
#include "qob/qob/domainregistry.h"
#include "qob/qob/transaction.h"

namespace sample {

namespace property = QOB::property;
namespace reflective = QOB::reflective;
using NSInterface::AnimalIntf;
using NSInterface::HenIntf;
using QOB::Deviant;
using QOB::MetaPropertyDescription;
using QOB::Sequence;

namespace {

constexpr unsigned AnimalIndex = 1;
constexpr unsigned Many = QOB::PropertyMultiValued;
constexpr auto kernel = &QOB::get_QOB_PackageIntrospectiveMethods;

QOB::PropertyReference const container[] = {{kernel, QOB::ClassObjectIndex, 3}};
QOB::PropertyReference const mateOfAnimal[] = {{&Farm::table, AnimalIndex, AnimalIntf::MateId}};

MetaPropertyDescription ofAnimal[] = {
    {.name = "weight",
     .package = kernel,
     .typeIndex = QOB::RealIndex,
     .documentation = "In kilograms.",
     .flags = QOB::PropertyUnique,
     .defaultValue = "1",
     .isPrivate = 1,
     .lower = 1,
     .id = AnimalIntf::WeightId},
    {.name = "mate",
     .package = &Farm::table,
     .typeIndex = AnimalIndex,
     .flags = QOB::PropertyUnique,
     .id = AnimalIntf::MateId,
     .associationName = "",
     .otherEndName = "mateOf"},
    {.name = "mother",
     .package = &Farm::table,
     .typeIndex = AnimalIndex,
     .flags = QOB::PropertyUnique,
     .id = AnimalIntf::MotherId,
     .associationName = "A_mother_children",
     .hasOpposite = 1,
     .oppositePackage = &Farm::table,
     .oppositeClass = AnimalIndex,
     .oppositeId = AnimalIntf::ChildrenId},
    {.name = "children",
     .package = &Farm::table,
     .typeIndex = AnimalIndex,
     .flags = Many | QOB::PropertyUnique | QOB::PropertyOrdered,
     .upper = MetaPropertyDescription::Unbounded,
     .id = AnimalIntf::ChildrenId,
     .associationName = "A_mother_children",
     .hasOpposite = 1,
     .oppositePackage = &Farm::table,
     .oppositeClass = AnimalIndex,
     .oppositeId = AnimalIntf::MotherId},
    {.name = "sounds",
     .package = kernel,
     .typeIndex = QOB::StringIndex,
     .flags = Many,
     .upper = MetaPropertyDescription::Unbounded,
     .id = AnimalIntf::SoundsId},
    {.name = "legs",
     .package = kernel,
     .typeIndex = QOB::IntegerIndex,
     .flags = QOB::PropertyReadOnly | QOB::PropertyDerived | QOB::PropertyUnique,
     .lower = 1,
     .id = AnimalIntf::LegsId}};
MetaPropertyDescription ofHen[] = {{.name = "eggs",
                                    .package = kernel,
                                    .typeIndex = QOB::IntegerIndex,
                                    .flags = Many,
                                    .upper = MetaPropertyDescription::Unbounded,
                                    .id = HenIntf::EggsId},
                                   {.name = "partner",
                                    .package = &Farm::table,
                                    .typeIndex = AnimalIndex,
                                    .flags = QOB::PropertyUnique | QOB::PropertyComposite,
                                    .id = HenIntf::PartnerId,
                                    .associationName = ""}};
QOB::MetaPropertyEntry const entriesOfAnimal[] = {{},
                                                  {&ofAnimal[0]},
                                                  {&ofAnimal[1]},
                                                  {&ofAnimal[2], 0, nullptr, 1, container},
                                                  {&ofAnimal[3]},
                                                  {&ofAnimal[4]},
                                                  {&ofAnimal[5]}};
QOB::MetaPropertyEntry const entriesOfHen[] = {{}, {&ofHen[0]}, {&ofHen[1], 1, mateOfAnimal}};

QOB::SuperReference const supersOfAnimal[] = {{kernel, QOB::ClassObjectIndex}, {}};
QOB::SuperReference const supersOfHen[] = {{&Farm::table, AnimalIndex}, {}};
MetaPropertyDescription* animalProperties[7] = {};
MetaPropertyDescription* henProperties[3] = {};

struct AnimalDescription {
    using Interface = AnimalIntf;
    static constexpr char const* name = "sample.Animal";
    static constexpr reflective::Place place{__FILE__, __LINE__};
    using Properties = reflective::List<
        reflective::Single<AnimalIntf::WeightId,
                           &AnimalIntf::getWeight,
                           reflective::always,
                           &AnimalIntf::setWeight,
                           &AnimalIntf::removeWeight>,
        reflective::Single<AnimalIntf::MateId,
                           &AnimalIntf::getMate,
                           &AnimalIntf::hasMate,
                           &AnimalIntf::setMate,
                           &AnimalIntf::removeMate,
                           &AnimalIntf::setMate,
                           &AnimalIntf::removeMate>,
        reflective::Single<AnimalIntf::MotherId,
                           &AnimalIntf::getMother,
                           &AnimalIntf::hasMother,
                           &AnimalIntf::setMother,
                           &AnimalIntf::removeMother,
                           &AnimalIntf::setOnlyMother,
                           &AnimalIntf::removeOnlyMother>,
        reflective::Many<AnimalIntf::ChildrenId,
                         &AnimalIntf::getChildren,
                         &AnimalIntf::getChildrenWithoutAssociation>,
        reflective::Many<AnimalIntf::SoundsId, &AnimalIntf::getSounds, &AnimalIntf::getSounds>,
        reflective::Single<AnimalIntf::LegsId, &AnimalIntf::getLegs>>;
};

struct HenDescription {
    using Interface = HenIntf;
    static constexpr char const* name = "sample.Hen";
    static constexpr reflective::Place place{__FILE__, __LINE__};
    using Properties =
        reflective::List<reflective::Many<HenIntf::EggsId, &HenIntf::getEggs, &HenIntf::getEggs>,
                         reflective::Single<HenIntf::PartnerId,
                                            &HenIntf::getPartner,
                                            &HenIntf::hasPartner,
                                            &HenIntf::setPartner,
                                            &HenIntf::removePartner,
                                            &HenIntf::setPartner,
                                            &HenIntf::removePartner>>;
};

QOB::IntrospectiveMethods* const records[] = {nullptr,
                                              &AnimalIntf::sIntrospectiveMethods,
                                              &HenIntf::sIntrospectiveMethods,
                                              nullptr};
QOB::PackageIntrospectiveMethods const farmTable{records, 4};

char const* commentsOnAnimal[] = {"It eats.", "It sleeps.", nullptr};

QOB::MetaClassDescription const animalClass{.name = "Animal",
                                            .dottedName = "sample.Animal",
                                            .methods = &AnimalIntf::sIntrospectiveMethods,
                                            .propertyCount = 6,
                                            .entries = entriesOfAnimal,
                                            .isAbstract = true,
                                            .comments = commentsOnAnimal};
QOB::MetaClassDescription const henClass{.name = "Hen",
                                         .dottedName = "sample.Hen",
                                         .methods = &HenIntf::sIntrospectiveMethods,
                                         .propertyCount = 2,
                                         .entries = entriesOfHen};

QOB::TagBinding const tags[] = {
    {&AnimalIntf::sIntrospectiveMethods, 0, "qob_metaclass"},
    {&HenIntf::sIntrospectiveMethods, HenIntf::EggsId, "qob_hide_in_lumvo"},
    {&HenIntf::sIntrospectiveMethods, 0, "qob_metaclass"}};

} // namespace

QOB::PackageIntrospectiveMethods const* Farm::table() {
    return &farmTable;
}

void Farm::create() {
    QOB::DomainRegistry const& registry = *QOB::DomainRegistry::instance();
    QOB::Factory const factory = registry.getMetaRegistryFactory();
    QOB::Transaction transaction(registry.getMetaRegistry());
    package = factory.createPackage("farm");
    QOB::createMetaClass(animal, animalClass, factory, package);
    QOB::createMetaClass(hen, henClass, factory, package);
    QOB::updateMetaClass(animalUpdated_, animal, animalClass, factory);
    QOB::updateMetaClass(henUpdated_, hen, henClass, factory);
    QOB::applyTags(tags);
    QOB::staticApplyTag("qob_metamodel", "sample", package.get());
    transaction.commit();
}

void Farm::destroy() {
    QOB::Transaction transaction(QOB::DomainRegistry::instance()->getMetaRegistry());
    QOB::destroyMetaClass(animal, animalClass);
    QOB::destroyMetaClass(hen, henClass);
    package.destroy();
    transaction.commit();
    *this = Farm();
}

namespace NSInterface {

QOB::IntrospectiveMethods AnimalIntf::sIntrospectiveMethods =
    reflective::methodsOf<AnimalDescription>(animalProperties, supersOfAnimal, &farmTable);
QOB::IntrospectiveMethods HenIntf::sIntrospectiveMethods =
    reflective::methodsOf<HenDescription>(henProperties, supersOfHen, &farmTable);

QOB::ImmutableClass AnimalIntf::getMetaClass(Deviant) const {
    return QOB::metaClassOf(sIntrospectiveMethods);
}
void AnimalIntf::removeWeight(Deviant) {
}
void AnimalIntf::setWeight(Deviant deviant, QOB::Real const& value) {
    property::setMandatory<&AnimalIntf::getWeight, &AnimalIntf::setWeight>(this, deviant, value);
}
QOB::Real AnimalIntf::getWeight(Deviant deviant) const {
    return property::get<&AnimalIntf::getWeight>(this, deviant);
}
bool AnimalIntf::hasMate(Deviant deviant) const {
    return getMate(deviant).isValid();
}
void AnimalIntf::removeMate(Deviant deviant) {
    property::removeOnlyReference<&AnimalIntf::getMate, &AnimalIntf::setMate>(
        this, deviant, sIntrospectiveMethods, MateId);
}
void AnimalIntf::setMate(Deviant deviant, Animal const& value) {
    property::setReference<&AnimalIntf::getMate, &AnimalIntf::setMate, &AnimalIntf::removeMate>(
        this, deviant, value, sIntrospectiveMethods, MateId);
}
Animal AnimalIntf::getMate(Deviant deviant) const {
    return property::get<&AnimalIntf::getMate>(this, deviant);
}
bool AnimalIntf::hasMother(Deviant deviant) const {
    return getMother(deviant).isValid();
}
void AnimalIntf::removeMother(Deviant deviant) {
    if (Animal const old = getMother(deviant); old.isValid()) {
        old->getChildrenWithoutAssociation(deviant).removeAll(Animal(this, deviant));
    }
    removeOnlyMother(deviant);
}
void AnimalIntf::setMother(Deviant deviant, Animal const& value) {
    removeMother(deviant);
    if (value.isValid()) {
        setOnlyMother(deviant, value);
        value->getChildrenWithoutAssociation(deviant).push_back(Animal(this, deviant));
    }
}
Animal AnimalIntf::getMother(Deviant deviant) const {
    return property::get<&AnimalIntf::getMother>(this, deviant);
}
void AnimalIntf::removeOnlyMother(Deviant deviant) {
    property::removeOnlyReference<&AnimalIntf::getMother, &AnimalIntf::setMother>(
        this, deviant, sIntrospectiveMethods, MotherId);
}
void AnimalIntf::setOnlyMother(Deviant deviant, Animal const& value) {
    property::setOnlyReference<&AnimalIntf::getMother, &AnimalIntf::setMother>(
        this, deviant, value, sIntrospectiveMethods, MotherId);
}
Sequence<Animal> AnimalIntf::getChildren(Deviant deviant) {
    return property::elementsWithOwner<Animal>(
        this, deviant, sIntrospectiveMethods, ChildrenId, sIntrospectiveMethods, MotherId);
}
Sequence<Animal> AnimalIntf::getChildrenWithoutAssociation(Deviant deviant) {
    return property::elements<Animal>(this, deviant, sIntrospectiveMethods, ChildrenId);
}
Sequence<QOB::String> AnimalIntf::getSounds(Deviant deviant) {
    return property::elements<QOB::String>(this, deviant, sIntrospectiveMethods, SoundsId);
}
QOB::Integer AnimalIntf::getLegs(Deviant deviant) const {
    return double(getWeight(deviant)) < 5 ? 2 : 4;
}

QOB::ImmutableClass HenIntf::getMetaClass(Deviant) const {
    return QOB::metaClassOf(sIntrospectiveMethods);
}
Sequence<QOB::Integer> HenIntf::getEggs(Deviant deviant) {
    return property::elements<QOB::Integer>(this, deviant, sIntrospectiveMethods, EggsId);
}
bool HenIntf::hasPartner(Deviant deviant) const {
    return getPartner(deviant).isValid();
}
void HenIntf::removePartner(Deviant deviant) {
    property::removeOnlyReference<&HenIntf::getPartner, &HenIntf::setPartner>(
        this, deviant, sIntrospectiveMethods, PartnerId);
}
void HenIntf::setPartner(Deviant deviant, Animal const& value) {
    property::setReference<&HenIntf::getPartner, &HenIntf::setPartner, &HenIntf::removePartner>(
        this, deviant, value, sIntrospectiveMethods, PartnerId);
}
Animal HenIntf::getPartner(Deviant deviant) const {
    return property::get<&HenIntf::getPartner>(this, deviant);
}

} // namespace NSInterface

namespace {

struct AnimalFields : QOB::ClassObjectFields {
    QOB::Real weight = 1;
    QOB::CountedPointer<AnimalIntf> mate;
    QOB::CountedPointer<AnimalIntf> mother;
    QOB::MultiIndexImpl<Animal> children;
    QOB::ListQImpl<QOB::String> sounds;
};

template <class Leaf, class Intf>
class AnimalState : public QOB::ClassObjectState<Leaf, Intf> {
public:
    void setWeight(Deviant, QOB::Real const& value) override { fields().weight = value; }
    QOB::Real getWeight(Deviant) const override { return fields().weight; }
    void setMate(Deviant, Animal const& value) override {
        fields().mate = QOB::CountedPointer(value.get());
    }
    Animal getMate(Deviant deviant) const override { return {fields().mate.get(), deviant}; }
    void setMother(Deviant, Animal const& value) override {
        fields().mother = QOB::CountedPointer(value.get());
    }
    Animal getMother(Deviant deviant) const override { return {fields().mother.get(), deviant}; }
    Sequence<Animal> getChildren(Deviant deviant) override { return {&fields().children, deviant}; }
    Sequence<Animal> getChildrenWithoutAssociation(Deviant deviant) override {
        return {&fields().children, deviant};
    }
    Sequence<QOB::String> getSounds(Deviant deviant) override {
        return {&fields().sounds, deviant};
    }

private:
    AnimalFields& fields() { return static_cast<Leaf*>(this)->fields_; }
    AnimalFields const& fields() const { return static_cast<Leaf const*>(this)->fields_; }
};

class AnimalDeviantImpl final : public AnimalState<AnimalDeviantImpl, AnimalIntf> {
public:
    AnimalFields fields_;
};

class HenDeviantImpl final : public AnimalState<HenDeviantImpl, HenIntf> {
public:
    struct Fields : AnimalFields {
        QOB::ListQImpl<QOB::Integer> eggs;
        QOB::CountedPointer<AnimalIntf> partner;
    };

    Sequence<QOB::Integer> getEggs(Deviant deviant) override { return {&fields_.eggs, deviant}; }
    void setPartner(Deviant, Animal const& value) override {
        fields_.partner = QOB::CountedPointer(value.get());
    }
    Animal getPartner(Deviant deviant) const override { return {fields_.partner.get(), deviant}; }

    Fields fields_;
};

/// The pairs up to the animal.
template <class Intf, class State>
class AnimalRoot : public QOB::RootObject<Intf, State> {
    using ObjectIntf = QOB::NSInterface::ObjectIntf;
    using ClassObjectIntf = QOB::NSInterface::ClassObjectIntf;

public:
    using Intf::getReadDeviantI;
    using Intf::getWriteDeviantI;
    ObjectIntf* getReadDeviantI(Deviant deviant, ObjectIntf const*) const override {
        return this->readState(deviant);
    }
    ObjectIntf* getWriteDeviantI(Deviant deviant, ObjectIntf const*) const override {
        return this->writeState(deviant);
    }
    ClassObjectIntf* getReadDeviantI(Deviant deviant, ClassObjectIntf const*) const override {
        return this->readState(deviant);
    }
    ClassObjectIntf* getWriteDeviantI(Deviant deviant, ClassObjectIntf const*) const override {
        return this->writeState(deviant);
    }
    AnimalIntf* getReadDeviantI(Deviant deviant, AnimalIntf const*) const override {
        return this->readState(deviant);
    }
    AnimalIntf* getWriteDeviantI(Deviant deviant, AnimalIntf const*) const override {
        return this->writeState(deviant);
    }
};

class AnimalImpl final : public AnimalRoot<AnimalIntf, AnimalDeviantImpl> {
public:
    char const* getLumvoName(bool immutable) const override {
        return immutable ? "sample.ImmutableAnimal" : "sample.Animal";
    }
};

class HenImpl final : public AnimalRoot<HenIntf, HenDeviantImpl> {
public:
    char const* getLumvoName(bool immutable) const override {
        return immutable ? "sample.ImmutableHen" : "sample.Hen";
    }
    using AnimalRoot::getReadDeviantI;
    using AnimalRoot::getWriteDeviantI;
    HenIntf* getReadDeviantI(Deviant deviant, HenIntf const*) const override {
        return readState(deviant);
    }
    HenIntf* getWriteDeviantI(Deviant deviant, HenIntf const*) const override {
        return writeState(deviant);
    }
};

} // namespace

Animal Animal::create(QOB::Model const& model) {
    return QOB::createObject<Animal, AnimalImpl>(model, [](Animal const&) {});
}
Hen Hen::create(QOB::Model const& model) {
    return QOB::createObject<Hen, HenImpl>(model, [](Hen const&) {});
}

} // namespace sample
