#pragma once

#include "model/addresses.h"

#include <qob/qob.h>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace velum::find {

/// Who refers to whom in a model. Only what a file says counts: that a method has a list of its
/// types follows from the types. What an object contains belongs to the nearest object around it
/// that has a path of its own.
class References {
public:
    References(QOB::Model const& model, model::Addresses& addresses);

    /// All objects of the model, those that are contained behind what contains them.
    std::vector<QOB::ClassObject> const& objects() const { return objects_; }

    /// What an object refers to, itself or by what belongs to it.
    std::unordered_set<void const*> const& usedBy(QOB::ClassObject const& user) const;

    /// Whether nothing outside of the object refers to it or to what it contains.
    bool isUnused(QOB::ClassObject const& object) const;

private:
    using Set = std::unordered_set<void const*>;

    QOB::ClassObject ownerOf(QOB::ClassObject const& object);
    std::vector<QOB::ClassObject> withOuter(QOB::ClassObject const& object);
    void add(QOB::ClassObject const& user, QOB::ClassObject const& target);

    model::Addresses& addresses_;
    std::vector<QOB::ClassObject> objects_;
    std::unordered_map<void const*, Set> used_; ///< By user; both have paths.
    Set usedFromOutside_;
};

} // namespace velum::find
