#include "qob/qob/assert.h"
#include "velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundationnamedelement.h"
#include "velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundationnamespace.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Zorvane::metamodel::foundation::NSInterface {

QOB::String NamedElementIntf::qualifiedName(QOB::Deviant deviant) const {
    QOB::String dot(".");
    return qualifiedNameWithSeparator(deviant, dot);
}

QOB::String NamedElementIntf::qualifiedNameWithSeparator(QOB::Deviant deviant,
                                                         QOB::String& separator) const {
    std::vector<std::string> names{std::string(getName(deviant))};
    std::string const between(separator);
    std::size_t length = names.front().size();
    // A namespace on the way: in a circle it is met again. It moves on as the way gets longer.
    Namespace marked;
    std::size_t nextMark = 1;
    for (Namespace space = getNamespace(deviant); space.isValid(); space = space.getNamespace()) {
        QOB_REQUIRE(space != marked, "The namespaces of this element contain one another");
        if (names.size() == nextMark) {
            marked = space;
            nextMark *= 2;
        }
        names.emplace_back(space.getName());
        length += between.size() + names.back().size();
    }
    std::string result;
    result.reserve(length);
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        if (name != names.rbegin()) {
            result += between;
        }
        result += *name;
    }
    return result;
}

} // namespace Zorvane::metamodel::foundation::NSInterface
