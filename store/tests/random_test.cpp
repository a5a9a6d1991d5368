// Random models of all classes: what is saved and loaded is the same, property by property. The
// file of a failure is kept in the current folder.
//
//     store_random_test [--objects N] [--seed S]

#include "qob_store/store.h"
#include "support.h"

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <iostream>

namespace {

long argument(int count, char** values, char const* name, long otherwise) {
    for (int i = 1; i + 1 < count; ++i) {
        if (std::strcmp(values[i], name) == 0) {
            return std::strtol(values[i + 1], nullptr, 10);
        }
    }
    return otherwise;
}

/// The first line that differs.
std::string difference(std::string const& before, std::string const& after) {
    std::istringstream left(before);
    std::istringstream right(after);
    std::string object;
    std::string a;
    std::string b;
    while (std::getline(left, a)) {
        std::getline(right, b);
        if (!a.empty() && a[0] != ' ') {
            object = a;
        }
        if (a != b) {
            break;
        }
    }
    return object + "\n- " + a + "\n+ " + b;
}

} // namespace

// An exception is a fault: it ends the program with its text.
// NOLINTNEXTLINE(bugprone-exception-escape)
int main(int count, char** values) {
    StoreTest::Folder const folder;
    long left = argument(count, values, "--objects", 10'000);
    auto seed = static_cast<unsigned>(argument(count, values, "--seed", 1));
    // Small models first: they show a fault best.
    for (int size = 5; left > 0; ++seed, left -= size, size = size * 2) {
        StoreTest::RandomModel random(seed);
        size = static_cast<int>(std::min<long>(size, left));
        random.create(size);
        random.write(size * 12);
        std::string const path = folder.file("random.velum");
        QOB::Store::save(random.model(), path);
        QOB::Model const loaded = QOB::Store::load(path);
        std::string const before = StoreTest::contentOf(random.model());
        std::string const after = StoreTest::contentOf(loaded);
        if (before != after) {
            std::cerr << "seed " << seed << ", " << size
                      << " objects: " << difference(before, after) << '\n';
            std::filesystem::copy_file(
                path, "store_random_test.velum", std::filesystem::copy_options::overwrite_existing);
            return 1;
        }
        // Nothing in this one refers to what is gone. Objects are known by their external ids: some
        // have no name.
        QOB::Store::save(loaded, path);
        QOB::Model const again = QOB::Store::load(path);
        for (QOB::Model const& model : {loaded, again}) {
            int number = 0;
            for (QOB::ClassObject const object : model.getRootObjectsWithoutAssociation()) {
                object.setExternalId("/" + std::to_string(number++));
            }
        }
        if (auto const differences = QOB::compare(loaded, again); !differences.empty()) {
            std::cerr << "seed " << seed << ", " << size << " objects: " << differences.front()
                      << '\n';
            return 1;
        }
        again.destroy();
        loaded.destroy();
    }
    return 0;
}
