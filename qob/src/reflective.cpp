#include "qob/kernel/property/reflective.h"

#include <exception>

namespace QOB::reflective::internal {

void failIllegalProperty(char const* className, char const* function, unsigned id) {
    if (id == 0) {
        QOB_FAIL("%s::%s on illegal property", className, function);
    }
    // Signed: an id of all ones, which stands for none, shows as -1.
    QOB_FAIL("%s::%s on illegal property with id %d", className, function, static_cast<int>(id));
    std::terminate(); // not reached
}

} // namespace QOB::reflective::internal
