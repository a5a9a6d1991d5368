#pragma once

#include "qob/qob/deviant.h"
#include "qob/qob/export.h"

namespace QOB {

class Integer;
class Model;
class Object;
struct PackageIntrospectiveMethods;

namespace NSInterface {
class PropertyIntf;
class TypeIntf;
} // namespace NSInterface

namespace Generic {
class SequenceRef;
} // namespace Generic

using PackageFunction = PackageIntrospectiveMethods const* (*)();

/// Identifies a property from outside its class: package, class index there, property id there.
struct PropertyReference {
    PackageFunction package = nullptr;
    unsigned classIndex = 0;
    unsigned propertyId = 0;
};

/// One direct super of a class.
struct SuperReference {
    PackageFunction package = nullptr;
    unsigned classIndex = 0;
};

/// Bits of MetaPropertyDescription::flags.
enum PropertyFlag : unsigned {
    PropertyReadOnly = 0x01,
    PropertyDerived = 0x02,
    PropertyComposite = 0x08,
    PropertyOrdered = 0x10,
    PropertyUnique = 0x20,
    PropertyMultiValued = 0x40,
};

/// A property as data. Texts and arrays are constants of the library that declares the class.
struct MetaPropertyDescription {
    static constexpr unsigned Unbounded = 0xFFFF'FFFF;

    NSInterface::PropertyIntf* meta = nullptr; ///< the live property, once its class is created
    char const* name = nullptr;
    PackageFunction package = nullptr; ///< of the property's type
    unsigned typeIndex = 0;            ///< of the type in that package
    char const* documentation = nullptr;
    unsigned flags = 0;
    char const* defaultValue = "";
    unsigned isPrivate = 0;
    unsigned lower = 0;
    unsigned upper = 1;
    unsigned id = 0; ///< from 1, without gaps within the declaring class
    char const* associationName = nullptr;
    unsigned hasOpposite = 0;
    PackageFunction oppositePackage = nullptr;
    unsigned oppositeClass = 0;
    unsigned oppositeId = 0;
    char const* otherEndName = nullptr;
    unsigned redefinedCount = 0;
    PropertyReference const* redefined = nullptr;
    unsigned subsettedCount = 0;
    PropertyReference const* subsetted = nullptr;
};

/// A metaclass by number: its properties can be read and written without knowing the class. The
/// functions know the ids of their own class only; an inherited property is reached through the
/// record of the class that declares it, with the same object.
struct IntrospectiveMethods {
    using ObjectPointer = NSInterface::ObjectIntf*;

    Object (*getSingleValued)(ObjectPointer, Deviant, unsigned id) = nullptr;
    bool (*hasSingleValued)(ObjectPointer, Deviant, unsigned id) = nullptr;
    void (*setSingleValued)(ObjectPointer, Deviant, unsigned id, Object const&) = nullptr;
    void (*setOnlySingleValued)(ObjectPointer, Deviant, unsigned id, Object const&) = nullptr;
    void (*removeSingleValued)(ObjectPointer, Deviant, unsigned id) = nullptr;
    void (*removeOnlySingleValued)(ObjectPointer, Deviant, unsigned id) = nullptr;
    Generic::SequenceRef (*getMultiValued)(ObjectPointer,
                                           Deviant,
                                           unsigned id,
                                           bool asObjects) = nullptr;
    Generic::SequenceRef (*getOnlyMultiValued)(ObjectPointer,
                                               Deviant,
                                               unsigned id,
                                               bool asObjects) = nullptr;
    MetaPropertyDescription** properties = nullptr; ///< by id; entry 0 stays empty
    SuperReference const* supers = nullptr;         ///< ended by an empty one
    NSInterface::TypeIntf* meta = nullptr;          ///< the created metaclass seen as its type
    PackageIntrospectiveMethods const* package = nullptr;
    /// A new object of the class, in its defaults and under the given id, in the deviant of the
    /// model's handle. Null for a class without objects of its own.
    Object (*create)(Model const&, Integer const& id) = nullptr;
};

/// The classes of a package by index; entry 0 is null, and so is the last one.
struct PackageIntrospectiveMethods {
    IntrospectiveMethods* const* classes = nullptr;
    unsigned count = 0;
};

} // namespace QOB

#include "qob/qob/qobintrospection.h" // IWYU pragma: export
