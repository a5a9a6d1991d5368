#include "velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundationnamedelement.h"
#include "velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundationnamespace.h"

#include <string>

namespace Zorvane::metamodel::foundation::NSInterface {

QOB::String NamedElementIntf::qualifiedName(QOB::Deviant deviant) const {
    QOB::String dot(".");
    return qualifiedNameWithSeparator(deviant, dot);
}

QOB::String NamedElementIntf::qualifiedNameWithSeparator(QOB::Deviant deviant,
                                                         QOB::String& separator) const {
    std::string result(getName(deviant));
    std::string const between(separator);
    for (Namespace space = getNamespace(deviant); space.isValid(); space = space.getNamespace()) {
        std::string outer(space.getName());
        outer += between;
        outer += result;
        result = std::move(outer);
    }
    return result;
}

} // namespace Zorvane::metamodel::foundation::NSInterface
