#include "factoryimpl.h"
#include "model/modelimpl.h"
#include "qob/kernel/factory/byname.h"
#include "qob/kernel/factory/create.h"
#include "qob/qob/valueobjectfactory.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace QOB {

namespace NSInterface {

// A state makes nothing.

Package FactoryIntf::createPackage(Deviant, String) {
    return {};
}
Package FactoryIntf::createPackage(Deviant) {
    return {};
}
DataType FactoryIntf::createDataType(Deviant, String) {
    return {};
}
DataType FactoryIntf::createDataType(Deviant) {
    return {};
}
Enumeration FactoryIntf::createEnumeration(Deviant, String) {
    return {};
}
Enumeration FactoryIntf::createEnumeration(Deviant) {
    return {};
}
EnumerationLiteral FactoryIntf::createEnumerationLiteral(Deviant, String) {
    return {};
}
EnumerationLiteral FactoryIntf::createEnumerationLiteral(Deviant) {
    return {};
}
StereotypeObject FactoryIntf::createStereotypeObject(Deviant, String) {
    return {};
}
StereotypeObject FactoryIntf::createStereotypeObject(Deviant) {
    return {};
}
Class FactoryIntf::createClass(Deviant, String) {
    return {};
}
Class FactoryIntf::createClass(Deviant) {
    return {};
}
Property FactoryIntf::createProperty(Deviant, String) {
    return {};
}
Property FactoryIntf::createProperty(Deviant) {
    return {};
}

Model FactoryIntf::createNewModel() {
    auto* const model = new NSImplementation::ModelImpl();
    return {model, model->getRootDeviant()};
}

} // namespace NSInterface

namespace NSImplementation {

namespace {

/// What the factory makes by name.
constexpr NamedCreator creators[] = {
    {"Package", NSInterface::PackageIntf::Name, &createAsObject<Package>},
    {"DataType", NSInterface::DataTypeIntf::Name, &createAsObject<DataType>},
    {"Enumeration", NSInterface::EnumerationIntf::Name, &createAsObject<Enumeration>},
    {"EnumerationLiteral",
     NSInterface::EnumerationLiteralIntf::Name,
     &createAsObject<EnumerationLiteral>},
    {"StereotypeObject",
     NSInterface::StereotypeObjectIntf::Name,
     &createAsObject<StereotypeObject>},
    {"Class", NSInterface::ClassIntf::Name, &createAsObject<Class>},
    {"Property", NSInterface::PropertyIntf::Name, &createAsObject<Property>},
};

NamedCreator const* findCreator(std::string const& type) {
    auto const* const found =
        std::find_if(std::begin(creators), std::end(creators), [&type](NamedCreator const& each) {
            return type == each.name || type == each.dottedName;
        });
    return found != std::end(creators) ? found : nullptr;
}

} // namespace

FactoryImpl::FactoryImpl(Model const& model) {
    IntegerIncDec const guard(&count());
    Deviant const deviant = internal::accessedDeviant(model);
    enterModel(deviant);
    deviant.markObjectCreated(classObject());
    internal_createDeviation(deviant);
    setOnlyModelQOB(deviant, model);
    setOnlyContainerQOB(deviant, model);
}

Package FactoryImpl::createPackage(Deviant deviant, String name) {
    return Package::create(getModelQOB(deviant), name);
}
Package FactoryImpl::createPackage(Deviant deviant) {
    return Package::create(getModelQOB(deviant));
}
DataType FactoryImpl::createDataType(Deviant deviant, String name) {
    return DataType::create(getModelQOB(deviant), name);
}
DataType FactoryImpl::createDataType(Deviant deviant) {
    return DataType::create(getModelQOB(deviant));
}
Enumeration FactoryImpl::createEnumeration(Deviant deviant, String name) {
    return Enumeration::create(getModelQOB(deviant), name);
}
Enumeration FactoryImpl::createEnumeration(Deviant deviant) {
    return Enumeration::create(getModelQOB(deviant));
}
EnumerationLiteral FactoryImpl::createEnumerationLiteral(Deviant deviant, String name) {
    return EnumerationLiteral::create(getModelQOB(deviant), name);
}
EnumerationLiteral FactoryImpl::createEnumerationLiteral(Deviant deviant) {
    return EnumerationLiteral::create(getModelQOB(deviant));
}
StereotypeObject FactoryImpl::createStereotypeObject(Deviant deviant, String name) {
    return StereotypeObject::create(getModelQOB(deviant), name);
}
StereotypeObject FactoryImpl::createStereotypeObject(Deviant deviant) {
    return StereotypeObject::create(getModelQOB(deviant));
}
Class FactoryImpl::createClass(Deviant deviant, String name) {
    return Class::create(getModelQOB(deviant), name);
}
Class FactoryImpl::createClass(Deviant deviant) {
    return Class::create(getModelQOB(deviant));
}
Property FactoryImpl::createProperty(Deviant deviant, String name) {
    return Property::create(getModelQOB(deviant), name);
}
Property FactoryImpl::createProperty(Deviant deviant) {
    return Property::create(getModelQOB(deviant));
}

Object FactoryImpl::createFromString(Deviant deviant, String type) {
    std::string const name = type;
    if (findCreator(name) != nullptr) {
        deviant.assertWritable(nullptr);
        return createFromString(deviant, type, getModelQOB(deviant).allocateObjectId());
    }
    return ValueObjectFactory::isValueObjectType(name) ? ValueObjectFactory::create(name)
                                                       : Object();
}

Object FactoryImpl::createFromString(Deviant deviant, String type, String text) {
    std::string const name = type;
    return ValueObjectFactory::isValueObjectType(name)
               ? ValueObjectFactory::createFromString(name, text)
               : createFromString(deviant, type);
}

Object FactoryImpl::createFromString(Deviant deviant, String type, Integer id) {
    std::string const name = type;
    NamedCreator const* const creator = findCreator(name);
    return creator != nullptr ? creator->create(getModelQOB(deviant), id)
                              : createFromString(deviant, type);
}

} // namespace NSImplementation
} // namespace QOB
