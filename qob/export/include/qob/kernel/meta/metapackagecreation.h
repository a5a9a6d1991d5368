#pragma once

#include "qob/kernel/meta/metaclasscreation.h"
#include "qob/qob/datatype.h"
#include "qob/qob/enumeration.h"
#include "qob/qob/package.h"

#include <span>

/// How a library adds its package, with its data types and classes, to the meta-registry as live
/// elements, and removes it again. Call all of these functions in a transaction on the
/// meta-registry.
namespace QOB {

/// A data type as constant data, and one of two pointers to store its live element in.
struct MetaDataTypeDescription {
    char const* name = nullptr;
    IntrospectiveMethods* methods = nullptr;
    NSInterface::DataTypeIntf** dataType = nullptr;
    NSInterface::EnumerationIntf** enumeration = nullptr;
    std::span<char const* const> literals; ///< of an enumeration
};

/// The functions of a class for its live element.
struct MetaClassFunctions {
    NSInterface::ClassIntf*& (*meta)() = nullptr;
    void (*create)(Factory, Package) = nullptr;
    void (*update)(Factory) = nullptr;
    void (*destroy)(Factory, Package) = nullptr;
    void (*forget)() = nullptr;
};

/// A package as constant data of the library that declares it.
struct MetaPackageDescription {
    char const* name = nullptr;
    char const* dottedName = nullptr;
    /// In order of creation.
    std::span<MetaDataTypeDescription const> dataTypes;
    std::span<MetaClassFunctions const> classes;
    /// The classes in the order of the package's table; they are destroyed in this order.
    std::span<MetaClassFunctions const> table;
    std::span<TagBinding const> tags;
};

/// Creates the package inside the one that `parent` returns unless it exists, completes it in any
/// case, and returns the pointer to it. Without a `parent` it lies directly in the meta-registry.
QOB_EXPORT NSInterface::PackageIntf*& initializeMetaPackage(NSInterface::PackageIntf*& package,
                                                            MetaPackageDescription const&,
                                                            NSInterface::PackageIntf*& (*parent)());
/// Destroys the package if it exists.
QOB_EXPORT void terminateMetaPackage(NSInterface::PackageIntf*& package,
                                     MetaPackageDescription const&);

/// Creates the package with its data types and classes inside `parent`, or directly in the
/// meta-registry if `parent` is empty. Does nothing if the package exists. If it raises
/// QOB::Exception, the pointers are cleared; rolling back the elements is up to the caller's
/// transaction.
QOB_EXPORT void createMetaPackage(NSInterface::PackageIntf*& package,
                                  MetaPackageDescription const&,
                                  Factory const& factory,
                                  Package const& parent);
/// Links each class to the others, once, and applies all tags.
QOB_EXPORT void updateMetaPackage(NSInterface::PackageIntf* package,
                                  MetaPackageDescription const&,
                                  Factory const& factory);
/// Destroys the package and its contents, as seen in the deviant of `in`, and clears every pointer.
/// Does nothing if there is none.
QOB_EXPORT void destroyMetaPackage(NSInterface::PackageIntf*& package,
                                   MetaPackageDescription const&,
                                   Factory const& factory,
                                   Package const& in);
/// Clears every pointer to live elements after a rollback has removed them.
QOB_EXPORT void forgetMetaPackage(NSInterface::PackageIntf*& package,
                                  MetaPackageDescription const&) noexcept;

} // namespace QOB
