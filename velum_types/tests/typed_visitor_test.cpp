#include "qob/qob/typedvisitor.h"
#include "velum_types/tests/freshmodel.h"
#include "velum_types/types.h"

#include <gtest/gtest.h>

#include <string>

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;

namespace {

class TypedVisitor : public testing::Test {
protected:
    ~TypedVisitor() override { model.destroy(); }

    QOB::Model model = VelumTest::makeModel();
    std::string seen;
};

TEST_F(TypedVisitor, FindsTheActionOfTheNearestClass) {
    QOB::Visitor<types::Enumeration, types::Real, foundation::Namespace> const visitor(
        [&](types::Enumeration const& type) {
            seen += "enumeration " + std::string(type.getName()) + ";";
        },
        [&](types::Real const& type) { seen += "real " + std::string(type.getName()) + ";"; },
        [&](foundation::Namespace const& space) {
            seen += "namespace " + std::string(space.getName()) + ";";
        });
    EXPECT_TRUE(visitor.visit(types::Enumeration::create(model, "e")));
    EXPECT_TRUE(visitor.visit(QOB::Object(types::Integer::create(model, "i"))));
    // Reached by the second base only, in the view of that base.
    EXPECT_TRUE(visitor.visit(QOB::ClassObject(types::Structure::create(model, "s"))));
    EXPECT_FALSE(visitor.visit(types::Unit::create(model, "u")));
    EXPECT_FALSE(visitor.visit(types::Integer()));
    EXPECT_EQ(seen, "enumeration e;real i;namespace s;");
}

TEST_F(TypedVisitor, TakesOverloadsAndKeepsTheDeviant) {
    struct Names {
        std::string* seen;
        void operator()(types::Boolean const& type) const { *seen += type.getName().view(); }
        void operator()(types::Unit const& unit) const { *seen += unit.getName().view(); }
    };
    types::Boolean const flag = types::Boolean::create(model, "flag");
    QOB::Deviant const branch = model.createDeviant();
    types::Boolean const inBranch(flag.get(), branch);
    inBranch.setName("other");
    QOB::Visitor<types::Boolean, types::Unit> const visitor(Names{&seen});
    EXPECT_TRUE(visitor.visit(inBranch));
    EXPECT_TRUE(visitor.visit(flag));
    EXPECT_EQ(seen, "otherflag");
}

} // namespace
