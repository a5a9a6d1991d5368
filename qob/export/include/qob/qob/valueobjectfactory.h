#pragma once

#include "qob/qob/export.h"
#include "qob/qob/object.h"
#include "qob/qob/string.h"
#include "tessel/any.h"
#include "tessel/typeinfo.h"

#include <string>

namespace QOB {

/// Makes boxed values by the dotted names of their data types. The kernel's own four are known from
/// the start; a library enters its value classes when it starts and takes them out when it stops.
class QOB_EXPORT ValueObjectFactory {
public:
    /// A box with the default value. Like all of these, raises QOB::Exception for a name that is
    /// none of a value type.
    static ValueObject create(std::string const& typeName);
    /// A box with a copy of the value. Raises Tessel::bad_any_cast if the any holds another type.
    static ValueObject create(std::string const& typeName, Tessel::any const& value);
    /// A box with the value of a text. Raises QOB::Exception, which quotes the text, if it has
    /// none.
    static ValueObject createFromString(std::string const& typeName, String const& text);
    static bool isValueObjectType(std::string const& typeName);

    /// Boxes what an any holds.
    using Boxer = ValueObject (*)(Tessel::any const& value);
    /// Enters a value type; raises QOB::Exception for a name that is taken.
    static void registerType(std::string const& typeName, Tessel::TypeInfo const& info, Boxer box);
    /// Enters value class T; defined in "qob/kernel/value/valuebox.h".
    template <class T>
    static void registerType(Tessel::TypeInfo const& info);
    /// Nothing happens if the name is unknown.
    static void unregisterType(std::string const& typeName) noexcept;
};

} // namespace QOB
