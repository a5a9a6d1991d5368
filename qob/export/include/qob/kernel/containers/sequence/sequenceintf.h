#pragma once

#include "qob/kernel/containers/sequence/iteratorintf.h"
#include "qob/kernel/containers/sequence/ref.h"
#include "qob/qob/assert.h"
#include "qob/qob/export.h"
#include "qob/qob/referencecounting.h"

namespace QOB {
namespace Generic {

/// A sequence whose element type isn't known: a container, or a view of one. Each operation takes
/// the deviant in which it acts; containers ignore it, views show each deviant its own state.
///
/// Failures raise QOB::Exception before anything has changed: a negative index, an index that is
/// too large, the first or last of an empty sequence. The order of the virtual operations is fixed.
class QOB_EXPORT SequenceIntf : public ReferenceCountingIntf {
public:
    ~SequenceIntf() override;

    virtual Ref generic_at(Deviant const& deviant, int index) const = 0;
    virtual Ref generic_front(Deviant const& deviant) const = 0;
    virtual Ref generic_back(Deviant const& deviant) const = 0;
    virtual IteratorPtr generic_begin(Deviant const& deviant) const = 0;
    virtual IteratorPtr generic_end(Deviant const& deviant) const = 0;
    virtual void generic_clear(Deviant const& deviant) = 0;
    virtual int generic_size(Deviant const& deviant) const = 0;
    virtual bool generic_empty(Deviant const& deviant) const;

    /// Inserts before the position and returns the position of the element. In a sequence of
    /// distinct elements that already has it, returns the existing position.
    virtual IteratorPtr
    generic_insert(Deviant const& deviant, IteratorIntf const* position, Ref element) = 0;
    /// Inserts before the element at `index`, which may be the size.
    virtual void generic_insert(Deviant const& deviant, int index, Ref element) = 0;
    virtual void generic_erase(Deviant const& deviant, int index) = 0;
    /// Returns the position after the erased elements.
    virtual IteratorPtr
    generic_erase(Deviant const& deviant, IteratorIntf const* first, IteratorIntf const* last) = 0;
    virtual IteratorPtr generic_erase(Deviant const& deviant, IteratorIntf const* position) = 0;
    virtual void generic_pop_back(Deviant const& deviant) = 0;
    virtual void generic_pop_front(Deviant const& deviant) = 0;
    virtual void generic_push_back(Deviant const& deviant, Ref element) = 0;
    virtual void generic_push_front(Deviant const& deviant, Ref element) = 0;
    virtual void generic_replace(Deviant const& deviant, int index, Ref element) = 0;
    virtual bool generic_contains(Deviant const& deviant, Ref element) const = 0;
    /// The dotted type name of the sequence, for an immutable sequence or immutable elements; the
    /// fallback if it has no names.
    virtual char const* generic_getLumvoName(bool immutableSequence,
                                             bool immutableElements,
                                             char const* fallback) const = 0;
    /// Erases every element that equals the given one; returns how many there were.
    virtual int generic_removeAll(Deviant const& deviant, Ref element);

    /// For sequences with a faster way to compare or copy their own kind; they set `handled`.
    virtual bool specialized_equal(Deviant const& deviant,
                                   SequenceIntf const* other,
                                   Deviant const& otherDeviant,
                                   bool& handled) const;
    virtual bool specialized_assign(Deviant const& deviant,
                                    SequenceIntf const* other,
                                    Deviant const& otherDeviant,
                                    bool& handled);

    /// Replaces the contents in `deviant` by those of the other sequence in its deviant. The two
    /// may show the same elements. Writes nothing if they are already equal, and restores the old
    /// contents if an element is refused.
    void
    generic_assign(Deviant const& deviant, SequenceIntf const* other, Deviant const& otherDeviant);
    /// Equal elements in the same order; objects are equal if they are the same.
    bool generic_equal(Deviant const& deviant,
                       SequenceIntf const* other,
                       Deviant const& otherDeviant) const;

    /// True for the container of references, which code that knows it reaches directly.
    bool holdsReferences() const noexcept { return holdsReferences_; }

protected:
    SequenceIntf() = default;
    SequenceIntf(SequenceIntf const&) = default;
    SequenceIntf& operator=(SequenceIntf const&) = default;

    void setHoldsReferences() noexcept { holdsReferences_ = true; }

private:
    bool holdsReferences_ = false;
};

} // namespace Generic

namespace internal {

/// The source place that failed checks of all sequences report.
inline constexpr char const* SequenceSource =
    "qob/export/include/qob/kernel/containers/sequence/sequenceintf.h";

inline void checkElementIndex(int index, int size) {
    QOB_REQUIRE_IN(SequenceSource, index >= 0, "sequence index must be positive");
    QOB_REQUIRE_IN(SequenceSource, index < size, "sequence index out of bounds");
}
inline void checkInsertIndex(int index, int size) {
    QOB_REQUIRE_IN(SequenceSource, index >= 0, "sequence index must be positive");
    QOB_REQUIRE_IN(SequenceSource, index <= size, "sequence index out of bounds");
}
inline void checkNotEmpty(bool empty) {
    QOB_REQUIRE_IN(SequenceSource, !empty, "sequence is empty");
}
inline void checkNotAtEnd(bool atEnd) {
    QOB_REQUIRE_IN(SequenceSource, !atEnd, "sequence iterator is at the end");
}
inline void checkNotAtBegin(bool atBegin) {
    QOB_REQUIRE_IN(SequenceSource, !atBegin, "sequence iterator is at the begin");
}
inline void checkRange(bool ordered) {
    QOB_REQUIRE_IN(SequenceSource, ordered, "sequence iterators are in the wrong order");
}
/// Checks that an iterator's place was found in the sequence.
inline void checkPlace(bool found) {
    QOB_REQUIRE_IN(SequenceSource, found, "sequence iterator stands at no place of the sequence");
}

} // namespace internal
} // namespace QOB
