#include "fixture.h"
#include "qob/kernel/deviant/sparsetables.h"
#include "qob/qob/class.h"
#include "support/allocation_count.h"

#include <memory>
#include <string>
#include <vector>

using QOB::ClassObject;
using QOB::Deviant;
using QOB::ExternalToolInfo;
using QOB::StereotypeObject;
using QOB::String;
using QOB::NSInterface::ClassObjectIntf;
using sample::Thing;

namespace {

/// How many states have something in one of the tables.
struct Entries {
    std::size_t stereotypes = ClassObjectIntf::appliedStereotypeInstance_sparse().size();
    std::size_t ids = ClassObjectIntf::externalId_sparse().size();
    std::size_t infos = ClassObjectIntf::externalToolInfo_sparse().size();

    friend bool operator==(Entries const&, Entries const&) = default;
};

template <class Stereotypes>
std::string namesOf(Stereotypes const& stereotypes) {
    std::string names;
    for (StereotypeObject const& each : stereotypes) {
        names += each.getStereotypeName().view();
        names += ' ';
    }
    return names;
}

ClassObject in(Deviant deviant, ClassObject const& object) {
    return {object.get(), deviant};
}

/// An object with an external id, two tool infos and two stereotypes; and what the tables held
/// before it.
class SparseProperties : public ThingModel {
protected:
    SparseProperties() {
        object.setExternalId("outside");
        object.setExternalToolInfo({"first", "1"});
        object.setExternalToolInfo({"second", "2"});
        object.getAppliedStereotypeInstances().push_back(bold);
        italic.setContainerQOB(object);
    }

    Entries const before;
    Thing thing = Thing::create(model, 1);
    ClassObject object{thing.get(), thing.getDeviant()};
    StereotypeObject bold = StereotypeObject::create(model, "bold");
    StereotypeObject italic = StereotypeObject::create(model, "italic");
};

} // namespace

TEST_F(SparseProperties, AreKeptByStateAndGoWithIt) {
    ClassObjectIntf const* const state = object->getReadDeviantI(model.getDeviant(), object.get());
    EXPECT_EQ(ClassObjectIntf::externalId_sparse().at(state), String("outside"));
    EXPECT_EQ(ClassObjectIntf::externalToolInfo_sparse().at(state)->generic_size({}), 2);
    EXPECT_EQ(ClassObjectIntf::appliedStereotypeInstance_sparse().at(state)->generic_size({}), 2);
    object.destroy();
    EXPECT_EQ(Entries(), before);
    EXPECT_FALSE(bold.isValid());
    EXPECT_FALSE(italic.isValid());
}

TEST_F(SparseProperties, GoWithTheModel) {
    Deviant const branch = model.createDeviant();
    in(branch, object).setExternalId("branch");
    model.destroy();
    EXPECT_EQ(Entries(), before);
}

TEST_F(SparseProperties, AStateThatIsCopiedOrDeletedByHandKeepsItsEntriesStraight) {
    ClassObjectIntf const* const state = object->getReadDeviantI(model.getDeviant(), object.get());
    Entries const with;
    auto* const copy =
        static_cast<ClassObjectIntf*>(object->deviant_getCopyOfDeviation(model.getDeviant()));
    EXPECT_EQ(copy->getExternalId({}), String("outside"));
    EXPECT_EQ(copy->getExternalToolInfo({}, "second").getValue(), String("2"));
    copy->setExternalId({}, "copy");
    copy->getExternalToolInfosWithoutAssociation({}).clear();
    copy->removeExternalToolInfo({}, {"second", "2"});
    EXPECT_FALSE(copy->hasExternalToolInfos({}));
    EXPECT_EQ(namesOf(copy->getAppliedStereotypeInstances(model.getDeviant())), "bold italic ");
    EXPECT_EQ(state->getExternalId({}), String("outside"));
    EXPECT_TRUE(state->hasExternalToolInfos({}));
    delete copy;
    EXPECT_EQ(Entries(), with);
}

TEST_F(SparseProperties, AStateTakesOverWhatAnotherHasPropertyByProperty) {
    sample::NSImplementation::ThingDeviantImpl state;
    Deviant const root = model.getDeviant();
    ClassObjectIntf* const from = object->getReadDeviantI(root, object.get());
    ClassObjectIntf* const to = &state;
    to->setExternalToolInfo(root, {"gone", "0"});
    to->ClassObjectIntf::internal_deviationAssign(root, from, root);
    EXPECT_EQ(to->getExternalId(root), String("outside"));
    EXPECT_FALSE(to->getExternalToolInfo(root, "gone").isValid());
    EXPECT_EQ(to->getExternalToolInfo(root, "first").getValue(), String("1"));
    EXPECT_EQ(namesOf(to->getAppliedStereotypeInstances(root)), "bold italic ");
    sample::NSImplementation::ThingDeviantImpl none;
    to->ClassObjectIntf::internal_deviationAssign(root, &none, root);
    EXPECT_FALSE(to->hasExternalId(root));
    EXPECT_FALSE(to->hasExternalToolInfos(root));
    EXPECT_FALSE(to->hasAppliedStereotypeInstances(root));
    EXPECT_FALSE(none.hasAppliedStereotypeInstances(root));
}

TEST_F(SparseProperties, ABranchHasItsOwnFromItsFirstWriteOn) {
    Deviant const branch = model.createDeviant();
    ClassObject const there = in(branch, object);
    EXPECT_EQ(there.getExternalId(), String("outside"));
    there.setExternalId("branch");
    there.setExternalToolInfo({"first", "one"});
    there.getAppliedStereotypeInstances().removeAll(bold);
    EXPECT_EQ(object.getExternalId(), String("outside"));
    EXPECT_EQ(object.getExternalToolInfo("first").getValue(), String("1"));
    EXPECT_EQ(namesOf(object.getAppliedStereotypeInstances()), "bold italic ");
    EXPECT_EQ(there.getExternalToolInfo("first").getValue(), String("one"));
    EXPECT_EQ(there.getExternalToolInfos().size(), 2);
    EXPECT_EQ(namesOf(there.getAppliedStereotypeInstances()), "italic ");
    EXPECT_FALSE(in(branch, bold).hasContainerQOB());
    EXPECT_TRUE(bold.hasContainerQOB());
}

TEST_F(SparseProperties, ARollbackAndUndoBringThemBack) {
    {
        QOB::Transaction const forgotten(model);
        object.removeExternalId();
        object.getExternalToolInfos().clear();
        bold.destroy();
        EXPECT_FALSE(object.hasExternalId());
        EXPECT_EQ(namesOf(object.getAppliedStereotypeInstances()), "italic ");
    }
    EXPECT_EQ(object.getExternalId(), String("outside"));
    EXPECT_EQ(object.getExternalToolInfos().size(), 2);
    EXPECT_EQ(namesOf(object.getAppliedStereotypeInstances()), "bold italic ");

    model.setUndoEnabled(true);
    {
        QOB::Transaction transaction(model);
        object.setExternalId("changed");
        object.destroy();
        transaction.commit();
    }
    EXPECT_FALSE(italic.isValid());
    ASSERT_TRUE(model.undo());
    EXPECT_EQ(object.getExternalId(), String("outside"));
    EXPECT_EQ(namesOf(object.getAppliedStereotypeInstances()), "bold italic ");
    EXPECT_EQ(italic.getContainerQOB(), object);
    ASSERT_TRUE(model.redo());
    EXPECT_FALSE(object.isValid());
}

TEST_F(SparseProperties, AMergeBringsThemOver) {
    QOB::Model const inBranch = branch();
    // A thing assigns its own three properties only; a stereotype object all that an object has.
    ClassObject const there = in(inBranch.getDeviant(), bold);
    there.setExternalId("merged");
    there.setExternalToolInfo({"tool", "text"});
    StereotypeObject const made = StereotypeObject::create(inBranch, "made");
    there.getAppliedStereotypeInstances().push_back(made);
    model.mergeDeviant(inBranch.getDeviant());
    EXPECT_EQ(bold.getExternalId(), String("merged"));
    EXPECT_EQ(bold.getExternalToolInfo("tool").getValue(), String("text"));
    EXPECT_EQ(namesOf(bold.getAppliedStereotypeInstances()), "made ");
    EXPECT_EQ(in(model.getDeviant(), made).getContainerQOB(), ClassObject(bold));

    in(inBranch.getDeviant(), bold).removeExternalId();
    in(inBranch.getDeviant(), made).destroy();
    model.mergeDeviant(inBranch.getDeviant());
    EXPECT_FALSE(bold.hasExternalId());
    EXPECT_FALSE(in(model.getDeviant(), made).isValid());
    EXPECT_FALSE(bold.hasAppliedStereotypeInstances());
}

TEST_F(SparseProperties, StereotypesAreContainedAtBothEnds) {
    EXPECT_EQ(italic.getContainerQOB(), object);
    EXPECT_EQ(object.getContaineeQOBs().size(), 2);
    EXPECT_EQ(object.getContaineeQOBs().at(0), ClassObject(bold));
    EXPECT_EQ(object.getContaineeQOBsWithoutAssociation().size(), 2);

    Thing const other = Thing::create(model, 2);
    bold.setContainerQOB(ClassObject(other.get(), other.getDeviant()));
    EXPECT_EQ(namesOf(object.getAppliedStereotypeInstances()), "italic ");
    object.getAppliedStereotypeInstances().push_back(bold);
    EXPECT_FALSE(other->hasAppliedStereotypeInstances(model.getDeviant()));
    object.getAppliedStereotypeInstances().push_back(bold);
    italic.removeContainerQOB();
    EXPECT_EQ(namesOf(object.getAppliedStereotypeInstances()), "bold ");

    QOB::Model const stranger = QOB::NSInterface::FactoryIntf::createNewModel();
    StereotypeObject const foreign = StereotypeObject::create(stranger, "foreign");
    EXPECT_EQ(messageOf([&] { foreign.setContainerQOB(object); }),
              "Cross-model bi-directional associations are currently disallowed!");
    stranger.destroy();
    EXPECT_EQ(namesOf(object.getAppliedStereotypeInstances()), "bold ");
}

TEST_F(SparseProperties, StereotypesOfThemselvesAndOfEachOtherEnd) {
    for (int length = 1; length != 4; ++length) {
        std::vector<StereotypeObject> ring;
        for (int i = 0; i != length; ++i) {
            ring.push_back(StereotypeObject::create(model, "ring"));
        }
        for (int i = 0; i != length; ++i) {
            ring[static_cast<std::size_t>(i)].getAppliedStereotypeInstances().push_back(
                ring[static_cast<std::size_t>((i + 1) % length)]);
        }
        EXPECT_EQ(ring.front().getContainerQOB(), ClassObject(ring.back()));
        QOB::Model const inBranch = branch();
        in(inBranch.getDeviant(), ring.back()).destroy();
        for (StereotypeObject const& each : ring) {
            EXPECT_TRUE(each.isValid());
            EXPECT_FALSE(in(inBranch.getDeviant(), each).isValid());
        }
        model.mergeDeviant(inBranch.getDeviant());
        for (StereotypeObject const& each : ring) {
            EXPECT_FALSE(each.isValid());
        }
    }
    // Applied to the element of a metamodel that is applied to it.
    QOB::Package const package = QOB::Package::create(model, "package");
    QOB::Package const outer = QOB::Package::create(model, "outer");
    package.setParent(outer);
    StereotypeObject const tag = StereotypeObject::create(model, "tag");
    outer.getAppliedStereotypeInstances().push_back(tag);
    package.getAppliedStereotypeInstances().push_back(tag);
    outer.destroy();
    EXPECT_FALSE(tag.isValid());
}

TEST_F(SparseProperties, ToolInfosAreFoundByTheirKey) {
    object.setExternalToolInfo({"first", "one"});
    EXPECT_EQ(object.getExternalToolInfos().size(), 2);
    EXPECT_EQ(object.getExternalToolInfo("first").getValue(), String("one"));
    object.removeExternalToolInfo({"first", "1"});
    EXPECT_EQ(object.getExternalToolInfos().size(), 2) << "another text under the key";
    object.removeExternalToolInfo({"first", "one"});
    EXPECT_FALSE(object.getExternalToolInfo("first").isValid());
    EXPECT_EQ(messageOf([&] { object.setExternalToolInfo(ExternalToolInfo()); }),
              "An external tool info needs a key.");
    object.setExternalId("");
    EXPECT_FALSE(object.hasExternalId());
    EXPECT_FALSE(object.getExternalId().isValid());
}

TEST_F(SparseProperties, WhatChangesNothingMakesNoState) {
    QOB::Model const inBranch = branch();
    ClassObject const there = in(inBranch.getDeviant(), object);
    there.setExternalId("outside");
    there.setExternalToolInfo({"first", "1"});
    there.getAppliedStereotypeInstances().push_back({bold.get(), inBranch.getDeviant()});
    there.removeExternalToolInfo({"third", "3"});
    EXPECT_FALSE(QOB::isRealState(there->internal_getDeviation(inBranch.getDeviant())));
}

TEST_F(SparseProperties, OrdinaryObjectsPayNothingForThem) {
    Thing const plain = Thing::create(model, 3);
    ClassObject const handle(plain.get(), plain.getDeviant());
    Entries const with;
    std::size_t const start = VelumTest::allocationCount();
    bool const none = !handle.hasExternalId() && !handle.hasExternalToolInfos() &&
                      !handle.hasAppliedStereotypeInstances() &&
                      !handle.getExternalId().isValid() &&
                      !plain->getExternalToolInfo(model.getDeviant(), String()).isValid() &&
                      handle.getRootModel() == model;
    handle.removeExternalId();
    EXPECT_EQ(VelumTest::allocationCount() - start, 0U);
    EXPECT_TRUE(none);
    EXPECT_TRUE(plain->getAppliedStereotypeInstances(model.getDeviant()).empty());
    plain->internal_disconnect(model.getDeviant());
    EXPECT_EQ(Entries(), with);

    // A state is made, copied and freed without a look at the tables.
    static_assert(sizeof(ClassObjectIntf) == 2 * sizeof(void*));
    std::size_t const first = VelumTest::allocationCount();
    delete static_cast<ClassObjectIntf*>(plain->deviant_getCopyOfDeviation(model.getDeviant()));
    EXPECT_LE(VelumTest::allocationCount() - first, 1U);
}

TEST_F(SparseProperties, TheModelsListIsTheOtherEndOfTheRootModel) {
    EXPECT_EQ(object.getRootModel(), model);
    object.removeRootModel();
    EXPECT_FALSE(object.hasRootModel());
    EXPECT_FALSE(object.hasModelQOB());
    EXPECT_FALSE(model.getRootObjects().contains(object));
    EXPECT_TRUE(object.isValid());
}

TEST_F(SparseProperties, AnObjectWithoutALiveClassHasNone) {
    EXPECT_FALSE(object.getMetaClass().isValid());
    EXPECT_FALSE(object.getMetaType().isValid());
    EXPECT_FALSE(
        String(QOB::Object(object)->convertFromString(model.getDeviant(), "text")).isValid());
    ClassObjectIntf* const state = object->getReadDeviantI(model.getDeviant(), object.get());
    EXPECT_EQ(state->convertFromString(model.getDeviant(), "text").get(), nullptr);
}
