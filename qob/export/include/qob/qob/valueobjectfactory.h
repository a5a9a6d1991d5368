#pragma once

#include "qob/qob/export.h"
#include "qob/qob/object.h"
#include "qob/qob/string.h"
#include "tessel/any.h"
#include "tessel/typeinfo.h"

#include <string>

namespace QOB {

/// Creates boxed values by the dotted name of their data type. The kernel's own four are always
/// there; a library registers its value classes when it starts and removes them when it stops.
class QOB_EXPORT ValueObjectFactory {
public:
    /// A box with the default value. Like all functions here, raises QOB::Exception if the name
    /// isn't that of a value type.
    static ValueObject create(std::string const& typeName);
    /// A box with a copy of the value. Raises Tessel::bad_any_cast if the any holds another type.
    static ValueObject create(std::string const& typeName, Tessel::any const& value);
    /// A box with the value of a text. Raises QOB::Exception, which quotes the text, if the text
    /// isn't a value.
    static ValueObject createFromString(std::string const& typeName, String const& text);
    static bool isValueObjectType(std::string const& typeName);

    /// Boxes the value of an any.
    using Boxer = ValueObject (*)(Tessel::any const& value);
    /// Registers a value type. Raises QOB::Exception if the name is taken.
    static void registerType(std::string const& typeName, Tessel::TypeInfo const& info, Boxer box);
    /// Registers value class T; defined in "qob/kernel/value/valuebox.h".
    template <class T>
    static void registerType(Tessel::TypeInfo const& info);
    /// Does nothing if the name is unknown.
    static void unregisterType(std::string const& typeName) noexcept;
};

} // namespace QOB
