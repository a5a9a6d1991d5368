#include "qob/qob/datatype.h"

#include "metaobject.h"
#include "namedelementstate.h"
#include "qob/kernel/factory/create.h"
#include "qob/kernel/property/assignrules.h"
#include "qob/kernel/property/multivalued.h"
#include "qob/kernel/property/ownerend.h"
#include "qob/kernel/property/reflective.h"
#include "qob/qob/enumeration.h"

#include <array>

namespace QOB {

using NSInterface::DataTypeIntf;
using NSInterface::EnumerationIntf;
using NSInterface::EnumerationLiteralIntf;

namespace {

struct EnumerationDescription {
    using Interface = EnumerationIntf;
    static constexpr char const* name = EnumerationIntf::Name;
    static constexpr reflective::Place place{__FILE__, __LINE__};
    using Properties =
        reflective::List<reflective::Many<EnumerationIntf::OwnedLiteralsId,
                                          &EnumerationIntf::getOwnedLiterals,
                                          &EnumerationIntf::getOwnedLiteralsWithoutAssociation>>;
};

struct EnumerationLiteralDescription {
    using Interface = EnumerationLiteralIntf;
    static constexpr char const* name = EnumerationLiteralIntf::Name;
    static constexpr reflective::Place place{__FILE__, __LINE__};
    using Properties =
        reflective::List<reflective::Single<EnumerationLiteralIntf::EnumerationId,
                                            &EnumerationLiteralIntf::getEnumeration,
                                            &EnumerationLiteralIntf::hasEnumeration,
                                            &EnumerationLiteralIntf::setEnumeration,
                                            &EnumerationLiteralIntf::removeEnumeration,
                                            &EnumerationLiteralIntf::setOnlyEnumeration,
                                            &EnumerationLiteralIntf::removeOnlyEnumeration>>;
};

} // namespace

namespace NSInterface {

constinit IntrospectiveMethods EnumerationIntf::sIntrospectiveMethods =
    reflective::methodsOf<EnumerationDescription>();
constinit IntrospectiveMethods EnumerationLiteralIntf::sIntrospectiveMethods =
    reflective::methodsOf<EnumerationLiteralDescription>();

Sequence<EnumerationLiteral> EnumerationIntf::getOwnedLiterals(Deviant deviant) {
    return property::elementsWithOwner<EnumerationLiteral>(
        this,
        deviant,
        sIntrospectiveMethods,
        OwnedLiteralsId,
        EnumerationLiteralIntf::sIntrospectiveMethods,
        EnumerationLiteralIntf::EnumerationId);
}
Sequence<EnumerationLiteral> EnumerationIntf::getOwnedLiteralsWithoutAssociation(Deviant deviant) {
    return property::elements<EnumerationLiteral>(
        this, deviant, sIntrospectiveMethods, OwnedLiteralsId);
}

void EnumerationIntf::internal_deviationAssign(Deviant deviant,
                                               ObjectIntf* source,
                                               Deviant sourceDeviant) {
    property::assignBlocks<EnumerationIntf, EnumerationIntf, NamedElementIntf, ClassObjectIntf>(
        this, deviant, source, sourceDeviant);
}

void EnumerationIntf::internal_assignBlock(Deviant deviant,
                                           EnumerationIntf const* source,
                                           Deviant sourceDeviant) {
    property::assignEach<property::AssignObjects<&EnumerationIntf::getOwnedLiterals>>(
        this, deviant, source, sourceDeviant);
}

bool EnumerationLiteralIntf::hasEnumeration(Deviant deviant) const {
    return getEnumeration(deviant).isValid();
}
void EnumerationLiteralIntf::removeEnumeration(Deviant deviant) {
    if (hasEnumeration(deviant)) {
        property::removeOwner<&EnumerationIntf::getOwnedLiteralsWithoutAssociation, Enumeration>(
            this, deviant);
    }
}
void EnumerationLiteralIntf::setEnumeration(Deviant deviant, Enumeration const& enumeration) {
    property::setOwner<&EnumerationIntf::getOwnedLiteralsWithoutAssociation,
                       &EnumerationLiteralIntf::setOnlyEnumeration>(
        this, deviant, enumeration, sIntrospectiveMethods, EnumerationId);
}
Enumeration EnumerationLiteralIntf::getEnumeration(Deviant deviant) const {
    return property::getOwner<Enumeration>(this, deviant);
}
void EnumerationLiteralIntf::removeOnlyEnumeration(Deviant deviant) {
    removeOnlyContainerQOB(deviant);
}
void EnumerationLiteralIntf::setOnlyEnumeration(Deviant deviant, Enumeration const& enumeration) {
    property::setOnlyOwner<&EnumerationIntf::getOwnedLiteralsWithoutAssociation,
                           &EnumerationLiteralIntf::removeEnumeration>(
        this, deviant, enumeration, sIntrospectiveMethods, EnumerationId);
}

void EnumerationLiteralIntf::setContainerQOB(Deviant deviant, ClassObject const& container) {
    Enumeration const enumeration(container);
    QOB_REQUIRE(enumeration.isValid() || !container.isValid(),
                "The container of an enumeration literal is an enumeration.");
    setEnumeration(deviant, enumeration);
}
void EnumerationLiteralIntf::removeContainerQOB(Deviant deviant) {
    removeEnumeration(deviant);
}

} // namespace NSInterface

namespace {

class DataTypeDeviantImpl final
    : public NSImplementation::NamedElementState<DataTypeDeviantImpl, DataTypeIntf> {
public:
    NSImplementation::NamedElementFields fields_;
};

class DataTypeImpl final : public NSImplementation::MetaObject<DataTypeDeviantImpl,
                                                               DataTypeIntf,
                                                               NSInterface::TypeIntf,
                                                               NSInterface::NamespaceIntf,
                                                               NSInterface::NamedElementIntf> {};

class EnumerationDeviantImpl final
    : public NSImplementation::NamedElementState<EnumerationDeviantImpl, EnumerationIntf> {
public:
    struct Fields : NSImplementation::NamedElementFields {
        NSImplementation::OwnedList<EnumerationLiteral> ownedLiterals;
    };

    Sequence<EnumerationLiteral> getOwnedLiterals(Deviant deviant) override {
        return fields_.ownedLiterals.read(deviant);
    }
    Sequence<EnumerationLiteral> getOwnedLiteralsWithoutAssociation(Deviant deviant) override {
        return fields_.ownedLiterals.write(deviant);
    }
    std::array<ReferenceStorage const*, 1> ownedObjects() const {
        return {fields_.ownedLiterals.storage()};
    }

    Fields fields_;
};

class EnumerationImpl final : public NSImplementation::MetaObject<EnumerationDeviantImpl,
                                                                  EnumerationIntf,
                                                                  DataTypeIntf,
                                                                  NSInterface::TypeIntf,
                                                                  NSInterface::NamespaceIntf,
                                                                  NSInterface::NamedElementIntf> {};

class EnumerationLiteralDeviantImpl final
    : public NSImplementation::NamedElementState<EnumerationLiteralDeviantImpl,
                                                 EnumerationLiteralIntf> {
public:
    NSImplementation::NamedElementFields fields_;
};

class EnumerationLiteralImpl final
    : public NSImplementation::MetaObject<EnumerationLiteralDeviantImpl,
                                          EnumerationLiteralIntf,
                                          NSInterface::NamedElementIntf> {};

} // namespace

DataType DataType::create(Model const& model) {
    return createObject<DataType, DataTypeImpl>(model, NSImplementation::Unnamed());
}
DataType DataType::create(Model const& model, String const& name) {
    return createObject<DataType, DataTypeImpl>(model, NSImplementation::Named{name});
}
DataType DataType::createWithId(Model const& model, Integer const& id) {
    return createObject<DataType, DataTypeImpl>(model, id);
}

Enumeration Enumeration::create(Model const& model) {
    return createObject<Enumeration, EnumerationImpl>(model, NSImplementation::Unnamed());
}
Enumeration Enumeration::create(Model const& model, String const& name) {
    return createObject<Enumeration, EnumerationImpl>(model, NSImplementation::Named{name});
}
Enumeration Enumeration::createWithId(Model const& model, Integer const& id) {
    return createObject<Enumeration, EnumerationImpl>(model, id);
}

EnumerationLiteral EnumerationLiteral::create(Model const& model) {
    return createObject<EnumerationLiteral, EnumerationLiteralImpl>(model,
                                                                    NSImplementation::Unnamed());
}
EnumerationLiteral EnumerationLiteral::create(Model const& model, String const& name) {
    return createObject<EnumerationLiteral, EnumerationLiteralImpl>(model,
                                                                    NSImplementation::Named{name});
}
EnumerationLiteral EnumerationLiteral::createWithId(Model const& model, Integer const& id) {
    return createObject<EnumerationLiteral, EnumerationLiteralImpl>(model, id);
}

} // namespace QOB
