#include "qob/kernel/property/reflective.h"

#include <exception>

namespace QOB::reflective::internal {

void failIllegalProperty(Place const& place,
                         char const* className,
                         char const* function,
                         unsigned id) {
    LocalAsserter const assertion(place.file, place.line, "");
    if (id == 0) {
        assertion = AsserterEx<Exception>("%s::%s on illegal property", className, function);
    }
    // Signed: an id of all ones, which stands for none, shows as -1.
    assertion = AsserterEx<Exception>(
        "%s::%s on illegal property with id %d", className, function, static_cast<int>(id));
    std::terminate(); // not reached
}

} // namespace QOB::reflective::internal
