#include "qob/qob/observer.h"
#include "qob/qob/transaction.h"
#include "tests/support/allocation_count.h"
#include "tests/support/failure.h"
#include "velum_types/tests/support/described.h"
#include "velum_types/types.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>

namespace types = Zorvane::metamodel::types;

using QOB::ClassObject;
using QOB::ImmutableProperty;
using QOB::Object;
using VelumTest::ConcreteClass;
using VelumTest::failureOf;
using VelumTest::Property;

namespace {

std::string show(std::vector<Object> const& values) {
    std::string text;
    for (Object const& value : values) {
        text += VelumTest::show(value) + " ";
    }
    return text;
}

/// One line for each object: "+" or "-" and its name, or its name and what changed, old -> new.
std::string show(QOB::Changes const& changes) {
    std::string text;
    auto const nameOf = [](QOB::ObjectChange const& change) {
        return VelumTest::show(change.object());
    };
    for (auto const& created : changes.created()) {
        text += "+" + nameOf(created) + "\n";
    }
    for (auto const& destroyed : changes.destroyed()) {
        text += "-" + nameOf(destroyed) + "\n";
    }
    for (auto const& changed : changes.changed()) {
        text += nameOf(changed);
        for (ImmutableProperty const& property : changed.properties()) {
            text += " " + std::string(property.getName()) + ": " +
                    show(changed.oldValues(property)) + "-> " + show(changed.newValues(property));
        }
        text += "\n";
    }
    return text;
}

class Recorder : public QOB::Observer {
public:
    void changed(QOB::Changes const& changes) override {
        batches.push_back(show(changes));
        if (then) {
            then(changes);
        }
    }
    void ended() noexcept override { hasEnded = true; }

    std::vector<std::string> take() { return std::exchange(batches, {}); }

    std::vector<std::string> batches;
    std::function<void(QOB::Changes const&)> then;
    bool hasEnded = false;
};

using Batches = std::vector<std::string>;

class Observers : public testing::Test {
protected:
    Observers() : model(world.model) { observer.observe(model); }

    types::Integer integer(char const* name) const { return types::Integer::create(model, name); }
    static std::string idOf(ClassObject const& object) {
        return "#" + std::string(object.getObjectId().toString());
    }
    /// Its batch, and nothing else.
    std::string told() {
        Batches const batches = observer.take();
        EXPECT_EQ(batches.size(), 1U);
        return batches.empty() ? "" : batches.front();
    }

    VelumTest::World world;
    QOB::Model const model;
    Recorder observer;
};

/// What happens to one property, of whatever kind, in one write.
void expectOneBatch(VelumTest::World& world, ConcreteClass const& of, Property const& property) {
    ClassObject const object = world.create(of);
    Object const value = world.another(object, property, of.methods);
    Recorder observer;
    observer.observe(world.model);
    int batches = 0;
    observer.then = [&](QOB::Changes const& changes) {
        ++batches;
        EXPECT_TRUE(changes.created().empty() && changes.destroyed().empty());
        int found = 0;
        for (auto const& change : changes.changed()) {
            found += change.object() == object ? 1 : 0;
            if (change.object() == object) {
                ImmutableProperty const meta(property.description->meta,
                                             property.description->meta->getRootDeviant());
                ASSERT_TRUE(change.has(meta)) << observer.batches.back();
                EXPECT_EQ(show(change.newValues(meta)), VelumTest::show(value) + " ");
                EXPECT_NE(show(change.oldValues(meta)), show(change.newValues(meta)));
            }
        }
        EXPECT_EQ(found, 1) << observer.batches.back();
    };
    auto const write = [&] {
        if (property.isMany()) {
            property.elements(object).push_back(value);
        } else {
            property.set(object, value);
        }
    };
    auto const takeBack = [&] {
        if (property.isMany()) {
            property.elements(object).removeAll(value);
        } else {
            property.remove(object);
        }
    };
    bool const canGoBack = property.isMany() || property.isReference() || !property.isThere(object);
    if (canGoBack && property.description->subsettedCount == 0) {
        QOB::Transaction transaction(world.model);
        write();
        takeBack();
        transaction.commit();
        EXPECT_EQ(batches, 0) << "set and set back: " << observer.batches.front();
    }
    write();
    EXPECT_EQ(batches, 1);
    if (!property.isMany() || property.has(QOB::PropertyUnique)) {
        write();
        EXPECT_EQ(batches, 1) << "a write that changes nothing is told";
    }
}

} // namespace

TEST(EveryProperty, IsToldOnceByOneWriteAndNotIfItIsSetBack) {
    for (ConcreteClass const& of : VelumTest::allClasses()) {
        for (Property const& property : VelumTest::propertiesOf(of.methods)) {
            if (property.isDerived() || property.isWayToOwner() ||
                !(VelumTest::inPlaceOf(property, of.methods) == property) ||
                property.methods == &QOB::NSInterface::ClassObjectIntf::sIntrospectiveMethods) {
                continue;
            }
            SCOPED_TRACE(std::string(of.name) + "." + property.description->name);
            VelumTest::World world;
            expectOneBatch(world, of, property);
        }
    }
}

TEST_F(Observers, TellBothEndsOfAnAssociationOnce) {
    types::Integer const one = integer("one");
    auto const method = types::CompuMethod::create(model);
    observer.take();
    one.setCompuMethod(method);
    EXPECT_EQ(told(),
              idOf(one) + " CompuMethod: -> " + idOf(method) + " \n" + idOf(method) +
                  " PrimitiveType: -> " + idOf(one) + " \n");
    method.destroy();
    EXPECT_EQ(told(),
              "-" + idOf(method) + " gone\n" + idOf(one) + " CompuMethod: " + idOf(method) +
                  " gone -> \n");
}

TEST_F(Observers, TellCommitUndoRedoAndMergeAlikeAndNoRollback) {
    types::Integer const one = integer("one");
    EXPECT_EQ(told(), "+" + idOf(one) + "\n") << "a creation is one batch";
    model.setUndoEnabled(true);
    QOB::Deviant const branch = model.createDeviant();
    types::Integer made;
    auto const edit = [&](QOB::Model const& in) {
        QOB::Transaction transaction(in);
        types::Integer(one.get(), in.getDeviant()).setName("new");
        made = types::Integer::create(in, "made");
        transaction.commit();
    };
    edit(model);
    std::string const there =
        "+" + idOf(made) + "\n" + idOf(one) + " Name: String:one -> String:new \n";
    std::string const back =
        "-" + idOf(made) + " gone\n" + idOf(one) + " Name: String:new -> String:one \n";
    auto const withoutPackage = [](std::string text) {
        for (auto at = text.find("QOB."); at != std::string::npos; at = text.find("QOB.")) {
            text.erase(at, 4);
        }
        return text;
    };
    EXPECT_EQ(withoutPackage(told()), there);
    model.undo();
    EXPECT_EQ(withoutPackage(told()), back);
    model.redo();
    EXPECT_EQ(withoutPackage(told()), there);
    model.undo();
    observer.take();
    {
        QOB::Transaction const dropped(model);
        one.setName("dropped");
    }
    EXPECT_TRUE(observer.take().empty());
    edit(model.inDeviant(branch));
    EXPECT_TRUE(observer.take().empty()) << "another deviant";
    model.mergeDeviant(branch);
    EXPECT_EQ(withoutPackage(told()),
              "+" + idOf(made) + "\n" + idOf(one) + " Name: String:one -> String:new \n");
}

TEST_F(Observers, TellOfAnIdAtOnceWhateverAnOpenTransactionHasDone) {
    types::Integer const kept = integer("kept");
    types::Integer const lost = integer("lost");
    QOB::Deviant const branch = model.createDeviant();
    Recorder ofBranch;
    ofBranch.observe(model.inDeviant(branch));
    ImmutableProperty name;
    observer.then = [&](QOB::Changes const& changes) {
        name = changes.changed().front().properties().front();
    };
    lost.setName("named");
    observer.take();
    ofBranch.take();
    Batches names;
    observer.then = [&](QOB::Changes const& changes) {
        names.push_back(show(changes.changed().front().newValues(name)));
    };
    std::string const was = show({lost.getObjectId()});
    {
        QOB::Transaction const dropped(model);
        kept.setName("written");
        lost.destroy();
        model.bindObjectId(integer("made"), 8000);
        model.inDeviant(branch).bindObjectId(types::Integer(kept.get(), branch), 8001);
        model.inDeviant(branch).bindObjectId(types::Integer(lost.get(), branch), 8002);
    }
    Batches const told = observer.take();
    ASSERT_EQ(told.size(), 2U) << "of those that were there before the transaction";
    EXPECT_EQ(told.back(), "#8002 gone ObjectId: " + was + "-> QOB.Integer:8002 \n");
    EXPECT_EQ(names, Batches({"QOB.String:kept ", "QOB.String:named "}));
    EXPECT_EQ(ofBranch.take().size(), 2U);
    EXPECT_EQ(lost.getName(), "named");
}

/// Calls with the switch off that saves a program the checks of its writes.
template <class Call>
void withoutAssertions(Call const& call) {
    struct Off {
        Off() { QOB::DeviantAssertions::enableAssertions(false); }
        Off(Off const&) = delete;
        Off& operator=(Off const&) = delete;
        ~Off() { QOB::DeviantAssertions::enableAssertions(true); }
    };
    Off const off;
    call();
}

TEST_F(Observers, ReadOnlyWhileTheyAreTold) {
    types::Integer const one = integer("one");
    QOB::Deviant const branch = model.createDeviant();
    VelumTest::World other;
    observer.take();
    std::vector<std::string> failures;
    observer.then = [&](QOB::Changes const&) {
        std::vector<std::function<void()>> const writes = {
            [&] { one.setName("told"); },
            [&] { types::Integer(one.get(), branch).setName("told"); },
            [&] { integer("told"); },
            [&] { withoutAssertions([&] { integer("told"); }); },
            [&] { one.destroy(); },
            [&] { QOB::Transaction const transaction(model); },
            [&] { model.undo(); },
            [&] { model.mergeDeviant(branch); },
            [&] { model.createDeviant(); },
            [&] { model.removeDeviant(branch); },
            [&] { model.setUndoEnabled(true); },
            [&] { model.bindObjectId(one, 7777); },
            [&] { model.destroy(); },
        };
        for (auto const& write : writes) {
            failures.push_back(failureOf(write));
        }
        EXPECT_EQ(one.getName(), "new");
        types::Integer::create(other.model, "another model may be written");
    };
    one.setName("new");
    ASSERT_EQ(failures.size(), 13U);
    for (std::string const& failure : failures) {
        EXPECT_NE(failure.find("observers"), std::string::npos) << failure;
    }
    EXPECT_EQ(observer.take().size(), 1U);
    observer.then = nullptr;
    one.setName("newer");
    EXPECT_EQ(one.getName(), "newer");
}

TEST_F(Observers, WhatTheyRaiseReachesTheCallerAfterAllWereTold) {
    types::Integer const one = integer("one");
    Recorder second;
    second.observe(model);
    observer.then = [](QOB::Changes const&) { throw std::runtime_error("first"); };
    second.then = [](QOB::Changes const&) { throw std::runtime_error("second"); };
    auto const expectFirst = [&](auto const& action) {
        second.take();
        try {
            action();
            ADD_FAILURE() << "nothing raised";
        } catch (std::runtime_error const& raised) {
            EXPECT_STREQ(raised.what(), "first");
        }
        EXPECT_EQ(second.take().size(), 1U);
    };
    expectFirst([&] { one.setName("written"); });
    EXPECT_EQ(one.getName(), "written");
    expectFirst([&] { integer("created"); });
    model.setUndoEnabled(true);
    expectFirst([&] {
        QOB::Transaction transaction(model);
        one.setName("committed");
        transaction.commit();
    });
    EXPECT_EQ(one.getName(), "committed");
    expectFirst([&] { model.undo(); });
    EXPECT_EQ(one.getName(), "written");
    expectFirst([&] { model.redo(); });
}

TEST_F(Observers, MayGoAndComeWhileTheyAreTold) {
    types::Integer const one = integer("one");
    auto doomed = std::make_unique<Recorder>();
    auto dies = std::make_unique<Recorder>();
    Recorder late;
    doomed->observe(model);
    dies->observe(model);
    observer.take();
    observer.then = [&](QOB::Changes const&) {
        observer.stop();
        doomed.reset();
        late.observe(model);
    };
    dies->then = [&](QOB::Changes const&) { dies.reset(); };
    one.setName("a");
    EXPECT_EQ(observer.take().size(), 1U);
    EXPECT_EQ(dies, nullptr);
    EXPECT_TRUE(late.batches.empty());
    one.setName("b");
    EXPECT_TRUE(observer.batches.empty());
    EXPECT_EQ(late.take().size(), 1U);
}

TEST_F(Observers, EndWithTheirModelAndTheirDeviant) {
    Recorder ofBranch;
    QOB::Deviant const branch = model.createDeviant();
    ofBranch.observe(model.inDeviant(branch));
    EXPECT_FALSE(failureOf([&] { observer.observe(model); }).empty()) << "observes already";
    model.removeDeviant(branch);
    EXPECT_TRUE(ofBranch.hasEnded && !ofBranch.isObserving());
    Recorder again;
    {
        QOB::Transaction const open(model);
        EXPECT_FALSE(failureOf([&] { again.observe(model); }).empty());
    }
    again.observe(model);
    model.destroy();
    EXPECT_TRUE(observer.hasEnded && again.hasEnded);
    VelumTest::World other;
    observer.observe(other.model);
    types::Integer::create(other.model, "one");
    EXPECT_EQ(observer.take().size(), 1U);
}

TEST_F(Observers, TellAFailedWriteOnlyOfWhatIsDifferent) {
    types::Integer const one = integer("one");
    auto const table = types::Structure::create(model);
    observer.take();
    EXPECT_FALSE(failureOf([&] { one->setContainerQOB(model.getDeviant(), table); }).empty());
    EXPECT_FALSE(
        failureOf([&] { types::Integer::createWithId(model, one.getObjectId()); }).empty());
    EXPECT_TRUE(observer.take().empty());
}

TEST_F(Observers, CostWhatHasChangedWhateverElseTheModelHolds) {
    types::Integer const one = integer("one");
    observer.stop();
    struct Counter : QOB::Observer {
        void changed(QOB::Changes const&) override {}
    } counter;
    counter.observe(model);
    auto const allocations = [&](bool isSigned) {
        std::size_t const before = VelumTest::allocationCount();
        QOB::Transaction transaction(model);
        one.setIsSigned(isSigned);
        transaction.commit();
        return VelumTest::allocationCount() - before;
    };
    allocations(false); // the properties of the class are read once
    std::size_t const amongFew = allocations(true);
    for (int i = 0; i < 3000; ++i) {
        integer("other");
    }
    EXPECT_EQ(allocations(false), amongFew);
}

TEST_F(Observers, AreFreeOnceTheyHaveGone) {
    types::Integer const one = integer("one");
    one.setIsSigned(false);
    observer.stop();
    std::size_t const before = VelumTest::allocationCount();
    one.setIsSigned(true);
    EXPECT_EQ(VelumTest::allocationCount(), before);
    EXPECT_TRUE(model.getDeviant().isWritableWithoutChecks());
}
