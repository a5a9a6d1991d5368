#include "qob/qob/assert.h"
#include "qob/qob/modelcache.h"
#include "qob/qob/valueobjectfactory.h"
#include "velum_types/zorvane/metamodel/types/nsimplementation/zorvanemetamodeltypesfactoryimpl.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesnames.h"

#include <functional>
#include <map>
#include <string>

namespace Zorvane::metamodel::types {

namespace {

/// What a factory makes, by short and by dotted name. Filled by the first factory.
std::map<std::string, QOB::NamedCreator const*, std::less<>>& creatorsByName() {
    static std::map<std::string, QOB::NamedCreator const*, std::less<>> creators;
    return creators;
}

void fillCreators() {
    if (!creatorsByName().empty()) {
        return;
    }
    for (QOB::NamedCreator const& each : NSImplementation::namedCreators()) {
        creatorsByName().emplace(each.name, &each);
        creatorsByName().emplace(each.dottedName, &each);
    }
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
    std::string const name(type);
    if (auto const found = creatorsByName().find(name); found != creatorsByName().end()) {
        deviant.assertWritable(nullptr);
        return found->second->create(getModelQOB(deviant), id); // objects take no text
    }
    if (!QOB::ValueObjectFactory::isValueObjectType(name)) {
        return {};
    }
    return text != nullptr ? QOB::ValueObjectFactory::createFromString(name, *text)
                           : QOB::ValueObjectFactory::create(name);
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
    QOB::Deviant const deviant = model.getDeviant();
    enterModel(deviant);
    deviant.markObjectCreated(classObject());
    bool const previous = QOB::DeviantAssertions::enableAssertions(false);
    setStateOf(deviant, untyped(new FactoryDeviantImpl));
    fillCreators();
    setOnlyModelQOB(deviant, model);
    setOnlyContainerQOB(deviant, QOB::ClassObject(model));
    QOB::DeviantAssertions::enableAssertions(previous);
}

} // namespace NSImplementation

} // namespace Zorvane::metamodel::types
