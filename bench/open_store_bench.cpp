// An open store: a save after 100 objects of a model have changed, beside a save of the whole
// model, and opening a file that many saves have written, beside one that was written once.

#include "qob/qob/transaction.h"
#include "qob_store/store.h"
#include "support/comparison.h"
#include "velum_types/types.h"

#include <cstddef>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace {

using benchmark::State;
namespace types = Zorvane::metamodel::types;

/// A model of integers, and a file.
class Scope {
public:
    explicit Scope(std::int64_t count)
        : model(types::NSInterface::FactoryIntf::createNewModel()),
          path((std::filesystem::temp_directory_path() / "open_store_bench.velum").string()) {
        for (std::int64_t i = 0; i < count; ++i) {
            integers.push_back(types::Integer::create(model, "type" + std::to_string(i)));
            integers.back().setMinValue(static_cast<double>(i) + 0.5);
        }
    }
    Scope(Scope const&) = delete;
    Scope& operator=(Scope const&) = delete;
    ~Scope() {
        model.destroy();
        std::filesystem::remove(path);
    }

    void changeSome() {
        QOB::Transaction transaction(model);
        for (int i = 0; i < 100; ++i) {
            types::Integer const& one = integers[random_() % integers.size()];
            one.setMinValue(static_cast<double>(random_()));
        }
        transaction.commit();
    }

    QOB::Model model;
    std::vector<types::Integer> integers;
    std::string path;

private:
    std::mt19937 random_{7};
};

void saveSome(State& state, std::int64_t count) {
    Scope scope(count);
    QOB::Store store(scope.model, scope.path);
    for (auto _ : state) {
        state.PauseTiming();
        scope.changeSome();
        state.ResumeTiming();
        store.save();
    }
}

void saveAll(State& state, std::int64_t count) {
    Scope scope(count);
    for (auto _ : state) {
        state.PauseTiming();
        scope.changeSome();
        state.ResumeTiming();
        QOB::Store::save(scope.model, scope.path);
    }
}

void openAfter(State& state, std::int64_t count, int saves) {
    Scope scope(count);
    {
        QOB::Store store(scope.model, scope.path);
        for (int i = 0; i < saves; ++i) {
            scope.changeSome();
            store.save();
        }
    }
    for (auto _ : state) {
        QOB::Store const store = QOB::Store::open(scope.path);
        state.PauseTiming();
        store.model().destroy();
        state.ResumeTiming();
    }
}
void openAfterManySaves(State& state, std::int64_t count) {
    openAfter(state, count, 1000);
}
void openAfterOneSave(State& state, std::int64_t count) {
    openAfter(state, count, 0);
}

} // namespace

int main(int argc, char** argv) {
    comparison::add(
        "save after 100 objects changed / save all, of", saveSome, saveAll, 0, {10'000, 1'000'000});
    comparison::add("open after 1000 saves / after one, objects",
                    openAfterManySaves,
                    openAfterOneSave,
                    1.1,
                    {100'000});
    return comparison::run(argc, argv);
}
