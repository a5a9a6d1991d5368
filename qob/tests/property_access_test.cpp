#include "farm.h"
#include "fixture.h"
#include "qob/qob/stereotypeobject.h"
#include "support/allocation_count.h"

#include <string>

using QOB::ClassObject;
using QOB::ImmutableProperty;
using QOB::Integer;
using QOB::Object;
using QOB::Real;
using QOB::String;
using sample::Animal;
using sample::Hen;
using sample::NSInterface::AnimalIntf;
using sample::NSInterface::HenIntf;

namespace {

/// A hen and an animal whose classes are live.
class PropertyAccess : public ThingModel {
protected:
    PropertyAccess() {
        farm.create();
        hen = Hen::create(model);
        animal = Animal::create(model);
    }
    void TearDown() override {
        farm.destroy();
        ThingModel::TearDown();
    }

    /// A property of one of the two classes, as a tool gets hold of it.
    static ImmutableProperty property(QOB::IntrospectiveMethods const& record, unsigned id) {
        auto const* const meta = record.properties[id]->meta;
        return {meta, meta->getRootDeviant()};
    }

    sample::Farm farm;
    Hen hen;
    Animal animal;
};

} // namespace

TEST_F(PropertyAccess, SingleValuesAreReachedByElementAndByName) {
    ImmutableProperty const weight =
        property(AnimalIntf::sIntrospectiveMethods, AnimalIntf::WeightId);
    hen.setOrAdd("weight", Real(3));
    EXPECT_EQ(Real(hen.getOne(weight)), Real(3));
    hen.setOrAdd(weight, Real(4));
    EXPECT_EQ(Real(hen.getOne("weight")), Real(4));
    EXPECT_EQ(hen->getWeight(model.getDeviant()), Real(4));
    EXPECT_TRUE(hen.has(weight));
    hen.remove("weight");
    EXPECT_EQ(Real(hen.getOne("weight")), Real(4)) << "a mandatory value stays";
    EXPECT_EQ(Integer(hen.getOne("legs")), 2);

    animal.setOrAdd("mate", hen);
    EXPECT_EQ(Animal(animal.getOne("mate")), Animal(hen));
    EXPECT_EQ(animal.get("mate").size(), 1);
    EXPECT_EQ(animal.get("mate").at(0), Object(hen));
    animal.remove("mate", animal);
    EXPECT_TRUE(animal.has("mate")) << "another value than the one to be removed";
    animal.remove("mate", hen);
    EXPECT_FALSE(animal.has("mate"));
    EXPECT_EQ(animal.getOne("mate").get(), nullptr);
    EXPECT_TRUE(animal.get("mate").empty());
    animal.setOrAdd("mate", hen);
    animal.setOrAdd("mate", Object());
    EXPECT_FALSE(animal.has("mate")) << "an empty value is a removal";
}

TEST_F(PropertyAccess, ManyValuesAreReachedByElementAndByName) {
    hen.setOrAdd("eggs", Integer(1));
    hen.setOrAdd(property(HenIntf::sIntrospectiveMethods, HenIntf::EggsId), Integer(2));
    hen.setOrAdd("eggs", Integer(1));
    auto const eggs = hen.get("eggs");
    ASSERT_EQ(eggs.size(), 3);
    EXPECT_EQ(Integer(eggs.at(1)), 2);
    EXPECT_TRUE(eggs.contains(Integer(2)));
    hen.remove("eggs", Integer(1));
    EXPECT_EQ(eggs.size(), 1) << "a view of the object";
    EXPECT_TRUE(hen.has("eggs"));
    hen.remove("eggs");
    EXPECT_FALSE(hen.has("eggs"));

    hen.setOrAdd("sounds", String("cluck"));
    EXPECT_EQ(hen->getSounds(model.getDeviant()).front(), String("cluck"));
    hen.setOrAdd("children", animal);
    EXPECT_EQ(hen.get("children").at(0), Object(animal));
    EXPECT_TRUE(hen.get("children").contains(animal));
    EXPECT_FALSE(hen.get("children").contains(Integer(1)));
}

TEST_F(PropertyAccess, OnlyFormsLeaveTheOtherEndAlone) {
    animal.setOrAdd("mother", hen);
    EXPECT_EQ(hen.get("children").size(), 1);
    animal.removeOneOnly("mother");
    EXPECT_EQ(hen.get("children").size(), 1);
    hen.removeOnly("children", animal);
    EXPECT_FALSE(hen.has("children"));

    animal.setOrAddOnly("mother", hen);
    EXPECT_FALSE(hen.has("children"));
    hen.setOrAddOnly("children", animal);
    animal.removeOne("mother");
    EXPECT_FALSE(hen.has("children"));
    hen.setOrAdd("children", animal);
    EXPECT_EQ(Animal(animal.getOne("mother")), Animal(hen));
    hen.remove("children", animal);
    EXPECT_FALSE(animal.has("mother"));
    hen.setOrAddOnly("weight", Real(9));
    EXPECT_EQ(Real(hen.getOne("weight")), Real(9)) << "a value has no other end";
}

TEST_F(PropertyAccess, ARedefinedPropertyIsReachedThroughTheOneInItsPlace) {
    ImmutableProperty const mate = property(AnimalIntf::sIntrospectiveMethods, AnimalIntf::MateId);
    hen.setOrAdd(mate, animal);
    EXPECT_TRUE(hen->hasPartner(model.getDeviant()));
    EXPECT_FALSE(hen->hasMate(model.getDeviant()));
    EXPECT_EQ(Animal(hen.getOne("mate")), animal);
    EXPECT_EQ(Animal(hen.getOne("partner")), animal);
    hen.removeOne(mate);
    EXPECT_FALSE(hen->hasPartner(model.getDeviant()));
    animal.setOrAdd(mate, hen);
    EXPECT_TRUE(animal->hasMate(model.getDeviant()));
}

TEST_F(PropertyAccess, WhatEveryObjectHasIsInherited) {
    hen.setOrAdd("ExternalId", String("outside"));
    EXPECT_EQ(hen.getExternalId(), String("outside"));
    EXPECT_EQ(QOB::Model(hen.getOne("ModelQOB")), model);
    QOB::StereotypeObject const wild = QOB::StereotypeObject::create(model, "wild");
    hen.setOrAdd("AppliedStereotypeInstance", wild);
    EXPECT_EQ(wild.getContainerQOB(), ClassObject(hen));
    EXPECT_EQ(hen.get("ContaineeQOB").size(), 1);
    wild.setOrAdd("ContainerQOB", animal);
    EXPECT_EQ(animal.get("ContaineeQOB").size(), 1);
    EXPECT_EQ(hen.get("ContaineeQOB").size(), 0);
    EXPECT_NE(messageOf([&] { animal.setOrAdd("ContainerQOB", hen); }).find("has no list"),
              std::string::npos);
    EXPECT_FALSE(animal.hasContainerQOB());
}

TEST_F(PropertyAccess, ActsInTheDeviantOfTheHandle) {
    QOB::Model const inBranch = branch();
    Hen const there(hen.get(), inBranch.getDeviant());
    there.setOrAdd("weight", Real(7));
    there.setOrAdd("eggs", Integer(5));
    EXPECT_EQ(Real(hen.getOne("weight")), Real(1));
    EXPECT_FALSE(hen.has("eggs"));
    EXPECT_EQ(Integer(there.get("eggs").at(0)), 5);
    EXPECT_EQ(Real(there.getOne("weight")), Real(7));
}

TEST_F(PropertyAccess, WhatCannotBeIsRefusedAndNothingChanges) {
    EXPECT_EQ(messageOf([&] { hen.getOne("feathers"); }),
              "The class (sample.Hen) has no property (feathers).");
    EXPECT_EQ(
        messageOf([&] { animal.get(property(HenIntf::sIntrospectiveMethods, HenIntf::EggsId)); }),
        "The class (sample.Animal) has no property (eggs).");
    EXPECT_EQ(messageOf([&] { hen.has(QOB::Property::create(model, "loose")); }),
              "The class (sample.Hen) has no property (loose).");
    EXPECT_EQ(messageOf([&] { hen.has(ImmutableProperty()); }),
              "Cannot access NULL ref. Use isValid() before calling methods");
    std::string const many = "The property (eggs) of the class (sample.Hen) has any number of "
                             "values; this operation is for one.";
    EXPECT_EQ(messageOf([&] { hen.getOne("eggs"); }), many);
    EXPECT_EQ(messageOf([&] { hen.removeOne("eggs"); }), many);
    std::string const derived = "The property (legs) of the class (sample.Hen) follows from others "
                                "and cannot be written.";
    EXPECT_EQ(messageOf([&] { hen.setOrAdd("legs", Integer(3)); }), derived);
    EXPECT_EQ(messageOf([&] { hen.remove("legs"); }), derived);
    EXPECT_EQ(messageOf([&] { hen.get("ExternalToolInfo"); }),
              "The values of the property (ExternalToolInfo) of the class (sample.Hen) are of no "
              "type that is known by itself.");
    EXPECT_EQ(messageOf([&] { sample::Thing::create(model)->getOne(model.getDeviant(), "x"); }),
              "The properties of an object (sample.Thing) cannot be reached: its class is not in "
              "the meta-registry.");
}

TEST_F(PropertyAccess, AValueOfAnotherTypeIsRefusedAndNothingChanges) {
    auto const refusal = [](char const* property, char const* type, char const* given) {
        std::string text = "The property (";
        text.append(property).append(") of the class (sample.Hen) takes values of type ");
        return text.append(type).append(", not what was given (").append(given).append(").");
    };
    hen.setOrAdd("mother", animal);
    hen.setOrAdd("eggs", Integer(1));
    sample::Thing const thing = sample::Thing::create(model);
    EXPECT_EQ(messageOf([&] { hen.setOrAdd("weight", Integer(3)); }),
              refusal("weight", "Real", "QOB.Integer"));
    EXPECT_EQ(messageOf([&] { hen.setOrAdd("weight", animal); }),
              refusal("weight", "Real", "sample.Animal"));
    EXPECT_EQ(messageOf([&] { hen.setOrAdd("mother", Real(3)); }),
              refusal("mother", "Animal", "QOB.Real"));
    EXPECT_EQ(messageOf([&] { hen.setOrAdd("mother", Object(thing.get(), {})); }),
              refusal("mother", "Animal", "sample.Thing"));
    EXPECT_EQ(messageOf([&] { hen.setOrAdd("children", Object()); }),
              refusal("children", "Animal", "nothing"));
    EXPECT_EQ(messageOf([&] { hen.setOrAdd("eggs", String("1")); }),
              refusal("eggs", "Integer", "QOB.String"));
    EXPECT_EQ(messageOf([&] { hen.setOrAdd("eggs", animal); }),
              refusal("eggs", "Integer", "sample.Animal"));
    EXPECT_EQ(messageOf([&] { hen.remove("eggs", String("1")); }),
              refusal("eggs", "Integer", "QOB.String"));
    EXPECT_EQ(messageOf([&] { hen.remove("weight", String("1")); }),
              refusal("weight", "Real", "QOB.String"));
    EXPECT_EQ(hen.get("eggs").size(), 1);
    EXPECT_EQ(Animal(hen.getOne("mother")), animal);
    EXPECT_EQ(Real(hen.getOne("weight")), Real(1));
}

TEST_F(PropertyAccess, AReadByNameAllocatesTheBoxOnly) {
    animal.setOrAdd("mate", hen);
    String const mate("mate");
    String const weight("weight");
    animal.getOne(mate);
    QOB::Object const held = animal.getOne(weight); // takes the memory that an earlier box has left
    std::size_t const start = VelumTest::allocationCount();
    animal.getOne(mate);
    EXPECT_EQ(VelumTest::allocationCount() - start, 0U);
    animal.getOne(weight);
    EXPECT_EQ(VelumTest::allocationCount() - start, 1U);
}

TEST_F(PropertyAccess, FollowsTheClassesThatThereAre) {
    EXPECT_TRUE(hen.has("weight"));
    farm.destroy();
    EXPECT_FALSE(hen.getMetaClass().isValid());
    EXPECT_NE(messageOf([&] { hen.has("weight"); }).find("is not in the meta-registry"),
              std::string::npos);
    farm.create();
    EXPECT_TRUE(hen.has("weight"));
}
