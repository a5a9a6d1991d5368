#include "qob/kernel/factory/create.h"
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

/// What a factory makes under a name: objects of a class, or values of a data type.
struct Made {
    QOB::NamedCreator const* ofClass = nullptr;
    QOB::NamedValue const* ofDataType = nullptr;
};

/// By short and by dotted name. Filled by the first factory.
std::map<std::string, Made, std::less<>>& typesByName() {
    static std::map<std::string, Made, std::less<>> types;
    return types;
}

void fillTypes() {
    if (!typesByName().empty()) {
        return;
    }
    for (QOB::NamedCreator const& each : NSImplementation::namedCreators()) {
        typesByName().insert({{each.name, {&each}}, {each.dottedName, {&each}}});
    }
    for (QOB::NamedValue const& each : NSImplementation::namedValues()) {
        typesByName().insert({{each.name, {nullptr, &each}}, {each.dottedName, {nullptr, &each}}});
    }
}

QOB::Object createValue(std::string const& dottedName, QOB::String const* text) {
    return text != nullptr ? QOB::ValueObjectFactory::createFromString(dottedName, *text)
                           : QOB::ValueObjectFactory::create(dottedName);
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
    auto const found = typesByName().find(name);
    if (found == typesByName().end()) {
        return QOB::ValueObjectFactory::isValueObjectType(name) ? createValue(name, text)
                                                                : QOB::Object();
    }
    if (found->second.ofDataType != nullptr) {
        return createValue(found->second.ofDataType->dottedName, text);
    }
    deviant.assertWritable(nullptr);
    return found->second.ofClass->create(getModelQOB(deviant), id); // objects take no text
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
    fillTypes();
    setOnlyModelQOB(deviant, model);
    setOnlyContainerQOB(deviant, QOB::ClassObject(model));
    QOB::DeviantAssertions::enableAssertions(previous);
}

} // namespace NSImplementation

} // namespace Zorvane::metamodel::types
