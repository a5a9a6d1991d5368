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
    QOB::IntrospectiveMethods const* record;
    unsigned propertyCount; ///< Of those that it declares itself.
    bool isOfTypes;         ///< Of the types package; of the base metamodel otherwise.
};

/// All metaclasses of the types package and of the base metamodel, by name.
std::vector<Metaclass> const& metaclasses();

/// The one of a record, or of a class name with or without its package; null if there is none.
Metaclass const* findMetaclass(QOB::IntrospectiveMethods const* record);
Metaclass const* findMetaclass(std::string_view name);

/// The direct supers that are among the metaclasses.
std::vector<Metaclass const*> supersOf(Metaclass const& metaclass);

/// Whether a class, by its name, is the other one or below it.
bool isKindOf(std::string_view name, Metaclass const& base);

/// The properties that a class declares itself, by id.
std::vector<QOB::MetaPropertyDescription const*> propertiesOf(Metaclass const& metaclass);

/// The name of a class without its package.
std::string_view shortName(std::string_view dottedName);

} // namespace velum::model
