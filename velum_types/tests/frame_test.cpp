// One body over every concrete metaclass and every property. What is expected follows from the
// descriptions in the metamodel's tables.

#include "qob/qob/stereotypeobject.h"
#include "qob/qob/transaction.h"
#include "qob/qob/valueobjectfactory.h"
#include "support/failure.h"
#include "velum_types/tests/support/concreteclasses.h"
#include "velum_types/tests/support/described.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;

using QOB::ClassObject;
using QOB::Deviant;
using QOB::Object;
using VelumTest::allClasses;
using VelumTest::ConcreteClass;
using VelumTest::failureOf;
using VelumTest::isStoredSingle;
using VelumTest::Property;
using VelumTest::show;
using VelumTest::showElements;
using VelumTest::World;

namespace {

std::string place(ConcreteClass const& of, Property const& property) {
    std::string text = of.name;
    text += '.';
    return text += property.description->name;
}

/// Runs the body for each class and each of its properties that `isMeant` accepts.
template <class Filter, class Body>
void forEach(Filter const& isMeant, Body const& body) {
    int count = 0;
    for (ConcreteClass const& of : allClasses()) {
        for (Property const& property : VelumTest::propertiesOf(of.methods)) {
            if (isMeant(property)) {
                SCOPED_TRACE(place(of, property));
                body(of, property);
                ++count;
            }
        }
    }
    EXPECT_GT(count, 20) << "the tables are empty";
}

bool isStored(Property const& property) {
    return !property.isDerived();
}

/// Whether the property itself is what its class stores, and not one that redefines it.
bool isInPlace(ConcreteClass const& of, Property const& property) {
    return VelumTest::inPlaceOf(property, of.methods) == property;
}

ClassObject in(Deviant deviant, Object const& object) {
    return {ClassObject(object).get(), deviant};
}

bool holds(QOB::Sequence<Object> const& elements, Object const& element) {
    return elements.contains(element);
}
bool contains(ClassObject const& owner, Object const& part) {
    return owner.getContaineeQOBs().contains(ClassObject(part));
}

TEST(Frame, TablesDescribeEveryConcreteClass) {
    EXPECT_EQ(VelumTest::concreteClasses().size(), 30U);
    EXPECT_EQ(allClasses().size(), 41U);
}

TEST(Frame, ANewObjectHasTheDefaultsOfItsDescription) {
    forEach(isStored, [](ConcreteClass const& of, Property const& property) {
        World world;
        ClassObject const object = world.create(of);
        if (property.isMany()) {
            EXPECT_EQ(property.elements(object).size(), 0);
            return;
        }
        Property const valid = VelumTest::inPlaceOf(property, of.methods);
        if (property.isReference()) {
            EXPECT_EQ(property.get(object).get(), nullptr);
            EXPECT_EQ(property.isThere(object), !property.isOptional());
            return;
        }
        EXPECT_EQ(show(property.get(object)), show(VelumTest::defaultValue(valid)));
        EXPECT_EQ(property.isThere(object),
                  !property.isOptional() || *valid.description->defaultValue != '\0');
    });
}

/// Whether there is something that the property can hold on objects of the class.
bool takesSomething(ConcreteClass const& of, Property const& property) {
    return !property.isReference() || VelumTest::hasPartner(property, of.methods);
}

TEST(Frame, SingleValuesAreReadBackUntilTheyAreRemoved) {
    forEach(isStoredSingle, [](ConcreteClass const& of, Property const& property) {
        if (!takesSomething(of, property)) {
            return;
        }
        World world;
        ClassObject const object = world.create(of);
        for (int round = 0; round < 2; ++round) {
            Object const value = world.another(object, property, of.methods);
            property.set(object, value);
            EXPECT_EQ(show(property.get(object)), show(value));
            EXPECT_TRUE(property.isThere(object));
        }
        std::string const last = show(property.get(object));
        property.remove(object);
        EXPECT_EQ(property.isThere(object), !property.isOptional());
        if (property.isReference()) {
            EXPECT_EQ(property.get(object).get(), nullptr);
        } else if (property.isOptional()) {
            Property const valid = VelumTest::inPlaceOf(property, of.methods);
            EXPECT_EQ(show(property.get(object)), show(VelumTest::defaultValue(valid)));
        } else {
            EXPECT_EQ(show(property.get(object)), last) << "a mandatory value stays";
        }
    });
}

bool isPrimitive(Property const& property) {
    return isStoredSingle(property) && !property.isReference() &&
           property.description->package() == QOB::get_QOB_PackageIntrospectiveMethods();
}

TEST(Frame, AnInvalidPrimitiveActsAsARemoval) {
    forEach(isPrimitive, [](ConcreteClass const& of, Property const& property) {
        World world;
        ClassObject const object = world.create(of);
        Object const value = world.another(object, property, of.methods);
        property.set(object, value);
        property.remove(object);
        std::string const removed = show(property.get(object));
        property.set(object, value);
        std::string const type = QOB::ImmutableValueObject(value).getValueTypeName();
        property.set(object, QOB::ValueObjectFactory::create(type));
        EXPECT_EQ(show(property.get(object)), removed);
        EXPECT_EQ(property.isThere(object), !property.isOptional());
    });
}

TEST(Frame, ListsKeepWhatIsPushedInOrderAndRefuseRepetitionsIfTheyAreUnique) {
    auto const isList = [](Property const& p) { return isStored(p) && p.isMany(); };
    forEach(isList, [&](ConcreteClass const& of, Property const& property) {
        World world;
        ClassObject const object = world.create(of);
        auto const elements = property.elements(object);
        Object const first = world.another(object, property, of.methods);
        elements.push_back(first);
        Object const second = world.another(object, property, of.methods);
        elements.push_back(second);
        std::string const both = show(first) + " " + show(second) + " ";
        EXPECT_EQ(showElements(elements), both);
        elements.push_back(first);
        bool const repeats = !property.has(QOB::PropertyUnique);
        EXPECT_EQ(showElements(elements), repeats ? both + show(first) + " " : both);
        EXPECT_EQ(elements.removeAll(first), repeats ? 2 : 1);
        EXPECT_EQ(showElements(property.elements(object)), show(second) + " ");
        elements.clear();
        EXPECT_EQ(property.elements(object).size(), 0);
    });
}

TEST(Frame, ListsAreTheSameFromCallToCallAndKeepWhatTheyDoNotRefuse) {
    auto const isList = [](Property const& p) { return p.isMany(); };
    forEach(isList, [](ConcreteClass const& of, Property const& property) {
        World world;
        ClassObject const object = world.createFull(of);
        auto const elements = [&] { return property.elements(object); };
        int rest = elements().size();
        EXPECT_EQ(elements().begin(), elements().begin());
        for (auto i = elements().begin(); i != elements().end() && rest >= 0; ++i) {
            --rest;
        }
        EXPECT_EQ(rest, 0) << "a loop that asks anew in each step ends";
        ClassObject const bare = world.create(of);
        for (ClassObject const& owner : {object, bare}) {
            Object const value = world.another(owner, property, of.methods);
            try {
                property.elements(owner).push_back(value);
            } catch (QOB::Exception const&) {
                EXPECT_TRUE(property.isDerived());
                continue;
            }
            EXPECT_TRUE(holds(property.elements(owner), value));
        }
    });
}

TEST(Frame, AWriteThatChangesNothingMakesNoStateInABranch) {
    for (ConcreteClass const& of : allClasses()) {
        World world;
        ClassObject const object = world.createFull(of);
        ClassObject const bare = world.create(of);
        Deviant const branch = world.model.createDeviant();
        for (Property const& property : VelumTest::propertiesOf(of.methods)) {
            if (!isStoredSingle(property)) {
                continue;
            }
            SCOPED_TRACE(place(of, property));
            Object const value = property.get(object);
            if (ClassObject const target(value); target.get() != nullptr) {
                property.set(in(branch, object), in(branch, target));
                EXPECT_EQ(branch.getStateOfObject(target.get()), nullptr);
            } else if (value.get() != nullptr) {
                property.set(in(branch, object), value);
            }
            EXPECT_EQ(branch.getStateOfObject(object.get()), nullptr);
            if (property.isReference()) {
                property.remove(in(branch, bare));
            } else {
                property.set(in(branch, bare), property.get(bare));
            }
            EXPECT_EQ(branch.getStateOfObject(bare.get()), nullptr);
        }
    }
}

/// Writes every property of an object anew, in the object's deviant.
void writeAll(World& world, ConcreteClass const& of, ClassObject const& object) {
    for (Property const& property : VelumTest::propertiesOf(of.methods)) {
        if (!isStored(property) || property.isWayToOwner() || !isInPlace(of, property)) {
            continue;
        }
        if (property.isMany()) {
            property.elements(object).erase(0);
        } else {
            property.set(object,
                         property.isReference() ? Object()
                                                : world.another(object, property, of.methods));
        }
    }
}

TEST(Frame, AWriteInABranchLeavesTheRootAndTheOtherBranches) {
    for (ConcreteClass const& of : allClasses()) {
        SCOPED_TRACE(of.name);
        World world;
        ClassObject const object = world.createFull(of);
        Deviant const branch = world.model.createDeviant();
        Deviant const other = world.model.createDeviant();
        std::string const before = world.print(world.root);
        EXPECT_EQ(world.print(branch), before);
        writeAll(world, of, in(branch, object));
        EXPECT_EQ(world.print(world.root), before);
        EXPECT_EQ(world.print(other), before);
        EXPECT_NE(world.print(branch), before);
    }
}

TEST(Frame, RollbackAndUndoBringEverythingBack) {
    for (ConcreteClass const& of : allClasses()) {
        for (bool const inBranch : {false, true}) {
            SCOPED_TRACE(of.name);
            World world;
            ClassObject const object = world.createFull(of);
            Deviant const deviant = inBranch ? world.model.createDeviant() : world.root;
            QOB::Model const model = world.model.inDeviant(deviant);
            std::string const before = world.print(deviant);
            {
                QOB::Transaction transaction(model);
                writeAll(world, of, in(deviant, object));
                EXPECT_NE(world.print(deviant), before);
                transaction.rollback();
            }
            EXPECT_EQ(world.print(deviant), before);
            model.setUndoEnabled(true);
            {
                QOB::Transaction transaction(model);
                writeAll(world, of, in(deviant, object));
                transaction.commit();
            }
            std::string const after = world.print(deviant);
            EXPECT_TRUE(model.undo());
            EXPECT_EQ(world.print(deviant), before);
            EXPECT_TRUE(model.redo());
            EXPECT_EQ(world.print(deviant), after);
        }
    }
}

TEST(Frame, ACopiedAndAnAssignedStateHoldTheSame) {
    for (ConcreteClass const& of : allClasses()) {
        SCOPED_TRACE(of.name);
        World world;
        std::vector<Property> const properties = VelumTest::propertiesOf(of.methods);
        ClassObject const object = world.createFull(of);
        auto* const source = object->internal_getDeviation(world.root);
        std::string const expected = VelumTest::print(source, world.root, properties);

        auto* const copy = object->deviant_getCopyOfDeviation(world.root);
        ASSERT_NE(copy, nullptr);
        EXPECT_NE(copy, source);
        EXPECT_EQ(VelumTest::print(copy, world.root, properties), expected);
        object->deviant_destroyState(copy);

        ClassObject const target = world.create(of);
        auto* const assigned = target->internal_getDeviation(world.root);
        EXPECT_NE(VelumTest::print(assigned, world.root, properties), expected);
        assigned->internal_deviationAssign(world.root, source, world.root);
        EXPECT_EQ(VelumTest::print(assigned, world.root, properties), expected);
        EXPECT_EQ(VelumTest::print(source, world.root, properties), expected);
    }
}

/// Properties that refer to one object which holds many of their owners.
bool isEndOfMany(Property const& property) {
    return isStoredSingle(property) && property.hasOpposite() && !property.opposite().isDerived();
}

TEST(Frame, BothEndsOfAnAssociationAgree) {
    forEach(isEndOfMany, [](ConcreteClass const& of, Property const& end) {
        World world;
        ConcreteClass const& far = VelumTest::partnerClass(end, of.methods);
        Property const list = end.opposite();
        ClassObject const object = world.create(of);
        ClassObject const first = world.create(far);
        ClassObject const second = world.create(far);
        std::string const empty = world.print(world.root);
        Deviant const branch = world.model.createDeviant();
        for (Deviant const deviant : {branch, world.root}) {
            ClassObject const near = in(deviant, object);
            ClassObject const a = in(deviant, first);
            ClassObject const b = in(deviant, second);
            auto const expectIn = [&](ClassObject const& one) {
                EXPECT_EQ(ClassObject(end.get(near)), one);
                EXPECT_EQ(list.elements(a).size(), a == one ? 1 : 0);
                EXPECT_EQ(list.elements(b).size(), b == one ? 1 : 0);
                if (one.get() != nullptr) {
                    EXPECT_TRUE(holds(list.elements(one), near));
                }
            };
            end.set(near, a);
            expectIn(a);
            end.set(near, a);
            expectIn(a);
            end.set(near, b);
            expectIn(b);
            end.remove(near);
            expectIn(ClassObject());
            list.elements(a).push_back(near);
            expectIn(a);
            list.elements(b).insert(0, near);
            expectIn(b);
            list.elements(b).erase(0);
            expectIn(ClassObject());
            list.elements(a).push_front(near);
            end.set(near, Object());
            expectIn(ClassObject());
            list.elements(a).push_back(near);
            EXPECT_EQ(list.elements(a).removeAll(near), 1);
            expectIn(ClassObject());
            end.set(near, b);
            list.elements(b).clear();
            expectIn(ClassObject());
            if (deviant == branch) {
                EXPECT_EQ(world.print(world.root), empty);
                end.set(near, a);
                EXPECT_EQ(world.print(world.root), empty);
            }
        }
    });
}

/// What refers to one object and can be set by itself.
bool isSetReference(Property const& property) {
    return isStoredSingle(property) && property.isReference();
}

TEST(Frame, AnObjectThatIsGoneActsAsARemovalInEveryForm) {
    forEach(isSetReference, [](ConcreteClass const& of, Property const& property) {
        Property const valid = VelumTest::inPlaceOf(property, of.methods);
        if (valid.isWayToOwner() && valid.opposite().isDerived()) {
            return; // only what holds a list takes elements in
        }
        auto const& methods = *property.methods;
        for (auto const function : {methods.setSingleValued, methods.setOnlySingleValued}) {
            World world;
            ClassObject const object = world.create(of);
            ClassObject const present(world.another(object, property, of.methods));
            ClassObject const gone(world.another(object, property, of.methods));
            gone.destroy();
            Deviant const branch = world.model.createDeviant();
            function(object.get(), branch, property.id(), in(branch, gone));
            EXPECT_EQ(branch.getStateOfObject(object.get()), nullptr) << "there was nothing";
            property.set(object, present);
            function(object.get(), world.root, property.id(), gone);
            EXPECT_EQ(property.get(object).get(), nullptr);
            if (valid.ownsObjects()) {
                EXPECT_FALSE(present.hasContainerQOB());
            } else if (valid.hasOpposite()) {
                EXPECT_EQ(valid.opposite().elements(present).size(), 0);
            }
        }
    });
}

TEST(Frame, OnlyReferencesWithoutAnotherEndLeadIntoAnotherModel) {
    forEach(isSetReference, [](ConcreteClass const& of, Property const& property) {
        Property const valid = VelumTest::inPlaceOf(property, of.methods);
        if (VelumTest::comesDownTo(valid, "Unit") && valid.description->subsettedCount != 0) {
            return; // the other end is that of the list that it is a part of
        }
        if (!takesSomething(of, property)) {
            return;
        }
        World world;
        World other;
        ClassObject const object = world.create(of);
        Object const foreign = other.create(VelumTest::partnerClass(property, of.methods));
        std::string const before = world.print(world.root);
        auto const& methods = *property.methods;
        for (auto const function : {methods.setSingleValued, methods.setOnlySingleValued}) {
            auto const set = [&] { function(object.get(), world.root, property.id(), foreign); };
            if (valid.hasOpposite() || valid.ownsObjects()) {
                EXPECT_EQ(VelumTest::messageOf(set),
                          "Cross-model bi-directional associations are currently disallowed!");
            } else {
                set();
                EXPECT_EQ(property.get(object), foreign);
                EXPECT_EQ(world.model.getReferredModels().size(), 1U);
                property.remove(object);
            }
            EXPECT_EQ(world.print(world.root), before);
            EXPECT_TRUE(world.model.getReferredModels().empty());
        }
    });
}

/// A stored reference without an other end, to one or to many.
bool isPlainReference(Property const& property) {
    return isStored(property) && property.isReference() && !property.hasOpposite() &&
           !property.ownsObjects();
}

TEST(Frame, DestroyTakesReferencesIntoAnotherModelBack) {
    forEach(isPlainReference, [](ConcreteClass const& of, Property const& property) {
        if (!isInPlace(of, property) || !takesSomething(of, property) ||
            (VelumTest::comesDownTo(property, "Unit") &&
             property.description->subsettedCount != 0)) {
            return; // the other end is that of the list that it is a part of
        }
        World world;
        World other;
        ClassObject const object = world.create(of);
        Object const foreign = other.create(VelumTest::partnerClass(property, of.methods));
        if (property.isMany()) {
            property.elements(object).push_back(foreign);
        } else {
            property.set(object, foreign);
        }
        EXPECT_EQ(world.model.getReferredModels().size(), 1U);
        object.destroy();
        EXPECT_TRUE(world.model.getReferredModels().empty());
        EXPECT_TRUE(foreign.isValid());
    });
}

TEST(Frame, StereotypesThatAreAppliedToEachOtherEndTogether) {
    for (ConcreteClass const& of : allClasses()) {
        SCOPED_TRACE(of.name);
        World world;
        ClassObject const object = world.create(of);
        auto const first = QOB::StereotypeObject::create(world.model, "first");
        auto const second = QOB::StereotypeObject::create(world.model, "second");
        object.getAppliedStereotypeInstances().push_back(first);
        first.getAppliedStereotypeInstances().push_back(second);
        second.getAppliedStereotypeInstances().push_back(first);
        EXPECT_FALSE(object.hasAppliedStereotypeInstances());
        first.destroy();
        EXPECT_FALSE(first.isValid());
        EXPECT_FALSE(second.isValid());
        EXPECT_EQ(world.model.getRootObjects().size(), 1);
    }
}

bool ownsObjects(Property const& property) {
    return isStored(property) && property.ownsObjects();
}

/// Puts the part under the owner by the property, or takes it out.
void own(Property const& property, ClassObject const& owner, Object const& part) {
    if (property.isMany()) {
        property.elements(owner).push_back(part);
    } else {
        property.set(owner, part);
    }
}
void disown(Property const& property, ClassObject const& owner, Object const& part) {
    if (property.isMany()) {
        property.elements(owner).removeAll(part);
    } else {
        property.remove(owner);
    }
}

TEST(Frame, ViewsShowWhatIsContainedAndPartsKnowTheirContainer) {
    forEach(ownsObjects, [](ConcreteClass const& of, Property const& property) {
        World world;
        ClassObject const owner = world.create(of);
        ClassObject const other = world.create(of);
        ClassObject const part = world.create(VelumTest::partnerClass(property, of.methods));
        bool const isElement = VelumTest::comesDownTo(property, "ownedElement") ||
                               VelumTest::comesDownTo(property, "ownedMember");
        auto const isOwnedElement = [&](ClassObject const& by) {
            foundation::Element const element(by);
            return element.get() != nullptr &&
                   element.getOwnedElements().contains(foundation::Element(part));
        };
        own(property, owner, part);
        EXPECT_TRUE(contains(owner, part));
        EXPECT_EQ(owner.getContaineeQOBs().size(), 1);
        EXPECT_EQ(part.getContainerQOB(), owner);
        EXPECT_EQ(isOwnedElement(owner), isElement);
        if (foundation::Namespace const space(owner); space.get() != nullptr) {
            EXPECT_EQ(space.getOwnedMembers().size(),
                      VelumTest::comesDownTo(property, "ownedMember") ? 1 : 0);
        }

        own(property, other, part);
        EXPECT_EQ(part.getContainerQOB(), other);
        EXPECT_TRUE(contains(other, part));
        EXPECT_FALSE(contains(owner, part)) << "an object is in one place only";
        EXPECT_FALSE(isOwnedElement(owner));

        disown(property, other, part);
        EXPECT_FALSE(contains(other, part));
        EXPECT_FALSE(part.hasContainerQOB());
        EXPECT_TRUE(part.isValid());

        own(property, owner, part);
        owner.getContaineeQOBs().removeAll(part);
        EXPECT_FALSE(contains(owner, part));
        EXPECT_FALSE(part.hasContainerQOB());
    });
}

/// Nothing in the world leads to the object any more, but lists of plain references, where it shows
/// as gone.
void expectCutOff(World const& world, Deviant deviant, ClassObject const& object) {
    std::string const text = world.print(deviant);
    std::string const link = show(in(deviant, object));
    EXPECT_EQ(link.substr(link.find(' ')), " gone");
    EXPECT_EQ(text.find("in " + link), std::string::npos);
}

TEST(Frame, DestroyEndsWhatIsContainedAndCutsEveryAssociation) {
    for (ConcreteClass const& of : allClasses()) {
        for (bool const inBranch : {false, true}) {
            SCOPED_TRACE(of.name);
            World world;
            ClassObject const object = world.createFull(of);
            Deviant const deviant = inBranch ? world.model.createDeviant() : world.root;
            QOB::Model const model = world.model.inDeviant(deviant);
            std::string const before = world.print(deviant);
            struct Target {
                Property property;
                ClassObject object;
            };
            std::vector<Target> targets;
            for (Property const& property : VelumTest::propertiesOf(of.methods)) {
                if (isStored(property) && property.isReference() && isInPlace(of, property)) {
                    if (property.isMany()) {
                        for (Object const& each : property.elements(in(deviant, object))) {
                            targets.push_back({property, ClassObject(each)});
                        }
                    } else if (Object const one = property.get(in(deviant, object));
                               one.isValid()) {
                        targets.push_back({property, ClassObject(one)});
                    }
                }
            }
            model.setUndoEnabled(true);
            {
                QOB::Transaction transaction(model);
                in(deviant, object).destroy();
                transaction.commit();
            }
            EXPECT_FALSE(in(deviant, object).isValid());
            EXPECT_EQ(object.isValid(), inBranch);
            for (Target const& target : targets) {
                SCOPED_TRACE(place(of, target.property));
                ClassObject const far = in(deviant, target.object);
                EXPECT_EQ(far.isValid(), !target.property.ownsObjects());
                if (far.isValid() && target.property.hasOpposite()) {
                    Property const back = target.property.opposite();
                    if (back.isMany()) {
                        EXPECT_FALSE(holds(back.elements(far), object));
                    } else {
                        EXPECT_EQ(back.get(far).get(), nullptr);
                    }
                }
            }
            EXPECT_FALSE(model.getRootObjects().contains(object));
            expectCutOff(world, deviant, object);
            if (inBranch) {
                EXPECT_EQ(world.print(world.root), before);
            }
            EXPECT_TRUE(model.undo());
            EXPECT_EQ(world.print(deviant), before);
        }
    }
}

TEST(Frame, DestroyOfWhatIsReferredToIsSeenByWhoRefersToIt) {
    auto const refers = [](Property const& p) { return isStored(p) && p.isReference(); };
    forEach(refers, [](ConcreteClass const& of, Property const& property) {
        if (!takesSomething(of, property)) {
            return;
        }
        World world;
        ClassObject const object = world.create(of);
        ClassObject const target = world.create(VelumTest::partnerClass(property, of.methods));
        own(property, object, target);
        target.destroy();
        Property const valid = VelumTest::inPlaceOf(property, of.methods);
        EXPECT_EQ(object.isValid(), !valid.isWayToOwner()) << "an owned object ends with its owner";
        if (!object.isValid()) {
            return;
        }
        if (!property.isMany()) {
            EXPECT_FALSE(property.get(object).isValid());
        } else if (property.hasOpposite() || property.ownsObjects()) {
            EXPECT_EQ(property.elements(object).size(), 0);
        } else {
            EXPECT_FALSE(property.elements(object).at(0).isValid());
        }
        EXPECT_FALSE(contains(object, target));
    });
}

TEST(Frame, BothSubObjectsOfATypeAreOneObject) {
    int count = 0;
    for (ConcreteClass const& of : allClasses()) {
        World world;
        ClassObject const object = world.create(of);
        auto* const type = QOB::castObject<foundation::NSInterface::TypeIntf>(object.get());
        if (type == nullptr) {
            continue;
        }
        SCOPED_TRACE(of.name);
        ++count;
        foundation::NSInterface::NamespaceIntf* const second = type;
        foundation::NSInterface::NamedElementIntf* const first =
            QOB::upcast<foundation::NSInterface::NamedElementIntf>(type);
        Deviant const d = world.root;
        EXPECT_NE(static_cast<void*>(second), static_cast<void*>(first));
        EXPECT_EQ(QOB::castObject<foundation::NSInterface::NamespaceIntf>(object.get()), second);
        second->setName(d, "seen from behind");
        EXPECT_EQ(first->getName(d), "seen from behind");
        EXPECT_EQ(second->numRef(), first->numRef());
        EXPECT_EQ(second->getRootDeviant(), d);
        EXPECT_STREQ(second->getLumvoName(false), first->getLumvoName(false));
        EXPECT_TRUE(second->deviant_isValid(d));
        EXPECT_EQ(second->internal_getDeviation(d), first->internal_getDeviation(d));
        // The pair is the only one whose result is the second sub-object of the state.
        auto* const state = QOB::castObject<foundation::NSInterface::NamespaceIntf>(
            first->internal_getDeviation(d));
        EXPECT_EQ(second->getReadDeviant(d), state);
        EXPECT_EQ(second->getWriteDeviant(d), state);
        EXPECT_EQ(second->getReadDeviant(d)->getReadDeviant(d), nullptr);
        foundation::ElementImport const import = foundation::ElementImport::create(world.model);
        second->getElementImports(d).push_back(import);
        EXPECT_EQ(import.getContainerQOB(), object);
        EXPECT_EQ(second->getOwnedMembers(d).size(), 0);
    }
    EXPECT_EQ(count, 11);
}

TEST(Frame, AStateAnswersAsAPlainStore) {
    for (ConcreteClass const& of : allClasses()) {
        SCOPED_TRACE(of.name);
        World world;
        ClassObject const object = world.create(of);
        auto* const state = QOB::castObject<QOB::NSInterface::ClassObjectIntf>(
            object->internal_getDeviation(world.root));
        ASSERT_NE(state, nullptr);
        EXPECT_EQ(state->getReadDeviantI(world.root, state), nullptr);
        EXPECT_EQ(state->getWriteDeviantI(world.root, state), nullptr);
        EXPECT_EQ(state->numRef(), 0);
        EXPECT_FALSE(state->deviant_isValid(world.root));
        EXPECT_FALSE(state->getRootDeviant().isNotNull());
        EXPECT_THROW(state->getLumvoName(false), QOB::Exception);
        EXPECT_THROW(state->getObjectId(world.root), QOB::Exception);
        state->destroy(world.root);
        EXPECT_TRUE(object.isValid());
    }
}

/// Every access through an empty handle is refused in the same words, at the header of the handle:
/// also where a base of the class, or of the handle, has the operation.
template <class Handle, class Immutable>
void expectRefusals(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char letter) {
        return static_cast<char>(std::tolower(letter));
    });
    std::string const expected =
        "Assertion failed: Cannot access NULL ref. Use isValid() before calling methods at "
        "include/velum_types/zorvane/metamodel/types/zorvanemetamodeltypes" +
        name + ".h:";
    Handle const empty;
    Immutable const reader;
    EXPECT_FALSE(empty.isValid());
    for (std::string const& failure : {failureOf([&] { empty.getContainerQOB(); }),
                                       failureOf([&] { empty.destroy(); }),
                                       failureOf([&] { empty.setName("name"); }),
                                       failureOf([&] { empty.deviant_isValid(); }),
                                       failureOf([&] { empty->getRootDeviant(); }),
                                       failureOf([&] { reader.getObjectId(); }),
                                       failureOf([&] { reader.getName(); }),
                                       failureOf([&] { reader->getRootDeviant(); })}) {
        EXPECT_EQ(failure.find(expected), 0U) << failure;
    }
}

/// The handles of one class.
template <class Handle, class Immutable>
void expectHandles(char const* name) {
    SCOPED_TRACE(name);
    World world;
    Handle const handle = Handle::create(world.model);
    Immutable const reader = handle;
    ClassObject const object = handle;
    foundation::Element const element = handle;
    EXPECT_EQ(object.get(), QOB::castObject<QOB::NSInterface::ClassObjectIntf>(handle.get()));
    EXPECT_EQ(Handle(object), handle);
    EXPECT_EQ(Handle(element), handle);
    EXPECT_EQ(Immutable(QOB::ImmutableClassObject(object)), reader);
    EXPECT_EQ(Handle(ClassObject(types::Unit::create(world.model))).get() != nullptr,
              std::string(name) == "Unit");
    EXPECT_EQ(Handle(ClassObject()).get(), nullptr);
    std::string const package = "Zorvane.metamodel.types.";
    EXPECT_EQ(handle.getLumvoName(false), package + name);
    EXPECT_EQ(handle.getLumvoName(true), package + "Immutable" + name);

    Deviant const branch = world.model.createDeviant();
    Handle const inBranch(handle.get(), branch);
    EXPECT_EQ(inBranch, handle) << "one object in two deviants";
    EXPECT_EQ(inBranch.getDeviant(), branch);
    EXPECT_EQ(ClassObject(inBranch).getDeviant(), branch);
    EXPECT_EQ(Handle(ClassObject(inBranch)).getDeviant(), branch);
    World other;
    inBranch.setDeviant(other.root);
    EXPECT_EQ(inBranch.getDeviant(), world.root) << "a deviant of another model is not taken";
    int const count = handle->numRef();
    Handle copy = handle;
    EXPECT_EQ(handle->numRef(), count + 1);
    Handle const& same = copy;
    copy = same;
    EXPECT_EQ(handle->numRef(), count + 1);
    copy = Handle();
    EXPECT_EQ(handle->numRef(), count);

    inBranch.setDeviant(branch);
    inBranch.destroy();
    EXPECT_FALSE(inBranch.isValid());
    EXPECT_TRUE(handle.isValid());
    expectRefusals<Handle, Immutable>(name);
}

#define VELUM_EXPECT_HANDLES(Class) expectHandles<types::Class, types::Immutable##Class>(#Class);

TEST(Frame, HandlesConvertAlongTheClassesAndShowOneObjectInAnyDeviant) {
    VELUM_CONCRETE_CLASSES(VELUM_EXPECT_HANDLES)
}

} // namespace
