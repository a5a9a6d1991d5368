#pragma once

#include "arxml/fragment.h"
#include "arxml/names.h"
#include "arxml/path_tree.h"
#include "arxml/position.h"

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velum::arxml {

/// A reference as the file writes it, to be resolved when all files are read.
struct Reference {
    std::string target;              ///< "/A/B/C", or "B/C" from a reference base.
    std::optional<std::string> base; ///< The label of the base; none stands for the default one.
    PathId package = PathTree::root; ///< Where it is written.
};

/// Reads the reference that `element` of `fragment` is.
Reference referenceAt(const Fragment& fragment, Fragment::Index element);

/// The named elements and the reference bases of everything that was read.
class DocumentIndex {
public:
    /// One element with a SHORT-NAME.
    struct Declaration {
        NameId element;
        FileId file;
        Position position;
    };
    /// What is declared at one path, usually one element.
    using Declarations = std::vector<Declaration>;

    PathTree& paths() { return paths_; }
    const PathTree& paths() const { return paths_; }

    void declare(PathId path, const Declaration& declaration);

    /// What a path stands for; empty for one on the way to others only.
    const Declarations& declarationsAt(PathId path) const;

    /// Where relative references of a package, and of the packages in it, begin.
    struct ReferenceBase {
        std::string label;
        bool isDefault = false;
        bool isThisPackage = false;
        Reference package;
    };
    /// Of two with one label, or of two default ones, in one package the first counts.
    void addBase(PathId package, const ReferenceBase& base);

    /// Where a reference leads to.
    struct Resolution {
        std::optional<PathId> path; ///< None if nothing of that path was read.
        bool hasBase = true;        ///< False if a reference base on the way is unknown.
    };
    Resolution resolve(const Reference& reference) const;

private:
    const ReferenceBase* findBase(const Reference& reference, PathId& package) const;

    PathTree paths_;
    std::vector<Declarations> declarations_;                        // by path
    std::map<std::pair<PathId, std::string>, ReferenceBase> bases_; // by package and label
    std::map<PathId, ReferenceBase> defaultBases_;
};

} // namespace velum::arxml
