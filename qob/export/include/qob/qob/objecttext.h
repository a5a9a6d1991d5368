#pragma once

#include "qob/qob/export.h"
#include "qob/qob/object.h"

#include <iosfwd>
#include <string>

namespace QOB {

/// A value in one line: a text in quotes, any other boxed value in its own text form, an object by
/// class, id and name if it has one (Unit #7 "metre"). An empty handle and an invalid value print
/// as "nothing"; an object that doesn't exist in its deviant is marked "(gone)".
QOB_EXPORT std::string toText(Object const& value);

/// Prints an object of any class as seen in the handle's deviant: a line that names it, then a line
/// for each property that has a value, inherited ones first. Contained objects are printed below
/// the property that contains them. Derived properties are left out. `depth` is the number of
/// indentation steps.
///
/// Raises QOB::Exception for an empty handle and for an object that doesn't exist in the deviant.
QOB_EXPORT void print(std::ostream& out, ImmutableClassObject const& object, unsigned depth = 0);

} // namespace QOB
