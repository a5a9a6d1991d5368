#include "qob/qob.h"
#include "zoo/parkzoo.h"

#include <gtest/gtest.h>

using Park::zoo::Animal;
using Park::zoo::Bird;
using Park::zoo::Food;
using Park::zoo::Portion;

// What the zoo's library would write by hand.

Tessel::ModuleObjectDeleter& Park::VisitationDomain::moduleObjects() {
    static Tessel::ModuleObjectDeleter deleter;
    return deleter;
}

QOB::String Park::zoo::NSInterface::BirdIntf::sing(QOB::Deviant deviant, QOB::Integer times) const {
    std::string song;
    for (int i = 0; i < times; ++i) {
        song += std::string(getName(deviant)) + "!";
    }
    return song;
}

namespace {

/// Runs the generated code of small invented classes on the real kernel.
class ZooTest : public testing::Test {
protected:
    ZooTest() : model(QOB::NSInterface::FactoryIntf::createNewModel()) {}
    ~ZooTest() override { model.destroy(); }

    QOB::Model model;
};

TEST_F(ZooTest, NewObjectHasTheDefaultsOfItsModel) {
    Bird const bird = Bird::create(model);
    EXPECT_EQ(bird.getName(), "no \"name\"");
    EXPECT_EQ(bird.isTame(), false);
    EXPECT_EQ(bird.getWings(), 2);
    EXPECT_EQ(bird.getFood(), Food::seeds);
    EXPECT_EQ(bird.getPortion(), (Portion{20, Food::fish}));
    EXPECT_FALSE(bird.hasAge());
    EXPECT_FALSE(bird.getAge().isValid());
    EXPECT_TRUE(bird.hasSupper()) << "a default is a value";
    EXPECT_EQ(bird.getSupper(), (Portion{10, Food::seeds}));
}

TEST_F(ZooTest, CreatorTakesWhatTheClassRequires) {
    Bird const bird = Bird::createWithId(model, 12, 3, "cuckoo");
    EXPECT_EQ(bird.getWings(), 3);
    EXPECT_EQ(bird.getName(), "cuckoo");
    EXPECT_EQ(bird->getObjectId(model.getDeviant()), 12);
    EXPECT_EQ(bird.sing(2), "cuckoo!cuckoo!") << "an operation that is written by hand";
}

TEST_F(ZooTest, InvalidValueRemovesAnOptionalPrimitive) {
    Bird const bird = Bird::create(model);
    bird.setAge(4);
    EXPECT_TRUE(bird.hasAge());
    EXPECT_EQ(bird.getAge(), 4);
    bird.setAge(QOB::Integer());
    EXPECT_FALSE(bird.hasAge());
    EXPECT_FALSE(bird.getAge().isValid());
}

TEST_F(ZooTest, RemovalOfAnOptionalValueBringsBackItsDefault) {
    Bird const bird = Bird::create(model);
    bird.setSupper({7, Food::fish});
    bird.removeSupper();
    EXPECT_FALSE(bird.hasSupper());
    EXPECT_EQ(bird.getSupper(), (Portion{10, Food::seeds}));
    bird.setSupper({10, Food::seeds});
    EXPECT_TRUE(bird.hasSupper()) << "the default's value is a value once it is set";
    bird.removeOnlySupper();
    EXPECT_FALSE(bird.hasSupper());
    bird.setOnlySupper({1, Food::fish});
    EXPECT_TRUE(bird.hasSupper());
    EXPECT_EQ(bird.getSupper(), (Portion{1, Food::fish}));
}

TEST_F(ZooTest, SetThatChangesNothingMakesNoState) {
    Bird const bird = Bird::create(model);
    bird.setAge(4);
    QOB::Deviant const branch = model.createDeviant();
    Bird const inBranch(bird.get(), branch);
    inBranch.setAge(4);
    inBranch.setSupper({10, Food::seeds});
    inBranch.setOnlySupper({10, Food::seeds});
    inBranch.setPortion({20, Food::fish});
    inBranch.setOnlyPortion({20, Food::fish});
    inBranch.setFood(Food::seeds);
    inBranch.removeFood();
    EXPECT_EQ(bird->internal_getDeviation(branch), nullptr);
    inBranch.setFood(Food::fish);
    EXPECT_NE(bird->internal_getDeviation(branch), nullptr);
    EXPECT_EQ(bird.getFood(), Food::seeds);
}

TEST_F(ZooTest, MergeBringsValuesAndRemovals) {
    Bird const bird = Bird::create(model);
    bird.setAge(4);
    QOB::Deviant const branch = model.createDeviant();
    Bird const inBranch(bird.get(), branch);
    inBranch.setAge(QOB::Integer());
    inBranch.setSupper({3, Food::fish});
    inBranch.setFood(Food::fish);
    inBranch.setIsTame(true);
    model.mergeDeviant(branch);
    EXPECT_FALSE(bird.hasAge());
    EXPECT_EQ(bird.getSupper(), (Portion{3, Food::fish}));
    EXPECT_EQ(bird.getFood(), Food::fish);
    EXPECT_EQ(bird.isTame(), true);
}

TEST_F(ZooTest, HandleOfTheBaseSeesTheSameObject) {
    Bird const bird = Bird::create(model, 2, "wren");
    Animal const animal = bird;
    animal.setName("robin");
    EXPECT_EQ(bird.getName(), "robin");
    EXPECT_EQ(Bird(animal), bird);
    EXPECT_FALSE(Animal(QOB::ClassObject(model)).isValid());
}

} // namespace
