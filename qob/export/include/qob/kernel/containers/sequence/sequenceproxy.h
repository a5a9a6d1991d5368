#pragma once

#include "qob/kernel/containers/sequence/iteratorintf.h"
#include "qob/kernel/containers/sequence/sequenceintf.h"
#include "qob/qob/assert.h"

namespace QOB {

namespace internal {

/// The check of the counts of iterators and views.
inline void requireCount(int count) {
    QOB_REQUIRE_IN("qob/export/include/qob/kernel/containers/sequence/sequenceproxy.h",
                   count >= 0,
                   "Internal assertion without a message detected! Please fix me asap");
}

} // namespace internal

/// An iterator that its count frees. Base of every iterator class.
class QOB_EXPORT IteratorProxy : public Generic::IteratorIntf {
public:
    void incRef() const override;
    void decRef() const override;
    int numRef() const override;

protected:
    IteratorProxy() = default;
    IteratorProxy(IteratorProxy const&) = default;
};

/// A sequence that its count frees. Base of every view.
class QOB_EXPORT SequenceProxy : public Generic::SequenceIntf {
public:
    /// Raises what an insertion of the element would raise; changes nothing. What a view doesn't
    /// know beforehand it finds out by inserting.
    virtual void checkInsertable(Deviant const& deviant, Generic::Ref const& element) const;

    SequenceProxy(SequenceProxy const&) = delete;
    SequenceProxy& operator=(SequenceProxy const&) = delete;

    void incRef() const override;
    void decRef() const override;
    int numRef() const override;

protected:
    SequenceProxy() = default;
    /// The same of a sequence that a view passes elements on to.
    static void checkInsertableInto(Generic::SequenceIntf const* inner,
                                    Deviant const& deviant,
                                    Generic::Ref const& element);
};

} // namespace QOB
