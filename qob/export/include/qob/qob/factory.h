#pragma once

#include "qob/qob/class.h"
#include "qob/qob/datatype.h"
#include "qob/qob/enumeration.h"
#include "qob/qob/factoryobject.h"
#include "qob/qob/nsinterface/factoryintf.h"
#include "qob/qob/package.h"
#include "qob/qob/property.h"
#include "qob/qob/stereotypeobject.h"

#include <utility>

namespace QOB {
class Factory;
} // namespace QOB

QOB_HANDLES(QOB::NSInterface::FactoryIntf,
            QOB::Factory,
            QOB::Factory,
            "qob/export/include/qob/qob/factory.h")

namespace QOB {

/// The factory of metamodels: makes their elements in its model and in the handle's deviant.
class Factory : public FactoryObjectWriting<
                    WriteHandle<ClassObjectReading<ReadHandle<NSInterface::FactoryIntf>>>> {
public:
    using FactoryObjectWriting::FactoryObjectWriting;

    Package createPackage() const { return (*this)->createPackage(getDeviant()); }
    Package createPackage(String name) const {
        return (*this)->createPackage(getDeviant(), std::move(name));
    }
    DataType createDataType() const { return (*this)->createDataType(getDeviant()); }
    DataType createDataType(String name) const {
        return (*this)->createDataType(getDeviant(), std::move(name));
    }
    Enumeration createEnumeration() const { return (*this)->createEnumeration(getDeviant()); }
    Enumeration createEnumeration(String name) const {
        return (*this)->createEnumeration(getDeviant(), std::move(name));
    }
    EnumerationLiteral createEnumerationLiteral() const {
        return (*this)->createEnumerationLiteral(getDeviant());
    }
    EnumerationLiteral createEnumerationLiteral(String name) const {
        return (*this)->createEnumerationLiteral(getDeviant(), std::move(name));
    }
    StereotypeObject createStereotypeObject() const {
        return (*this)->createStereotypeObject(getDeviant());
    }
    StereotypeObject createStereotypeObject(String name) const {
        return (*this)->createStereotypeObject(getDeviant(), std::move(name));
    }
    Class createClass() const { return (*this)->createClass(getDeviant()); }
    Class createClass(String name) const {
        return (*this)->createClass(getDeviant(), std::move(name));
    }
    Property createProperty() const { return (*this)->createProperty(getDeviant()); }
    Property createProperty(String name) const {
        return (*this)->createProperty(getDeviant(), std::move(name));
    }
};

} // namespace QOB
