// An open store. Beside a save after 100 objects of a model have changed stands SQLite, which
// updates the same rows with nothing around it: most of both is waiting for the disk. Beside
// opening a file that many saves have written stands opening one that was written once.

#include "qob/qob/transaction.h"
#include "qob_store/store.h"
#include "support/comparison.h"
#include "support/sqlite.h"
#include "velum_types/types.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace {

using benchmark::State;
namespace types = Zorvane::metamodel::types;

/// A model of integers, and a store that follows it.
class Followed {
public:
    Followed(std::int64_t count, std::string const& name)
        : model(types::NSInterface::FactoryIntf::createNewModel()),
          path(bare::fileFor(name + ".velum")) {
        for (std::int64_t i = 0; i < count; ++i) {
            integers.push_back(types::Integer::create(model, "type" + std::to_string(i)));
            integers.back().setMinValue(static_cast<double>(i) + 0.5);
        }
        std::filesystem::remove(path);
        store.emplace(model, path);
    }
    Followed(Followed const&) = delete;
    Followed& operator=(Followed const&) = delete;
    ~Followed() {
        store.reset();
        integers.clear();
        model.destroy();
        std::filesystem::remove(path);
    }

    types::Integer const& any() { return integers[random_() % integers.size()]; }
    void changeSome() {
        QOB::Transaction transaction(model);
        for (int i = 0; i < 100; ++i) {
            any().setMinValue(static_cast<double>(random_()));
        }
        transaction.commit();
    }

    QOB::Model model;
    std::vector<types::Integer> integers;
    std::string path;
    std::optional<QOB::Store> store;

private:
    std::mt19937 random_{7};
};

/// A row is measured in several runs, for which its objects are made and saved once. Emptied before
/// the program ends.
struct Scopes {
    std::map<std::int64_t, std::unique_ptr<Followed>> saved{};
    std::unique_ptr<Followed> openedOnce{};
    std::unique_ptr<Followed> openedOften{};
};
Scopes& scopes() {
    static Scopes instance;
    return instance;
}

Followed& followed(std::int64_t count) {
    std::unique_ptr<Followed>& scope = scopes().saved[count];
    if (scope == nullptr) {
        scope = std::make_unique<Followed>(count, "open_store_" + std::to_string(count));
    }
    return *scope;
}

void saveSome(State& state, std::int64_t count) {
    Followed& scope = followed(count);
    for (auto _ : state) {
        state.PauseTiming();
        scope.changeSome();
        state.ResumeTiming();
        scope.store->save();
    }
}

void updateSome(State& state, std::int64_t count) {
    Followed& scope = followed(count);
    std::string const path = bare::fileFor("open_store_bench.db");
    std::filesystem::copy_file(scope.path, path, std::filesystem::copy_options::overwrite_existing);
    {
        bare::Connection connection(path);
        sqlite3_stmt* const row =
            connection.prepare("UPDATE Integer SET minValue = ? WHERE id = ?");
        double value = 0.25;
        for (auto _ : state) {
            connection.run("BEGIN IMMEDIATE");
            for (int i = 0; i < 100; ++i) {
                sqlite3_bind_double(row, 1, value += 1);
                sqlite3_bind_int(row, 2, static_cast<int const&>(scope.any().getObjectId()));
                bare::require(sqlite3_step(row) == SQLITE_DONE);
                sqlite3_reset(row);
            }
            connection.run("COMMIT");
        }
        sqlite3_finalize(row);
    }
    std::filesystem::remove(path);
}

/// A file that was saved once, and then so many times again.
std::string const& fileAfter(int saves, std::int64_t count) {
    bool const isOften = saves != 0;
    std::unique_ptr<Followed>& file = isOften ? scopes().openedOften : scopes().openedOnce;
    if (file == nullptr) {
        file = std::make_unique<Followed>(count, isOften ? "open_store_often" : "open_store_once");
        for (int i = 0; i < saves; ++i) {
            file->changeSome();
            file->store->save();
        }
        file->store.reset();
    }
    return file->path;
}

template <int Saves>
void openAfter(State& state, std::int64_t count) {
    std::string const& path = fileAfter(Saves, count);
    for (auto _ : state) {
        QOB::Store const store = QOB::Store::open(path);
        state.PauseTiming();
        store.model().destroy();
        state.ResumeTiming();
    }
}

} // namespace

int main(int argc, char** argv) {
    types::initialize();
    std::vector<std::int64_t> const counts{10'000, 1'000'000};
    comparison::add("open store: save 100 changed, objects",
                    saveSome,
                    updateSome,
                    comparison::within(20e6),
                    counts);
    comparison::add("open store: open after 1000 saves, objects",
                    openAfter<1000>,
                    openAfter<0>,
                    1.1,
                    {100'000});
    int const result = comparison::run(argc, argv);
    scopes() = {};
    return result;
}
