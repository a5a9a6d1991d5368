#include "qob/qob/modelcache.h"
#include "qob/qob/property.h"
#include "qob_store/store.h"
#include "support.h"
#include "velum_types/types.h"

#include <sqlite3.h>
#include <unordered_map>

namespace {

using QOB::ClassObject;
using QOB::LoadOptions;
using QOB::LoadReport;
using QOB::Model;
using QOB::Store;
using QOB::StoreError;
using StoreTest::contentOf;
using StoreTest::Folder;
namespace types = Zorvane::metamodel::types;

/// What another program does to a file.
void runSql(std::string const& path, std::string const& sql) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
    char* error = nullptr;
    EXPECT_EQ(sqlite3_exec(database, sql.c_str(), nullptr, nullptr, &error), SQLITE_OK)
        << sql << ": " << error;
    sqlite3_free(error);
    sqlite3_close(database);
}

std::string query(std::string const& path, std::string const& sql) {
    std::string text;
    sqlite3* database = nullptr;
    sqlite3_open(path.c_str(), &database);
    sqlite3_exec(
        database,
        sql.c_str(),
        [](void* to, int count, char** values, char**) {
            for (int i = 0; i < count; ++i) {
                *static_cast<std::string*>(to) +=
                    std::string(i == 0 ? "" : "|") + (values[i] != nullptr ? values[i] : "null");
            }
            *static_cast<std::string*>(to) += '\n';
            return 0;
        },
        &text,
        nullptr);
    sqlite3_close(database);
    return text;
}

std::string failureOf(std::string const& path, LoadOptions const& options = {}) {
    try {
        Store::load(path, options).destroy();
    } catch (StoreError const& failure) {
        return failure.what();
    }
    return "none";
}

TEST(Store, ObjectsOfEveryClassComeBack) {
    Folder const folder;
    VelumTest::World world;
    for (VelumTest::ConcreteClass const& each : VelumTest::allClasses()) {
        ClassObject const object = world.createFull(each);
        // By this it is known in the other model.
        object.setExternalId("/all/" + std::string(each.name));
    }
    Store::save(world.model, folder.file("all.velum"));
    Model const loaded = Store::load(folder.file("all.velum"));
    for (QOB::Difference const& difference : QOB::compare(world.model, loaded)) {
        ADD_FAILURE() << difference;
    }
    EXPECT_EQ(contentOf(loaded), contentOf(world.model));
    loaded.destroy();
    EXPECT_EQ(query(folder.file("all.velum"), "PRAGMA foreign_key_check"), "");
    EXPECT_EQ(query(folder.file("all.velum"), "PRAGMA integrity_check"), "ok\n");
}

TEST(Store, AFileIsReplacedAsAWhole) {
    Folder const folder;
    std::string const path = folder.file("replaced.velum");
    StoreTest::RandomModel first(1);
    first.create(200);
    first.write(2000);
    Store::save(first.model(), path);
    StoreTest::RandomModel second(2);
    second.create(20);
    second.write(200);
    Store::save(second.model(), path);
    Model const loaded = Store::load(path);
    EXPECT_EQ(contentOf(loaded), contentOf(second.model()));
    loaded.destroy();
}

TEST(Store, TheDeviantOfTheHandleIsSaved) {
    Folder const folder;
    VelumTest::World world;
    auto const inRoot = types::Integer::create(world.model, "root");
    Model const branch = world.model.inDeviant(world.model.createDeviant());
    types::Integer(inRoot.get(), branch.getDeviant()).setName("branch");
    types::Integer::create(branch, "only there");
    Store::save(branch, folder.file("branch.velum"));
    Store::save(world.model, folder.file("root.velum"));
    Model const loadedBranch = Store::load(folder.file("branch.velum"));
    Model const loadedRoot = Store::load(folder.file("root.velum"));
    EXPECT_EQ(contentOf(loadedBranch), contentOf(branch));
    EXPECT_EQ(contentOf(loadedRoot), contentOf(world.model));
    EXPECT_EQ(loadedBranch.getRootObjects().size(), loadedRoot.getRootObjects().size() + 1);
    loadedBranch.destroy();
    loadedRoot.destroy();
}

TEST(Store, ReferencesToOtherModelsAreResolvedIfTheseAreThere) {
    Folder const folder;
    std::string const path = folder.file("user.velum");
    VelumTest::World user;
    Model const library = types::NSInterface::FactoryIntf::createNewModel();
    auto const unit = types::Unit::create(library, "metre");
    auto const type = types::Integer::create(user.model, "length");
    type.setUnit(unit);
    Store::save(user.model, path);

    LoadReport report;
    Model loaded = Store::load(path, {}, &report);
    EXPECT_TRUE(report.unresolved.empty());
    EXPECT_EQ(types::Integer(loaded.findObject(type.getObjectId())).getUnit().get(), unit.get());
    loaded.destroy();

    std::string const uri = library.getUri();
    library.destroy();
    loaded = Store::load(path, {}, &report);
    ASSERT_EQ(report.unresolved.size(), 1U);
    EXPECT_EQ(report.unresolved[0].property, "Unit");
    EXPECT_EQ(report.unresolved[0].uri, uri);
    EXPECT_EQ(report.unresolved[0].object, loaded.findObject(type.getObjectId()));
    loaded.destroy();
}

TEST(Store, ALoadedModelIsFoundByItsUri) {
    Folder const folder;
    std::string const path = folder.file("found.velum");
    std::wstring const uri = L"store://found";
    {
        VelumTest::World world;
        world.model.setUri(QOB::String(uri));
        Store::save(world.model, path);
    }
    Model const loaded = Store::load(path);
    EXPECT_EQ(QOB::ModelCache::instance()->findModel(uri), loaded);
    Model const again = Store::load(path); // the first one keeps the URI
    EXPECT_EQ(QOB::ModelCache::instance()->findModel(uri), loaded);
    loaded.destroy();
    again.destroy();
}

std::string withoutUri(std::string const& content) {
    return content.substr(content.find('\n'));
}

/// What the objects of a model hold, from the given one on; objects are told by their positions.
std::string contentFrom(Model const& model, int first) {
    std::unordered_map<void const*, int> positions;
    for (ClassObject const object : model.getRootObjectsWithoutAssociation()) {
        positions.emplace(object.get(), static_cast<int>(positions.size()) - first);
    }
    return withoutUri(contentOf(model, first, [&](QOB::Object const& value) {
        auto const found = positions.find(value.get());
        return found != positions.end() ? std::to_string(found->second) : VelumTest::show(value);
    }));
}

// In a model without objects they keep their ids. In others no id is taken twice, and references
// lead to the objects of the same file.
TEST(Store, AFileIsAddedToAModelInOneStep) {
    Folder const folder;
    std::string const path = folder.file("added.velum");
    StoreTest::RandomModel random(4);
    random.create(150);
    random.write(1500);
    Store::save(random.model(), path);
    VelumTest::World world;
    world.model.setUndoEnabled(true);
    Store::loadInto(world.model, path);
    std::string const once = contentOf(world.model);
    EXPECT_EQ(withoutUri(once), withoutUri(contentOf(random.model())));
    int const count = world.model.getRootObjects().size();
    Store::loadInto(world.model, path);
    EXPECT_EQ(world.model.getRootObjects().size(), 2 * count);
    EXPECT_EQ(contentFrom(world.model, count), contentFrom(random.model(), 0));
    world.model.undo();
    EXPECT_EQ(contentOf(world.model), once);
    runSql(path, "UPDATE object SET class = 9999 WHERE position = 100");
    EXPECT_THROW(Store::loadInto(world.model, path), StoreError);
    EXPECT_EQ(contentOf(world.model), once) << "a file that is refused leaves no trace";
}

// The views show what the tables hold: abstract classes, and the other ends of references.
TEST(Store, AbstractClassesAndOtherEndsAreViews) {
    Folder const folder;
    std::string const path = folder.file("views.velum");
    VelumTest::World world;
    auto const type = types::Integer::create(world.model, "counter");
    auto const method = types::CompuMethod::create(world.model);
    type.setCompuMethod(method);
    auto const element = types::StructElement::create(world.model);
    element.setZorvane_metamodel_types_StructElement_Type(type);
    Store::save(world.model, path);
    EXPECT_EQ(query(path, "SELECT id, class, Name, CompuMethod FROM PrimitiveType"),
              "1|Integer|counter|2\n");
    EXPECT_EQ(query(path, "SELECT * FROM CompuMethod_PrimitiveType"), "2|0|1\n");
    EXPECT_EQ(query(path, "SELECT id, type FROM TypedElement WHERE type IS NOT NULL"), "3|1\n");
    EXPECT_EQ(query(path, "SELECT Length, IsSigned FROM Integer"), "32|bit|1\n");
}

/// A file as a later library, or an earlier one, would have written it.
class OtherMetamodel : public testing::Test {
protected:
    OtherMetamodel() : path(folder.file("other.velum")) {
        auto const type = types::Integer::create(world.model, "counter");
        type.setIsSigned(false);
        types::Unit::create(world.model, "metre");
        Store::save(world.model, path);
    }

    std::string dropColumn(std::string const& table, std::string const& property) const {
        return "DELETE FROM meta_column WHERE class = (SELECT id FROM meta_class WHERE name = '" +
               table + "') AND column_name = '" + property + "'; ALTER TABLE \"" + table +
               "\" DROP COLUMN \"" + property + "\"";
    }

    Folder folder;
    std::string path;
    VelumTest::World world;
};

TEST_F(OtherMetamodel, APropertyThatTheFileDoesNotKnowGetsItsDefault) {
    runSql(path, dropColumn("Integer", "IsSigned"));
    Model const loaded = Store::load(path);
    types::Integer const counter(loaded.findObject(1));
    EXPECT_EQ(counter.getName(), "counter");
    EXPECT_EQ(counter.isSigned(), QOB::Boolean(true));
    loaded.destroy();
}

TEST_F(OtherMetamodel, AnUnknownPropertyIsNamedOrCounted) {
    runSql(path,
           "INSERT INTO meta_property SELECT 9999, id, 'Colour', 'QOB.String', 0, 1, '', 0, 0, 0, "
           "1, NULL, NULL FROM meta_class WHERE name = 'Integer';"
           "INSERT INTO meta_column SELECT id, 9999, 'Colour' FROM meta_class WHERE name = "
           "'Integer'; ALTER TABLE Integer ADD COLUMN Colour TEXT");
    EXPECT_EQ(failureOf(path), "none") << "nothing of it is lost";
    runSql(path, "UPDATE Integer SET Colour = 'red'");
    EXPECT_EQ(failureOf(path),
              "Cannot read the store " + path +
                  ": it has content of Zorvane.metamodel.types.Integer.Colour, which no library "
                  "here declares.");
    LoadReport report;
    Store::load(path, {.skipUnknown = true}, &report).destroy();
    ASSERT_EQ(report.skipped.size(), 1U);
    EXPECT_EQ(report.skipped[0].name, "Zorvane.metamodel.types.Integer.Colour");
    EXPECT_EQ(report.skipped[0].count, 1U);
}

TEST_F(OtherMetamodel, AnUnknownClassIsNamedOrCounted) {
    runSql(path, "UPDATE meta_class SET dotted_name = 'Other.Unit' WHERE name = 'Unit'");
    EXPECT_NE(failureOf(path).find("content of Other.Unit"), std::string::npos);
    LoadReport report;
    Model const loaded = Store::load(path, {.skipUnknown = true}, &report);
    ASSERT_EQ(report.skipped.size(), 1U);
    EXPECT_EQ(report.skipped[0].name, "Other.Unit");
    EXPECT_EQ(loaded.getRootObjects().size(), 1);
    loaded.destroy();
}

TEST_F(OtherMetamodel, AnotherFormIsRefused) {
    runSql(path, "PRAGMA user_version = 7");
    EXPECT_NE(failureOf(path).find("its form is of version 7"), std::string::npos);
    EXPECT_THROW(Store::save(world.model, path), StoreError);
}

TEST_F(OtherMetamodel, FaultyContentIsRefusedWithItsPlace) {
    struct {
        char const* sql;
        char const* words;
    } const faults[] = {
        {"UPDATE Integer SET Length = 'long'", "Length"},
        {"UPDATE Integer SET CompuMethod = 2", "doesn't take"},
        {"UPDATE Integer SET CompuMethod = 77", "77"},
        {"UPDATE object SET class = 9999 WHERE id = 1", "object 1"},
        {"DELETE FROM object WHERE id = 1", "(1)"},
        {"DROP TABLE Integer", "no such table"},
        {"INSERT INTO Unit(id) VALUES(1)", "another class"},
    };
    for (auto const& fault : faults) {
        Store::save(world.model, path);
        runSql(path, "PRAGMA foreign_keys = OFF");
        runSql(path, fault.sql);
        std::string const failure = failureOf(path);
        EXPECT_NE(failure.find(fault.words), std::string::npos) << fault.sql << ": " << failure;
        EXPECT_NE(failure.find(path), std::string::npos) << failure;
    }
}

} // namespace
