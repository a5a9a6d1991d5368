#pragma once

#include "qob/qob/class.h"
#include "qob/qob/export.h"
#include "qob/qob/nsinterface/propertyintf.h"
#include "qob/qob/object.h"
#include "qob/qob/property.h"

#include <unordered_map>
#include <vector>

namespace QOB {

/// Something that objects of a class say of themselves: a property of the class, or one of the few
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
    /// Lists the objects that refer to this one by a property of theirs, as
    /// CompuMethod.PrimitiveType does for PrimitiveType.CompuMethod.
    bool isOtherEnd = false;

    /// All values, in order; none if there are none.
    QOB_EXPORT std::vector<Object> valuesOf(ClassObject const& object) const;
};

/// What there is to read of objects of any class, found once for each class: inherited properties
/// first, without those that follow from other properties and without redefined ones. Keep it for
/// one task only: it doesn't see classes come or go.
class QOB_EXPORT Attributes {
public:
    /// Valid as long as this is.
    std::vector<Attribute> const& of(ClassObject const& object);

private:
    std::unordered_map<void const*, std::vector<Attribute>> byClass_;
};

} // namespace QOB
