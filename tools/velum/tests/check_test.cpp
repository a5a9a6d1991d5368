#include "check/rules.h"
#include "model/dictionary.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <velum_types/types.h>

namespace velum::check {

namespace {

namespace types = Zorvane::metamodel::types;

/// No file gives such a factor, since the import refuses it; other programs may.
TEST(Checks, TellFactorsOfZero) {
    const model::Dictionary dictionary;
    QOB::Model const& model = dictionary.model();
    QOB::Transaction transaction(model);
    const std::pair<char const*, double> rows[] = {
        {"zero", 0.0}, {"minus zero", -0.0}, {"least", 5e-324}, {"negative", -1.0}};
    for (auto const& [name, factor] : rows) {
        const auto unit = types::Unit::create(model);
        unit.setExternalId(QOB::String(std::string("unit, ") + name));
        unit.setConvFactor(QOB::Real(factor));
        const auto type = types::FixedPoint::create(model);
        type.setExternalId(QOB::String(std::string("type, ") + name));
        type.setFractionalSlope(QOB::Real(factor));
        type.setFractionLength(types::DataSize(QOB::Integer(0), types::DataSizeUnitKind::bit));
    }
    transaction.commit();
    std::set<std::pair<std::string, std::string>> found;
    for (Issue const& issue : checkModel(model)) {
        if (issue.rule->id == "zero-factor") {
            EXPECT_EQ(issue.rule->severity, Severity::error);
            found.emplace(issue.path, issue.text);
        }
    }
    const std::set<std::pair<std::string, std::string>> expected = {
        {"unit, zero", "The conversion factor of the unit is 0."},
        {"unit, minus zero", "The conversion factor of the unit is 0."},
        {"type, zero", "The slope of the fixed point type is 0."},
        {"type, minus zero", "The slope of the fixed point type is 0."}};
    EXPECT_EQ(found, expected);
}

} // namespace

} // namespace velum::check
