#include "qob/kernel/factory/byname.h"
#include "qob/qob/factoryobject.h"
#include "qob/qob/valueobjectfactory.h"

namespace QOB {

namespace {

Object createValue(std::string const& dottedName, String const* text) {
    return text != nullptr ? ValueObjectFactory::createFromString(dottedName, *text)
                           : ValueObjectFactory::create(dottedName);
}

} // namespace

NamedTypes::NamedTypes(std::span<NamedCreator const> classes, std::span<NamedValue const> values) {
    for (NamedCreator const& each : classes) {
        byName_.insert({{each.name, {&each}}, {each.dottedName, {&each}}});
    }
    for (NamedValue const& each : values) {
        byName_.insert({{each.name, {nullptr, &each}}, {each.dottedName, {nullptr, &each}}});
    }
}

Object NamedTypes::create(NSInterface::ClassObjectIntf const* factory,
                          Deviant deviant,
                          std::string const& type,
                          Integer const& id,
                          String const* text) const {
    auto const found = byName_.find(type);
    if (found == byName_.end()) {
        return ValueObjectFactory::isValueObjectType(type) ? createValue(type, text) : Object();
    }
    if (found->second.ofDataType != nullptr) {
        return createValue(found->second.ofDataType->dottedName, text);
    }
    deviant.assertWritable(nullptr);
    return found->second.ofClass->create(factory->getModelQOB(deviant), id);
}

namespace NSInterface {

void FactoryObjectIntf::setContainerQOB(Deviant deviant, ClassObject const& container) {
    if (castObject<ModelIntf>(container.get()) != nullptr) {
        setOnlyContainerQOB(deviant, container);
    } else {
        ClassObjectIntf::setContainerQOB(deviant, container);
    }
}

// A state makes nothing, and neither does a factory of no package.

Object FactoryObjectIntf::createFromString(Deviant, String) {
    return {};
}
Object FactoryObjectIntf::createFromString(Deviant, String, String) {
    return {};
}
Object FactoryObjectIntf::createFromString(Deviant, String, Integer) {
    return {};
}

} // namespace NSInterface

} // namespace QOB
