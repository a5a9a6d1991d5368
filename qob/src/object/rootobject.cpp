#include "qob/kernel/deviant/rootobject.h"

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/qob/assert.h"
#include "qob/qob/stereotypeobject.h"

namespace QOB::internal {

void failNoRootDeviant(char const* implementationName) {
    QOB_FAIL("no root deviant passed to %s::createRootDeviation", implementationName);
}

void appendStereotypeInstances(NSInterface::ClassObjectIntf* object,
                               Deviant deviant,
                               std::vector<ClassObject>& contained) {
    if (!object->deviant_isValid(deviant) || !object->hasAppliedStereotypeInstances(deviant)) {
        return;
    }
    for (StereotypeObject const& each :
         object->getAppliedStereotypeInstancesWithoutAssociation(deviant)) {
        if (each.isValid()) {
            contained.emplace_back(each);
        }
    }
}

} // namespace QOB::internal
