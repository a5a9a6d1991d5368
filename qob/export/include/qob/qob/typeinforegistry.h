#pragma once

#include "qob/qob/export.h"
#include "tessel/typeinfo.h"

#include <optional>
#include <string>

namespace QOB {

class ImmutableDataType;

/// The run-time descriptions of all types that a model can hold, by dotted name, for generic code
/// that has only the name. The kernel's own four value classes are always there; a library
/// registers its types when it starts and removes them when it stops.
class QOB_EXPORT TypeInfoRegistry {
public:
    /// Registers a type. Raises QOB::Exception, and changes nothing, if the name is taken.
    static void registerTypeInfo(std::string const& name, Tessel::TypeInfo const& info);
    /// Removes the type; does nothing if the name is unknown.
    static void unregisterTypeInfo(std::string const& name) noexcept;

    /// Registers a type together with the metamodel element that describes it. Raises like
    /// registerTypeInfo.
    static void registerMetaType(std::string const& name,
                                 Tessel::TypeInfo const& info,
                                 ImmutableDataType const& metaType);
    /// Removes both; does nothing if the name is unknown.
    static void unregisterMetaType(std::string const& name) noexcept;
    /// The element registered under the name; empty if there is none.
    static ImmutableDataType getMetaType(std::string const& name);

    static bool isRegistered(std::string const& name);
    /// The description registered under the name, if any.
    static std::optional<Tessel::TypeInfo> getTypeInfo(std::string const& name);
};

} // namespace QOB
