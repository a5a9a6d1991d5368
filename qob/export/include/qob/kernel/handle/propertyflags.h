#pragma once

#include "qob/qob/integer.h"
#include "qob/qob/introspection.h"

namespace QOB {

/// What the handles of a live property offer beside its own properties: the flags by name. `Base`
/// is a ReadHandle.
template <class Base>
class PropertyFlags : public Base {
public:
    /// The upper bound of a property that has any number of values.
    static constexpr int Unbounded = -1;

    using Base::Base;

    bool isReadOnly() const { return hasFlag(PropertyReadOnly); }
    bool isDerived() const { return hasFlag(PropertyDerived); }
    bool isComposite() const { return hasFlag(PropertyComposite); }
    bool isOrdered() const { return hasFlag(PropertyOrdered); }
    bool isUnique() const { return hasFlag(PropertyUnique); }
    bool isMultiValued() const { return hasFlag(PropertyMultiValued); }

private:
    bool hasFlag(PropertyFlag flag) const {
        auto const* const property = this->operator->();
        Integer const flags = property->getFlags(this->getDeviant());
        return (unsigned(int(flags)) & flag) != 0;
    }
};

} // namespace QOB
