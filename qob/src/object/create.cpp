#include "qob/kernel/factory/create.h"

#include "model/modelcore.h"

namespace QOB::internal {

Deviant accessedDeviant(Model const& model) {
    NSInterface::ModelIntf const* const object = model.operator->();
    if (!model.getDeviant().isValid()) {
        ModelCore::deviationsOf(object).checkAccess(model.getDeviant());
    }
    return model.getDeviant();
}

void revokeCreation(NSInterface::ClassObjectIntf* object, Deviant deviant) {
    object->destroy(deviant); // what refers to it lets go
    DeviantData& data = DeviantData::of(deviant);
    data.history().forgetCreation(object);
    data.model().forgetId(object);
}

} // namespace QOB::internal
