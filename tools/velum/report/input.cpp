#include "report/input.h"

namespace velum::report {

std::vector<std::string> Input::files() const {
    std::vector<std::string> names;
    for (StoreFile const& store : stores) {
        names.push_back(store.file);
    }
    for (arxml::FileReport const& document : documents.files) {
        names.push_back(document.file);
    }
    return names;
}

std::string const* Input::storeWith(std::string const& path) const {
    if (stores.size() == 1 && documents.files.empty()) {
        return &stores.front().file;
    }
    auto const found = storeOfPath.find(path);
    return found != storeOfPath.end() ? &stores[found->second].file : nullptr;
}

} // namespace velum::report
