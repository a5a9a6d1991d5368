#include "reading/source_content.h"

#include <algorithm>
#include <velum_arxml/reading/sources.h>

namespace velum::arxml {

namespace {

std::vector<NameId> idsOf(std::initializer_list<std::string_view> names, Names const& known) {
    std::vector<NameId> ids;
    for (const std::string_view name : names) {
        if (const auto id = known.find(name)) {
            ids.push_back(*id);
        }
    }
    return ids;
}

bool isOneOf(NameId id, std::vector<NameId> const& ids) {
    return std::find(ids.begin(), ids.end(), id) != ids.end();
}

} // namespace

void SourceContent::indexPaths() {
    byPath.assign(documents.index.paths().end(), ElementStore::none);
    // An element stands before those in it, so the first one of a path is the one that it names.
    for (ElementStore::Index i = 0; i < documents.store.size(); ++i) {
        ElementStore::Index& first = byPath[documents.store.at(i).path()];
        first = first == ElementStore::none ? i : first;
    }
}

std::string_view SourceElement::name() const {
    return content_ == nullptr
               ? std::string_view()
               : content_->documents.names.text(content_->documents.store.at(index_).name());
}

std::string_view SourceElement::text() const {
    return content_ == nullptr ? std::string_view() : content_->documents.store.at(index_).text();
}

std::string SourceElement::path() const {
    return content_ == nullptr ? std::string()
                               : content_->documents.index.paths().text(
                                     content_->documents.store.at(index_).path());
}

Origin SourceElement::origin() const {
    if (content_ == nullptr) {
        return {};
    }
    const Element element = content_->documents.store.at(index_);
    return {content_->files[element.file()], element.position()};
}

SourceElement SourceElement::child(std::string_view name) const {
    if (content_ == nullptr) {
        return {};
    }
    const auto id = content_->documents.names.find(name);
    const Element found = id ? content_->documents.store.at(index_).child(*id) : Element();
    return found ? SourceElement(content_, found.index()) : SourceElement();
}

std::vector<SourceElement> SourceElement::children() const {
    std::vector<SourceElement> list;
    if (content_ != nullptr) {
        for (const Element child : content_->documents.store.at(index_).children()) {
            list.push_back({content_, child.index()});
        }
    }
    return list;
}

SourceElement Sources::elementAt(std::string_view path) const {
    if (content_ == nullptr || path.empty()) {
        return {};
    }
    const auto id = content_->documents.index.paths().find(PathTree::root, path.substr(1));
    if (!id || content_->byPath[*id] == ElementStore::none) {
        return {};
    }
    return {content_.get(), content_->byPath[*id]};
}

std::vector<SourceElement>
Sources::elementsNamed(std::initializer_list<std::string_view> names) const {
    std::vector<SourceElement> list;
    if (content_ == nullptr) {
        return list;
    }
    ElementStore const& store = content_->documents.store;
    const std::vector<NameId> ids = idsOf(names, content_->documents.names);
    for (ElementStore::Index i = 0; i < store.size(); ++i) {
        if (isOneOf(store.at(i).name(), ids)) {
            list.push_back({content_.get(), i});
        }
    }
    return list;
}

std::vector<SourceReference>
Sources::referencesNamed(std::initializer_list<std::string_view> names) const {
    std::vector<SourceReference> list;
    if (content_ == nullptr) {
        return list;
    }
    Documents const& documents = content_->documents;
    PathTree const& paths = documents.index.paths();
    const std::vector<NameId> ids = idsOf(names, documents.names);
    for (LooseReference const& loose : documents.looseReferences) {
        if (!isOneOf(loose.name, ids)) {
            continue;
        }
        SourceReference& reference = list.emplace_back();
        reference.name = documents.names.text(loose.name);
        reference.path = paths.text(loose.path);
        reference.origin = {content_->files[loose.file], loose.position};
        if (const auto target = documents.index.resolve(loose.reference).path) {
            reference.target = paths.text(*target);
        }
    }
    return list;
}

std::optional<std::string> Sources::targetOf(SourceElement reference) const {
    if (content_ == nullptr || reference.text().empty()) {
        return std::nullopt;
    }
    Documents const& documents = content_->documents;
    const auto path =
        documents.index.resolve(referenceAt(documents.store.at(reference.index_))).path;
    return path ? std::optional(documents.index.paths().text(*path)) : std::nullopt;
}

} // namespace velum::arxml
