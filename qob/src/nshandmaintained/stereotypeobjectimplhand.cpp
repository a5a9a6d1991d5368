#include "qob/kernel/property/reference.h"
#include "qob/qob/stereotypeobject.h"

namespace QOB::NSInterface {

/// Any object can be the container of a stereotype, also one whose class is not in the
/// meta-registry.
void StereotypeObjectIntf::setContainerQOB(Deviant deviant, ClassObject const& container) {
    if (!container.isValid()) {
        removeContainerQOB(deviant);
        return;
    }
    property::requireSameModel(
        this, deviant, container, ClassObjectIntf::sIntrospectiveMethods, ContainerQOBId);
    container->getAppliedStereotypeInstances(deviant).push_back(StereotypeObject(this, deviant));
}

} // namespace QOB::NSInterface
