#pragma once

#include "html/out.h"

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <velum_types/types.h>

namespace velum::html {

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;

/// The limits of a type, in the numbers that they are given in. Without a bound an end is open.
struct Limits {
    std::optional<double> low;
    std::optional<double> high;
    bool isLowOpen = true;
    bool isHighOpen = true;
    std::string lowText{}; ///< As the file writes it, if the number is rounded.
    std::string highText{};

    bool areThere() const { return low || high; }
    std::string text() const; ///< "[0, 255)"
    friend bool operator==(Limits const&, Limits const&) = default;
};

Limits limitsOf(types::Real const& type);

/// A number line with the limits of a type, and with those of another release above them.
void drawLimits(Out& out, Limits const& limits, Limits const* before = nullptr);

/// The type of a member, its own or the one that it refers to.
foundation::ValueType typeOf(types::StructElement const& member);

/// How many bits values of a type take in memory, as far as the model says. Measures each type
/// once: structures may share the types of their members many times over.
class Sizes {
public:
    using Bits = std::optional<std::int64_t>;

    Bits of(foundation::ValueType const& type);

private:
    Bits measured(foundation::ValueType const& type);
    Bits ofMatrix(types::Matrix const& matrix);
    Bits ofStructure(types::Structure const& structure);

    std::unordered_map<void const*, Bits> known_;
    int depth_ = 0;
};

/// So many bits as a row of boxes, eight to a byte.
void drawBits(Out& out, std::int64_t bits);

/// The curve of a method from internal to physical values, over the limits of the types that have
/// it, with the texts of their enumerations as points. Nothing if there is nothing to draw.
void drawMethod(Out& out, types::CompuMethod const& held);

/// "physical = -40 + 0.5 x internal", or what the model holds: internal as a quotient.
std::string formulaText(types::CompuMethod const& held);

} // namespace velum::html
