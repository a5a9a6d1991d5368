#pragma once

#include "model/addresses.h"

#include <cstddef>
#include <qob/qob.h>
#include <set>
#include <string>
#include <vector>

namespace velum::model {
struct Metaclass;
} // namespace velum::model

namespace velum::diff {

/// What of two models is compared.
struct Options {
    std::set<std::string> ignored{};             ///< Properties, by name.
    model::Metaclass const* onlyClass = nullptr; ///< Objects of this class; null for all.
};

/// An object that only one model has.
struct Single {
    std::string path;
    std::string metaclass;
};

/// Two of them that may be one object under two paths: same class, same content.
struct Renaming {
    std::string from;
    std::string to;
    std::string metaclass;
};

enum class ChangeKind {
    value,
    order,
    metaclass, ///< The class is another one; `property` is "class".
    added,     ///< A part; it is the one value on the new side.
    removed,   ///< A part; it is the one value on the old side.
    renamed    ///< A part, with nothing in it changed; `property` is "Name".
};

/// One difference in an object that both models have.
struct Change {
    std::string path{};     ///< Of the outermost object.
    std::string part{};     ///< The place in it; empty for the object itself.
    std::string property{}; ///< Empty for a part that was added or removed.
    ChangeKind kind;
    bool isMany = false; ///< The values are a list.
    std::vector<QOB::Object> oldValues{};
    std::vector<QOB::Object> newValues{};
};

/// In what two models differ. Each list is ordered by path.
struct Comparison {
    std::vector<Single> added;
    std::vector<Single> removed;
    std::vector<Renaming> renamed;
    std::vector<Change> changed;
    std::size_t sameCount = 0; ///< Objects with a path that are the same on both sides.

    bool isSame() const {
        return added.empty() && removed.empty() && renamed.empty() && changed.empty();
    }
    /// How many objects `changed` is about.
    std::size_t changedCount() const;
};

/// Both sides with the names of their objects.
struct Sides {
    model::Addresses& left;
    model::Addresses& right;
};

/// Whether a property is a fact in its own right: no other property tells the same.
bool isOwnFact(QOB::Attribute const& attribute);

/// Compares what two models hold under the same paths. The comparison refers to objects of both.
Comparison compareModels(QOB::Model const& left,
                         QOB::Model const& right,
                         Sides const& sides,
                         Options const& options);

} // namespace velum::diff
