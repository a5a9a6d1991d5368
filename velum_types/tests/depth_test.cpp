// Objects that contain each other to a depth at which recursion would overflow the stack.

#include "qob/qob/compare.h"
#include "qob/qob/domainregistry.h"
#include "qob/qob/objecttext.h"
#include "qob/qob/stereotypeobject.h"
#include "qob/qob/transaction.h"
#include "support/small_stack.h"
#include "velum_types/tests/support/concreteclasses.h"
#include "velum_types/tests/support/described.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;

using QOB::ClassObject;
using QOB::Deviant;
using VelumTest::ConcreteClass;
using VelumTest::onSmallStack;
using VelumTest::Property;

namespace {

// A call of the two functions that a recursion goes through takes more than 100 bytes.
constexpr int Depth = 10'000;

/// A way to put one object into a new one.
struct Link {
    std::string name;
    std::function<ClassObject(QOB::Model const&)> createPart;
    std::function<ClassObject(QOB::Model const&, ClassObject const& part)> wrap;
};
/// Which links, from the outside in, lead from a class back to itself.
using Circle = std::vector<Link>;

struct Edge {
    ConcreteClass const* owner;
    Property property;
    ConcreteClass const* part;

    std::string name() const { return std::string(owner->name) + '.' + property.description->name; }
};

std::vector<Edge> const& edgesOf(ConcreteClass const& owner) {
    static std::map<ConcreteClass const*, std::vector<Edge>> known;
    auto const [found, isNew] = known.try_emplace(&owner);
    std::vector<Edge>& edges = found->second;
    if (!isNew) {
        return edges;
    }
    for (Property const& property : VelumTest::propertiesOf(owner.methods)) {
        if (property.isDerived() || !property.ownsObjects() ||
            !(VelumTest::inPlaceOf(property, owner.methods) == property)) {
            continue;
        }
        for (ConcreteClass const& part : VelumTest::allClasses()) {
            if (VelumTest::takes(property, owner.methods, part)) {
                edges.push_back({&owner, property, &part});
            }
        }
    }
    return edges;
}

/// The shortest way that begins with the edge and comes back to its owner; empty if there is none.
std::vector<Edge> circleThrough(Edge const& first) {
    std::vector<std::vector<Edge>> ways{{first}};
    std::set<ConcreteClass const*> reached{first.part};
    for (std::size_t i = 0; i != ways.size(); ++i) {
        std::vector<Edge> way = ways[i];
        if (way.back().part == first.owner) {
            return way;
        }
        for (Edge const& next : edgesOf(*way.back().part)) {
            if (reached.insert(next.part).second) {
                ways.push_back(way);
                ways.back().push_back(next);
            }
        }
    }
    return {};
}

Link linkOf(Edge const& edge) {
    return {
        edge.name(), edge.part->create, [edge](QOB::Model const& model, ClassObject const& part) {
            ClassObject owner = edge.owner->create(model);
            if (edge.property.isMany()) {
                edge.property.elements(owner).push_back(part);
            } else {
                edge.property.set(owner, part);
            }
            return owner;
        }};
}

template <class Handle>
ClassObject make(QOB::Model const& model) {
    return Handle::create(model);
}

/// Circles of containment that together go through every property that owns objects of a class that
/// can be inside itself; those of the kernel too.
std::vector<Circle> circles() {
    std::vector<Circle> found;
    std::set<std::string> covered;
    for (ConcreteClass const& of : VelumTest::allClasses()) {
        for (Edge const& edge : edgesOf(of)) {
            if (covered.contains(edge.name())) {
                continue;
            }
            Circle circle;
            for (Edge const& each : circleThrough(edge)) {
                covered.insert(each.name());
                circle.push_back(linkOf(each));
            }
            if (!circle.empty()) {
                found.push_back(std::move(circle));
            }
        }
    }
    found.push_back({{"StereotypeObject.AppliedStereotypeInstance",
                      &make<QOB::StereotypeObject>,
                      [](QOB::Model const& model, ClassObject const& part) -> ClassObject {
                          auto const owner = QOB::StereotypeObject::create(model);
                          owner.getAppliedStereotypeInstances().push_back(
                              QOB::StereotypeObject(part));
                          return owner;
                      }}});
    return found;
}

struct Chain {
    ClassObject outermost;
    ClassObject innermost;
};

Chain build(QOB::Model const& model, Circle const& circle, int depth) {
    Chain chain;
    chain.innermost = circle.back().createPart(model);
    chain.outermost = chain.innermost;
    for (int built = 0; built < depth;) {
        for (auto link = circle.rbegin(); link != circle.rend(); ++link, ++built) {
            chain.outermost = link->wrap(model, chain.outermost);
        }
    }
    return chain;
}

void destroyBranchUndoAndEnd(Circle const& circle) {
    VelumTest::World world;
    Chain const chain = build(world.model, circle, Depth);
    Deviant const branch = world.model.createDeviant();
    ClassObject(chain.outermost.get(), branch).destroy();
    EXPECT_FALSE(ClassObject(chain.innermost.get(), branch).isValid());
    EXPECT_TRUE(chain.innermost.isValid());
    world.model.setUndoEnabled(true);
    {
        QOB::Transaction transaction(world.model);
        chain.outermost.destroy();
        transaction.commit();
    }
    EXPECT_FALSE(chain.innermost.isValid());
    EXPECT_TRUE(world.model.undo());
    EXPECT_TRUE(chain.innermost.isValid());
    EXPECT_TRUE(chain.innermost.hasContainerQOB());
    EXPECT_TRUE(world.model.redo());
    EXPECT_TRUE(world.model.undo());
    world.model.destroy(); // with the whole chain
}

} // namespace

TEST(Depth, WhatContainsItselfIsDestroyedAtAnyDepth) {
    std::vector<Circle> const all = circles();
    EXPECT_GT(all.size(), 20U);
    for (Circle const& circle : all) {
        SCOPED_TRACE(circle.front().name);
        onSmallStack([&] { destroyBranchUndoAndEnd(circle); });
    }
}

TEST(Depth, AMillionObjectsInOneAnotherEndOnASmallStack) {
    onSmallStack([] {
        VelumTest::World world;
        Chain chain;
        chain.innermost = types::LookupTableSpecification::create(world.model);
        chain.outermost = chain.innermost;
        for (int i = 1; i < 1'000'000; ++i) {
            auto const owner = types::LookupTableSpecification::create(world.model);
            owner.getAxeses().push_back(types::LookupTableSpecification(chain.outermost));
            chain.outermost = owner;
        }
        chain.outermost.destroy();
        EXPECT_FALSE(chain.innermost.isValid());
        EXPECT_TRUE(world.model.getRootObjects().empty());
    });
}

TEST(Depth, TreesAreComparedAndNamesFoundAtAnyDepth) {
    onSmallStack([] {
        VelumTest::World world;
        Chain chains[2];
        for (Chain& chain : chains) {
            chain.outermost = types::LookupTableSpecification::create(world.model, "inner");
            for (int i = 0; i < Depth; ++i) {
                auto const owner = types::LookupTableSpecification::create(world.model, "outer");
                owner.getAxeses().push_back(types::LookupTableSpecification(chain.outermost));
                chain.outermost = owner;
            }
        }
        EXPECT_TRUE(QOB::compare(chains[0].outermost, chains[1].outermost).empty());

        // One end is enough for a name.
        types::Integer type = types::Integer::create(world.model, "x");
        for (int i = 0; i < Depth; ++i) {
            auto const inner = types::Integer::create(world.model, "x");
            inner->setOnlyContainerQOB(world.root, type);
            type = inner;
        }
        EXPECT_EQ(std::string(type.qualifiedName()).size(), 2 * std::size_t(Depth) + 1);
    });
}

TEST(Depth, ObjectsArePrintedWithEveryPropertyOfSupersToAnyDepth) {
    onSmallStack([] {
        VelumTest::World world;
        auto const type = types::Integer::create(world.model, "type");
        QOB::Model const registry = QOB::DomainRegistry::instance()->getMetaRegistry();
        QOB::Transaction transaction(registry); // rolled back at the end
        QOB::Class above = QOB::Class::create(registry);
        for (int i = 0; i < Depth; ++i) {
            QOB::Class const below = QOB::Class::create(registry);
            below.getSupers().push_back(above);
            above = below;
        }
        auto* const live =
            const_cast<QOB::NSInterface::ClassIntf*>(types::Integer::MetaClass().get());
        QOB::Class(live, registry.getDeviant()).getSupers().push_back(above);
        std::ostringstream text;
        QOB::print(text, type);
        EXPECT_NE(text.str().find("IsSigned: true"), std::string::npos) << text.str();
    });
}
