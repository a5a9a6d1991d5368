#pragma once

#include "qob/kernel/containers/sequence/iteratorintf.h"
#include "qob/kernel/containers/sequence/sequenceintf.h"
#include "qob/qob/assert.h"

namespace QOB {

namespace internal {

/// Checks the counts of iterators and views.
inline void requireCount(int count) {
    QOB_INVARIANT_IN("qob/export/include/qob/kernel/containers/sequence/sequenceproxy.h",
                     count >= 0,
                     "Internal assertion without a message detected! Please fix me asap");
}

} // namespace internal

/// An iterator that is freed with its last reference. Base of every iterator class.
class QOB_EXPORT IteratorProxy : public Generic::IteratorIntf {
public:
    void incRef() const override;
    void decRef() const override;
    int numRef() const override;

protected:
    IteratorProxy() = default;
    IteratorProxy(IteratorProxy const&) = default;
};

/// A sequence that is freed with its last reference. Base of every view.
class QOB_EXPORT SequenceProxy : public Generic::SequenceIntf {
public:
    /// Raises what an insertion of the element would raise; changes nothing. A view may not detect
    /// every failure before the insertion itself.
    virtual void checkInsertable(Deviant const& deviant, Generic::Ref const& element) const;

    SequenceProxy(SequenceProxy const&) = delete;
    SequenceProxy& operator=(SequenceProxy const&) = delete;

    void incRef() const override;
    void decRef() const override;
    int numRef() const override;

protected:
    SequenceProxy() = default;
    /// The same for a sequence to which a view forwards elements.
    static void checkInsertableInto(Generic::SequenceIntf const* inner,
                                    Deviant const& deviant,
                                    Generic::Ref const& element);
};

} // namespace QOB
