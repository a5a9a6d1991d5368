#include "qob/kernel/deviant/rootobject.h"

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/qob/assert.h"
#include "qob/qob/stereotypeobject.h"

#include <exception>

namespace QOB::internal {

void failNoRootDeviant(char const* implementationName) {
    AsserterEx<Exception>("no root deviant passed to %s::createRootDeviation", implementationName)
        .raise(__FILE__, __LINE__, "");
    std::terminate(); // not reached: that check has failed already
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
