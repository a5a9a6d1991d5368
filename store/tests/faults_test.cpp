// What can happen to a file while it is written, and what files can come from elsewhere.

#include "qob/qob/transaction.h"
#include "qob_store/store.h"
#include "support.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using QOB::Model;
using QOB::Store;
using QOB::StoreError;
using StoreTest::contentOf;
using StoreTest::Folder;
using StoreTest::RandomModel;

/// A number for longer runs by hand.
int fromEnvironment(char const* name, int otherwise) {
    char const* const value = std::getenv(name);
    return value != nullptr ? static_cast<int>(std::strtol(value, nullptr, 10)) : otherwise;
}

std::string failureOfSave(Model const& model, std::string const& path) {
    try {
        Store::save(model, path);
    } catch (StoreError const& failure) {
        return failure.what();
    }
    return "none";
}

std::string loadedContent(std::string const& path) {
    Model const loaded = Store::load(path);
    std::string text = contentOf(loaded);
    loaded.destroy();
    return text;
}

class StoreFaults : public testing::Test {
protected:
    StoreFaults() : before(1), after(2), path(folder.file("faults.velum")) {
        before.create(300);
        before.write(3000);
        after.create(600);
        after.write(6000);
        Store::save(before.model(), path);
    }

    Folder folder;
    RandomModel before;
    RandomModel after;
    std::string path;
};

// Killed while it writes files whole, or what has changed in an open one.
TEST_F(StoreFaults, AProcessThatIsKilledLeavesTheOldOrTheNewContent) {
    before.keepIds();
    before.model().setUndoEnabled(true);
    std::string const undone = contentOf(before.model());
    {
        QOB::Transaction edits(before.model());
        before.write(500);
        edits.commit();
    }
    std::string const contents[] = {contentOf(before.model()), undone, contentOf(after.model())};
    auto const saveWhole = [&] {
        Store::save(before.model(), path);
        Store::save(after.model(), path);
    };
    auto const saveChanges = [&] {
        Store store(before.model(), path);
        before.model().undo();
        store.save();
        before.model().redo();
        store.save();
    };
    auto const started = std::chrono::steady_clock::now();
    saveWhole();
    saveChanges();
    auto const length = std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::steady_clock::now() - started);
    int const kills = fromEnvironment("VELUM_STORE_KILLS", 20);
    for (int i = 0; i < kills; ++i) {
        pid_t const child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            i % 2 == 0 ? saveWhole() : saveChanges();
            _exit(0);
        }
        std::this_thread::sleep_for(
            std::chrono::microseconds(after.below(static_cast<std::size_t>(length.count()))));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_NE(std::find(std::begin(contents), std::end(contents), loadedContent(path)),
                  std::end(contents))
            << "kill " << i;
    }
}

/// What a save says that is made in another process after `prepare`, and whether it has left the
/// model as it was.
template <class Prepare>
std::string failureElsewhere(Model const& model, std::string const& path, Prepare const& prepare) {
    int ends[2] = {};
    if (pipe(ends) != 0) {
        return "no pipe";
    }
    pid_t const child = fork();
    if (child == 0) {
        prepare();
        std::string const content = contentOf(model);
        std::string failure = failureOfSave(model, path);
        failure += contentOf(model) == content ? "" : " The model has changed.";
        _exit(write(ends[1], failure.data(), failure.size()) == ssize_t(failure.size()) ? 0 : 1);
    }
    close(ends[1]);
    std::string failure(1000, ' ');
    ssize_t const size = read(ends[0], failure.data(), failure.size());
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return failure.substr(0, size > 0 ? static_cast<std::size_t>(size) : 0);
}

TEST_F(StoreFaults, AFullDiskLeavesTheFile) {
    std::string const failure = failureElsewhere(after.model(), path, [] {
        signal(SIGXFSZ, SIG_IGN);
        rlimit const limit{200'000, 200'000};
        setrlimit(RLIMIT_FSIZE, &limit);
    });
    EXPECT_EQ(failure,
              "Cannot write the store " + path +
                  ": a write to the disk failed; the disk may be full.");
    EXPECT_EQ(loadedContent(path), contentOf(before.model()));
}

TEST_F(StoreFaults, AFileThatCannotBeWrittenIsLeft) {
    namespace files = std::filesystem;
    files::permissions(folder.file(""), files::perms(0755));
    files::permissions(path, files::perms(0444));
    std::string const failure = failureElsewhere(after.model(), path, [] {
        constexpr uid_t nobody = 65534; // root may write everything
        if (geteuid() == 0 && setuid(nobody) != 0) {
            _exit(1);
        }
    });
    EXPECT_EQ(failure,
              "Cannot write the store " + path + ": the file or its folder can't be written.");
    EXPECT_EQ(loadedContent(path), contentOf(before.model()));
}

TEST_F(StoreFaults, ASecondWriterIsRefused) {
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    EXPECT_EQ(failureOfSave(after.model(), path),
              "Cannot write the store " + path + ": another program is writing it.");
    EXPECT_EQ(loadedContent(path), contentOf(before.model())) << "reading goes on";
    sqlite3_close(other);
    EXPECT_EQ(failureOfSave(after.model(), path), "none");
}

TEST_F(StoreFaults, WhatIsNoStoreIsLeftAlone) {
    std::string const text = folder.file("notes.txt");
    std::ofstream(text) << "These are notes of some length, and no database at all.\n";
    std::string const database = folder.file("other.db");
    sqlite3* other = nullptr;
    sqlite3_open(database.c_str(), &other);
    sqlite3_exec(other, "CREATE TABLE t(a); INSERT INTO t VALUES(5)", nullptr, nullptr, nullptr);
    sqlite3_close(other);
    std::string const empty = folder.file("empty.velum");
    std::ofstream(empty).flush();
    struct {
        std::string path;
        char const* ofSave;
        char const* ofLoad;
    } const files[] = {
        {text, "is no store", "is no store"},
        {database, "is no store", "is no store"},
        {folder.file(""), "it is a folder", "it is a folder"},
        {folder.file("none/x.velum"), "can't be opened", "no such file"},
    };
    for (auto const& file : files) {
        std::string const failure = failureOfSave(after.model(), file.path);
        EXPECT_NE(failure.find(file.ofSave), std::string::npos) << failure;
        EXPECT_EQ(failure.find('\n'), std::string::npos) << failure;
        try {
            Store::load(file.path);
            ADD_FAILURE() << file.path;
        } catch (StoreError const& refusal) {
            EXPECT_NE(std::string(refusal.what()).find(file.ofLoad), std::string::npos)
                << refusal.what();
        }
    }
    EXPECT_THROW(Store::load(empty), StoreError);
    EXPECT_EQ(failureOfSave(after.model(), empty), "none");
}

std::string bytesOf(std::string const& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Each damaged file is read or refused.
TEST_F(StoreFaults, DamagedFilesAreReadOrRefused) {
    RandomModel small(static_cast<unsigned>(fromEnvironment("VELUM_STORE_SEED", 3)));
    small.create(40);
    small.write(400);
    Store::save(small.model(), path);
    std::string const whole = bytesOf(path);
    std::string const damaged = folder.file("damaged.velum");
    int const files = fromEnvironment("VELUM_STORE_FILES", 100'000);
    auto const end = std::chrono::steady_clock::now() +
                     std::chrono::seconds(fromEnvironment("VELUM_STORE_SECONDS", 10));
    int refused = 0;
    int tried = 0;
    for (; tried < files && std::chrono::steady_clock::now() < end; ++tried) {
        std::string bytes = whole;
        for (unsigned i = 0, count = 1 + small.below(8); i < count; ++i) {
            bytes[small.below(bytes.size())] = static_cast<char>(small.below(256));
        }
        if (unsigned const way = small.below(4); way == 0) {
            bytes.resize(small.below(bytes.size()));
        } else if (way == 1) {
            std::swap_ranges(bytes.begin(),
                             bytes.begin() + 1 + small.below(4096),
                             bytes.begin() + 8192 + small.below(bytes.size() - 16384));
        }
        std::ofstream(damaged, std::ios::binary | std::ios::trunc) << bytes;
        try {
            Store::load(damaged, {.skipUnknown = tried % 2 == 0}).destroy();
        } catch (StoreError const&) {
            ++refused;
        }
    }
    RecordProperty("files", tried);
    RecordProperty("refused", refused);
    EXPECT_GT(refused, 0);
}

} // namespace
