#pragma once

#include "qob/kernel/meta/metaclasscreation.h"
#include "qob/qob/datatype.h"
#include "qob/qob/enumeration.h"
#include "qob/qob/package.h"

#include <span>

/// How a library makes its package a live element of the meta-registry, with its data types and
/// classes, and takes it out again. All of it is to be called in a transaction there.
namespace QOB {

/// A data type as constant data, and where its live element is noted: one of the two pointers.
struct MetaDataTypeDescription {
    char const* name = nullptr;
    IntrospectiveMethods* methods = nullptr;
    NSInterface::DataTypeIntf** dataType = nullptr;
    NSInterface::EnumerationIntf** enumeration = nullptr;
    std::span<char const* const> literals; ///< of an enumeration
};

/// What a class has for its live element.
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
    /// The classes in the order of the package's table, in which they are destroyed.
    std::span<MetaClassFunctions const> table;
    std::span<TagBinding const> tags;
};

/// Makes the package within the one that `parent` gives unless it exists, completes it in any case,
/// and returns the pointer to it.
QOB_EXPORT NSInterface::PackageIntf*& initializeMetaPackage(NSInterface::PackageIntf*& package,
                                                            MetaPackageDescription const&,
                                                            NSInterface::PackageIntf*& (*parent)());
/// Destroys the package if it exists.
QOB_EXPORT void terminateMetaPackage(NSInterface::PackageIntf*& package,
                                     MetaPackageDescription const&);

/// Makes the package, its data types and classes, within `parent`, or directly in the meta-registry
/// if that is empty. Nothing happens if the package exists. What raises QOB::Exception leaves no
/// pointer behind; the caller's transaction takes the elements back.
QOB_EXPORT void createMetaPackage(NSInterface::PackageIntf*& package,
                                  MetaPackageDescription const&,
                                  Factory const& factory,
                                  Package const& parent);
/// Gives each class, once, what lies in others, and applies all tags.
QOB_EXPORT void updateMetaPackage(NSInterface::PackageIntf* package,
                                  MetaPackageDescription const&,
                                  Factory const& factory);
/// Destroys the package with all it contains, as seen in the deviant of `in`, and clears every
/// pointer. Nothing happens if there is none.
QOB_EXPORT void destroyMetaPackage(NSInterface::PackageIntf*& package,
                                   MetaPackageDescription const&,
                                   Factory const& factory,
                                   Package const& in);
/// Clears every pointer to live elements, which a rollback has taken already.
QOB_EXPORT void forgetMetaPackage(NSInterface::PackageIntf*& package,
                                  MetaPackageDescription const&) noexcept;

} // namespace QOB
