#pragma once

#include "tessel/any.h"
#include "tessel/errorholder.h"
#include "tessel/type.h"
#include "tessel/typeinfo.h"
#include "velum_types/export.h"

#include <string>

namespace Zorvane::metamodel::types {

/// The run-time description `Self` of the value class `Value`, a number with a unit. Stateless.
template <class Self, class Value>
class VELUM_TYPES_EXPORT QuantityTypeInfo : public Tessel::Type {
public:
    static Tessel::TypeInfo Create() { return CreateTypeInfo(new Self()); }
    /// The description behind `info`, which must be of this class: nothing is checked (see Is).
    static Self* GetType(Tessel::TypeInfo const& info) {
        return static_cast<Self*>(GetBaseType(info));
    }
    static bool Is(Tessel::TypeInfo const& info) { return Is(GetBaseType(info)); }
    static bool Is(Tessel::Type* type) { return dynamic_cast<Self*>(type) != nullptr; }

    /// Both raise QOB::Exception for a text that isn't a value of this type. `errors` must be empty
    /// and is never written.
    Tessel::any convertFromString(std::string const& text,
                                  Tessel::ErrorHolder& errors) const override;
    Tessel::any convertFromUString(std::wstring const& text,
                                   Tessel::ErrorHolder& errors) const override;
    /// Raise Tessel::bad_any_cast for a value of another type.
    std::string convertToString(Tessel::any const& value) const override;
    std::wstring convertToUString(Tessel::any const& value) const override;
    Tessel::any defaultConstruct() const override;
    Tessel::Type* clone() const override;
};

} // namespace Zorvane::metamodel::types
