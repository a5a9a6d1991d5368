#pragma once

#include "qob/qob/export.h"
#include "qob/qob/object.h"

#include <iosfwd>
#include <string>

namespace QOB {

/// A value in one line: a text in quotes, any other boxed value as it prints itself, an object by
/// its class, its id and its name if it has one (Unit #7 "metre"). "nothing" for an empty handle
/// and for a value that is not valid, and behind an object that doesn't exist in its deviant
/// "(gone)".
QOB_EXPORT std::string toText(Object const& value);

/// Prints an object of any class as it is seen in the handle's deviant: a line that names it, below
/// it a line for each property that has a value, inherited ones first, and what it contains below
/// the property that it is contained by. What follows from other properties is left out. `depth` is
/// the number of steps by which everything is moved to the right.
///
/// Raises QOB::Exception for an empty handle and for an object that doesn't exist in the deviant.
QOB_EXPORT void print(std::ostream& out, ImmutableClassObject const& object, unsigned depth = 0);

} // namespace QOB
