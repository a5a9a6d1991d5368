#pragma once

#include "model/addresses.h"

#include <qob/qob.h>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace velum::diff {

/// Tells which objects without a partner hold the same, in one model or in two.
///
/// Names and paths of the objects themselves don't count. A reference to an object that both models
/// have is the same if it leads to the same path; one to another object without a partner is the
/// same if that holds the same. Objects that refer to each other in a circle are looked at from
/// where the circle is entered, so that they may be missed, but never taken for what they aren't:
/// only the class counts for the reference that closes the circle.
class Contents {
public:
    /// `ignored`: names of properties that don't count.
    explicit Contents(std::set<std::string> const& ignored) : ignored_(ignored) {}

    /// Says that an object has no partner, and of which side it is.
    void add(QOB::ClassObject const& lone, model::Addresses& side) {
        lone_.emplace(lone.get(), &side);
    }

    /// The same number for two of these objects if they hold the same.
    int of(QOB::ClassObject const& lone);

private:
    struct Open {
        QOB::ClassObject object;
        std::vector<QOB::ClassObject> needed; ///< What must be known before.
    };

    bool isCounted(QOB::Attribute const& attribute) const;
    QOB::ClassObject loneAround(QOB::ClassObject const& object) const;
    std::vector<QOB::ClassObject> neededFor(QOB::ClassObject const& lone);
    int numberOf(std::string const& description);

    std::string description(QOB::ClassObject const& lone);
    void describe(QOB::ClassObject const& object, QOB::ClassObject const& lone, std::string& text);
    std::string referenceText(QOB::ClassObject const& target, QOB::ClassObject const& lone);
    model::Addresses& sideOf(QOB::ClassObject const& lone) { return *lone_.at(lone.get()); }

    std::set<std::string> const& ignored_;
    std::unordered_map<void const*, model::Addresses*> lone_;
    std::unordered_map<void const*, int> known_;
    std::unordered_map<std::string, int> numbers_;
};

} // namespace velum::diff
