#pragma once

#include "qob/kernel/containers/sequence/ref.h"
#include "qob/qob/export.h"
#include "qob/qob/referencecounting.h"

#include <memory>

namespace QOB::Generic {

/// A position in a sequence whose element type isn't known. One that a `unique_ptr` owns isn't
/// counted.
///
/// An iterator doesn't keep the sequence, it keeps the elements that the sequence had when the
/// iterator was taken, and goes on showing those whatever becomes of the sequence: a write, a
/// commit, a rollback or undo, the first write of a branch, the end of the object or its model. An
/// iterator of a combined sequence keeps those of its part, and sees the next part as that is when
/// it gets there; if the object is gone by then, the step raises QOB::Exception.
///
/// - Reading at the end and a step beyond either end raise QOB::Exception; the iterator stays
///   where it is.
/// - Two iterators of one sequence are the same at the end and at the same element (in a list of
///   values that may repeat: at an equal one with the same index), also if the sequence was written
///   between them.
/// - Insertion and removal look for the place of an older iterator in the sequence as it is. If
///   nothing of the sequence is the same as the iterator, they raise QOB::Exception and change
///   nothing. Where they write, the iterators that they were given are used up: to read them, to
///   move them or to pass them on raises. The returned ones are good.
class QOB_EXPORT IteratorIntf : public ReferenceCountingIntf {
public:
    ~IteratorIntf() override;

    /// The element at the position.
    virtual Ref generic_value(Deviant const& deviant) const = 0;
    virtual void generic_next(Deviant const& deviant) = 0;
    virtual void generic_prev(Deviant const& deviant) = 0;
    /// Another iterator at the same position.
    virtual std::unique_ptr<IteratorIntf> generic_clone() const = 0;
    /// True if both stand at the same place. Only for iterators of one sequence, which two calls of
    /// a getter give as well as one.
    virtual bool generic_sameAs(IteratorIntf const* other) const = 0;

protected:
    IteratorIntf() = default;
    IteratorIntf(IteratorIntf const&) = default;
};

using IteratorPtr = std::unique_ptr<IteratorIntf>;

} // namespace QOB::Generic
