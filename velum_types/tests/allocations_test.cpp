#include "qob/qob/compare.h"
#include "qob/qob/transaction.h"
#include "support/allocation_count.h"
#include "velum_types/tests/support/described.h"
#include "velum_types/types.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <iostream>
#include <string>
#include <vector>

namespace types = Zorvane::metamodel::types;

using QOB::ClassObject;
using QOB::Deviant;
using QOB::Object;
using VelumTest::allocationCount;
using VelumTest::ConcreteClass;
using VelumTest::Property;
using VelumTest::World;

namespace {

/// Reads a property and writes what it holds: by number, as a generic tool does, which boxes what
/// is read and is not a reference, with one allocation at most.
void expectNone(ClassObject const& object, Property const& property) {
    Object const held = property.get(object);
    bool const canBeWritten = held.get() != nullptr;
    std::size_t before = allocationCount();
    property.isThere(object);
    EXPECT_EQ(allocationCount(), before) << "has";
    {
        Object const read = property.get(object);
        EXPECT_LE(allocationCount() - before, property.isReference() ? 0U : 1U) << "get";
    }
    before = allocationCount();
    if (canBeWritten) {
        property.set(object, held);
    } else {
        property.remove(object);
    }
    EXPECT_EQ(allocationCount(), before) << "set to what it is";
}

TEST(Allocations, ReadsAndWritesThatChangeNothingAllocateNothing) {
    for (ConcreteClass const& of : VelumTest::allClasses()) {
        World world;
        ClassObject const full = world.createFull(of);
        ClassObject const bare = world.create(of);
        Deviant const without = world.model.createDeviant();
        Deviant const with = world.model.createDeviant();
        for (ClassObject const& object : {full, bare}) {
            object->setExternalId(with, "here"); // makes a state
            for (Deviant const deviant : {world.root, without, with}) {
                for (Property const& property : VelumTest::propertiesOf(of.methods)) {
                    if (property.isDerived() || property.isMany()) {
                        continue;
                    }
                    std::string place = of.name;
                    place.append(".").append(property.description->name);
                    SCOPED_TRACE(place);
                    // The first time makes the tables of the classes.
                    property.get(ClassObject(object.get(), deviant));
                    expectNone(ClassObject(object.get(), deviant), property);
                }
            }
        }
    }
}

/// What creating an object takes on average, in a model that grows from nothing. The objects
/// themselves lie in blocks of many.
struct Cost {
    double allocations;
    double bytes;
};

template <class Create>
Cost costOf(Create const& create) {
    constexpr int count = 16'384;
    QOB::Model const model = types::NSInterface::FactoryIntf::createNewModel();
    create(model); // makes the tables of the class
    std::size_t const allocations = allocationCount();
    std::size_t const bytes = VelumTest::allocatedBytes();
    for (int i = 0; i < count; ++i) {
        create(model);
    }
    Cost const cost{static_cast<double>(allocationCount() - allocations) / count,
                    static_cast<double>(VelumTest::allocatedBytes() - bytes) / count};
    model.destroy();
    return cost;
}

/// Instrumented code keeps what the optimizer takes away: allocations that are given back at once.
/// Debug builds check lists in memory of their own.
#if !defined(NDEBUG) || defined(__SANITIZE_ADDRESS__)
constexpr bool isInstrumented = true;
#elif defined(__has_feature)
constexpr bool isInstrumented = __has_feature(address_sanitizer);
#else
constexpr bool isInstrumented = false;
#endif

TEST(Allocations, CreatingANamedIntegerTakesFew) {
    if (isInstrumented) {
        GTEST_SKIP() << "counted in optimized builds";
    }
    Cost const cost =
        costOf([](QOB::Model const& model) { types::Integer::create(model, "a name of its own"); });
    std::cout << "Integer::create(model, name): " << cost.allocations << " allocations, "
              << cost.bytes << " bytes\n";
    EXPECT_LE(cost.allocations, 0.1) << "short texts lie in blocks, too";
    EXPECT_LE(cost.bytes, 400.0);
}

// A block of objects or states, and now and then the model's tables.
TEST(Allocations, CreatingAnObjectOfAnyClassTakesHardlyAny) {
    if (isInstrumented) {
        GTEST_SKIP() << "counted in optimized builds";
    }
    for (ConcreteClass const& of : VelumTest::allClasses()) {
        Cost const cost = costOf([&](QOB::Model const& model) { of.create(model); });
        std::cout << of.name << ": " << cost.allocations << " allocations, " << cost.bytes
                  << " bytes\n";
        EXPECT_LE(cost.allocations, 0.1) << of.name;
        EXPECT_LE(cost.bytes, 420.0) << of.name;
    }
}

/// A model with integers, whose first ones are in the lists of two methods.
class Integers {
public:
    static constexpr std::size_t Count = 4096;

    Integers()
        : model(types::NSInterface::FactoryIntf::createNewModel()),
          methods{types::CompuMethod::create(model, "%d", "first"),
                  types::CompuMethod::create(model, "%d", "second")} {
        for (std::size_t i = 0; i != Count; ++i) {
            all.push_back(types::Integer::create(model));
            if (i < 100) {
                all[i].setCompuMethod(methods[i % 2]);
            }
        }
    }
    Integers(Integers const&) = delete;
    Integers& operator=(Integers const&) = delete;
    ~Integers() { model.destroy(); }

    QOB::Model model;
    types::CompuMethod methods[2];
    std::vector<types::Integer> all;
};

TEST(Allocations, FirstWriteOfAnObjectInATransactionTakesHardlyAny) {
    if (isInstrumented) {
        GTEST_SKIP() << "counted in optimized builds";
    }
    Integers const integers;
    for (bool const undo : {false, true}) {
        integers.model.setUndoEnabled(undo);
        std::size_t const before = allocationCount();
        QOB::Transaction transaction(integers.model);
        for (types::Integer const& each : integers.all) {
            each.setIsSigned(undo);
        }
        transaction.commit();
        EXPECT_LE(allocationCount() - before, Integers::Count / 10) << undo;
    }
}

TEST(Allocations, MovesBetweenListsTakeNone) {
    if (isInstrumented) {
        GTEST_SKIP() << "counted in optimized builds";
    }
    Integers const integers;
    auto const move = [&](std::size_t i) {
        integers.all[i].setCompuMethod(integers.methods[(i + 1) % 2]);
        integers.all[i].setCompuMethod(integers.methods[i % 2]);
    };
    move(0); // the lists grow
    move(1);
    std::size_t const before = allocationCount();
    for (std::size_t i = 0; i != 100; ++i) {
        move(i);
    }
    EXPECT_EQ(allocationCount(), before);
}

/// What a comparison of two equal models takes in which a list has so many values.
std::size_t costOfComparing(int length) {
    std::vector<QOB::Model> models;
    for (int i = 0; i != 2; ++i) {
        QOB::Model const model = types::NSInterface::FactoryIntf::createNewModel();
        auto const matrix = types::Matrix::create(model, types::Boolean::create(model), "Samples");
        for (int each = 0; each != length; ++each) {
            matrix.getDimensionses().push_back(each);
        }
        models.push_back(model);
    }
    std::size_t const before = allocationCount();
    EXPECT_TRUE(QOB::compare(models[0], models[1]).empty());
    std::size_t const taken = allocationCount() - before;
    for (QOB::Model const& model : models) {
        model.destroy();
    }
    return taken;
}

TEST(Allocations, ComparingTakesNoMoreForLongerLists) {
    costOfComparing(1); // makes the tables of the classes
    EXPECT_EQ(costOfComparing(1000), costOfComparing(1));
}

TEST(Allocations, NumbersReadOneByOneTakeNoneAfterTheFirst) {
    Integers const integers;
    for (types::Integer const& each : integers.all) {
        each.setMinValue(1.5);
    }
    constexpr unsigned minimumId = 1;
    auto const read = [&](types::Integer const& each) {
        return types::NSInterface::RealIntf::sIntrospectiveMethods.getSingleValued(
            Object(each).get(), each.getDeviant(), minimumId);
    };
    EXPECT_EQ(read(integers.all[0]).toString(), "1.5");
    std::size_t const before = allocationCount();
    for (types::Integer const& each : integers.all) {
        EXPECT_TRUE(read(each).isValid());
    }
    EXPECT_EQ(allocationCount(), before);
}

} // namespace
