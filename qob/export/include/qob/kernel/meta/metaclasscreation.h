#pragma once

#include "qob/qob/class.h"
#include "qob/qob/factory.h"
#include "qob/qob/introspection.h"
#include "qob/qob/tags.h"

#include <span>

/// How a library adds its classes, with their properties, to the meta-registry as live elements,
/// and removes them again. Call all of these functions in a transaction on the meta-registry.
namespace QOB {

/// Creates a class in the package with its properties, without links to other classes, and stores
/// each live property in the `meta` of its description. `comments` ends with null and may be null.
/// Raises QOB::Exception, and creates nothing, if the factory or package is empty.
QOB_EXPORT void staticCreateMetaClass(NSInterface::ClassIntf*& result,
                                      Factory const& factory,
                                      Package const& package,
                                      MetaPropertyDescription** properties,
                                      unsigned count,
                                      char const* name,
                                      char const* dottedName,
                                      bool isAbstract,
                                      // Other libraries rely on this exact declaration.
                                      // NOLINTNEXTLINE(readability-avoid-const-params-in-decls)
                                      char const** const comments);

/// Links the class and its properties to other classes: supers, types, opposites, redefined and
/// subsetted properties; and binds them to the functions of the record. Skips elements that have
/// not been created.
QOB_EXPORT void staticUpdateMeta(NSInterface::ClassIntf* meta,
                                 Factory const& factory,
                                 Package const& package,
                                 MetaPropertyDescription** properties,
                                 unsigned count,
                                 char const* name,
                                 char const* dottedName,
                                 IntrospectiveMethods const* methods);

/// Destroys the class with its properties in the root deviant, and clears `meta` of each
/// description. Does nothing for null.
QOB_EXPORT void staticDestroyMeta(NSInterface::ClassIntf* meta,
                                  MetaPropertyDescription** properties,
                                  unsigned count,
                                  char const* name,
                                  char const* dottedName);

/// An entry for the class's table of properties: the description, and the lists to store in it.
struct MetaPropertyEntry {
    MetaPropertyDescription* description = nullptr;
    unsigned redefinedCount = 0;
    PropertyReference const* redefined = nullptr;
    unsigned subsettedCount = 0;
    PropertyReference const* subsetted = nullptr;
};

/// A class as constant data of the library that declares it.
struct MetaClassDescription {
    char const* name = nullptr;
    char const* dottedName = nullptr;
    IntrospectiveMethods* methods = nullptr; ///< its `properties` have room for all ids
    unsigned propertyCount = 0;
    /// The entries for `properties`, by id; null if the table is already complete.
    MetaPropertyEntry const* entries = nullptr;
    bool isAbstract = false;
    char const** comments = nullptr; ///< ended by null; may be null
};

/// The three functions above for a class described as data. Fills the class's table of properties
/// first, and stores the live class in `meta` and, as a type, in the record. Does nothing if the
/// class is already live.
QOB_EXPORT void createMetaClass(NSInterface::ClassIntf*& meta,
                                MetaClassDescription const& description,
                                Factory const& factory,
                                Package const& package);
/// Sets `updated` and does its work only once. Does nothing if `updated` is set or there is no live
/// class.
QOB_EXPORT void updateMetaClass(bool& updated,
                                NSInterface::ClassIntf* meta,
                                MetaClassDescription const& description,
                                Factory const& factory);
/// Does nothing if there is no live class.
QOB_EXPORT void destroyMetaClass(NSInterface::ClassIntf*& meta,
                                 MetaClassDescription const& description);
/// Clears every pointer to the live elements.
QOB_EXPORT void forgetMetaClass(NSInterface::ClassIntf*& meta,
                                MetaClassDescription const& description) noexcept;
/// The same after a rollback has removed the elements: a class created later is updated again.
inline void rollBackMetaClass(bool& updated,
                              NSInterface::ClassIntf*& meta,
                              MetaClassDescription const& description) noexcept {
    updated = false;
    forgetMetaClass(meta, description);
}

/// A tag of a class, or of one of its properties, as constant data.
struct TagBinding {
    IntrospectiveMethods const* methods = nullptr;
    unsigned propertyId = 0; ///< 0 for the class itself
    char const* tag = nullptr;
};

/// Applies tags in the order given; skips elements that don't exist.
QOB_EXPORT void applyTags(std::span<TagBinding const> tags);

} // namespace QOB
