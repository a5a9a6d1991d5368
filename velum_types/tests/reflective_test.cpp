// The functions by which properties are reached by number, over every class of the package and
// every property. Which ids a function knows, and what it does, follows from the descriptions.

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/qob/assert.h"
#include "support/failure.h"
#include "velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundationintrospection.h"
#include "velum_types/tests/support/described.h"
#include "velum_types/types.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesintrospection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <exception>
#include <iterator>
#include <limits>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;

using QOB::ClassObject;
using QOB::Deviant;
using QOB::IntrospectiveMethods;
using QOB::Object;
using QOB::Sequence;
using QOB::Generic::SequenceRef;
using VelumTest::ConcreteClass;
using VelumTest::failureOf;
using VelumTest::isStoredSingle;
using VelumTest::messageOf;
using VelumTest::NoFailure;
using VelumTest::Property;
using VelumTest::show;
using VelumTest::World;

namespace {

using ObjectPointer = QOB::NSInterface::ObjectIntf*;

constexpr unsigned LargestId = std::numeric_limits<unsigned>::max();

bool isKernelValue(Property const& property) {
    return !property.isReference() &&
           property.description->package() == QOB::get_QOB_PackageIntrospectiveMethods();
}
bool isMany(Property const& property) {
    return property.isMany();
}
bool isStoredMany(Property const& property) {
    return property.isMany() && !property.isDerived();
}
bool isSingle(Property const& property) {
    return !property.isMany();
}
bool isSettable(Property const& property) {
    return isSingle(property) && !(property.isDerived() && property.has(QOB::PropertyReadOnly));
}
bool hasOnlyForms(Property const& property) {
    return isStoredSingle(property) && !isKernelValue(property);
}

/// One of the eight functions.
struct Function {
    char const* name;
    bool (*knows)(Property const&);
    char const* quietAnswer; ///< to an id it doesn't know; null if that is a failure
    std::string (*call)(IntrospectiveMethods const&, ObjectPointer, Deviant, unsigned id);
};

std::string answer(SequenceRef const& a, SequenceRef const& b) {
    return a.isNull() && b.isNull() ? "null" : "a sequence";
}

constexpr Function Functions[] = {
    {"getSingleValued",
     &isSingle,
     nullptr,
     [](auto const& methods, ObjectPointer object, Deviant deviant, unsigned id) {
         return show(methods.getSingleValued(object, deviant, id));
     }},
    {"hasSingleValued",
     &isStoredSingle,
     "false",
     [](auto const& methods, ObjectPointer object, Deviant deviant, unsigned id) {
         return std::string(methods.hasSingleValued(object, deviant, id) ? "true" : "false");
     }},
    {"setSingleValued",
     &isSettable,
     nullptr,
     [](auto const& methods, ObjectPointer object, Deviant deviant, unsigned id) {
         methods.setSingleValued(object, deviant, id, Object());
         return std::string();
     }},
    {"setOnlySingleValued",
     &hasOnlyForms,
     nullptr,
     [](auto const& methods, ObjectPointer object, Deviant deviant, unsigned id) {
         methods.setOnlySingleValued(object, deviant, id, Object());
         return std::string();
     }},
    {"removeSingleValued",
     &isStoredSingle,
     nullptr,
     [](auto const& methods, ObjectPointer object, Deviant deviant, unsigned id) {
         methods.removeSingleValued(object, deviant, id);
         return std::string();
     }},
    {"removeOnlySingleValued",
     &hasOnlyForms,
     nullptr,
     [](auto const& methods, ObjectPointer object, Deviant deviant, unsigned id) {
         methods.removeOnlySingleValued(object, deviant, id);
         return std::string();
     }},
    {"getMultiValued",
     &isMany,
     "null",
     [](auto const& methods, ObjectPointer object, Deviant deviant, unsigned id) {
         return answer(methods.getMultiValued(object, deviant, id, false),
                       methods.getMultiValued(object, deviant, id, true));
     }},
    {"getOnlyMultiValued",
     &isMany,
     "null",
     [](auto const& methods, ObjectPointer object, Deviant deviant, unsigned id) {
         return answer(methods.getOnlyMultiValued(object, deviant, id, false),
                       methods.getOnlyMultiValued(object, deviant, id, true));
     }},
};

/// A package, how its classes are named, and where their functions are.
struct DescribedPackage {
    QOB::PackageIntrospectiveMethods const* tables;
    char const* prefix;
    char const* place;
};

struct DescribedClass {
    std::string name; ///< dotted
    std::string place;
    unsigned properties;
    IntrospectiveMethods const* methods;

    Property property(unsigned id) const { return {methods, methods->properties[id]}; }
};

/// Where the failures of a class's functions are said to be.
std::string placeOf(DescribedPackage const& package, std::string const& name) {
    std::string place = std::string(" at ") + package.place;
    for (char const c : name) {
        place += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return place += "metaregistry.cpp:";
}

/// All of the three packages, abstract ones too, but for models, their factory and what every
/// object has.
std::vector<DescribedClass> allClasses() {
    types::initialize(); // fills the tables
    IntrospectiveMethods const* const leftOut[] = {
        &QOB::NSInterface::ClassObjectIntf::sIntrospectiveMethods,
        &QOB::NSInterface::ModelIntf::sIntrospectiveMethods,
        &QOB::NSInterface::FactoryIntf::sIntrospectiveMethods};
    std::vector<DescribedClass> found;
    for (DescribedPackage const& package :
         {DescribedPackage{
              types::get_types_PackageIntrospectiveMethods(),
              "Zorvane.metamodel.types.",
              "velum_types/zorvane/metamodel/types/nsmetaregistry/zorvanemetamodeltypes"},
          DescribedPackage{foundation::get_foundation_PackageIntrospectiveMethods(),
                           "Zorvane.metamodel.foundation.",
                           "foundation/src/velum_foundation/zorvane/metamodel/foundation/"
                           "nsmetaregistry/zorvanemetamodelfoundation"},
          DescribedPackage{QOB::get_QOB_PackageIntrospectiveMethods(),
                           "QOB.",
                           "qob/src/qob/qob/nsmetaregistry/"}}) {
        for (unsigned index = 1; index != package.tables->count; ++index) {
            IntrospectiveMethods const* const methods = package.tables->classes[index];
            if (methods == nullptr || methods->getSingleValued == nullptr ||
                std::count(std::begin(leftOut), std::end(leftOut), methods) != 0) {
                continue;
            }
            std::string const name =
                QOB::ImmutableType(methods->meta, methods->meta->getRootDeviant()).getName();
            found.push_back({package.prefix + name,
                             placeOf(package, name),
                             VelumTest::declaredBy(methods),
                             methods});
        }
    }
    EXPECT_EQ(found.size(), 58U);
    return found;
}

/// A class of which there can be objects: this one or one below it. Null for factories and models.
ConcreteClass const* concreteClassOf(IntrospectiveMethods const* methods) {
    for (ConcreteClass const& candidate : VelumTest::allClasses()) {
        if (VelumTest::isA(candidate.methods, methods)) {
            return &candidate;
        }
    }
    return nullptr;
}

ClassObject factoryIn(World const& world) {
    return types::Factory(types::NSInterface::FactoryIntf::createNewFactory(world.model),
                          world.root);
}

/// Calls the function with an id and holds it to what it must do.
void expectOutcome(DescribedClass const& of,
                   ClassObject const& object,
                   unsigned id,
                   Function const& function) {
    bool const isProperty = id != 0 && id <= of.properties;
    bool const isKnown = isProperty && function.knows(of.property(id));
    std::string illegal = of.name;
    illegal += "::";
    illegal += function.name;
    illegal += " on illegal property";
    std::string answer;
    auto const call = [&] {
        answer = function.call(*of.methods, object.get(), object.getDeviant(), id);
    };
    std::string const message = messageOf(call);
    if (isKnown) {
        EXPECT_EQ(message.find(" on illegal property"), std::string::npos) << message;
        EXPECT_NE(answer, "null");
    } else if (id != 0 && function.quietAnswer != nullptr) {
        EXPECT_EQ(message, NoFailure);
        EXPECT_EQ(answer, function.quietAnswer);
    } else {
        illegal += id == 0 ? "" : " with id " + std::to_string(static_cast<int>(id));
        EXPECT_EQ(message, illegal);
        EXPECT_STREQ(QOB::Asserter::fLogBuf, illegal.c_str());
        EXPECT_NE(failureOf(call).find(of.place), std::string::npos) << failureOf(call);
    }
}

TEST(Reflective, EachFunctionKnowsTheIdsThatFollowFromTheDescriptions) {
    int properties = 0;
    for (DescribedClass const& of : allClasses()) {
        World world;
        ConcreteClass const* const concrete = concreteClassOf(of.methods);
        ClassObject const object = concrete != nullptr ? world.create(*concrete) : factoryIn(world);
        std::vector<unsigned> ids = {of.properties + 1, LargestId};
        for (unsigned id = 0; id <= of.properties; ++id) {
            ids.push_back(id);
            properties += id != 0 ? 1 : 0;
        }
        for (unsigned const id : ids) {
            for (Function const& function : Functions) {
                SCOPED_TRACE(of.name + " " + function.name + " " + std::to_string(id));
                expectOutcome(of, object, id, function);
            }
        }
    }
    EXPECT_EQ(properties, 109 + 17 + 27);
}

TEST(Reflective, FunctionsTakeObjectsOfTheirClassAndBelowAndNoOthers) {
    World world;
    struct Candidate {
        std::string name;
        Object object;
        IntrospectiveMethods const* methods;
    };
    std::vector<Candidate> candidates = {
        {"nothing", Object(), nullptr},
        {"a box", QOB::Integer(1), nullptr},
        {"the model", world.model, nullptr},
        {"Factory", factoryIn(world), &types::NSInterface::FactoryIntf::sIntrospectiveMethods}};
    for (ConcreteClass const& each : VelumTest::allClasses()) {
        candidates.push_back({each.name, world.create(each), each.methods});
    }
    int accepted = 0;
    for (DescribedClass const& of : allClasses()) {
        for (Candidate const& candidate : candidates) {
            SCOPED_TRACE(candidate.name + " for " + of.name);
            bool const isLegal =
                candidate.methods != nullptr && VelumTest::isA(candidate.methods, of.methods);
            accepted += isLegal ? 1 : 0;
            for (Function const& function : Functions) {
                std::string const failure = failureOf([&] {
                    function.call(*of.methods, candidate.object.get(), world.root, LargestId);
                });
                EXPECT_EQ(failure.find("Assertion failed: illegal object" + of.place) == 0,
                          !isLegal)
                    << function.name << ": " << failure;
            }
        }
    }
    EXPECT_GT(accepted, 31) << "no objects of classes below";
}

/// A class whose objects have the property and, of references, something to refer to. Null if none.
ConcreteClass const* concreteClassWith(Property const& property) {
    for (ConcreteClass const& candidate : VelumTest::allClasses()) {
        if (VelumTest::isA(candidate.methods, property.methods) &&
            (!property.isReference() || VelumTest::hasPartner(property, candidate.methods))) {
            return &candidate;
        }
    }
    return nullptr;
}

/// Runs the body for every property that any object can have, with a class whose objects have it.
template <class Filter, class Body>
int forEachProperty(Filter const& isMeant, Body const& body) {
    int count = 0;
    for (DescribedClass const& of : allClasses()) {
        for (unsigned id = 1; id <= of.properties; ++id) {
            Property const property = of.property(id);
            ConcreteClass const* const concrete = concreteClassWith(property);
            if (isMeant(property) && concrete != nullptr) {
                SCOPED_TRACE(of.name + "." + property.description->name);
                body(property, *concrete);
                ++count;
            }
        }
    }
    return count;
}

bool hasOtherEnd(Property const& property) {
    return property.hasOpposite() || property.ownsObjects();
}

/// Whether the value knows the object by the other end of the property: by the opposite, or as its
/// container.
bool knowsBack(Property const& property, Object const& value, ClassObject const& object) {
    ClassObject const far(value);
    if (!property.hasOpposite()) {
        return far.getContainerQOB() == object;
    }
    Property const back = property.opposite();
    return back.isMany() ? back.elements(far).contains(object)
                         : ClassObject(back.get(far)) == object;
}

TEST(Reflective, OnlyFormsLeaveTheOtherEndAsItIs) {
    int const count =
        forEachProperty(&hasOnlyForms, [](Property const& property, ConcreteClass const& of) {
            World world;
            ClassObject const object = world.create(of);
            IntrospectiveMethods const& methods = *property.methods;
            auto const set = [&](Object const& value) {
                methods.setSingleValued(object.get(), world.root, property.id(), value);
            };
            auto const setOnly = [&](Object const& value) {
                methods.setOnlySingleValued(object.get(), world.root, property.id(), value);
            };
            Object const first = world.another(object, property, of.methods);
            setOnly(first);
            EXPECT_EQ(show(property.get(object)), show(first));
            EXPECT_TRUE(property.isThere(object));
            if (hasOtherEnd(property)) {
                EXPECT_FALSE(knowsBack(property, first, object));
            }
            Object const second = world.another(object, property, of.methods);
            set(second);
            EXPECT_EQ(show(property.get(object)), show(second));
            methods.removeOnlySingleValued(object.get(), world.root, property.id());
            EXPECT_EQ(property.isThere(object), !property.isOptional());
            if (property.isReference()) {
                EXPECT_EQ(property.get(object).get(), nullptr);
            } else {
                std::string const left = show(property.get(object));
                set(second);
                property.remove(object);
                EXPECT_EQ(show(property.get(object)), left) << "both forms of removal are one";
            }
            if (hasOtherEnd(property)) {
                EXPECT_TRUE(knowsBack(property, second, object));
                set(first);
                property.remove(object);
                EXPECT_FALSE(knowsBack(property, first, object));
            }
        });
    EXPECT_GT(count, 20);
}

TEST(Reflective, AMandatoryPropertyIsSaidToBeThereWithoutALookAtTheObject) {
    forEachProperty(&isStoredSingle, [](Property const& property, ConcreteClass const& of) {
        World world;
        ClassObject const object = world.create(of);
        object.destroy();
        if (property.isOptional()) {
            EXPECT_NE(failureOf([&] { property.isThere(object); }), "");
        } else {
            EXPECT_TRUE(property.isThere(object));
        }
    });
}

TEST(Reflective, ARedefinedPropertyIsReachedByTheRecordsOfBothClasses) {
    int count = 0;
    forEachProperty(&isStoredSingle, [&](Property const& property, ConcreteClass const& of) {
        for (Property const& base : VelumTest::propertiesOf(of.methods)) {
            if (base == property || !(VelumTest::inPlaceOf(base, of.methods) == property)) {
                continue;
            }
            ++count;
            World world;
            ClassObject const object = world.create(of);
            Object const first = world.another(object, property, of.methods);
            property.set(object, first);
            EXPECT_EQ(show(base.get(object)), show(first));
            Object const second = world.another(object, property, of.methods);
            base.set(object, second);
            EXPECT_EQ(show(property.get(object)), show(second));
            base.remove(object);
            EXPECT_EQ(property.isThere(object), !property.isOptional());
        }
    });
    EXPECT_EQ(count, 6) << "the bounds of booleans, the type and the structure of an element";
}

/// The values of a property, or why there are none.
template <class Read>
std::string shown(Read const& read) {
    std::string text;
    std::string const failure = messageOf([&] {
        for (Object const& value : read()) {
            text += show(value) + " ";
        }
    });
    return failure == NoFailure ? text : failure;
}

TEST(Reflective, ByElementAndByNameAPropertyShowsWhatItShowsByNumber) {
    for (ConcreteClass const& of : VelumTest::allClasses()) {
        World world;
        ClassObject const object = world.createFull(of);
        std::set<std::string> names;
        for (Property const& property : VelumTest::propertiesOf(of.methods)) {
            SCOPED_TRACE(std::string(of.name) + "." + property.description->name);
            std::string const byNumber = shown([&] {
                std::vector<Object> values;
                if (!property.isMany()) {
                    Object const value = property.get(object);
                    return value.get() != nullptr ? std::vector<Object>{value} : values;
                }
                for (Object const& value : property.elements(object)) {
                    values.push_back(value);
                }
                return values;
            });
            auto const* const live = property.description->meta;
            ASSERT_NE(live, nullptr);
            QOB::ImmutableProperty const element(live, live->getRootDeviant());
            EXPECT_EQ(shown([&] { return object.get(element); }), byNumber);
            if (names.insert(property.description->name).second) {
                EXPECT_EQ(shown([&] { return object.get(property.description->name); }), byNumber);
            }
        }
    }
}

TEST(Reflective, AValueOfAnotherTypeFailsInItsConversionAndChangesNothing) {
    forEachProperty(&isStoredSingle, [](Property const& property, ConcreteClass const& of) {
        World world;
        ClassObject const object = world.create(of);
        Object const value = world.another(object, property, of.methods);
        property.set(object, value);
        Object const box =
            isKernelValue(property) ? Object(types::DataSize()) : Object(QOB::String("other"));
        Object const model = world.model;
        if (property.isReference()) {
            for (Object const& other : {box, model}) {
                property.set(object, value);
                property.set(object, other);
                EXPECT_EQ(property.get(object).get(), nullptr) << "a handle of no such object";
            }
            return;
        }
        std::string const before = show(property.get(object));
        for (auto const function :
             {property.methods->setSingleValued, property.methods->setOnlySingleValued}) {
            for (Object const& other : {box, model}) {
                std::string failure;
                try {
                    function(object.get(), world.root, property.id(), other);
                } catch (std::exception const& raised) {
                    failure = raised.what();
                }
                EXPECT_NE(failure, "");
                bool const isIllegal = failure.find("illegal property") != std::string::npos;
                EXPECT_EQ(isIllegal,
                          function == property.methods->setOnlySingleValued &&
                              !hasOnlyForms(property));
                EXPECT_EQ(show(property.get(object)), before);
            }
        }
    });
}

/// A list of values: seen typed, and boxed.
template <class Value>
void expectBoxesWriteThrough(Property const& property, SequenceRef typed, SequenceRef boxed) {
    Sequence<Value> const values(typed);
    Sequence<Object> const boxes(boxed);
    Object const first = VelumTest::sampleValue(property, 0);
    Object const second = VelumTest::sampleValue(property, 1);
    boxes.push_back(first);
    ASSERT_EQ(values.size(), 1);
    EXPECT_EQ(values.front(), Value(first));
    values.push_back(Value(second));
    EXPECT_EQ(show(boxes.back()), show(second));
    EXPECT_TRUE(boxes.contains(second));
    EXPECT_ANY_THROW(boxes.push_back(types::DataSize()));
    EXPECT_EQ(VelumTest::showElements(boxes), show(first) + " " + show(second) + " ");
    EXPECT_EQ(boxes.removeAll(first), 1);
    EXPECT_EQ(values.size(), 1);
    EXPECT_EQ(values.front(), Value(second));
    boxes.clear();
    EXPECT_TRUE(values.empty());
}

void expectValueList(Property const& property, ClassObject const& object) {
    IntrospectiveMethods const& methods = *property.methods;
    for (auto const function : {methods.getMultiValued, methods.getOnlyMultiValued}) {
        SequenceRef const typed = function(object.get(), object.getDeviant(), property.id(), false);
        SequenceRef const boxed = function(object.get(), object.getDeviant(), property.id(), true);
        switch (property.description->typeIndex) {
        case QOB::IntegerIndex:
            expectBoxesWriteThrough<QOB::Integer>(property, typed, boxed);
            break;
        case QOB::RealIndex:
            expectBoxesWriteThrough<QOB::Real>(property, typed, boxed);
            break;
        default:
            ASSERT_EQ(property.description->typeIndex, QOB::StringIndex);
            expectBoxesWriteThrough<QOB::String>(property, typed, boxed);
        }
    }
}

void expectObjectList(World& world,
                      Property const& property,
                      ConcreteClass const& of,
                      ClassObject const& object) {
    IntrospectiveMethods const& methods = *property.methods;
    Object const first = world.another(object, property, of.methods);
    Object const second = world.another(object, property, of.methods);
    auto const both = methods.getMultiValued(object.get(), world.root, property.id(), false);
    auto const same = methods.getMultiValued(object.get(), world.root, property.id(), true);
    auto const only = methods.getOnlyMultiValued(object.get(), world.root, property.id(), false);
    auto const onlySame = methods.getOnlyMultiValued(object.get(), world.root, property.id(), true);
    auto const refTo = [](Object const& value) { return QOB::Generic::toRef(ClassObject(value)); };
    same.generic_push_back(refTo(first));
    onlySame.generic_push_back(refTo(second));
    for (SequenceRef const& each : {both, same, only, onlySame}) {
        ASSERT_EQ(each.generic_size(), 2);
        EXPECT_EQ(QOB::Generic::objectOf(each.generic_front()), first.get());
        EXPECT_EQ(QOB::Generic::objectOf(each.generic_back()), second.get());
        EXPECT_EQ(std::string_view(each.generic_getLumvoName(false, false, "")),
                  both.generic_getLumvoName(false, false, ""));
    }
    if (hasOtherEnd(property)) {
        EXPECT_TRUE(knowsBack(property, first, object));
        EXPECT_FALSE(knowsBack(property, second, object));
        only.generic_removeAll(refTo(first));
        EXPECT_TRUE(knowsBack(property, first, object));
        only.generic_push_back(refTo(first));
        both.generic_removeAll(refTo(first));
        EXPECT_FALSE(knowsBack(property, first, object));
    }
}

TEST(Reflective, ListsAreBoxedOnDemandAndKeepTheOtherEndInStepUnlessToldNotTo) {
    int values = 0;
    int const count =
        forEachProperty(&isStoredMany, [&](Property const& property, ConcreteClass const& of) {
            World world;
            ClassObject const object = world.create(of);
            if (isKernelValue(property)) {
                ++values;
                expectValueList(property, object);
            } else {
                expectObjectList(world, property, of, object);
            }
        });
    EXPECT_GT(values, 5);
    EXPECT_GT(count - values, 5);
}

} // namespace
