#pragma once

#include "check/issue.h"

#include <vector>

namespace velum::check {

/// The rules about what files say and no object holds: base types.
void checkBaseTypes(arxml::Sources const& sources, std::vector<Issue>& issues);

/// A value that a data prototype of the files begins with: what its type and its constant are.
struct InitialValue {
    std::string path;     ///< Of the prototype.
    std::string type;     ///< Path of its type.
    std::string constant; ///< Path of the constant.
    arxml::Origin place;  ///< Of the reference to the constant.
};

/// The initial values of prototypes that name both a type and a constant. No objects are made of
/// prototypes.
std::vector<InitialValue> initialValues(arxml::Sources const& sources);

} // namespace velum::check
