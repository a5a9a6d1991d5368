#include "check/storage.h"

#include <cmath>
#include <cstdint>
#include <velum_types/types.h>

namespace velum::check {

namespace types = Zorvane::metamodel::types;

namespace {

std::optional<Interval> widthOf(types::DataSize const& length, bool isSigned) {
    constexpr std::int64_t mostBits = 1024; // of a number that a double can hold
    if (!length.getValue().isValid()) {
        return std::nullopt;
    }
    const bool isBytes = length.getUnit() == types::DataSizeUnitKind(types::DataSizeUnitKind::byte);
    const std::int64_t bits = std::int64_t{static_cast<int>(length.getValue())} * (isBytes ? 8 : 1);
    if (bits <= 0 || bits >= mostBits) {
        return std::nullopt;
    }
    if (isSigned) {
        const double end = std::ldexp(1.0, static_cast<int>(bits - 1));
        return Interval{-end, end - 1.0};
    }
    return Interval{0.0, std::ldexp(1.0, static_cast<int>(bits)) - 1.0};
}

template <class Handle>
std::optional<Interval> storageOfInteger(Handle const& type) {
    return widthOf(type.getLength(), type.isSigned() == QOB::Boolean(true));
}

} // namespace

std::optional<Interval> storageOf(types::Real const& type) {
    if (const types::Integer integer(type); integer.isValid()) {
        return storageOfInteger(integer);
    }
    if (const types::FixedPoint fixed(type); fixed.isValid()) {
        return storageOfInteger(fixed);
    }
    if (const types::Enumeration enumeration(type); enumeration.isValid()) {
        return storageOfInteger(enumeration);
    }
    return std::nullopt;
}

} // namespace velum::check
