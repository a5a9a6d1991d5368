#include "qob/qob/modelcache.h"
#include "velum_types/zorvane/metamodel/types/initialize.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <string>

namespace types = Zorvane::metamodel::types;

namespace {

/// The library, loaded by its path as a host without a link to it does.
class LoadedLibrary : public testing::Test {
protected:
    LoadedLibrary() : library_(dlopen(VELUM_TYPES_LIBRARY, RTLD_NOW | RTLD_LOCAL)) {}

    template <class T>
    T* find(char const* name) const {
        return reinterpret_cast<T*>(dlsym(library_, name));
    }

    types::TypesConfiguration configuration() const {
        using Function = types::TypesConfiguration*(types::TypesConfiguration*);
        types::TypesConfiguration record{};
        auto* const fill = find<Function>("Zorvane_metamodel_types_getConfiguration");
        EXPECT_NE(fill, nullptr);
        EXPECT_EQ(fill(&record), &record);
        return record;
    }

    void* library_;
};

TEST_F(LoadedLibrary, ExportsItsEntryByName) {
    ASSERT_NE(library_, nullptr) << dlerror();
    EXPECT_NE(find<void>("Zorvane_metamodel_types_getConfiguration"), nullptr);
    EXPECT_NE(find<void>("_ZN7Zorvane9metamodel5types10initializeEv"), nullptr);
    EXPECT_NE(find<void>("_ZN7Zorvane9metamodel5types11NSInterface11FactoryIntf14createNewModelEv"),
              nullptr);
    EXPECT_NE(find<void>("_ZN7Zorvane9metamodel5types11NSInterface11FactoryIntf16createNewFactoryE"
                         "N3QOB5ModelE"),
              nullptr);
    auto* const version = find<char const*>("velum_types_version");
    auto* const date = find<char const*>("velum_types_build_date");
    ASSERT_NE(version, nullptr);
    ASSERT_NE(date, nullptr);
    EXPECT_EQ(std::string(*version), VELUM_VERSION);
    EXPECT_EQ(std::string(*date).size(), std::string("Nov 21 2026").size());
}

TEST_F(LoadedLibrary, GivesModelFactoryAndMetaModelByItsRecord) {
    types::TypesConfiguration const record = configuration();
    QOB::Model const model = record.createModel();
    ASSERT_TRUE(model.isValid());
    EXPECT_EQ(QOB::ModelCache::instance()->findModel(std::wstring(model.getUri())), model);

    QOB::FactoryObject const factory = record.createFactory(model);
    ASSERT_TRUE(factory.isValid());
    QOB::Object const made = factory.createFromString("Zorvane.metamodel.types.Integer");
    ASSERT_TRUE(made.isValid());
    EXPECT_STREQ(made.getLumvoName(false), "Zorvane.metamodel.types.Integer");
    EXPECT_EQ(QOB::ClassObject(made).getModelQOB(), model);

    QOB::Package const metaModel = record.getMetaModel(model);
    EXPECT_EQ(metaModel.getName(), "Zorvane");
    model.destroy();
    EXPECT_FALSE(made.isValid());
}

} // namespace
