#pragma once

#include "qob/qob/deviant.h"
#include "qob/qob/export.h"
#include "qob/qob/object.h"

#include <vector>

namespace QOB {

class DeviationsBase;

namespace internal {

/// The objects that `object` contains in the deviant, where it exists.
using PartsOf = std::vector<ClassObject> (*)(DeviationsBase& object, Deviant deviant);
/// Takes back the links of `object` to others.
using CutLinks = void (*)(DeviationsBase& object, Deviant deviant);

// The two phases of destruction: the bodies of internal_disconnect and internal_discard. A phase
// goes through the parts first, and then the object. The parts don't recurse: called for one of
// them, a phase only puts it on the stack of the walk that called, so that objects contain each
// other to any depth, and in circles. What calls from elsewhere returns when everything is done.

/// First phase: when the second one begins, no link crosses the border of what is destroyed.
QOB_EXPORT void disconnect(DeviationsBase& object, Deviant deviant, PartsOf parts, CutLinks cut);

/// Second phase: takes the object out of its container (if `detach`) and out of the model's list of
/// objects, and ends its state in the deviant.
QOB_EXPORT void discard(DeviationsBase& object, Deviant deviant, bool detach, PartsOf parts);

} // namespace internal
} // namespace QOB
