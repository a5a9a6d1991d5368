#pragma once

#include "diff/comparison.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace velum::merge {

/// The name of a property without the place of a value in its list.
std::string_view listName(std::string_view property);

/// What one side changed. Refers to the comparison.
class Touched {
public:
    Touched(diff::Comparison const& comparison, std::set<std::string> kept);

    bool isAdded(std::string const& path) const { return added_.contains(path); }
    bool isRemoved(std::string const& path) const { return removed_.contains(path); }

    /// Whether anything changed in the part of the object at a path; in all of it without a part.
    bool isChanged(std::string const& path, std::string_view part = {}) const;
    /// Whether the class of the part changed, or of what is around it.
    bool hasOtherClass(std::string const& path, std::string_view part) const;
    /// Whether a value changed, or the list in which it stands; of a list any value.
    bool isChanged(diff::Change const& change) const;

    /// The names of the properties that changed in a part.
    std::string namesOf(std::string const& path, std::string_view part = {}) const;

private:
    std::vector<diff::Change const*> const& at(std::string const& path) const;

    std::map<std::string, std::vector<diff::Change const*>> byPath_;
    std::set<std::string> added_;
    std::set<std::string> removed_;
    std::set<std::string> kept_;
};

} // namespace velum::merge
