#pragma once

#include "qob/kernel/interfaceof.h"
#include "qob/qob/nsinterface/factoryobjectintf.h"

namespace QOB {

class Class;
class DataType;
class Enumeration;
class EnumerationLiteral;
class Package;
class Property;
class StereotypeObject;

namespace NSInterface {

/// The factory of metamodels: creates their elements in its model, in the given deviant, each with
/// the next free id. Raises QOB::Exception, before anything is created, if the deviant can't be
/// written.
class QOB_EXPORT FactoryIntf : public InterfaceOf<FactoryIntf, FactoryObjectIntf> {
public:
    static constexpr char const* Name = "QOB.Factory";
    static constexpr char const* ImmutableName = "QOB.ImmutableFactory";

    virtual Package createPackage(Deviant deviant, String name);
    virtual Package createPackage(Deviant deviant);
    virtual DataType createDataType(Deviant deviant, String name);
    virtual DataType createDataType(Deviant deviant);
    virtual Enumeration createEnumeration(Deviant deviant, String name);
    virtual Enumeration createEnumeration(Deviant deviant);
    virtual EnumerationLiteral createEnumerationLiteral(Deviant deviant, String name);
    virtual EnumerationLiteral createEnumerationLiteral(Deviant deviant);
    virtual StereotypeObject createStereotypeObject(Deviant deviant, String name);
    virtual StereotypeObject createStereotypeObject(Deviant deviant);
    virtual Class createClass(Deviant deviant, String name);
    virtual Class createClass(Deviant deviant);
    virtual Property createProperty(Deviant deviant, String name);
    virtual Property createProperty(Deviant deviant);

    /// A new, empty model without a URI, seen in its root deviant.
    static Model createNewModel();
};

} // namespace NSInterface
} // namespace QOB
