#pragma once

#include "tessel/any.h"
#include "tessel/errorholder.h"
#include "tessel/export.h"

#include <memory>
#include <string>

namespace Tessel {

class Type;

/// A handle that owns a type's description; Type::CreateTypeInfo makes one. Copies share the
/// description, which is deleted with the last of them. There is no empty handle, so a move copies.
class TESSEL_EXPORT TypeInfo {
public:
    TypeInfo(TypeInfo const& other) noexcept;
    TypeInfo& operator=(TypeInfo const& other) noexcept;
    ~TypeInfo();

    /// The text of a value; raises bad_any_cast for a value of another type.
    std::string convertToString(any const& value) const;
    /// The value of a text; empty if the text isn't a value of this type.
    any convertFromString(std::string const& text) const;
    /// As above; leaves the cause of a failure in `errors`.
    any convertFromString(std::string const& text, ErrorHolder& errors) const;

    /// Whether both describe the same type.
    friend bool operator==(TypeInfo const& a, TypeInfo const& b) { return a.isEqualTo(b); }
    /// The order of the described types.
    friend bool operator<(TypeInfo const& a, TypeInfo const& b) { return a.isLessThan(b); }

private:
    friend class Type;
    explicit TypeInfo(std::shared_ptr<Type> type) noexcept;
    bool isEqualTo(TypeInfo const& other) const;
    bool isLessThan(TypeInfo const& other) const;

    std::shared_ptr<Type> type_;
};

} // namespace Tessel
