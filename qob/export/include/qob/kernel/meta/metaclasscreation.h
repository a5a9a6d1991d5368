#pragma once

#include "qob/qob/class.h"
#include "qob/qob/factory.h"
#include "qob/qob/reflection.h"
#include "qob/qob/tags.h"

#include <span>

/// How a library makes its classes live elements of the meta-registry, complete with their
/// properties, and takes them out again. All of it is to be called in a transaction there.
namespace QOB {

/// Makes a class in the package with its properties, each with all that it can have by itself, and
/// enters every property in `meta` of its description. `comments` is ended by null and may be null.
/// Raises QOB::Exception, with nothing made, if factory or package is empty.
QOB_EXPORT void staticCreateMetaClass(NSInterface::ClassIntf*& result,
                                      Factory const& factory,
                                      Package const& package,
                                      MetaPropertyDescription** properties,
                                      unsigned count,
                                      char const* name,
                                      char const* dottedName,
                                      bool isAbstract,
                                      // The declaration is fixed as it stands.
                                      // NOLINTNEXTLINE(readability-avoid-const-params-in-decls)
                                      char const** const comments);

/// Gives the class and its properties what lies in other classes: supers, types, opposites, what
/// they redefine and subset; and binds them to the functions of the record. What has not been
/// created is left out.
QOB_EXPORT void staticUpdateMeta(NSInterface::ClassIntf* meta,
                                 Factory const& factory,
                                 Package const& package,
                                 MetaPropertyDescription** properties,
                                 unsigned count,
                                 char const* name,
                                 char const* dottedName,
                                 IntrospectiveMethods const* methods);

/// Destroys the class with its properties in the root deviant, and clears `meta` of each
/// description. Nothing happens for null.
QOB_EXPORT void staticDestroyMeta(NSInterface::ClassIntf* meta,
                                  MetaPropertyDescription** properties,
                                  unsigned count,
                                  char const* name,
                                  char const* dottedName);

/// A property for the table of its class: its description, and the lists to enter there.
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
    /// What is entered in `properties`, by id; null if all of it is there from the start.
    MetaPropertyEntry const* entries = nullptr;
    bool isAbstract = false;
    char const** comments = nullptr; ///< ended by null; may be null
};

/// The three above for a class as data. First fills the class's table of properties; the live class
/// is entered in `meta` and, as a type, in the record. Nothing happens if there is one already.
QOB_EXPORT void createMetaClass(NSInterface::ClassIntf*& meta,
                                MetaClassDescription const& description,
                                Factory const& factory,
                                Package const& package);
/// Once: nothing happens if `updated` is set, which is set first, or if there is no live class.
QOB_EXPORT void updateMetaClass(bool& updated,
                                NSInterface::ClassIntf* meta,
                                MetaClassDescription const& description,
                                Factory const& factory);
/// Nothing happens if there is no live class.
QOB_EXPORT void destroyMetaClass(NSInterface::ClassIntf*& meta,
                                 MetaClassDescription const& description);
/// Clears every pointer to the live elements.
QOB_EXPORT void forgetMetaClass(NSInterface::ClassIntf*& meta,
                                MetaClassDescription const& description) noexcept;
/// The same after a rollback has taken the elements: what is made next is to be updated again.
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

/// Applies tags in the order given; those of elements that don't exist are left out.
QOB_EXPORT void applyTags(std::span<TagBinding const> tags);

} // namespace QOB
