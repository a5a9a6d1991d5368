#include "making/made_objects.h"

namespace velum::arxml {

void Objects::count(char const* dottedName) {
    context_.watch.check();
    std::string_view name = dottedName;
    name.remove_prefix(name.rfind('.') + 1);
    const auto found = counts_.find(name);
    if (found == counts_.end()) {
        counts_.emplace(name, 1);
    } else {
        ++found->second;
    }
}

std::vector<ClassCount> Objects::counts() const {
    std::vector<ClassCount> list;
    list.reserve(counts_.size());
    for (auto const& [name, count] : counts_) {
        list.push_back({name, count});
    }
    return list;
}

} // namespace velum::arxml
