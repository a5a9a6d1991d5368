#pragma once

#include <qob/qob.h>
#include <string>
#include <string_view>
#include <vector>

namespace velum::model {

/// One metaclass with the tables by which its objects are read. What there is to know of a
/// metaclass itself is in describe/metamodel.h.
struct Metaclass {
    std::string name; ///< Without its package.
    const QOB::IntrospectiveMethods* record;
    unsigned propertyCount; ///< Of those that it declares itself.
    bool isOfTypes;         ///< Of the types package; of the base metamodel otherwise.
};

/// All metaclasses of the types package and of the base metamodel, by name.
const std::vector<Metaclass>& metaclasses();

/// The one of a record, or of a class name with or without its package; null if there is none.
const Metaclass* findMetaclass(const QOB::IntrospectiveMethods* record);
const Metaclass* findMetaclass(std::string_view name);

/// The direct supers that are among the metaclasses.
std::vector<const Metaclass*> supersOf(const Metaclass& metaclass);

/// Whether a class, by its name, is the other one or below it.
bool isKindOf(std::string_view name, Metaclass const& base);

/// The properties that a class declares itself, by id.
std::vector<const QOB::MetaPropertyDescription*> propertiesOf(const Metaclass& metaclass);

/// The name of a class without its package.
std::string_view shortName(std::string_view dottedName);

} // namespace velum::model
