#include "commands/load.h"

#include "model/input_files.h"
#include "model/objects.h"
#include "report/printers.h"
#include "report/progress.h"

#include <filesystem>
#include <iostream>
#include <map>
#include <qob_store/store.h>
#include <system_error>
#include <utility>
#include <velum_arxml/source/input_error.h>

namespace velum::commands {

namespace {

std::uint64_t sizeOf(std::vector<std::string> const& files) {
    std::uint64_t total = 0;
    for (std::string const& file : files) {
        std::error_code unknown;
        const std::uintmax_t size = std::filesystem::file_size(file, unknown);
        total += unknown ? 0 : size;
    }
    return total;
}

report::StoreFile loadStore(std::string const& file, QOB::Model const& model) {
    const int before = model.getRootObjects().size();
    QOB::LoadReport report;
    QOB::Store::loadInto(model, file, {}, &report);
    return {.file = file,
            .objectCount = static_cast<std::uint64_t>(model.getRootObjects().size() - before),
            .unresolvedCount = report.unresolved.size()};
}

/// Counts the objects that came from stores, and notes from which one the object at each path came.
class Inventory {
public:
    explicit Inventory(report::Input& input)
        : input_(input), isAlone_(input.stores.size() == 1 && input.documents.files.empty()) {}

    void take(QOB::Model const& model) {
        for (arxml::ClassCount const& row : input_.documents.classes) {
            counts_[row.metaclass] += row.count;
        }
        std::size_t store = 0;
        std::uint64_t left = input_.stores.front().objectCount;
        for (QOB::ClassObject const& object : model.getRootObjectsWithoutAssociation()) {
            while (left == 0 && store < input_.stores.size()) { // objects are in order of entry
                left = ++store < input_.stores.size() ? input_.stores[store].objectCount : 0;
            }
            if (store < input_.stores.size()) {
                --left;
                ++counts_[std::string(model::classOf(object))];
            }
            if (!isAlone_) {
                note(model::pathOf(object), store);
            }
        }
        input_.documents.classes.clear();
        for (auto const& [metaclass, count] : counts_) {
            input_.documents.classes.push_back({metaclass, count});
        }
    }

private:
    /// `store` is the number of stores for what came from an AUTOSAR file.
    void note(std::string const& path, std::size_t store) {
        if (path.empty()) {
            return;
        }
        auto const known = input_.storeOfPath.find(path);
        if (known == input_.storeOfPath.end()) {
            if (store < input_.stores.size()) {
                input_.storeOfPath.emplace(path, store);
            }
        } else if (known->second != store) {
            bool const isDocument = store == input_.stores.size();
            throw arxml::InputError(
                input_.stores[known->second].file,
                "It has the path (" + report::inOneLine(path) + ") that is also in " +
                    (isDocument ? std::string("the AUTOSAR files") : input_.stores[store].file) +
                    "; give only one of them.");
        }
    }

    report::Input& input_;
    bool isAlone_;
    std::map<std::string, std::uint64_t> counts_;
};

} // namespace

report::Input load(std::vector<std::string> const& arguments,
                   model::Dictionary const& dictionary,
                   arxml::Options options,
                   std::string const& leftOut) {
    const model::InputFiles files = model::inputFiles(arguments, leftOut);
    report::Progress progress(sizeOf(files.stores) + sizeOf(files.documents));
    report::Input input;
    std::uint64_t done = 0;
    for (std::string const& file : files.stores) {
        input.stores.push_back(loadStore(file, dictionary.model()));
        progress.show(done += sizeOf({file}));
    }
    if (!files.documents.empty()) {
        options.onProgress = [&](std::uint64_t bytes) { progress.show(done + bytes); };
        input.documents = arxml::read(files.documents, dictionary.model(), options);
    }
    if (!input.stores.empty() && input.documents.isKept()) {
        Inventory(input).take(dictionary.model());
    }
    return input;
}

bool tellFailure(report::Input const& input, report::FailOn const& failOn) {
    const std::string first = failOn.firstFailure(input.documents);
    if (first.empty()) {
        return false;
    }
    std::cerr << "velum: " << first << " \"velum import\" lists all that is wrong.\n";
    return true;
}

} // namespace velum::commands
