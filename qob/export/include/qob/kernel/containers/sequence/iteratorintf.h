#pragma once

#include "qob/kernel/containers/sequence/ref.h"
#include "qob/qob/export.h"
#include "qob/qob/referencecounting.h"

#include <memory>

namespace QOB::Generic {

/// A position in a sequence whose element type isn't known. Doesn't keep the sequence, and is
/// invalid once the sequence is written, except what insertion and removal return. One that a
/// `unique_ptr` owns isn't counted.
class QOB_EXPORT IteratorIntf : public ReferenceCountingIntf {
public:
    ~IteratorIntf() override;

    /// The element at the position, which must not be the end.
    virtual Ref generic_value(Deviant const& deviant) const = 0;
    virtual void generic_next(Deviant const& deviant) = 0;
    virtual void generic_prev(Deviant const& deviant) = 0;
    /// Another iterator at the same position.
    virtual std::unique_ptr<IteratorIntf> generic_clone() const = 0;
    /// True if both stand at the same position of the same sequence.
    virtual bool generic_sameAs(IteratorIntf const* other) const = 0;

protected:
    IteratorIntf() = default;
    IteratorIntf(IteratorIntf const&) = default;
};

using IteratorPtr = std::unique_ptr<IteratorIntf>;

} // namespace QOB::Generic
