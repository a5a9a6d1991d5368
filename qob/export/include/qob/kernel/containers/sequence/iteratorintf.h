#pragma once

#include "qob/kernel/containers/sequence/ref.h"
#include "qob/qob/export.h"
#include "qob/qob/referencecounting.h"

#include <memory>

namespace QOB::Generic {

/// A position in a sequence whose element type isn't known. An iterator owned by a `unique_ptr`
/// isn't counted.
///
/// An iterator doesn't keep the sequence alive. It keeps the elements that the sequence had when
/// the iterator was created, and goes on showing them whatever happens to the sequence: a write, a
/// commit, a rollback or undo, the first write of a branch, the end of the object or its model. An
/// iterator of a combined sequence keeps the elements of its current part, and sees the next part
/// as it is on arrival; if the object is gone by then, the step raises QOB::Exception.
///
/// - Reading at the end and a step beyond either end raise QOB::Exception; the iterator stays
///   where it is.
/// - Two iterators of one sequence are the same at the end and at the same element (in a list of
///   values that may repeat: at an equal one with the same index), also if the sequence was written
///   between them.
/// - Insertion and removal look for the element of an older iterator in the current sequence. If it
///   is no longer there, they raise QOB::Exception and change nothing. If they write, the iterators
///   passed to them become invalid: reading, moving or passing them on raises. Use the returned
///   ones.
class QOB_EXPORT IteratorIntf : public ReferenceCountingIntf {
public:
    ~IteratorIntf() override;

    /// The element at the position.
    virtual Ref generic_value(Deviant const& deviant) const = 0;
    virtual void generic_next(Deviant const& deviant) = 0;
    virtual void generic_prev(Deviant const& deviant) = 0;
    /// Another iterator at the same position.
    virtual std::unique_ptr<IteratorIntf> generic_clone() const = 0;
    /// True if both are at the same place. Only for iterators of one sequence; they may come from
    /// two calls of a getter.
    virtual bool generic_sameAs(IteratorIntf const* other) const = 0;

protected:
    IteratorIntf() = default;
    IteratorIntf(IteratorIntf const&) = default;
};

using IteratorPtr = std::unique_ptr<IteratorIntf>;

} // namespace QOB::Generic
