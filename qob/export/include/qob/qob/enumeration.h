#pragma once

#include "qob/qob/nsinterface/enumerationintf.h"
#include "qob/qob/type.h"

namespace QOB {
class ImmutableEnumeration;
class Enumeration;
class ImmutableEnumerationLiteral;
class EnumerationLiteral;
} // namespace QOB

QOB_HANDLES(QOB::NSInterface::EnumerationIntf,
            QOB::ImmutableEnumeration,
            QOB::Enumeration,
            "qob/export/include/qob/qob/enumeration.h")
QOB_HANDLES(QOB::NSInterface::EnumerationLiteralIntf,
            QOB::ImmutableEnumerationLiteral,
            QOB::EnumerationLiteral,
            "qob/export/include/qob/qob/enumeration.h")

namespace QOB {

/// One value of an enumeration, for reading.
class ImmutableEnumerationLiteral
    : public NamedElementReading<ReadHandle<NSInterface::EnumerationLiteralIntf>> {
public:
    using NamedElementReading::NamedElementReading;

    bool hasEnumeration() const { return (*this)->hasEnumeration(getDeviant()); }
    Enumeration getEnumeration() const;
};

/// One value of an enumeration.
class EnumerationLiteral : public NamedElementWriting<WriteHandle<ImmutableEnumerationLiteral>> {
public:
    using NamedElementWriting::NamedElementWriting;

    /// A new literal in the model and in the deviant of its handle, with the next free id.
    static QOB_EXPORT EnumerationLiteral create(Model const& model);
    static QOB_EXPORT EnumerationLiteral create(Model const& model, String const& name);
    /// With an id that the caller gives.
    static QOB_EXPORT EnumerationLiteral createWithId(Model const& model, Integer const& id);

    void removeEnumeration() const { (*this)->removeEnumeration(getDeviant()); }
    void setEnumeration(Enumeration const& enumeration) const {
        (*this)->setEnumeration(getDeviant(), enumeration);
    }
    void removeOnlyEnumeration() const { (*this)->removeOnlyEnumeration(getDeviant()); }
    void setOnlyEnumeration(Enumeration const& enumeration) const {
        (*this)->setOnlyEnumeration(getDeviant(), enumeration);
    }
};

/// A data type whose values are its literals, for reading.
class ImmutableEnumeration : public TypeReading<ReadHandle<NSInterface::EnumerationIntf>> {
public:
    using TypeReading::TypeReading;

    ImmutableSequence<ImmutableEnumerationLiteral> getOwnedLiterals() const {
        // Read only, through a view that could write.
        return access()->getOwnedLiteralsWithoutAssociation(getDeviant());
    }
};

/// A data type whose values are its literals.
class Enumeration : public TypeWriting<WriteHandle<ImmutableEnumeration>> {
public:
    using TypeWriting::TypeWriting;

    /// A new enumeration in the model and in the deviant of its handle, with the next free id.
    static QOB_EXPORT Enumeration create(Model const& model);
    static QOB_EXPORT Enumeration create(Model const& model, String const& name);
    /// With an id that the caller gives.
    static QOB_EXPORT Enumeration createWithId(Model const& model, Integer const& id);

    Sequence<EnumerationLiteral> getOwnedLiterals() const {
        return (*this)->getOwnedLiterals(getDeviant());
    }
    Sequence<EnumerationLiteral> getOwnedLiteralsWithoutAssociation() const {
        return (*this)->getOwnedLiteralsWithoutAssociation(getDeviant());
    }
};

inline Enumeration ImmutableEnumerationLiteral::getEnumeration() const {
    return (*this)->getEnumeration(getDeviant());
}

} // namespace QOB

QOB_SEQUENCE_NAMES(QOB::EnumerationLiteral, "QOB.", "EnumerationLiteral")
QOB_SEQUENCE_NAMES(QOB::Enumeration, "QOB.", "Enumeration")
