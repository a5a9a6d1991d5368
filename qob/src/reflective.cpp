#include "qob/kernel/property/reflective.h"

#include <exception>

namespace QOB::reflective::internal {

void failIllegalProperty(char const* className, char const* function, unsigned id) {
    if (id == 0) {
        QOB_FAIL("%s::%s on illegal property", className, function);
    }
    QOB_FAIL("%s::%s on illegal property with id %u", className, function, id);
    std::terminate(); // not reached
}

} // namespace QOB::reflective::internal
