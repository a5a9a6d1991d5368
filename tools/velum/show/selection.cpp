#include "show/selection.h"

#include "model/glob.h"
#include "model/objects.h"

#include <algorithm>
#include <utility>

namespace velum::show {

namespace {

/// "/**/" behind `begin` stands for "/" as well.
bool fits(std::string const& pattern, std::string const& path, std::size_t begin = 0) {
    const std::size_t any = pattern.find("/**/", begin);
    if (any == std::string::npos) {
        return model::matches(pattern, path);
    }
    return fits(pattern, path, any + 3) ||
           fits(pattern.substr(0, any) + pattern.substr(any + 3), path, any);
}

/// What fits and is not in something else that does.
std::vector<QOB::ClassObject> thoseThatFit(QOB::Model const& model, std::string const& pattern) {
    std::vector<std::pair<std::string, QOB::ClassObject>> found;
    std::vector<QOB::ClassObject> pending = model::freeObjects(model);
    while (!pending.empty()) {
        const QOB::ClassObject object = pending.back();
        pending.pop_back();
        std::string path = model::pathOf(object);
        if (!path.empty() && fits(pattern, path)) {
            found.emplace_back(std::move(path), object);
            continue; // what it contains is shown with it
        }
        for (QOB::ClassObject const& contained : model::containedIn(object)) {
            pending.push_back(contained);
        }
    }
    std::stable_sort(
        found.begin(), found.end(), [](auto const& a, auto const& b) { return a.first < b.first; });
    std::vector<QOB::ClassObject> objects;
    objects.reserve(found.size());
    for (auto const& [path, object] : found) {
        objects.push_back(object);
    }
    return objects;
}

} // namespace

std::vector<QOB::ClassObject> select(QOB::Model const& model, std::string asked) {
    while (asked.size() > 1 && asked.back() == '/') {
        asked.pop_back();
    }
    const bool isPath = !asked.empty() && asked.front() == '/';
    if (asked == "/") {
        return model::objectsAt(model, "");
    }
    if (isPath && asked.find_first_of("*?[\\") == std::string::npos) {
        return model::objectsAt(model, asked);
    }
    return thoseThatFit(model, isPath ? asked : "/**/" + asked);
}

} // namespace velum::show
