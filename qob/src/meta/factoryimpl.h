#pragma once

#include "metaobject.h"
#include "qob/qob/factory.h"

namespace QOB::NSImplementation {

class FactoryDeviantImpl final
    : public ClassObjectState<FactoryDeviantImpl, NSInterface::FactoryIntf> {
public:
    ClassObjectFields fields_;
};

/// The factory of the metamodels in a model. It is contained in the model.
class FactoryImpl final : public MetaObject<FactoryDeviantImpl,
                                            NSInterface::FactoryIntf,
                                            NSInterface::FactoryObjectIntf> {
public:
    explicit FactoryImpl(Model const& model);

    Package createPackage(Deviant deviant, String name) override;
    Package createPackage(Deviant deviant) override;
    DataType createDataType(Deviant deviant, String name) override;
    DataType createDataType(Deviant deviant) override;
    Enumeration createEnumeration(Deviant deviant, String name) override;
    Enumeration createEnumeration(Deviant deviant) override;
    EnumerationLiteral createEnumerationLiteral(Deviant deviant, String name) override;
    EnumerationLiteral createEnumerationLiteral(Deviant deviant) override;
    StereotypeObject createStereotypeObject(Deviant deviant, String name) override;
    StereotypeObject createStereotypeObject(Deviant deviant) override;
    Class createClass(Deviant deviant, String name) override;
    Class createClass(Deviant deviant) override;
    Property createProperty(Deviant deviant, String name) override;
    Property createProperty(Deviant deviant) override;

    Object createFromString(Deviant deviant, String type) override;
    Object createFromString(Deviant deviant, String type, String text) override;
    Object createFromString(Deviant deviant, String type, Integer id) override;
};

} // namespace QOB::NSImplementation
