#include "ownercheck.h"
#include "qob/qob/enumeration.h"
#include "qob/qob/enumerationliteral.h"

namespace QOB::NSInterface {

void EnumerationLiteralIntf::setContainerQOB(Deviant deviant, ClassObject const& container) {
    setEnumeration(deviant,
                   QOB::internal::ownerOf<Enumeration>(
                       container, "The container of an enumeration literal is an enumeration."));
}

} // namespace QOB::NSInterface
