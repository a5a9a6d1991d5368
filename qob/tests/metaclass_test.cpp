#include "farm.h"
#include "fixture.h"
#include "qob/qob/compare.h"
#include "qob/qob/domainregistry.h"
#include "qob/qob/initialize.h"
#include "qob/qob/objecttext.h"
#include "qob/qob/tags.h"
#include "qob/qob/typeinforegistry.h"
#include "support/names.h"

#include <sstream>
#include <string>

using QOB::Class;
using QOB::Deviant;
using QOB::ImmutableClass;
using QOB::ImmutableProperty;
using QOB::Property;
using QOB::String;
using sample::Animal;
using sample::Hen;
using sample::NSInterface::HenIntf;
using VelumTest::namesOf;

namespace {

std::string text(String const& value) {
    return value.isValid() ? std::string(value) : "(none)";
}

/// All that a reader of a property sees of it, in one line.
std::string describe(ImmutableProperty const& property) {
    std::ostringstream line;
    line << (property.hasType() ? text(property.getType().getName()) : "(none)") << " "
         << int(property.getLower()) << ".." << int(property.getUpper())
         << (property.isReadOnly() ? " read-only" : "") << (property.isDerived() ? " derived" : "")
         << (property.isComposite() ? " composite" : "") << (property.isOrdered() ? " ordered" : "")
         << (property.isUnique() ? " unique" : "") << (property.isMultiValued() ? " many" : "")
         << (property.isPrivate() == true ? " private" : "") << " default '"
         << text(property.getDefaultValue()) << "' about " << text(property.getDocumentation())
         << " opposite "
         << (property.hasOpposite() ? text(property.getOpposite().getName()) : "(none)") << " in "
         << text(property.getAssociationName()) << " other end " << text(property.getOtherEndName())
         << " redefines [" << namesOf(property.getRedefinedProperties()) << "] subsets ["
         << namesOf(property.getSubsettedProperties()) << "]";
    return line.str();
}

/// The live classes of the samples.
class MetaClasses : public ThingModel {
protected:
    MetaClasses() {
        farm.create();
        animal = Class(farm.animal, farm.package.getDeviant());
        hen = Class(farm.hen, farm.package.getDeviant());
    }
    void TearDown() override {
        if (farm.animal != nullptr) {
            farm.destroy();
        }
        ThingModel::TearDown();
    }

    sample::Farm farm;
    Class animal;
    Class hen;
};

} // namespace

TEST_F(MetaClasses, AWalkFindsEverythingThatTheTablesSay) {
    EXPECT_EQ(namesOf(farm.package.getOwnedTypes()), "Animal Hen");
    EXPECT_EQ(animal.isAbstract(), true);
    EXPECT_EQ(hen.isAbstract(), false);
    EXPECT_EQ(animal.getComments().size(), 2);
    EXPECT_EQ(animal.getComments().at(1), String("It sleeps."));
    EXPECT_TRUE(hen.getComments().empty());
    EXPECT_EQ(namesOf(hen.getSupers()), "Animal");
    EXPECT_EQ(namesOf(animal.getSupers()), "ClassObject");
    EXPECT_EQ(namesOf(animal.getOwnedAttributes()), "weight mate mother children sounds legs");
    EXPECT_EQ(namesOf(hen.getOwnedAttributes()), "eggs partner");

    auto const ofAnimal = ImmutableClass(animal).getOwnedAttributes();
    EXPECT_EQ(describe(ofAnimal.at(0)),
              "Real 1..1 unique private default '1' about In kilograms. opposite (none) in (none) "
              "other end (none) redefines [] subsets []");
    EXPECT_EQ(describe(ofAnimal.at(1)),
              "Animal 0..1 unique default '' about (none) opposite (none) in  other end mateOf "
              "redefines [] subsets []");
    EXPECT_EQ(describe(ofAnimal.at(2)),
              "Animal 0..1 unique default '' about (none) opposite children in A_mother_children "
              "other end (none) redefines [] subsets [ContainerQOB]");
    EXPECT_EQ(describe(ofAnimal.at(3)),
              "Animal 0..-1 ordered unique many default '' about (none) opposite mother in "
              "A_mother_children other end (none) redefines [] subsets []");
    EXPECT_EQ(describe(ofAnimal.at(5)),
              "Integer 1..1 read-only derived unique default '' about (none) opposite (none) in "
              "(none) other end (none) redefines [] subsets []");
    EXPECT_EQ(describe(hen.getOwnedAttributes().at(1)),
              "Animal 0..1 composite unique default '' about (none) opposite (none) in  other end "
              "(none) redefines [mate] subsets []");
}

TEST_F(MetaClasses, RecordsAndLiveElementsLeadToEachOther) {
    QOB::IntrospectiveMethods const& record = HenIntf::sIntrospectiveMethods;
    EXPECT_EQ(record.meta, farm.hen);
    Property const eggs(record.properties[HenIntf::EggsId]->meta, hen.getDeviant());
    EXPECT_EQ(eggs, hen.getOwnedAttributes().at(0));
    EXPECT_EQ(eggs.getOwningClass(), hen);
    EXPECT_EQ(eggs->internal_binding(), (QOB::PropertyBinding{&record, HenIntf::EggsId}));
    EXPECT_EQ(hen->internal_binding().methods, &record);

    Hen const object = Hen::create(model);
    EXPECT_EQ(object.getMetaClass(), hen);
    EXPECT_EQ(object.getMetaType(), QOB::ImmutableType(hen));
    EXPECT_EQ(Animal::create(model).getMetaClass(), animal);
    EXPECT_EQ(model.getMetaClass().getName(), String("Model"));
}

TEST_F(MetaClasses, TagsAreFoundByNameAndAppliedOnce) {
    EXPECT_TRUE(QOB::hasTag("qob_metaclass", hen));
    EXPECT_FALSE(QOB::hasTag("qob_hide_in_lumvo", hen));
    EXPECT_TRUE(QOB::hasTag("qob_hide_in_lumvo", hen.getOwnedAttributes().at(0)));
    EXPECT_FALSE(QOB::hasTag("qob_metaclass", QOB::ImmutableNamedElement()));
    EXPECT_EQ(QOB::getTagValue("qob_metamodel", farm.package), String("sample"));
    EXPECT_FALSE(QOB::getTagValue("qob_metaclass", hen).isValid());

    EXPECT_EQ(QOB::applyTagToMetaElement("qob_metaclass", hen).getContainerQOB(),
              QOB::ClassObject(hen));
    QOB::applyTagToMetaElement("qob_factory", hen);
    auto const tags = QOB::getTags(hen);
    ASSERT_EQ(tags.size(), 2);
    EXPECT_EQ(tags.at(0).getStereotypeName(), String("qob_metaclass"));
    EXPECT_EQ(tags.at(1).getStereotypeName(), String("qob_factory"));
    EXPECT_EQ(messageOf([&] { QOB::applyTagToMetaElement("x", QOB::ImmutableNamedElement()); }),
              "Cannot access NULL ref. Use isValid() before calling methods");
}

TEST_F(MetaClasses, DestructionClearsAllPointersAndCreationMakesThemAnew) {
    Property const eggs = hen.getOwnedAttributes().at(0);
    farm.destroy();
    EXPECT_EQ(HenIntf::sIntrospectiveMethods.meta, nullptr);
    EXPECT_EQ(HenIntf::sIntrospectiveMethods.properties[HenIntf::EggsId]->meta, nullptr);
    EXPECT_FALSE(eggs.isValid());
    EXPECT_FALSE(hen.isValid());
    EXPECT_FALSE(Hen::create(model).getMetaClass().isValid());

    farm.create();
    EXPECT_NE(Class(farm.hen, hen.getDeviant()), hen);
    EXPECT_EQ(describe(Class(farm.hen, hen.getDeviant()).getOwnedAttributes().at(1)),
              "Animal 0..1 composite unique default '' about (none) opposite (none) in  other end "
              "(none) redefines [mate] subsets []");
}

TEST_F(MetaClasses, ASecondCreationOrUpdateChangesNothing) {
    QOB::Factory const factory = QOB::DomainRegistry::instance()->getMetaRegistryFactory();
    int const before = QOB::DomainRegistry::instance()->getMetaRegistry().getRootObjects().size();
    QOB::MetaClassDescription const description{
        .name = "Hen", .methods = &HenIntf::sIntrospectiveMethods, .propertyCount = 2};
    QOB::createMetaClass(farm.hen, description, factory, farm.package);
    bool updated = true;
    QOB::updateMetaClass(updated, farm.hen, description, factory);
    EXPECT_EQ(QOB::DomainRegistry::instance()->getMetaRegistry().getRootObjects().size(), before);
    EXPECT_EQ(namesOf(hen.getSupers()), "Animal");
}

TEST_F(MetaClasses, APropertyBelongsToItsClass) {
    Property const weight = animal.getOwnedAttributes().at(0);
    EXPECT_EQ(messageOf([&] { weight.setContainerQOB(farm.package); }),
              "The container of a property is a class.");
    Deviant const branch = QOB::DomainRegistry::instance()->getMetaRegistry().createDeviant();
    Property const there(weight.get(), branch);
    there.setOwningClass(Class(farm.hen, branch));
    there.setDefaultValue("2");
    there.removeType();
    EXPECT_EQ(namesOf(Class(farm.hen, branch).getOwnedAttributes()), "eggs partner weight");
    EXPECT_EQ(weight.getOwningClass(), animal);
    EXPECT_EQ(weight.getDefaultValue(), String("1"));
    EXPECT_TRUE(weight.hasType());
    QOB::DomainRegistry::instance()->getMetaRegistry().removeDeviant(branch);
}

TEST(KernelPackage, HoldsWhatMetamodelsReferTo) {
    QOB::initialize();
    QOB::PackageIntrospectiveMethods const& table = *QOB::get_QOB_PackageIntrospectiveMethods();
    EXPECT_EQ(table.classes[0], nullptr);
    EXPECT_EQ(table.classes[table.count - 1], nullptr);
    auto const nameAt = [&](unsigned index) {
        QOB::NSInterface::TypeIntf* const meta = table.classes[index]->meta;
        return text(meta->getName(meta->getRootDeviant()));
    };
    EXPECT_EQ(nameAt(13), "ClassObject");
    EXPECT_EQ(nameAt(19), "FactoryObject");
    EXPECT_EQ(nameAt(23), "Boolean");
    EXPECT_EQ(nameAt(24), "String");
    EXPECT_EQ(nameAt(27), "Real");
    EXPECT_EQ(nameAt(28), "Integer");
    EXPECT_EQ(QOB::Object(QOB::Boolean(true))->getMetaType({}).getName(), String("Boolean"));

    Class const object(QOB::castObject<QOB::NSInterface::ClassIntf>(table.classes[13]->meta),
                       table.classes[13]->meta->getRootDeviant());
    EXPECT_EQ(describe(object.getOwnedAttributes().at(2)),
              "ClassObject 0..1 unique default '' about (none) opposite ContaineeQOB in  other end "
              "(none) redefines [] subsets []");
    EXPECT_EQ(object.getPackage().getName(), String("QOB"));
}

TEST(KernelPackage, DescribesTheClassesOfLiveElements) {
    QOB::initialize();
    ImmutableClass const live = Class::MetaClass();
    EXPECT_EQ(String(live.getOne("Name")), String("Class"));
    EXPECT_EQ(live.getMetaClass(), live) << "a class is an object of itself";
    EXPECT_EQ(namesOf(live.getSupers()), "Type");
    EXPECT_EQ(namesOf(live.getOwnedAttributes()), "isAbstract comment super ownedAttribute");
    EXPECT_EQ(live.getOwnedAttributes().at(3).getMetaClass(), Property::MetaClass());
    EXPECT_TRUE(QOB::hasTag("qob_metaclass", live));
    EXPECT_TRUE(QOB::hasTag("qob_factory", QOB::Factory::MetaClass()));
    EXPECT_EQ(describe(Property::MetaClass().getOwnedAttributes().at(0)),
              "Class 0..1 unique default '' about The class that declares the property. opposite "
              "ownedAttribute in  other end (none) redefines [] subsets [ContainerQOB]");
    EXPECT_EQ(describe(QOB::Package::MetaClass().getOwnedAttributes().at(0)),
              "String 0..1 unique default '' about The URI that the package was given; it doesn't "
              "follow from the model's. opposite (none) in (none) other end (none) redefines [Uri] "
              "subsets []");
}

/// Everything in the meta-registry is reached by name, printed and compared like other objects.
TEST(KernelPackage, EveryLiveElementIsAnObjectLikeOthers) {
    QOB::initialize();
    int count = 0;
    for (QOB::ClassObject const& each :
         QOB::DomainRegistry::instance()->getMetaRegistry().getRootObjects()) {
        ImmutableClass const meta = each.getMetaClass();
        ASSERT_TRUE(meta.isValid()) << each.getLumvoName(false);
        EXPECT_EQ("QOB." + std::string(meta.getName()), each.getLumvoName(false));
        if (QOB::NamedElement const element(each); element.isValid()) {
            EXPECT_EQ(String(each.getOne("Name")), element.getName());
        }
        if (Class const described(each); described.isValid()) {
            std::ostringstream text;
            QOB::print(text, each);
            EXPECT_EQ(text.str().find("Class #"), 0U) << text.str();
            EXPECT_TRUE(QOB::compare(each, each).empty());
            EXPECT_EQ(each.get("ownedAttribute").size(), described.getOwnedAttributes().size());
        }
        ++count;
    }
    EXPECT_GT(count, 60);
}
