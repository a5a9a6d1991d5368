#include "ownercheck.h"
#include "qob/qob/package.h"
#include "qob/qob/type.h"

namespace QOB::NSInterface {

void TypeIntf::setContainerQOB(Deviant deviant, ClassObject const& container) {
    setPackage(deviant,
               QOB::internal::ownerOf<Package>(container, "The container of a type is a package."));
}

} // namespace QOB::NSInterface
