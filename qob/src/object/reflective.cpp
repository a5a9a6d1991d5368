#include "qob/kernel/property/reflective.h"

namespace QOB::reflective::internal {

void failIllegalProperty(Place const& place,
                         char const* className,
                         char const* function,
                         unsigned id) {
    LocalFailure const failure(place.file, place.line);
    if (id == 0) {
        failure = AsserterEx<Exception>("%s::%s on illegal property", className, function);
    }
    // Signed: an id of all ones, which stands for none, shows as -1.
    failure = AsserterEx<Exception>(
        "%s::%s on illegal property with id %d", className, function, static_cast<int>(id));
}

} // namespace QOB::reflective::internal
