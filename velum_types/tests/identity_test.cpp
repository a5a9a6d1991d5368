// One object is one object, whatever handle, owner or deviant leads to it: conversions, owners at
// both ends, and deviants that are gone, null or another model's. Over every concrete class; what
// is expected follows from the descriptions in the metamodel's tables.

#include "qob/kernel/containers/sequence/views/associationsequence.h"
#include "qob/kernel/containers/sequence/views/propertytosequenceproxy.h"
#include "qob/qob/property.h"
#include "qob/qob/transaction.h"
#include "tests/support/failure.h"
#include "velum_types/tests/support/concreteclasses.h"
#include "velum_types/tests/support/described.h"

#include <gtest/gtest.h>

#include <concepts>
#include <functional>
#include <string>
#include <vector>

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;

using QOB::ClassObject;
using QOB::Deviant;
using QOB::Object;
using VelumTest::allClasses;
using VelumTest::ConcreteClass;
using VelumTest::messageOf;
using VelumTest::NoFailure;
using VelumTest::Property;
using VelumTest::World;

namespace {

constexpr char const* Removed = "object accessed after its deviant has been removed";
constexpr char const* CrossModel =
    "Cross-model bi-directional associations are currently disallowed!";
constexpr char const* EmptyHandle = "Cannot access NULL ref. Use isValid() before calling methods";
constexpr char const* OtherModel = "The deviant belongs to another model.";

/// How an object says who owns it: its owner by each of the metamodel's names, and its container.
std::vector<Property> waysToOwner(ConcreteClass const& of) {
    std::vector<Property> ways;
    for (Property const& property : VelumTest::propertiesOf(of.methods)) {
        if (property.isWayToOwner()) {
            ways.push_back(property);
        }
    }
    auto const* const kernel = &QOB::NSInterface::ClassObjectIntf::sIntrospectiveMethods;
    ways.push_back({kernel, kernel->properties[QOB::NSInterface::ClassObjectIntf::ContainerQOBId]});
    return ways;
}

using Write = std::function<void(Property const&, ClassObject const&, Object const&)>;

/// A single value by number, by name and by live element, each in the form that keeps both ends and
/// in the one for one end.
struct Way {
    char const* name;
    bool onlyOneEnd;
    Write write;
};

QOB::ImmutableProperty live(Property const& property) {
    auto* const meta = property.description->meta;
    return {meta, meta->getRootDeviant()};
}

std::vector<Way> const& ways() {
    static std::vector<Way> const all{
        {"number",
         false,
         [](Property const& p, ClassObject const& o, Object const& v) { p.set(o, v); }},
        {"number, only",
         true,
         [](Property const& p, ClassObject const& o, Object const& v) {
             p.methods->setOnlySingleValued(o.get(), o.getDeviant(), p.id(), v);
         }},
        {"name",
         false,
         [](Property const& p, ClassObject const& o, Object const& v) {
             o.setOrAdd(QOB::String(p.description->name), v);
         }},
        {"name, only",
         true,
         [](Property const& p, ClassObject const& o, Object const& v) {
             o.setOrAddOnly(QOB::String(p.description->name), v);
         }},
        {"element",
         false,
         [](Property const& p, ClassObject const& o, Object const& v) { o.setOrAdd(live(p), v); }},
        {"element, only",
         true,
         [](Property const& p, ClassObject const& o, Object const& v) {
             o.setOrAddOnly(live(p), v);
         }},
    };
    return all;
}

TEST(Identity, EveryConversionLeadsToTheObjectThatTheKernelKnows) {
    for (ConcreteClass const& of : allClasses()) {
        SCOPED_TRACE(of.name);
        World world;
        ClassObject const object = world.create(of);
        auto* const known = QOB::castObject<QOB::NSInterface::ClassObjectIntf>(object.get());
        std::vector<ClassObject> seen{ClassObject(Object(object))};
        std::vector<Object> boxed{Object(object)};
        if (foundation::Element const element(object); element.get() != nullptr) {
            seen.emplace_back(element);
            boxed.emplace_back(element);
        }
        if (foundation::NamedElement const named(object); named.get() != nullptr) {
            seen.emplace_back(named);
            boxed.emplace_back(named);
        }
        if (QOB::Namespace const space(object); space.get() != nullptr) {
            seen.emplace_back(space);
            seen.emplace_back(space.get(), world.root);
            boxed.emplace_back(space);
        }
        if (foundation::Namespace const space(object); space.get() != nullptr) {
            seen.emplace_back(space);
            seen.emplace_back(space.get(), world.root);
            seen.emplace_back(foundation::NamedElement(space));
            seen.emplace_back(foundation::Element(space.get(), world.root));
            boxed.emplace_back(space);
            boxed.emplace_back(space.get(), world.root);
            EXPECT_EQ(QOB::ImmutableClassObject(foundation::ImmutableNamespace(space)).get(),
                      known);
            EXPECT_EQ(QOB::ImmutableObject(space.get(), world.root), Object(object));
            EXPECT_EQ(foundation::Namespace(ClassObject(space)), space);
        }
        for (ClassObject const& each : seen) {
            EXPECT_EQ(each.get(), known);
            EXPECT_EQ(std::hash<ClassObject>()(each), std::hash<ClassObject>()(object));
            world.model.bindObjectId(each, 4711);
            EXPECT_EQ(world.model.findObject(4711), object);
        }
        for (Object const& each : boxed) {
            EXPECT_EQ(each, Object(object));
            EXPECT_EQ(std::hash<Object>()(each), std::hash<Object>()(Object(object)));
        }
    }
}

TEST(Identity, SettingTheOwnerThatIsThereDoesNothing) {
    int count = 0;
    for (ConcreteClass const& of : allClasses()) {
        for (Property const& list : VelumTest::ownedLists(of.methods)) {
            ConcreteClass const& kind = VelumTest::partnerClass(list, of.methods);
            World world;
            ClassObject const owner = world.create(of);
            ClassObject const part = world.create(kind);
            list.elements(owner).push_back(part);
            std::string const before = world.print(world.root);
            Deviant const branch = world.model.createDeviant();
            for (Property const& property : waysToOwner(kind)) {
                for (Way const& way : ways()) {
                    SCOPED_TRACE(std::string(of.name) + " of " + kind.name + "." +
                                 property.description->name + " by " + way.name);
                    for (Deviant const deviant : {world.root, branch}) {
                        Object const present = property.get(part.inDeviant(deviant));
                        if (present.get() == nullptr) {
                            continue; // an owner that is no namespace
                        }
                        EXPECT_EQ(ClassObject(present), owner);
                        way.write(property, part.inDeviant(deviant), present);
                        if (foundation::Namespace const space(present); space.get() != nullptr) {
                            way.write(property, part.inDeviant(deviant), space);
                        }
                        ++count;
                        EXPECT_EQ(world.print(deviant), before);
                        EXPECT_EQ(part->internal_getDeviation(branch), nullptr);
                        EXPECT_EQ(owner->internal_getDeviation(branch), nullptr);
                    }
                }
            }
        }
    }
    EXPECT_GT(count, 500);
}

/// Both ends say the same of owner and part.
void expectInStep(ClassObject const& owner, ClassObject const& part) {
    EXPECT_EQ(owner.getContaineeQOBs().contains(part), part.getContainerQOB() == owner);
}

TEST(Identity, AnOwnerTakesThePartInAtBothEndsOrIsRefusedBeforeAnythingChanges) {
    int taken = 0;
    int refused = 0;
    auto const put = [&](ConcreteClass const& of, ConcreteClass const& kind, Property const& way) {
        World world;
        ClassObject const first = world.create(of);
        ClassObject const second = world.create(of);
        ClassObject const part = world.create(kind);
        Property const valid = VelumTest::inPlaceOf(way, kind.methods);
        bool const isNarrowed = !VelumTest::isA(of.methods, valid.type());
        std::string const before = world.print(world.root);
        Deviant const branch = world.model.createDeviant();
        for (Deviant const deviant : {branch, world.root}) {
            for (ClassObject const& owner : {first, second}) {
                ClassObject const other = owner == first ? second : first;
                std::string const failure =
                    messageOf([&] { way.set(part.inDeviant(deviant), owner.inDeviant(deviant)); });
                expectInStep(owner.inDeviant(deviant), part.inDeviant(deviant));
                expectInStep(other.inDeviant(deviant), part.inDeviant(deviant));
                if (!VelumTest::takesIn(of.methods, kind.methods)) {
                    // A narrowed property takes what it can't hold as a removal.
                    EXPECT_TRUE(isNarrowed || failure.find("has no list") != std::string::npos ||
                                failure.find("The container of ") == 0)
                        << failure;
                    EXPECT_EQ(world.print(deviant), before);
                    EXPECT_EQ(branch.getStateOfObject(part.get()), nullptr);
                    EXPECT_EQ(branch.getStateOfObject(owner.get()), nullptr);
                    ++refused;
                } else {
                    EXPECT_EQ(failure, NoFailure);
                    EXPECT_EQ(part.inDeviant(deviant).getContainerQOB(), owner);
                    ++taken;
                }
            }
            way.remove(part.inDeviant(deviant));
            EXPECT_EQ(world.print(deviant), before);
        }
    };
    for (ConcreteClass const& of : allClasses()) {
        for (ConcreteClass const& kind : allClasses()) {
            for (Property const& way : waysToOwner(kind)) {
                if (VelumTest::isA(of.methods, way.type()) ||
                    way.type() == &QOB::NSInterface::ClassObjectIntf::sIntrospectiveMethods) {
                    SCOPED_TRACE(std::string(kind.name) + "." + way.description->name + " = " +
                                 of.name);
                    put(of, kind, way);
                }
            }
        }
    }
    EXPECT_GT(taken, 50);
    EXPECT_GT(refused, 5000);
}

/// What reads or writes an object in a deviant, for each stored property: none may get through.
void expectAllRefused(ConcreteClass const& of, ClassObject const& object, Deviant deviant) {
    for (Property const& property : VelumTest::propertiesOf(of.methods)) {
        if (property.isDerived()) {
            continue;
        }
        SCOPED_TRACE(property.description->name);
        auto const* const methods = property.methods;
        unsigned const id = property.id();
        if (property.isMany()) {
            auto const elements = property.elementsOf(object.get(), deviant);
            Object const value = property.isReference() ? Object() : sampleValue(property, 0);
            for (auto const& action :
                 std::vector<std::function<void()>>{[&] { elements.size(); },
                                                    [&] { elements.empty(); },
                                                    [&] { elements.begin(); },
                                                    [&] { elements.end(); },
                                                    [&] { elements.contains(value); },
                                                    [&] { elements.removeAll(value); },
                                                    [&] { elements.push_back(value); },
                                                    [&] { elements.insert(0, value); },
                                                    [&] { elements.erase(0); },
                                                    [&] { elements.pop_back(); },
                                                    [&] { elements.clear(); }}) {
                EXPECT_EQ(messageOf(action), Removed);
            }
            continue;
        }
        EXPECT_EQ(messageOf([&] { methods->getSingleValued(object.get(), deviant, id); }), Removed);
        if (property.isOptional()) {
            EXPECT_EQ(messageOf([&] { methods->hasSingleValued(object.get(), deviant, id); }),
                      Removed);
            EXPECT_EQ(messageOf([&] { methods->removeSingleValued(object.get(), deviant, id); }),
                      Removed);
        }
        Object const value = property.isReference() ? Object() : sampleValue(property, 1);
        EXPECT_EQ(messageOf([&] { methods->setSingleValued(object.get(), deviant, id, value); }),
                  Removed);
    }
    auto const containees = object->getContaineeQOBs(deviant);
    EXPECT_EQ(messageOf([&] { containees.size(); }), Removed);
    EXPECT_EQ(messageOf([&] { containees.begin(); }), Removed);
    EXPECT_EQ(messageOf([&] { containees.end(); }), Removed);
    EXPECT_EQ(messageOf([&] { containees.contains(object); }), Removed);
    EXPECT_EQ(messageOf([&] { containees.removeAll(object); }), Removed);
}

/// The life cycle of an object, called in a deviant that isn't one of its own.
void expectLifeCycleRefused(ClassObject const& object, Deviant deviant, char const* refusal) {
    Deviant const own = object->getRootDeviant();
    auto* const copy = object->deviant_getCopyOfDeviation(own);
    EXPECT_EQ(messageOf([&] { object->destroy(deviant); }), refusal);
    EXPECT_EQ(messageOf([&] { object->internal_disconnect(deviant); }), refusal);
    EXPECT_EQ(messageOf([&] { object->internal_discard(deviant, true); }), refusal);
    EXPECT_EQ(messageOf([&] { object->internal_createDeviation(deviant); }), refusal);
    EXPECT_EQ(messageOf([&] { object->internal_destroyDeviation(deviant); }), refusal);
    EXPECT_EQ(messageOf([&] { object->internal_setDeviation(deviant, copy); }), refusal);
    object->deviant_destroyState(copy);
    bool const previous = QOB::DeviantAssertions::enableAssertions(false);
    EXPECT_EQ(messageOf([&] { object->destroy(deviant); }), refusal) << "with assertions off too";
    QOB::DeviantAssertions::enableAssertions(previous);
}

TEST(Identity, AnOwnedValueSeenAsAListTakesObjectsOfItsClassOnly) {
    constexpr char const* refusal = "null object while inserting into QOB.SequenceOfClassObject";
    int refused = 0;
    for (ConcreteClass const& of : allClasses()) {
        for (Property const& property : VelumTest::propertiesOf(of.methods)) {
            if (property.isMany() || property.isDerived() || !property.ownsObjects()) {
                continue;
            }
            SCOPED_TRACE(std::string(of.name) + "." + property.description->name);
            World world;
            ClassObject const owner = world.create(of);
            QOB::Generic::SequencePtr const alone(new QOB::GenericPropertyToSequenceProxy(
                owner,
                property.methods,
                property.id(),
                QOB::GenericPropertyToSequenceProxy::OneEnd));
            QOB::Sequence<ClassObject> const view(
                new QOB::GenericAssociationSequence(
                    owner,
                    alone,
                    &QOB::NSInterface::ClassObjectIntf::sIntrospectiveMethods,
                    QOB::NSInterface::ClassObjectIntf::ContainerQOBId,
                    true),
                world.root);
            ClassObject present(world.another(owner, property, of.methods));
            view.push_back(present);
            for (ConcreteClass const& kind : allClasses()) {
                ClassObject const part = world.create(kind);
                std::string const before = world.print(world.root);
                std::string const failure = messageOf([&] { view.push_back(part); });
                if (VelumTest::takes(property, of.methods, kind)) {
                    EXPECT_EQ(failure, NoFailure);
                    EXPECT_EQ(part.getContainerQOB(), owner);
                    EXPECT_FALSE(present.hasContainerQOB());
                    present = part;
                } else {
                    EXPECT_EQ(failure, refusal);
                    EXPECT_EQ(messageOf([&] { view.replace(0, part); }), refusal);
                    EXPECT_EQ(world.print(world.root), before);
                    ++refused;
                }
                EXPECT_EQ(view.front(), present);
            }
        }
    }
    EXPECT_GT(refused, 100);
}

TEST(Identity, WhatAListHoldsOfAnotherModelOutlivesTheOwner) {
    for (ConcreteClass const& of : allClasses()) {
        for (Property const& list : VelumTest::ownedLists(of.methods)) {
            SCOPED_TRACE(std::string(of.name) + "." + list.description->name);
            World world;
            World other;
            ClassObject const owner = world.create(of);
            ClassObject const foreign = other.create(VelumTest::partnerClass(list, of.methods));
            std::string const before = other.print(other.root);
            list.methods->getOnlyMultiValued(owner.get(), world.root, list.id(), true)
                .generic_push_back(QOB::Generic::toRef(foreign));
            owner.destroy();
            EXPECT_FALSE(owner.isValid());
            EXPECT_TRUE(foreign.isValid());
            EXPECT_EQ(other.print(other.root), before);
        }
    }
}

/// A handle of one class, and those of its bases, seen in other deviants.
template <class Handle>
void expectSeenInAnyDeviant() {
    using Reading = typename QOB::HandlesOf<typename Handle::Interface>::Reading;
    static_assert(std::same_as<decltype(Handle().inDeviant({})), Handle>);
    static_assert(std::same_as<decltype(Reading().inDeviant({})), Reading>);
    World const world;
    World const other;
    Handle const object = Handle::create(world.model);
    Deviant const branch = world.model.createDeviant();
    Handle const there = object.inDeviant(branch);
    EXPECT_EQ(there, object);
    EXPECT_EQ(there.getDeviant(), branch);
    EXPECT_EQ(object.getDeviant(), world.root) << "the handle itself stays where it is";
    there.setExternalId("there");
    EXPECT_EQ(Reading(object).inDeviant(branch).getExternalId(), QOB::String("there"));
    EXPECT_FALSE(object.hasExternalId());
    EXPECT_EQ(Object(object).inDeviant(branch).toString(), there.toString());
    EXPECT_EQ(ClassObject(object).inDeviant(branch).getExternalId(), QOB::String("there"));
    if (foundation::Namespace const space(object); space.get() != nullptr) {
        EXPECT_EQ(space.inDeviant(branch), space);
        EXPECT_EQ(ClassObject(space.inDeviant(branch)).getExternalId(), QOB::String("there"));
    }
    for (Deviant const stranger : {Deviant(), other.root, other.model.createDeviant()}) {
        EXPECT_EQ(there.inDeviant(stranger).getDeviant(), world.root);
    }

    world.model.removeDeviant(branch);
    Handle const late = object.inDeviant(branch);
    EXPECT_EQ(late.getDeviant(), branch);
    EXPECT_FALSE(late.isValid());
    EXPECT_EQ(messageOf([&] { late.hasExternalId(); }), Removed);
    EXPECT_FALSE(late.inDeviant(world.root).hasExternalId()) << "the way back is open";
    EXPECT_EQ(messageOf([&] { Handle().inDeviant(world.root); }), EmptyHandle);
}

TEST(Identity, AnyHandleShowsItsObjectInAnotherDeviant){
#define EXPECT_SEEN(Class)                                                                         \
    {                                                                                              \
        SCOPED_TRACE(#Class);                                                                      \
        expectSeenInAnyDeviant<types::Class>();                                                    \
    }
    VELUM_CONCRETE_CLASSES(EXPECT_SEEN)
#undef EXPECT_SEEN
}

TEST(Identity, AHandleWithARemovedDeviantActsNowhere) {
    for (ConcreteClass const& of : allClasses()) {
        SCOPED_TRACE(of.name);
        World world;
        ClassObject const object = world.createFull(of);
        Deviant const branch = world.model.createDeviant();
        ClassObject const late = object.inDeviant(branch);
        world.model.removeDeviant(branch);
        std::string const before = world.print(world.root);
        EXPECT_FALSE(late.isValid());
        EXPECT_EQ(late.getDeviant(), branch);
        EXPECT_EQ(Object(late).getDeviant(), branch);
        if (foundation::Element(object).get() != nullptr) {
            EXPECT_EQ(foundation::Element(late).getDeviant(), branch);
        }
        if (foundation::NamedElement(object).get() != nullptr) {
            EXPECT_EQ(ClassObject(foundation::NamedElement(late)).getDeviant(), branch);
        }
        EXPECT_EQ(object.inDeviant(branch).getDeviant(), branch)
            << "nor is it replaced in a new handle";

        expectAllRefused(of, object, branch);
        expectLifeCycleRefused(object, branch, Removed);
        EXPECT_EQ(messageOf([&] { late->setObjectId(branch, 4711); }), Removed);
        QOB::Model const lateModel = world.model.inDeviant(branch);
        for (bool const enabled : {true, false}) {
            bool const previous = QOB::DeviantAssertions::enableAssertions(enabled);
            EXPECT_EQ(messageOf([&] { of.create(lateModel); }), Removed);
            QOB::DeviantAssertions::enableAssertions(previous);
        }
        EXPECT_EQ(messageOf([&] { QOB::Transaction const open(lateModel); }), Removed);
        EXPECT_EQ(messageOf([&] { lateModel.destroy(); }), Removed);
        EXPECT_EQ(messageOf([&] { types::NSInterface::FactoryIntf::createNewFactory(lateModel); }),
                  Removed);
        EXPECT_EQ(world.print(world.root), before);
    }
}

TEST(Identity, ANullDeviantIsRefusedByObjectsAndViews) {
    for (ConcreteClass const& of : allClasses()) {
        SCOPED_TRACE(of.name);
        World world;
        ClassObject const object = world.createFull(of);
        std::string const before = world.print(world.root);
        expectAllRefused(of, object, Deviant());
        expectLifeCycleRefused(object, Deviant(), Removed);
        EXPECT_EQ(world.print(world.root), before);
    }
}

TEST(Identity, ADeviantOfAnotherModelStandsForTheRootAndBeginsAndEndsNoState) {
    for (ConcreteClass const& of : allClasses()) {
        SCOPED_TRACE(of.name);
        World world;
        World other;
        ClassObject const object = world.createFull(of);
        ClassObject const stranger = other.createFull(of);
        std::string const before = world.print(world.root);
        std::string const otherBefore = other.print(other.root);
        Deviant const foreign = other.model.createDeviant();
        for (Deviant const deviant : {other.root, foreign}) {
            expectLifeCycleRefused(object, deviant, OtherModel);
            EXPECT_EQ(world.print(world.root), before);
        }
        EXPECT_EQ(messageOf([&] { object->deviant_commitTransientState(other.root); }), OtherModel);
        EXPECT_EQ(messageOf([&] { foreign.setStateOfObject(object.get(), nullptr); }), NoFailure);
        auto* const copy = object->deviant_getCopyOfDeviation(world.root);
        EXPECT_EQ(messageOf([&] { foreign.setStateOfObject(object.get(), copy); }),
                  "The object belongs to another model.");
        object->deviant_destroyState(copy);

        for (Property const& property : VelumTest::propertiesOf(of.methods)) {
            if (property.isDerived() || property.isMany() ||
                !(VelumTest::inPlaceOf(property, of.methods) == property) ||
                property.isWayToOwner()) {
                continue;
            }
            SCOPED_TRACE(property.description->name);
            Object const value = world.another(object, property, of.methods);
            property.methods->setSingleValued(object.get(), foreign, property.id(), value);
            EXPECT_EQ(VelumTest::show(property.get(object)), VelumTest::show(value));
            if (property.isReference()) {
                Object const theirs = other.another(stranger, property, of.methods);
                std::string const failure = messageOf([&] {
                    property.methods->setSingleValued(object.get(), foreign, property.id(), theirs);
                });
                bool const isLinked = property.hasOpposite() || property.ownsObjects();
                EXPECT_TRUE(!isLinked || failure == CrossModel) << failure;
                EXPECT_TRUE(failure == CrossModel || failure == NoFailure) << failure;
                EXPECT_EQ(world.model.getReferredModels().size(), failure == NoFailure ? 1U : 0U);
                property.remove(object);
            }
        }
        EXPECT_EQ(foreign.getStateOfObject(object.get()), nullptr);
        EXPECT_TRUE(other.model.getReferredModels().empty());
        EXPECT_TRUE(other.model.inDeviant(foreign).getReferredModels().empty());
        EXPECT_EQ(other.print(other.root).substr(0, otherBefore.size()), otherBefore);
    }
}

TEST(Identity, AStateOfAnotherClassIsRefused) {
    constexpr char const* refusal = "The state belongs to an object of another class.";
    ConcreteClass const* previous = &allClasses().back();
    for (ConcreteClass const& of : allClasses()) {
        SCOPED_TRACE(of.name);
        World world;
        ClassObject const object = world.createFull(of);
        ClassObject const other = world.create(*previous);
        previous = &of;
        Deviant const branch = world.model.createDeviant();
        std::string const before = world.print(world.root);
        auto* const wrong = other->deviant_getCopyOfDeviation(world.root);
        EXPECT_EQ(messageOf([&] { object->deviant_destroyState(wrong); }), refusal);
        for (Deviant const deviant : {world.root, branch}) {
            EXPECT_EQ(messageOf([&] { object->internal_setDeviation(deviant, wrong); }), refusal);
            EXPECT_EQ(world.print(deviant), before);
        }
        other->deviant_destroyState(wrong);

        auto* const right = object->deviant_getCopyOfDeviation(world.root);
        object->internal_setDeviation(branch, right);
        object->internal_setDeviation(branch, right); // the present one is not freed
        EXPECT_EQ(object->internal_getDeviation(branch), right);
        EXPECT_EQ(world.print(branch), before);
        // A state may be given by its second part.
        if (auto* const second = QOB::castObject<foundation::NSInterface::NamespaceIntf>(right)) {
            object->internal_setDeviation(
                branch, static_cast<foundation::NSInterface::NamedElementIntf*>(second));
            EXPECT_EQ(object->internal_getDeviation(branch), right);
        }
    }
}

} // namespace
