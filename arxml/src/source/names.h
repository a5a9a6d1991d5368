#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace velum::arxml {

/// Stands for the name of an element; equal names have equal ids within one `Names`.
using NameId = std::uint32_t;

/// The element names that the reader and the importers ask for.
namespace element {
enum Known : NameId {
#define VELUM_KNOWN_NAME(identifier, text) identifier,
#include "source/known_names.inc"
#undef VELUM_KNOWN_NAME
    countOfKnown
};
} // namespace element

/// The element names met so far, each kept once.
class Names {
public:
    Names();
    Names(Names const&) = delete;
    Names& operator=(Names const&) = delete;

    /// The id of a name; a name not met before gets the next one.
    NameId intern(std::string_view name);

    /// The id of a name that was met; none of another one.
    std::optional<NameId> find(std::string_view name) const;

    /// Valid as long as this object.
    std::string_view text(NameId id) const { return texts_[id]; }

    /// Whether elements of that name hold the path of another element.
    bool isReference(NameId id) const { return isReference_[id]; }

private:
    std::deque<std::string> texts_; // a deque, since the keys below point into it
    std::unordered_map<std::string_view, NameId> ids_;
    std::vector<bool> isReference_;
};

} // namespace velum::arxml
