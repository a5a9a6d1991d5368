#include "qob/kernel/factory/byname.h"
#include "qob/kernel/factory/create.h"
#include "qob/qob/assert.h"
#include "qob/qob/modelcache.h"
#include "velum_types/zorvane/metamodel/types/nsimplementation/zorvanemetamodeltypesfactoryimpl.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesnames.h"

#include <string>

namespace Zorvane::metamodel::types {

namespace {

/// Filled by the first factory.
QOB::NamedTypes const& typesByName() {
    static QOB::NamedTypes const types(NSImplementation::namedCreators(),
                                       NSImplementation::namedValues());
    return types;
}

} // namespace

namespace NSInterface {

QOB::Object FactoryIntf::createFromString(QOB::Deviant deviant, QOB::String type) {
    return createObject(deviant, type, getModelQOB(deviant).allocateObjectId(), nullptr);
}

QOB::Object
FactoryIntf::createFromString(QOB::Deviant deviant, QOB::String type, QOB::String text) {
    return createObject(deviant, type, getModelQOB(deviant).allocateObjectId(), &text);
}

QOB::Object FactoryIntf::createFromString(QOB::Deviant deviant, QOB::String type, QOB::Integer id) {
    return createObject(deviant, type, id, nullptr);
}

QOB::Object FactoryIntf::createObject(QOB::Deviant deviant,
                                      QOB::String type,
                                      QOB::Integer id,
                                      QOB::String const* text) {
    return typesByName().create(this, deviant, type, id, text);
}

QOB::Model FactoryIntf::createNewModel() {
    QOB::String const base(QOB::ModelCache::UNTITLED);
    QOB::Model model = QOB::NSInterface::FactoryIntf::createNewModel();
    // A plain pair of calls, not a guard: after a failure in between, the assertions stay off.
    bool const previous = QOB::DeviantAssertions::enableAssertions(false);
    std::wstring const uri =
        QOB::ModelCache::instance()->getNextAvailableModelUri(std::wstring(base));
    model.setUri(QOB::String(uri));
    QOB::ModelCache::instance()->bindModel(uri, model);
    QOB::DeviantAssertions::enableAssertions(previous);
    return model;
}

FactoryIntf* FactoryIntf::createNewFactory(QOB::Model model) {
    return new NSImplementation::FactoryImpl(model);
}

} // namespace NSInterface

namespace NSImplementation {

FactoryImpl::FactoryImpl() {
    QOB_FAIL("factory cannot be default constructed");
}

FactoryImpl::FactoryImpl(QOB::Model model) {
    QOB::IntegerIncDec const guard(&count());
    objectId_ = QOB::Integer();
    QOB::Deviant const deviant = QOB::internal::accessedDeviant(model);
    enterModel(deviant);
    deviant.markObjectCreated(classObject());
    bool const previous = QOB::DeviantAssertions::enableAssertions(false);
    setStateOf(deviant, untyped(new FactoryDeviantImpl));
    typesByName();
    setOnlyModelQOB(deviant, model);
    setOnlyContainerQOB(deviant, QOB::ClassObject(model));
    QOB::DeviantAssertions::enableAssertions(previous);
}

} // namespace NSImplementation

} // namespace Zorvane::metamodel::types
