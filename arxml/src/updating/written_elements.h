#pragma once

#include "writing/element_output.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace velum::arxml {

/// The elements of a model as a writer would write them, by path.
class WrittenElements {
public:
    explicit WrittenElements(QOB::Model const& model);

    Outline const& outline() const { return outline_; }
    /// Null if there is none.
    Outline::Entry const* at(std::string_view path) const { return outline_.at(path); }

    /// Without the end of the last line; empty if there is no such element.
    std::string textAt(std::string_view path) const;
    /// The path of what an application type is mapped to; empty if it isn't.
    std::string mapAt(std::string_view path) const;

    /// Adds the paths of the elements whose texts depend on an object: that of the element that it
    /// is in, and of the methods, constraints and base types that take numbers from it. False if
    /// that can't be told.
    bool addDependent(QOB::ClassObject const& object, std::set<std::string>& paths) const;
    /// The path of the element that an object is in; empty if it is in none.
    std::string pathAround(QOB::ClassObject const& object) const;

private:
    void addShared(QOB::ClassObject const& object, std::set<std::string>& paths) const;

    mutable std::vector<WriteFinding> findings_; ///< Of no interest.
    Outline outline_;
};

} // namespace velum::arxml
