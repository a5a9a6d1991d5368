#pragma once

#include "reading/element_store.h"
#include "source/path_tree.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velum::arxml {

/// A reference as the file writes it, to be resolved when all files are read.
///
/// The texts are kept elsewhere, for as long as it may be resolved.
struct Reference {
    std::string_view target;              ///< "/A/B/C", or "B/C" from a reference base.
    std::optional<std::string_view> base; ///< The label of the base; none stands for the default.
    PathId package = PathTree::root;      ///< Where it is written.
};

/// Reads the reference that the element is.
Reference referenceAt(Element element);

/// The paths of the named elements and the reference bases of everything that was read.
class DocumentIndex {
public:
    PathTree& paths() { return paths_; }
    PathTree const& paths() const { return paths_; }

    /// Where relative references of a package, and of the packages in it, begin.
    struct ReferenceBase {
        std::string label;
        bool isDefault = false;
        bool isThisPackage = false;
        Reference package;
    };
    /// Of two with one label, or of two default ones, in one package the first counts.
    void addBase(PathId package, ReferenceBase const& base);

    /// Where a reference leads to.
    struct Resolution {
        std::optional<PathId> path; ///< None if nothing of that path was read.
        bool hasBase = true;        ///< False if a reference base on the way is unknown.
    };
    Resolution resolve(Reference const& reference) const;

    /// The path that a reference asks for, whether something is there or not; as it is written if a
    /// reference base on the way is unknown.
    std::string pathFor(Reference const& reference) const;

private:
    /// The references from the one that is asked for outwards, through the bases, to one that is
    /// absolute or in `from`; none if a base is unknown.
    struct Chain {
        std::vector<Reference const*> references;
        std::optional<PathId> from; ///< The package that is a base itself.
    };
    std::optional<Chain> chainOf(Reference const& reference) const;
    ReferenceBase const* findBase(Reference const& reference, PathId& package) const;

    PathTree paths_;
    std::map<std::pair<PathId, std::string>, ReferenceBase> bases_; // by package and label
    std::map<PathId, ReferenceBase> defaultBases_;
};

} // namespace velum::arxml
