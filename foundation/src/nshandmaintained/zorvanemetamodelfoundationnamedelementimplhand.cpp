#include "qob/qob/assert.h"
#include "velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundationnamedelement.h"
#include "velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundationnamespace.h"

#include <algorithm>
#include <string>
#include <vector>

namespace Zorvane::metamodel::foundation::NSInterface {

QOB::String NamedElementIntf::qualifiedName(QOB::Deviant deviant) const {
    QOB::String dot(".");
    return qualifiedNameWithSeparator(deviant, dot);
}

QOB::String NamedElementIntf::qualifiedNameWithSeparator(QOB::Deviant deviant,
                                                         QOB::String& separator) const {
    std::string result(getName(deviant));
    std::string const between(separator);
    std::vector<Namespace> spaces;
    for (Namespace space = getNamespace(deviant); space.isValid(); space = space.getNamespace()) {
        QOB_REQUIRE(std::find(spaces.begin(), spaces.end(), space) == spaces.end(),
                    "The namespaces of this element contain one another");
        spaces.push_back(space);
        std::string outer(space.getName());
        outer += between;
        outer += result;
        result = std::move(outer);
    }
    return result;
}

} // namespace Zorvane::metamodel::foundation::NSInterface
