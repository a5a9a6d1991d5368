#pragma once

#include "qob/qob/class.h"
#include "qob/qob/object.h"
#include "qob/qob/property.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace QOB::internal {

/// Something that an object says of itself: a property of its class, or what every object has.
struct Attribute {
    using Reader = std::vector<Object> (*)(ClassObject const&);

    String name;
    ImmutableProperty property{}; ///< Empty if the kernel's `reader` has the values.
    Reader reader = nullptr;
    bool isOrdered = false;
    bool ownsObjects = false;
    bool isWayToOwner = false; ///< Leads from a contained object to what contains it.

    /// All values; none if there are none.
    std::vector<Object> valuesOf(ClassObject const& object) const;
};

/// What is to be told of objects, found once for each class. What follows from other properties is
/// left out, and a property in whose place another one stands.
class Attributes {
public:
    /// Valid as long as this is.
    std::vector<Attribute> const& of(ClassObject const& object);

private:
    std::unordered_map<void const*, std::vector<Attribute>> byClass_;
};

/// Whether a boxed value is the invalid one of its class, or the handle is empty.
bool isNothing(Object const& value);

/// The container, which contained objects that have no way to their owner also know.
Attribute containerAttribute();

/// The name of an object by its property "Name", or that of a stereotype; invalid if it has none.
String nameOf(ClassObject const& object);

} // namespace QOB::internal
