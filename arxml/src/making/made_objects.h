#pragma once

#include "planning/import_context.h"

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <velum_arxml/findings/report.h>
#include <velum_types/types.h>

namespace velum::arxml {

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;

inline QOB::String toString(std::string_view text) {
    return {std::string(text)};
}

/// Makes the objects of an import and counts them.
class Objects {
public:
    Objects(QOB::Model model, ImportContext context)
        : model_(std::move(model)), context_(context) {}

    /// A new object with a name, if there is one.
    template <class Handle>
    Handle make(std::string_view name) {
        Handle object = Handle::create(model_);
        if (!name.empty()) {
            object.setName(toString(name));
        }
        count(object.getLumvoName(false));
        return object;
    }

    /// A new object for a named element: it has its name, and its path as external id. The element
    /// and its name are consumed.
    template <class Handle>
    Handle makeOf(Element element) {
        const Element name = element.child(element::shortName);
        Handle object = make<Handle>(name.text());
        if (!context_.documents.index.paths().isTooLong(element.path())) {
            object.setExternalId(toString(context_.path(element)));
        }
        context_.account.consume(element);
        context_.account.consume(name);
        return object;
    }

    /// How many there are of each class, by name.
    std::vector<ClassCount> counts() const;

private:
    void count(char const* dottedName);

    QOB::Model model_;
    ImportContext context_;
    std::map<std::string, std::uint64_t, std::less<>> counts_;
};

/// The objects that were made of the elements of one kind.
template <class Handle>
class ObjectsOf {
public:
    void add(Element element, Handle const& object) { byElement_.emplace(element.index(), object); }

    /// Empty if no object was made of the element.
    Handle find(Element element) const {
        const auto found = byElement_.find(element.index());
        return found == byElement_.end() ? Handle() : found->second;
    }

private:
    std::unordered_map<ElementStore::Index, Handle> byElement_;
};

} // namespace velum::arxml
