#include "qob/qob/class.h"
#include "qob/qob/domainregistry.h"
#include "qob/qob/modelcache.h"
#include "qob/qob/sequence.h"
#include "qob/qob/transaction.h"
#include "qob/qob/typeinforegistry.h"
#include "qob/qob/valueobjectfactory.h"
#include "support/failure.h"
#include "velum_foundation/zorvane/metamodel.h"
#include "velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundation.h"
#include "velum_types/tests/support/packagetable.h"
#include "velum_types/zorvane/metamodel/types/initialize.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <dlfcn.h>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;

using VelumTest::messageOf;
using VelumTest::PackageEntry;
using VelumTest::PackageTable;

namespace {

/// What a host holds of the library's.
struct Kept {
    QOB::Model model;
    QOB::FactoryObject factory;
    std::vector<QOB::Object> objects; ///< values too
    std::vector<foundation::Namespace> namespaces;
    std::vector<foundation::NamedElement> elements;
};
/// Until the very end, when the library is long gone.
Kept kept; // NOLINT(cert-err58-cpp)

/// The library, loaded by its path as a host without a link to it does.
class LoadedLibrary : public testing::Test {
protected:
    LoadedLibrary() { load(); }
    ~LoadedLibrary() override { unload(); }

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

    void initialize() const {
        EXPECT_TRUE(find<bool()>("_ZN7Zorvane9metamodel5types10initializeEv")());
    }

    void load() {
        if (library_ == nullptr) {
            library_ = dlopen(VELUM_TYPES_LIBRARY, RTLD_NOW | RTLD_LOCAL);
            EXPECT_NE(library_, nullptr) << dlerror();
        }
    }
    void unload() {
        if (void* const library = std::exchange(library_, nullptr)) {
            EXPECT_EQ(dlclose(library), 0) << dlerror();
        }
    }

    void* library_ = nullptr;
};

/// Whether the process has any of the library in its memory.
bool isMapped() {
    std::ifstream maps("/proc/self/maps");
    std::string const name = "/libvelum_types.so";
    for (std::string line; std::getline(maps, line);) {
        if (line.find(name) != std::string::npos) {
            return true;
        }
    }
    return false;
}

int packagesInMetamodel() {
    return QOB::Package(Zorvane::metamodel::NSImplementation::staticGetMetamodelMetaPackage(),
                        QOB::DomainRegistry::instance()->getMetaRegistry().getDeviant())
        .getNestedPackages()
        .size();
}

/// Makes what the factory can make, and of it everything that a handle can be.
void use(types::TypesConfiguration const& record, Kept& made) {
    made.model = record.createModel();
    made.factory = record.createFactory(made.model);
    for (PackageEntry const& entry : PackageTable) {
        QOB::Object const object = entry.name != nullptr
                                       ? made.factory.createFromString(
                                             std::string("Zorvane.metamodel.types.") + entry.name)
                                       : QOB::Object();
        if (!object.isValid()) {
            continue;
        }
        made.objects.push_back(object);
        if (QOB::ClassObject const instance(object); instance.isValid()) {
            EXPECT_TRUE(instance.getMetaClass().isValid()) << entry.name;
            made.objects.emplace_back(instance);
        }
        if (foundation::Namespace const asNamespace(object); asNamespace.isValid()) {
            made.namespaces.push_back(asNamespace);
        }
        if (foundation::NamedElement const element(object); element.isValid()) {
            element.setName(entry.name);
            made.elements.push_back(element);
        }
    }
    EXPECT_GT(made.objects.size(), 60U);
    EXPECT_GT(made.namespaces.size(), 10U);
}

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

TEST_F(LoadedLibrary, IsUnloadedAfterUseAndCanBeLoadedAgain) {
    std::string const aName = "Zorvane.metamodel.types.SequenceOfUnit";
    for (int round = 0; round != 3; ++round) {
        load();
        initialize();
        EXPECT_TRUE(QOB::TypeInfoRegistry::isRegistered(aName));
        EXPECT_EQ(packagesInMetamodel(), 2);
        {
            Kept made;
            use(configuration(), made);
            if (round == 1) {
                made.model.destroy(); // otherwise the library ends it
            }
        }
        unload();
        EXPECT_FALSE(isMapped()) << "round " << round;
        EXPECT_FALSE(QOB::TypeInfoRegistry::isRegistered(aName));
        EXPECT_FALSE(QOB::ValueObjectFactory::isValueObjectType("Zorvane.metamodel.types.Time"));
        EXPECT_EQ(packagesInMetamodel(), 1) << "that of the base metamodel";
    }
}

/// Its own process: the library is in place until that ends.
TEST(LoadedLibraryDeathTest, EndsWithAProcessThatHoldsHandles) {
    auto const run = [] {
        void* const library = dlopen(VELUM_TYPES_LIBRARY, RTLD_NOW | RTLD_LOCAL);
        reinterpret_cast<bool (*)()>(dlsym(library, "_ZN7Zorvane9metamodel5types10initializeEv"))();
        types::TypesConfiguration record{};
        reinterpret_cast<types::TypesConfiguration* (*)(types::TypesConfiguration*)>(
            dlsym(library, "Zorvane_metamodel_types_getConfiguration"))(&record);
        use(record, kept);
        std::exit(testing::Test::HasFailure() ? 1 : 0); // NOLINT(concurrency-mt-unsafe)
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(0), "");
}

TEST_F(LoadedLibrary, LeavesHandlesBehindThatAreValidNowhere) {
    char const* const refusal = "object accessed after its model has been destroyed";
    load();
    initialize();
    use(configuration(), kept);
    QOB::ImmutableClass const metaClass = kept.elements.front().getMetaClass();
    unload();
    EXPECT_FALSE(isMapped());
    EXPECT_FALSE(kept.model.isValid());
    EXPECT_FALSE(kept.factory.isValid());
    EXPECT_FALSE(metaClass.isValid());
    for (QOB::Object const& object : kept.objects) {
        QOB::Object const copy = object;
        EXPECT_EQ(copy, object);
        EXPECT_FALSE(copy.isValid());
        QOB::ClassObject const instance(copy);
        if (instance.get() != nullptr) {
            EXPECT_EQ(messageOf([&] { instance.getContainerQOB(); }), refusal);
            EXPECT_EQ(messageOf([&] { instance.setExternalId("id"); }), refusal);
        }
    }
    for (foundation::Namespace const& each : std::vector(kept.namespaces)) {
        EXPECT_FALSE(each.isValid());
    }
    kept.elements.erase(kept.elements.begin(), kept.elements.begin() + 5);
    // The rest goes with the statics of this program.
}

} // namespace
