#include "html/type_pictures.h"

#include <algorithm>

namespace velum::html {

namespace {

using Bits = Sizes::Bits;

constexpr std::int64_t mostBits = std::int64_t{1} << 40U;

Bits lengthOf(types::DataSize const& size) {
    const QOB::Integer value = size.getValue();
    if (!value.isValid() || static_cast<int>(value) <= 0) {
        return std::nullopt;
    }
    const bool isBytes = size.getUnit() == types::DataSizeUnitKind(types::DataSizeUnitKind::byte);
    return std::int64_t{static_cast<int>(value)} * (isBytes ? 8 : 1);
}

/// Types in types beyond this have no size here.
constexpr int mostNested = 200;

} // namespace

Sizes::Bits Sizes::of(foundation::ValueType const& type) {
    if (!type.isValid() || depth_ > mostNested) {
        return std::nullopt;
    }
    // A type within itself has no size.
    const auto [known, isNew] = known_.try_emplace(type.get());
    if (!isNew) {
        return known->second;
    }
    ++depth_;
    const Bits bits = measured(type);
    --depth_;
    known_[type.get()] = bits;
    return bits;
}

Sizes::Bits Sizes::measured(foundation::ValueType const& type) {
    if (const types::Integer integer(type); integer.isValid()) {
        return lengthOf(integer.getLength());
    }
    if (const types::FixedPoint fixed(type); fixed.isValid()) {
        return lengthOf(fixed.getLength());
    }
    if (const types::Enumeration enumeration(type); enumeration.isValid()) {
        return lengthOf(enumeration.getLength());
    }
    if (const types::FloatingPoint floating(type); floating.isValid()) {
        const bool isSingle =
            floating.getKind() == types::FloatingPointKind(types::FloatingPointKind::IEEE_Single);
        return isSingle ? 32 : 64;
    }
    if (const types::Matrix matrix(type); matrix.isValid()) {
        return ofMatrix(matrix);
    }
    if (const types::Complex complex(type); complex.isValid()) {
        const Bits part = of(complex.getBaseType());
        return part ? Bits(*part * 2) : std::nullopt;
    }
    if (const types::Structure structure(type); structure.isValid()) {
        return ofStructure(structure);
    }
    return std::nullopt;
}

Sizes::Bits Sizes::ofMatrix(types::Matrix const& matrix) {
    Bits bits = of(matrix.getBaseType());
    int count = 0;
    for (const QOB::Integer size : matrix.getDimensionses()) {
        const bool isKnown = size.isValid() && static_cast<int>(size) > 0;
        bits = bits && isKnown ? Bits(std::min(*bits * static_cast<int>(size), mostBits))
                               : std::nullopt;
        ++count;
    }
    return count > 0 ? bits : std::nullopt;
}

Sizes::Bits Sizes::ofStructure(types::Structure const& structure) {
    std::int64_t total = 0;
    for (const types::StructElement member : structure.getElementses()) {
        const Bits bits = of(typeOf(member));
        if (!bits) {
            return std::nullopt;
        }
        total = std::min(total + *bits, mostBits);
    }
    return total > 0 ? Bits(total) : std::nullopt;
}

foundation::ValueType typeOf(types::StructElement const& member) {
    return member.hasInlineType() ? member.getInlineType()
                                  : member.getZorvane_metamodel_types_StructElement_Type();
}

} // namespace velum::html
