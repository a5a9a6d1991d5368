#pragma once

#include "qob/qob/export.h"
#include "tessel/typeinfo.h"

#include <optional>
#include <string>

namespace QOB {

class ImmutableDataType;

/// The run-time descriptions of all types that a model can hold, by dotted name: what lets generic
/// code that has a name only find the type. The kernel's own four values are known from the start;
/// a library enters its types when it starts and takes them out when it stops.
class QOB_EXPORT TypeInfoRegistry {
public:
    /// Enters a type. Raises QOB::Exception, and changes nothing, if the name is taken.
    static void registerTypeInfo(std::string const& name, Tessel::TypeInfo const& info);
    /// Takes the type out again; nothing happens if the name is unknown.
    static void unregisterTypeInfo(std::string const& name) noexcept;

    /// Enters a type together with the element of a metamodel that describes it. Raises as
    /// registerTypeInfo does.
    static void registerMetaType(std::string const& name,
                                 Tessel::TypeInfo const& info,
                                 ImmutableDataType const& metaType);
    /// Takes both out again; nothing happens if the name is unknown.
    static void unregisterMetaType(std::string const& name) noexcept;
    /// The element that was entered under the name; empty if there is none.
    static ImmutableDataType getMetaType(std::string const& name);

    static bool isRegistered(std::string const& name);
    /// The description that was entered under the name, if any.
    static std::optional<Tessel::TypeInfo> getTypeInfo(std::string const& name);
};

} // namespace QOB
