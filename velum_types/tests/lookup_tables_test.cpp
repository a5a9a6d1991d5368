#include "freshmodel.h"
#include "support/failure.h"

namespace types = Zorvane::metamodel::types;
using VelumTest::elementsOf;
using VelumTest::list;

namespace {

class LookupTablesTest : public VelumTest::FreshModel {
protected:
    types::Axis addAxis(QOB::Integer const& elements) const {
        auto axis = types::Axis::create(model, elements, QOB::String());
        table.getAxeses().push_back(axis);
        return axis;
    }

    types::LookupTableType const table = types::LookupTableType::create(model);
};

TEST_F(LookupTablesTest, CategoryTellsTheNumberOfAxes) {
    char const* const categories[] = {"CUBE_0", "CURVE", "MAP", "CUBOID", "CUBE_4", "CUBE_5"};
    for (char const* const category : categories) {
        EXPECT_EQ(table.getCategory(), category);
        addAxis(1);
    }
    while (table.getAxeses().size() < 12) {
        addAxis(1);
    }
    EXPECT_EQ(table.getCategory(), "CUBE_12");
}

TEST_F(LookupTablesTest, DimensionsIsTheProductOverTheAxes) {
    struct Case {
        std::vector<QOB::Integer> axes;
        int elements;
    };
    QOB::Integer const none;
    Case const cases[] = {
        {{3}, 3},
        {{3, 4}, 12},
        {{3, 0, 4}, 0},
        {{-2, 5}, -10},
        {{1 << 16, 1 << 16}, 0}, // wraps
        {{46341, 46341}, -2147479015},
        {{none}, -2147483647 - 1}, // the raw word of an axis without a number
        {{none, 2}, 0},
        {{none, 3}, -2147483647 - 1},
    };
    for (Case const& one : cases) {
        table.getAxeses().clear();
        for (QOB::Integer const& elements : one.axes) {
            addAxis(elements);
        }
        SCOPED_TRACE(one.elements);
        EXPECT_EQ(table.getDimensions(), one.elements);
        EXPECT_EQ(
            QOB::Integer(
                types::NSInterface::LookupTableTypeIntf::sIntrospectiveMethods.getSingleValued(
                    QOB::Object(table).get(), model.getDeviant(), 4)),
            one.elements);
    }
}

TEST_F(LookupTablesTest, SharedAxisCountsWithItsSharedDefinition) {
    auto const layout = types::SwRecordLayout::create(model);
    auto const definition = types::Axis::create(model, 7, "rpm");
    auto const shared = types::SharedAxisType::create(model, layout, definition, "rpm");
    types::Axis const axis = addAxis(5);
    addAxis(2);
    EXPECT_EQ(table.getDimensions(), 10);
    axis.setSharedAxis(shared);
    EXPECT_EQ(table.getDimensions(), 14);
    EXPECT_EQ(axis.getDimensions(), 5) << "what the axis itself holds stays";
    definition.setDimensions(8);
    EXPECT_EQ(table.getDimensions(), 16);

    auto const further = types::SharedAxisType::create(
        model, layout, types::Axis::create(model, 100, ""), "further");
    definition.setSharedAxis(further);
    EXPECT_EQ(table.getDimensions(), 16) << "one step only";
    axis.removeSharedAxis();
    EXPECT_EQ(table.getDimensions(), 10);
}

TEST_F(LookupTablesTest, SharedAxisWithoutDefinitionIsReported) {
    types::Axis const axis = addAxis(5);
    axis.setSharedAxis(types::SharedAxisType::create(model));
    EXPECT_EQ(VelumTest::messageOf([&] { table.getDimensions(); }),
              "Cannot access NULL ref. Use isValid() before calling methods");
    EXPECT_EQ(table.getCategory(), "CURVE");
    axis.removeSharedAxis();
    EXPECT_EQ(table.getDimensions(), 5);
}

TEST_F(LookupTablesTest, DerivedValuesAreThoseOfTheDeviant) {
    types::Axis const axis = addAxis(3);
    QOB::Deviant const branch = model.createDeviant();
    auto const inBranch = table.inDeviant(branch);
    axis.inDeviant(branch).setDimensions(30);
    EXPECT_EQ(inBranch.getDimensions(), 30);
    auto const second = types::Axis::create(model.inDeviant(branch), 2, "second");
    inBranch.getAxeses().push_back(second);
    EXPECT_EQ(inBranch.getDimensions(), 60);
    EXPECT_EQ(inBranch.getCategory(), "MAP");
    EXPECT_EQ(table.getDimensions(), 3);
    EXPECT_EQ(table.getCategory(), "CURVE");
}

TEST_F(LookupTablesTest, LayoutsAndSharedAxesKnowTheirUsers) {
    auto const layout = types::SwRecordLayout::create(model);
    auto const base = types::FloatingPoint::create(model);
    auto const map = types::LookupTableType::create(model, layout, base, "map");
    EXPECT_EQ(elementsOf(layout.getLookupTableTypes()), list(map));
    EXPECT_EQ(base.getContainerQOB(), QOB::ClassObject(map));
    auto const definition = types::Axis::create(model);
    auto const shared = types::SharedAxisType::create(model, layout, definition, "shared");
    EXPECT_EQ(elementsOf(layout.getSharedAxisTypes()), list(shared));
    EXPECT_EQ(definition.getContainerQOB(), QOB::ClassObject(shared));
    types::Axis const first = addAxis(1);
    types::Axis const second = addAxis(1);
    first.setSharedAxis(shared);
    shared.getSharedFroms().push_back(second);
    EXPECT_EQ(second.getSharedAxis(), shared);
    EXPECT_EQ(elementsOf(shared.getSharedFroms()), list(first, second));
    layout.getLookupTableTypes().clear();
    EXPECT_FALSE(map.hasSwRecordLayout());
    EXPECT_TRUE(shared.hasSwRecordLayout());
}

TEST_F(LookupTablesTest, TableOwnsItsBaseTypeAndAxesAndNotWhatTheyShare) {
    auto const value = types::FixedPoint::create(model);
    auto const ofValues = types::Integer::create(model);
    auto const ofAxis = types::Integer::create(model);
    auto const input = types::Integer::create(model);
    auto const shared = types::SharedAxisType::create(model);
    types::Axis const axis = addAxis(1);
    table.setBaseType(value);
    table.setValueAxisDataType(ofValues);
    axis.setBaseType(ofAxis);
    axis.setInputVariableType(input);
    axis.setSharedAxis(shared);
    EXPECT_EQ(elementsOf(table.getContaineeQOBs()),
              list(QOB::ClassObject(axis), QOB::ClassObject(value)))
        << "single values last";
    EXPECT_EQ(elementsOf(axis.getContaineeQOBs()), list(QOB::ClassObject(ofAxis)));
    table.destroy();
    EXPECT_FALSE(value.isValid());
    EXPECT_FALSE(axis.isValid());
    EXPECT_FALSE(ofAxis.isValid());
    EXPECT_TRUE(ofValues.isValid());
    EXPECT_TRUE(input.isValid());
    EXPECT_TRUE(shared.isValid());
    EXPECT_TRUE(shared.getSharedFroms().empty());
}

} // namespace
