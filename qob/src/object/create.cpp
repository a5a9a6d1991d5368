#include "qob/kernel/factory/create.h"

#include "model/modelcore.h"
#include "model/modelimpl.h"

namespace QOB::internal {

Deviant accessedDeviant(Model const& model) {
    NSInterface::ModelIntf const* const object = model.operator->();
    if (!model.getDeviant().isValid()) {
        ModelCore::deviationsOf(object).checkAccess(model.getDeviant());
    }
    return model.getDeviant();
}

Deviant creatingDeviant(Model const& model) {
    Deviant const deviant = accessedDeviant(model);
    deviant.assertWritable(nullptr);
    return deviant;
}

Integer newObjectId(Deviant deviant) {
    return ModelCore::of(deviant).ids().allocate();
}

void enterObject(NSInterface::ClassObjectIntf* object, Deviant deviant) {
    DeviantData& data = DeviantData::of(deviant);
    data.requireNotTelling("create an object");
    data.model().enterObject(object);
    data.history().markCreated(object);
}

void listObject(NSInterface::ClassObjectIntf* object, Deviant deviant, Integer const& id) {
    ModelCore& core = ModelCore::of(deviant);
    core.bindFirstId(deviant, object, id);
    static_cast<NSImplementation::ModelImpl*>(core.model())->listNewObject(deviant, object);
}

void revokeCreation(NSInterface::ClassObjectIntf* object, Deviant deviant) {
    object->destroy(deviant); // what refers to it lets go
    DeviantData& data = DeviantData::of(deviant);
    data.history().forgetCreation(object);
    data.model().forgetId(object);
}

} // namespace QOB::internal
