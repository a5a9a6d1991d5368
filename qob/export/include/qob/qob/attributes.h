#pragma once

#include "qob/qob/class.h"
#include "qob/qob/export.h"
#include "qob/qob/nsinterface/propertyintf.h"
#include "qob/qob/object.h"
#include "qob/qob/property.h"

#include <unordered_map>
#include <vector>

namespace QOB {

/// One readable attribute of the objects of a class: a property of the class, or one of the few
/// that every object has (ExternalId, ExternalToolInfo, AppliedStereotypeInstance).
struct Attribute {
    using Reader = std::vector<Object> (*)(ClassObject const&);

    String name;
    ImmutableProperty property{}; ///< Empty if every object has it; `reader` gives the values then.
    Reader reader = nullptr;
    PropertyBinding binding{}; ///< Where the values of `property` are found in the class.
    bool isMultiValued = false;
    bool isOrdered = false;
    bool ownsObjects = false;  ///< The values are contained in the object.
    bool isReference = false;  ///< The values are objects that aren't contained in it.
    bool isWayToOwner = false; ///< Leads from a contained object to what contains it.
    /// Lists the objects that refer to this one, as CompuMethod.PrimitiveType mirrors
    /// PrimitiveType.CompuMethod.
    bool isOtherEnd = false;

    /// All values, in order; none if there are none.
    QOB_EXPORT std::vector<Object> valuesOf(ClassObject const& object) const;
};

/// The readable attributes of objects of any class, computed once per class: inherited properties
/// first, without derived and redefined ones. Use one instance per task: it doesn't notice when
/// classes are added or removed.
class QOB_EXPORT Attributes {
public:
    /// Valid as long as this is.
    std::vector<Attribute> const& of(ClassObject const& object);
    /// The same for the objects of a live class.
    std::vector<Attribute> const& of(ImmutableClass const& live);

private:
    std::vector<Attribute> const& of(ImmutableClass const& live, void const* key);

    std::unordered_map<void const*, std::vector<Attribute>> byClass_;
};

} // namespace QOB
