#include "fixture.h"
#include "qob/qob/clipboardmanager.h"
#include "qob/qob/domainregistry.h"
#include "qob/qob/initialize.h"
#include "qob/qob/log.h"
#include "qob/qob/modelcache.h"
#include "qob/qob/transaction.h"

#include <climits>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <utility>
#include <vector>

using sample::Thing;
using sample::NSImplementation::Alive;

using Model = ThingModel;

TEST_F(Model, DeviantsComeRootFirstThenInOrderOfCreation) {
    QOB::Deviant const a = model.createDeviant();
    QOB::Deviant const b = model.createDeviant();
    QOB::Deviant const c = model.createDeviant();
    model.removeDeviant(b);
    std::vector<QOB::Deviant> all;
    c.getAllDeviants(all);
    EXPECT_EQ(all, (std::vector<QOB::Deviant>{model.getDeviant(), a, c}));
    EXPECT_TRUE(model.getDeviant().isRootDeviant());
    EXPECT_FALSE(a.isRootDeviant());
    EXPECT_EQ(a.getRootDeviant(), model.getDeviant());
    EXPECT_FALSE(b.isValid());
    EXPECT_TRUE(b.isNotNull());
    EXPECT_EQ(b.getRootDeviant(), QOB::Deviant());
    b.getAllDeviants(all);
    EXPECT_TRUE(all.empty());
}

TEST_F(Model, WordOfARemovedDeviantNeverComesBack) {
    QOB::Deviant const first = model.createDeviant();
    model.removeDeviant(first);
    for (int i = 0; i < 1000; ++i) {
        QOB::Deviant const next = model.createDeviant();
        ASSERT_NE(next, first);
        model.removeDeviant(next);
    }
    EXPECT_FALSE(first.isValid());
}

TEST_F(Model, RemovingADeviantRefusesWhatIsNoBranchOfTheModel) {
    QOB::Model const other = QOB::NSInterface::FactoryIntf::createNewModel();
    QOB::Deviant const removed = model.createDeviant();
    model.removeDeviant(removed);
    EXPECT_EQ(messageOf([&] { model.removeDeviant(model.getDeviant()); }),
              "The root deviant of a model cannot be removed.");
    EXPECT_EQ(messageOf([&] { model.removeDeviant(other.createDeviant()); }),
              "The deviant belongs to another model.");
    EXPECT_EQ(messageOf([&] { model.removeDeviant(removed); }),
              "object accessed after its deviant has been removed");
    EXPECT_EQ(messageOf([&] { model.removeDeviant(QOB::Deviant()); }),
              "object accessed after its deviant has been removed");
    other.destroy();
}

TEST_F(Model, IdsAreFreshAndFoundWhereTheObjectExists) {
    Thing const thing = Thing::create(model);
    Thing const given = Thing::createWithId(model, 100);
    Thing const next = Thing::create(model);
    EXPECT_EQ(next.getObjectId(), 101);
    EXPECT_EQ(model.findObject(100), QOB::ClassObject(given));
    EXPECT_FALSE(model.findObject(5000).isValid());
    EXPECT_FALSE(model.findObject(QOB::Integer()).isValid());
    EXPECT_EQ(messageOf([&] { Thing::createWithId(model, 100); }),
              "The object id (100) belongs to the object (sample.Thing, id 100) already.");
    given.destroy();
    EXPECT_FALSE(model.findObject(100).isValid());
    Thing const again = Thing::createWithId(model, 100);
    EXPECT_EQ(model.findObject(100), QOB::ClassObject(again));
    EXPECT_TRUE(thing.isValid());
}

TEST_F(Model, IdsAreFoundAfterTheLargestWasUsed) {
    Thing const first = Thing::create(model);
    Thing const largest = Thing::createWithId(model, INT_MAX);
    Thing const third = Thing::createWithId(model, 3);
    std::set<int> ids;
    for (int i = 0; i != 3; ++i) {
        Thing const next = Thing::create(model);
        ids.insert(next.getObjectId());
        EXPECT_EQ(model.findObject(next.getObjectId()), QOB::ClassObject(next));
    }
    EXPECT_EQ(ids, (std::set<int>{2, 4, 5}));
    EXPECT_EQ(model.findObject(INT_MAX), QOB::ClassObject(largest));
}

TEST_F(Model, IdsAreNeverShared) {
    QOB::Model const other = QOB::NSInterface::FactoryIntf::createNewModel();
    Thing const far = Thing::createWithId(other, 50);
    Thing const thing = Thing::createWithId(model, 51);
    QOB::Deviant const root = model.getDeviant();
    EXPECT_EQ(messageOf([&] { model->bindObjectId(root, QOB::ClassObject(far), 52); }),
              "The object belongs to another model.");
    EXPECT_EQ(far.getObjectId(), 50);
    EXPECT_FALSE(model.findObject(52).isValid());
    QOB::Model const inBranch = branch();
    thing.in(inBranch.getDeviant()).destroy();
    Thing const next = Thing::createWithId(inBranch, 51);
    model.mergeDeviant(inBranch.getDeviant());
    EXPECT_EQ(model.findObject(51), QOB::ClassObject(next));
    QOB::Model const second = branch();
    Thing const one = Thing::createWithId(inBranch, 60);
    Thing const two = Thing::createWithId(second, 60);
    model.mergeDeviant(inBranch.getDeviant());
    EXPECT_EQ(messageOf([&] { model.mergeDeviant(second.getDeviant()); }),
              "Cannot merge the object (sample.Thing, id 60): its id belongs to the object "
              "(sample.Thing, id 60) there. Bind one of the two to another id.");
    EXPECT_FALSE(two.in(root).isValid());
    second->bindObjectId(second.getDeviant(), QOB::ClassObject(two), 61);
    model.mergeDeviant(second.getDeviant());
    EXPECT_EQ(model.findObject(60), QOB::ClassObject(one));
    EXPECT_EQ(model.findObject(61), QOB::ClassObject(two));
    EXPECT_EQ(messageOf([&] { model->bindObjectId(root, QOB::ClassObject(two), 60); }),
              "The object id (60) belongs to the object (sample.Thing, id 60) already.");
    EXPECT_EQ(two.getObjectId(), 61);
    other.destroy();
}

TEST_F(Model, RefusedCreationLeavesNoTrace) {
    Thing const taken = Thing::createWithId(model, 70);
    Thing const writes = Thing::create(model, 1);
    QOB::Model const inBranch = branch();
    int const objects = Alive::objects;
    for (QOB::Model const& where : {model, inBranch}) {
        Thing const written = writes.in(where.getDeviant());
        where.setUndoEnabled(true);
        QOB::Transaction transaction(where);
        std::string const refusal =
            "The object id (70) belongs to the object (sample.Thing, id 70) already.";
        EXPECT_EQ(messageOf([&] { Thing::createWithId(where, 70); }), refusal);
        auto const refuse = [&](Thing const& made) {
            written.setNumber(2);
            written.setLink(made);
            QOB_FAIL("refused");
        };
        using sample::NSImplementation::ThingImpl;
        EXPECT_EQ(messageOf([&] { QOB::createObject<Thing, ThingImpl>(where, 90, refuse); }),
                  "refused");
        EXPECT_EQ(Alive::objects, objects);
        EXPECT_EQ(where.getRootObjects().size(), 2);
        EXPECT_EQ(written.getNumber(), 1);
        EXPECT_FALSE(where.findObject(90).isValid());
        transaction.commit();
        EXPECT_FALSE(where.undo());
    }
    model.setUndoEnabled(false);
    EXPECT_NE(failureOf([&] { Thing::createWithId(model, 70); }), "");
    EXPECT_EQ(Alive::objects, objects);
    EXPECT_EQ(model.findObject(70), QOB::ClassObject(taken));
}

TEST_F(Model, ListKeepsObjectsAliveUntilTheyAreDestroyed) {
    int const before = Alive::objects;
    QOB::Integer id;
    {
        Thing const thing = Thing::create(model, 9);
        id = thing.getObjectId();
    }
    EXPECT_EQ(Alive::objects, before + 1);
    EXPECT_EQ(Thing(model.findObject(id)).getNumber(), 9);
    model.findObject(id).destroy();
    EXPECT_EQ(Alive::objects, before);
}

TEST_F(Model, EndFreesEverythingThatHandlesDoNotHold) {
    int const before = Alive::objects;
    int const states = Alive::states;
    Thing kept = Thing::create(model, 1);
    Thing const other = Thing::create(model, 2);
    kept.setLink(other);
    other.setLink(kept);
    model.setUndoEnabled(true);
    {
        QOB::Transaction transaction(model);
        Thing::create(model, 3).destroy();
        kept.setNumber(4);
        transaction.commit();
    }
    QOB::Transaction open(model);
    kept.in(model.createDeviant()).setNumber(5);
    other.setNumber(6);
    model.destroy();
    EXPECT_EQ(Alive::states, states);
    EXPECT_EQ(Alive::objects, before + 2);
    kept = Thing();
    EXPECT_EQ(Alive::objects, before + 1);
    EXPECT_EQ(messageOf([&] { open.commit(); }),
              "Cannot commit the transaction: it has ended by the rollback of another one or with "
              "its deviant.");
    model.destroy();
}

TEST_F(Model, ReferredModelsAreCountedInStepWithUndoAndBranches) {
    QOB::Model const other = QOB::NSInterface::FactoryIntf::createNewModel();
    Thing const far = Thing::create(other);
    Thing const a = Thing::create(model);
    Thing const b = Thing::create(model);
    auto const refers = [](QOB::Model const& from) { return from.getReferredModels().size(); };
    EXPECT_EQ(refers(model), 0U);
    a.setLink(far);
    b.setLink(far);
    EXPECT_EQ(model.getReferredModels(), std::vector<QOB::Model>{other});
    a.setLink(b);
    EXPECT_EQ(refers(model), 1U) << "the other one is still there";
    {
        QOB::Transaction transaction(model);
        b->removeLink(model.getDeviant());
        EXPECT_EQ(refers(model), 0U);
    }
    EXPECT_EQ(refers(model), 1U);
    QOB::Model const inBranch = branch();
    b.in(inBranch.getDeviant())->removeLink(inBranch.getDeviant());
    EXPECT_EQ(refers(inBranch), 0U);
    EXPECT_EQ(refers(model), 1U);
    a->removeLink(model.getDeviant());
    other.destroy();
    EXPECT_EQ(refers(model), 0U);
}

TEST_F(Model, MergeAssignsBringsInAndDestroys) {
    Thing const changed = Thing::create(model, 1);
    Thing const dropped = Thing::create(model, 2);
    Thing const gone = Thing::create(model, 3);
    QOB::Model const source = branch();
    QOB::Deviant const d = source.getDeviant();
    changed.in(d).setNumber(10);
    Thing const made = Thing::create(source, 11);
    changed.in(d).setLink(made);
    made.setLink(changed.in(d));
    dropped.in(d).destroy();
    gone.in(d).setNumber(12);
    gone.destroy();
    Thing const later = Thing::create(model, 4);

    model.mergeDeviant(d);
    QOB::Deviant const root = model.getDeviant();
    EXPECT_EQ(changed.getNumber(), 10);
    EXPECT_TRUE(made.in(root).isValid());
    EXPECT_EQ(made.in(root).getNumber(), 11);
    EXPECT_EQ(changed.getLink(), made);
    EXPECT_EQ(made.in(root).getLink(), changed);
    EXPECT_FALSE(dropped.isValid());
    EXPECT_FALSE(gone.isValid()) << "what the target destroyed stays so";
    EXPECT_TRUE(later.isValid()) << "what the source never saw is left alone";
    EXPECT_EQ(model.findObject(made.getObjectId()), QOB::ClassObject(made));
}

TEST_F(Model, MergeLeavesObjectsAloneThatTheSourceNeverSaw) {
    QOB::Model const source = branch();
    Thing thing;
    {
        QOB::Transaction transaction(model);
        thing = Thing::create(model, 1);
        transaction.commit();
    }
    EXPECT_FALSE(thing.in(source.getDeviant()).isValid());
    model.mergeDeviant(source.getDeviant());
    EXPECT_TRUE(thing.isValid());
}

TEST_F(Model, MergeIsOneStepOfUndoAndIsTakenBackWhole) {
    Thing const thing = Thing::create(model, 1);
    QOB::Model const source = branch();
    thing.in(source.getDeviant()).setNumber(2);
    Thing const made = Thing::create(source, 3);
    model.setUndoEnabled(true);
    model.mergeDeviant(source.getDeviant());
    EXPECT_TRUE(model.undo());
    EXPECT_EQ(thing.getNumber(), 1);
    EXPECT_FALSE(made.in(model.getDeviant()).isValid());
    EXPECT_TRUE(model.redo());
    EXPECT_EQ(thing.getNumber(), 2);
    EXPECT_EQ(made.in(model.getDeviant()).getNumber(), 3);
    EXPECT_TRUE(model.undo());
    model.mergeDeviant(source.getDeviant());
    EXPECT_TRUE(made.in(model.getDeviant()).isValid());
    EXPECT_EQ(messageOf([&] { model.mergeDeviant(model.getDeviant()); }),
              "A deviant cannot be merged into itself.");
    model.undo();
    model.setReadOnly(true);
    EXPECT_EQ(messageOf([&] { model.mergeDeviant(source.getDeviant()); }).substr(0, 12),
              "Cannot write");
    EXPECT_FALSE(model.getDeviant().isWithinTransaction());
    EXPECT_FALSE(made.in(model.getDeviant()).isValid());
    model.setReadOnly(false);
    QOB::Transaction open(source);
    EXPECT_EQ(messageOf([&] { model.mergeDeviant(source.getDeviant()); }),
              "A deviant with an open transaction cannot be merged.");
}

TEST_F(Model, CacheGivesFreeNamesAndForgetsModelsThatEnd) {
    QOB::ModelCache& cache = *QOB::ModelCache::instance();
    std::wstring const uri = cache.getNextAvailableModelUri(L"a name");
    EXPECT_EQ(uri, L"a name");
    cache.bindModel(uri, model);
    cache.bindModel(uri, model);
    EXPECT_EQ(cache.getNextAvailableModelUri(L"a name"), L"a name1");
    EXPECT_EQ(cache.findModel(uri), model);
    QOB::Model const other = QOB::NSInterface::FactoryIntf::createNewModel();
    EXPECT_EQ(messageOf([&] { cache.bindModel(uri, other); }),
              "The URI (a name) belongs to another model.");
    model.destroy();
    EXPECT_FALSE(cache.findModel(uri).isValid());
    EXPECT_EQ(cache.getNextAvailableModelUri(L"a name"), L"a name");
    other.destroy();
}

TEST_F(Model, UriFollowsDeviantsAndGivesObjectsTheirs) {
    Thing const thing = Thing::createWithId(model, 7);
    EXPECT_FALSE(model.hasUri());
    EXPECT_FALSE(QOB::ClassObject(thing).hasUri());
    model.setUri("store");
    EXPECT_EQ(QOB::ClassObject(thing).getUri(), "store#7");
    QOB::Model const inBranch = branch();
    inBranch.setUri("copy");
    EXPECT_EQ(model.getUri(), "store");
    EXPECT_EQ(QOB::ClassObject(thing.in(inBranch.getDeviant())).getUri(), "copy#7");
    EXPECT_EQ(messageOf([&] { thing->setUri(model.getDeviant(), "x"); }),
              "The URI of an object follows from its model and its id and cannot be set.");
}

TEST(Kernel, StartsOnceAndHasOneMetaRegistry) {
    EXPECT_TRUE(QOB::initialize());
    EXPECT_TRUE(QOB::initialize());
    QOB::DomainRegistry& registry = *QOB::DomainRegistry::instance();
    EXPECT_TRUE(registry.getMetaRegistry().isValid());
    EXPECT_EQ(registry.getMetaRegistry(), QOB::DomainRegistry::instance()->getMetaRegistry());
    EXPECT_EQ(registry.getDomainCanonicalUri("types"), L"qob://metamodels/types");
    QOB::endModels();
    EXPECT_TRUE(registry.getMetaRegistry().isValid());
}

TEST(Kernel, SectionsOfTheMetaRegistryNest) {
    EXPECT_FALSE(QOB::Cleanup::isInMetaRegistrySection());
    QOB::Cleanup::beginMetaRegistrySection();
    QOB::Cleanup::beginMetaRegistrySection();
    QOB::Cleanup::endMetaRegistrySection();
    EXPECT_TRUE(QOB::Cleanup::isInMetaRegistrySection());
    QOB::Cleanup::endMetaRegistrySection();
    EXPECT_FALSE(QOB::Cleanup::isInMetaRegistrySection());
}

namespace {
std::string logged; // NOLINT(cert-err58-cpp)
} // namespace

TEST(Kernel, DebugLogIsSilentWithoutASink) {
    qobLogDebug("%d", 1);
    QOB::LogSink const old = QOB::setDebugLogSink([](char const* line) { logged += line; });
    qobLogDebug("%s-%d", "line", 2);
    EXPECT_NE(QOB::setDebugLogSink(old), nullptr);
    qobLogDebug("%d", 3);
    EXPECT_EQ(logged, "line-2");
}

TEST_F(Model, ListOfObjectsIsASequenceInEachDeviant) {
    Thing const first = Thing::create(model, 1);
    Thing const second = Thing::create(model, 2);
    QOB::Model const inBranch = branch();
    first.in(inBranch.getDeviant()).destroy();
    QOB::Sequence<QOB::ClassObject> const all = model.getRootObjects();
    EXPECT_EQ(all.size(), 2);
    EXPECT_EQ(all.front(), QOB::ClassObject(first));
    EXPECT_EQ(inBranch.getRootObjects().size(), 1);
    EXPECT_EQ(all.removeAll(second), 1);
    EXPECT_FALSE(QOB::ClassObject(second).hasModelQOB());
    all.push_back(second);
    all.push_back(second);
    EXPECT_EQ(all.size(), 2);
    EXPECT_EQ(QOB::ClassObject(second).getModelQOB(), model);
}

// Long enough for chunks. Objects note their places in the list, and deviants have lists of their
// own; what a place was noted for may have moved since.
TEST_F(Model, LongListOfObjectsLosesTheRightOnesInEachDeviant) {
    constexpr int count = 1000;
    using Objects = std::vector<QOB::NSInterface::ClassObjectIntf const*>;
    QOB::Deviant const root = model.getDeviant();
    std::vector<Thing> things;
    std::map<QOB::Deviant, Objects, bool (*)(QOB::Deviant const&, QOB::Deviant const&)> expected(
        [](QOB::Deviant const& a, QOB::Deviant const& b) { return a.hash() < b.hash(); });
    for (int i = 0; i != count; ++i) {
        things.push_back(Thing::create(model, i));
        expected[root].push_back(things.back().get());
    }
    QOB::Deviant const branch = model.createDeviant();
    auto const check = [&] {
        for (auto const& [deviant, objects] : expected) {
            Objects shown;
            for (QOB::ClassObject const& each : QOB::Model(model.get(), deviant).getRootObjects()) {
                shown.push_back(each.get());
            }
            EXPECT_EQ(shown, objects);
        }
    };
    model.setUndoEnabled(true);
    expected[branch] = expected[root];
    std::mt19937 random(3);
    auto const destroySome = [&](QOB::Deviant deviant) {
        for (int i = 0; i != 300; ++i) {
            Thing const& thing = things[random() % things.size()];
            if (!thing->deviant_isValid(deviant)) {
                continue;
            }
            thing->destroy(deviant);
            std::erase(expected[deviant], thing.get());
        }
    };
    destroySome(branch);
    check();
    Objects const before = expected[root];
    {
        QOB::Transaction transaction(model);
        destroySome(root);
        things.push_back(Thing::create(model));
        expected[root].push_back(things.back().get());
        transaction.commit();
    }
    check();
    Objects const after = std::exchange(expected[root], before);
    model.undo();
    check();
    model.redo();
    expected[root] = after;
    check();
    {
        // What stands first goes to the end: noted places are wrong for the rest of the list.
        QOB::Transaction transaction(model);
        QOB::Sequence<QOB::ClassObject> const list = model.getRootObjectsWithoutAssociation();
        for (int i = 0; i != 100; ++i) {
            QOB::ClassObject const first = list.front();
            list.pop_front();
            list.insert(list.size() / 2, first);
            expected[root].erase(expected[root].begin());
            auto const middle = static_cast<std::ptrdiff_t>(expected[root].size() / 2);
            expected[root].insert(expected[root].begin() + middle, first.get());
        }
        destroySome(root);
        transaction.commit();
    }
    check();
    model.setUndoEnabled(false);
    for (Thing const& thing : things) {
        thing->destroy(root);
    }
    EXPECT_TRUE(model.getRootObjects().empty());
}

TEST_F(Model, ClipboardKeepsObjectsAndShowsThoseThatExist) {
    int const before = Alive::objects;
    QOB::ClipboardManager& clipboard = *QOB::ClipboardManager::instance();
    {
        Thing const kept = Thing::create(model, 1);
        Thing const gone = Thing::create(model, 2);
        clipboard.setContent({kept, gone});
        gone.destroy();
        EXPECT_EQ(clipboard.getContent(), std::vector<QOB::ClassObject>{kept});
    }
    EXPECT_EQ(Alive::objects, before + 2);
    model.destroy();
    EXPECT_TRUE(clipboard.getContent().empty());
    clipboard.clear();
    EXPECT_EQ(Alive::objects, before);
}
