#include "qob/qob/log.h"
#include "qob/qob/modelcache.h"
#include "velum_types/types.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

namespace types = Zorvane::metamodel::types;

namespace {

std::vector<std::string> logged;

void keepLine(char const* line) {
    logged.emplace_back(line);
}

TEST(Initialize, LogsOnceAndNamesTheHandlesForVisitors) {
    namespace visitor = QOB::CooperativeVisitor::internal;
    QOB::setDebugLogSink(&keepLine);
    EXPECT_TRUE(types::initialize());
    EXPECT_EQ(logged, std::vector<std::string>{"Initializing the types meta-registry."});
    EXPECT_TRUE(types::initialize());
    EXPECT_EQ(logged.size(), 1U);
    QOB::setDebugLogSink(nullptr);

    auto const info = visitor::classInfo<types::NSInterface::IntegerIntf>();
    EXPECT_EQ(visitor::findClassByName("Zorvane.metamodel.types.Integer"), info);
    EXPECT_EQ(visitor::findClassByName("Zorvane.metamodel.types.ImmutableInteger"), info);
    EXPECT_FALSE(QOB::Cleanup::isInMetaRegistrySection());
}

TEST(CreateNewModel, GivesEachModelAUriOfItsOwn) {
    QOB::Model const first = types::NSInterface::FactoryIntf::createNewModel();
    QOB::Model const second = types::NSInterface::FactoryIntf::createNewModel();
    EXPECT_NE(first, second);
    EXPECT_NE(first.getUri(), second.getUri());
    for (QOB::Model const& model : {first, second}) {
        EXPECT_EQ(QOB::ModelCache::instance()->findModel(std::wstring(model.getUri())), model);
        EXPECT_TRUE(model.getDeviant().isRootDeviant());
        model.destroy();
    }
}

TEST(CreateNewModel, LeavesTheAssertionSwitchAsItWas) {
    for (bool const enabled : {false, true}) {
        QOB::DeviantAssertions::enableAssertions(enabled);
        types::NSInterface::FactoryIntf::createNewModel().destroy();
        EXPECT_EQ(QOB::DeviantAssertions::sAssertionsEnabled, enabled);
    }
}

TEST(Version, IsFourNumbersAndTheDateOfTheBuild) {
    EXPECT_TRUE(std::regex_match(velum_types_version, std::regex(R"(\d+\.\d+\.\d+\.\d+)")))
        << velum_types_version;
    EXPECT_TRUE(std::regex_match(
        velum_types_build_date,
        std::regex(R"((Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec) [0-3]\d \d{4})")))
        << velum_types_build_date;
}

} // namespace
