#include "model/modelimpl.h"
#include "qob/kernel/factory/byname.h"
#include "qob/kernel/factory/create.h"
#include "qob/qob/nsimplementation/factoryimpl.h"
#include "qob/qob/qobnames.h"

namespace QOB {

namespace {

/// The values of the package are known to every factory.
NamedTypes const& typesByName() {
    static NamedTypes const types(NSImplementation::namedCreators(), {});
    return types;
}

} // namespace

namespace NSInterface {

Object FactoryIntf::createFromString(Deviant deviant, String type) {
    Integer const id = getModelQOB(deviant).allocateObjectId();
    return typesByName().create(this, deviant, type, id, nullptr);
}

Object FactoryIntf::createFromString(Deviant deviant, String type, String text) {
    Integer const id = getModelQOB(deviant).allocateObjectId();
    return typesByName().create(this, deviant, type, id, &text);
}

Object FactoryIntf::createFromString(Deviant deviant, String type, Integer id) {
    return typesByName().create(this, deviant, type, id, nullptr);
}

Model FactoryIntf::createNewModel() {
    auto* const model = new NSImplementation::ModelImpl();
    return {model, model->getRootDeviant()};
}

} // namespace NSInterface

namespace NSImplementation {

FactoryImpl::FactoryImpl() {
    QOB_FAIL("factory cannot be default constructed");
}

FactoryImpl::FactoryImpl(Model model) {
    IntegerIncDec const guard(&count());
    Deviant const deviant = internal::accessedDeviant(model);
    enterModel(deviant);
    deviant.markObjectCreated(classObject());
    internal_createDeviation(deviant);
    setOnlyModelQOB(deviant, model);
    setOnlyContainerQOB(deviant, model);
}

} // namespace NSImplementation

} // namespace QOB
