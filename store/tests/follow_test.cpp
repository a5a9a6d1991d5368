// A store that follows its model: what it writes bit by bit is what a save of the whole writes.

#include "qob/qob/transaction.h"
#include "qob_store/store.h"
#include "support.h"
#include "velum_types/types.h"

#include <chrono>
#include <cstdio>
#include <sqlite3.h>
#include <thread>

namespace {

using QOB::Model;
using QOB::Store;
using QOB::StoreError;
using StoreTest::contentOf;
using StoreTest::Folder;
namespace types = Zorvane::metamodel::types;

std::vector<std::string> rowsOf(std::string const& path, std::string const& sql) {
    std::vector<std::string> rows;
    sqlite3* database = nullptr;
    EXPECT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
    char* error = nullptr;
    sqlite3_exec(
        database,
        sql.c_str(),
        [](void* to, int count, char** values, char**) {
            std::string row;
            for (int i = 0; i < count; ++i) {
                row += std::string(i == 0 ? "" : "|") + (values[i] != nullptr ? values[i] : "null");
            }
            static_cast<std::vector<std::string>*>(to)->push_back(row);
            return 0;
        },
        &rows,
        &error);
    EXPECT_EQ(error, nullptr) << sql << ": " << error;
    sqlite3_free(error);
    sqlite3_close(database);
    return rows;
}

/// All rows of all tables but for the positions of objects, which may have gaps.
std::vector<std::string> dumpOf(std::string const& path) {
    std::vector<std::string> dump;
    for (std::string const& table :
         rowsOf(path, "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name")) {
        std::string const columns = table == "object" ? "id, class, external_id" : "*";
        std::vector<std::string> rows = rowsOf(
            path, std::string("SELECT ").append(columns).append(" FROM \"").append(table) + '"');
        std::sort(rows.begin(), rows.end());
        dump.push_back(table);
        dump.insert(dump.end(), rows.begin(), rows.end());
    }
    return dump;
}

class Following : public testing::Test {
protected:
    /// Saves, and compares the file with what a save of the whole writes and a load gives.
    void expectSaved(Store& store) const {
        ASSERT_NO_THROW(store.save());
        EXPECT_FALSE(store.hasChanges());
        Store::save(store.model(), whole);
        if (hasIds) { // the keys of others aren't the same in two files
            ASSERT_EQ(dumpOf(path), dumpOf(whole));
        }
        ASSERT_TRUE(rowsOf(path, "PRAGMA foreign_key_check").empty());
        Model const loaded = Store::load(path);
        EXPECT_EQ(contentOf(loaded), contentOf(store.model()));
        loaded.destroy();
    }
    /// Changes whenever the file is written whole.
    std::string tables() const { return rowsOf(path, "PRAGMA schema_version").at(0); }
    static std::string failureOf(Store& store) {
        try {
            store.save();
        } catch (StoreError const& failure) {
            return failure.what();
        }
        return "none";
    }

    bool hasIds = true;
    Folder const folder;
    std::string const path = folder.file("followed.velum");
    std::string const whole = folder.file("whole.velum");
};

} // namespace

TEST_F(Following, RandomEditsOfAllClassesAreSavedBitByBit) {
    for (unsigned seed = 1; seed <= 4; ++seed) {
        SCOPED_TRACE(seed);
        bool const hasUndo = seed % 2 == 0;
        bool const keepsIds = seed % 3 != 0;
        hasIds = keepsIds;
        StoreTest::RandomModel random(seed);
        Model const model = random.model();
        if (keepsIds) {
            random.keepIds();
        }
        random.create(60);
        random.write(400);
        std::remove(path.c_str());
        Store store(model, path);
        expectSaved(store);
        model.setUndoEnabled(hasUndo);
        std::string const tablesBefore = tables();
        for (int round = 0; round < 12; ++round) {
            SCOPED_TRACE(round);
            if (hasUndo && random.below(3) == 0) {
                for (unsigned i = 0; i <= random.below(3); ++i) {
                    random.below(2) == 0 ? model.undo() : model.redo();
                }
            } else {
                QOB::Transaction transaction(model);
                random.create(static_cast<int>(random.below(4)));
                random.write(static_cast<int>(random.below(60)));
                random.below(8) == 0 ? transaction.rollback() : transaction.commit();
            }
            if (round % 3 != 0) {
                expectSaved(store);
            }
            if (HasFatalFailure()) {
                return;
            }
        }
        if (keepsIds && !hasUndo) {
            EXPECT_EQ(tables(), tablesBefore) << "the file was written whole";
        }
    }
}

TEST_F(Following, AReferenceFollowsTheObjectThatGoesAndComesBack) {
    VelumTest::World world;
    types::Integer const one = types::Integer::create(world.model, "one");
    types::Unit const metre = types::Unit::create(world.model, "metre");
    types::Integer const last = types::Integer::create(world.model, "last");
    one.setUnit(metre);
    Store store(world.model, path);
    std::string const tablesBefore = tables();
    world.model.setUndoEnabled(true);
    {
        QOB::Transaction transaction(world.model);
        metre.destroy();
        last.setName("renamed");
        transaction.commit();
    }
    expectSaved(store);
    EXPECT_EQ(rowsOf(path, "SELECT Unit FROM Integer WHERE Name = 'one'").at(0), "null");
    world.model.undo();
    expectSaved(store);
    EXPECT_NE(rowsOf(path, "SELECT Unit FROM Integer WHERE Name = 'one'").at(0), "null");
    world.model.redo();
    expectSaved(store);
    EXPECT_EQ(tables(), tablesBefore);
}

// So a file takes no longer to open than one that was written once.
TEST_F(Following, ALongHistoryLeavesNothingInTheFile) {
    VelumTest::World world;
    std::vector<types::Integer> integers;
    integers.reserve(300);
    for (int i = 0; i < 300; ++i) {
        integers.push_back(types::Integer::create(world.model, "type" + std::to_string(i)));
    }
    Store store(world.model, path);
    std::string const tablesBefore = tables();
    for (int round = 0; round < 40; ++round) {
        QOB::Transaction transaction(world.model);
        for (int i = 0; i < 20; ++i) {
            types::Integer& one = integers[static_cast<std::size_t>(round * 17 + i * 13) % 300];
            one.setName(std::string(static_cast<std::size_t>(i * round) % 50, 'x'));
            if (i % 4 == 0) {
                one.destroy();
                one = types::Integer::create(world.model, "another");
            }
        }
        transaction.commit();
        store.save();
    }
    EXPECT_EQ(tables(), tablesBefore) << "the file was written whole";
    expectSaved(store);
    auto const pages = [](std::string const& file) {
        return std::stoi(rowsOf(file, "PRAGMA page_count").at(0));
    };
    EXPECT_LE(pages(path), pages(whole) + pages(whole) / 10);
}

TEST_F(Following, AFileThatIsOpenedIsFollowed) {
    VelumTest::World world;
    types::Integer::create(world.model, "one");
    world.model.setUri("urn:followed");
    Store::save(world.model, path);
    std::string const tablesBefore = tables();
    world.model.destroy();
    Store store = Store::open(path);
    EXPECT_FALSE(store.hasChanges());
    Model const model = store.model();
    types::Integer::create(model, "two");
    types::Integer(model.getRootObjects().at(0)).setName("first");
    model.setUri("urn:renamed");
    EXPECT_TRUE(store.hasChanges());
    expectSaved(store);
    EXPECT_EQ(tables(), tablesBefore);
    model.destroy();
    EXPECT_NE(failureOf(store).find("its model has ended"), std::string::npos);
}

// The other program is ready to write when the file is opened, and waits for whoever reads it.
TEST_F(Following, WhatAnotherProgramWritesWhileAFileIsOpenedIsNotLost) {
    {
        VelumTest::World world;
        for (int i = 0; i < 2000; ++i) {
            types::Integer::create(world.model, "ours");
        }
        Store::save(world.model, path);
    }
    for (int milliseconds = 0; milliseconds < 20; milliseconds += 2) {
        std::string const theirs = "theirs" + std::to_string(milliseconds);
        sqlite3* other = nullptr;
        ASSERT_EQ(sqlite3_open(path.c_str(), &other), SQLITE_OK);
        sqlite3_busy_timeout(other, 60'000);
        std::string const change = "BEGIN IMMEDIATE; UPDATE Integer SET Name = '" + theirs + "'";
        ASSERT_EQ(sqlite3_exec(other, change.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
        std::thread commit([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
            sqlite3_exec(other, "COMMIT", nullptr, nullptr, nullptr);
        });
        Store store = Store::open(path);
        commit.join();
        sqlite3_close(other);
        ASSERT_EQ(rowsOf(path, "SELECT Name FROM Integer LIMIT 1").at(0), theirs);
        types::Integer const first(store.model().getRootObjects().at(0));
        bool const isRead = first.getName() == theirs;
        first.setName("ours" + std::to_string(milliseconds));
        std::string const failure = failureOf(store);
        EXPECT_EQ(failure == "none", isRead) << milliseconds << ": " << failure;
        store.model().destroy();
    }
}

TEST_F(Following, ASaveThatCannotBeIsRefusedAndCanBeRepeated) {
    VelumTest::World world;
    types::Integer const one = types::Integer::create(world.model, "one");
    Store store(world.model, path);
    {
        QOB::Transaction transaction(world.model);
        one.setName("open");
        EXPECT_NE(failureOf(store).find("a transaction is open"), std::string::npos);
        transaction.commit();
    }
    std::vector<std::string> const before = dumpOf(path);
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &other), SQLITE_OK);
    sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    EXPECT_NE(failureOf(store).find("another program is writing it"), std::string::npos);
    sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
    EXPECT_EQ(dumpOf(path), before);
    expectSaved(store);
    one.setName("again");
    sqlite3_exec(other, "UPDATE Integer SET Name = 'theirs'", nullptr, nullptr, nullptr);
    sqlite3_close(other);
    EXPECT_NE(failureOf(store).find("another program has written it"), std::string::npos);
    std::rename(path.c_str(), whole.c_str());
    EXPECT_NE(failureOf(store).find("moved or removed"), std::string::npos);
    EXPECT_TRUE(store.hasChanges());
    EXPECT_EQ(one.getName(), "again");
}
