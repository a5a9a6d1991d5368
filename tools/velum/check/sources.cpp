#include "check/sources.h"

#include <utility>

namespace velum::check {

using arxml::Element;
using arxml::ElementStore;

Sources::Sources(arxml::Documents const& documents, std::vector<std::string> files)
    : documents_(&documents),
      files_(std::move(files)),
      byPath_(documents.index.paths().end(), ElementStore::none) {
    // An element stands before those in it, so the first one of a path is the one that it names.
    for (ElementStore::Index i = 0; i < documents.store.size(); ++i) {
        ElementStore::Index& first = byPath_[documents.store.at(i).path()];
        first = first == ElementStore::none ? i : first;
    }
}

Element Sources::elementAt(std::string_view path) const {
    if (documents_ == nullptr || path.empty()) {
        return {};
    }
    const auto id = documents_->index.paths().find(arxml::PathTree::root, path.substr(1));
    if (!id || byPath_[*id] == ElementStore::none) {
        return {};
    }
    return documents_->store.at(byPath_[*id]);
}

Origin Sources::originOf(Element element) const {
    return originOf(element.file(), element.position());
}

Origin Sources::originOf(arxml::FileId file, arxml::Position position) const {
    return {files_[file], position};
}

} // namespace velum::check
