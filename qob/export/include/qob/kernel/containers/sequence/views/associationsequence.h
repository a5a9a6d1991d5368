#pragma once

#include "qob/kernel/containers/sequence/forwardingsequence.h"
#include "qob/qob/introspection.h"
#include "qob/qob/object.h"

namespace QOB {

class GenericDeviantSequence;

/// A sequence that is one end of an association: a write that adds an element also sets the owner
/// at the element's end, and one that removes an element removes it there. The other end is written
/// alone, so that the two don't call each other. Reads go to the inner sequence.
///
/// An element of another model, and one that doesn't exist in the deviant, raises QOB::Exception
/// before anything has changed. If an element's own end can't be written, the list is restored and
/// the exception is passed on.
class QOB_EXPORT GenericAssociationSequence final : public ForwardingSequence {
public:
    /// `methods` and `oppositeId` identify the property of the elements; `oppositeIsSingle` says
    /// whether it is single-valued. The view keeps the owner and the inner sequence alive.
    GenericAssociationSequence(Object owner,
                               Generic::SequencePtr inner,
                               IntrospectiveMethods const* methods,
                               unsigned oppositeId,
                               bool oppositeIsSingle);
    ~GenericAssociationSequence() override;

    void checkInsertable(Deviant const& deviant, Ref const& element) const override;

    void generic_clear(Deviant const& deviant) override;
    IteratorPtr
    generic_insert(Deviant const& deviant, IteratorIntf const* position, Ref element) override;
    void generic_insert(Deviant const& deviant, int index, Ref element) override;
    void generic_erase(Deviant const& deviant, int index) override;
    IteratorPtr generic_erase(Deviant const& deviant,
                              IteratorIntf const* first,
                              IteratorIntf const* last) override;
    IteratorPtr generic_erase(Deviant const& deviant, IteratorIntf const* position) override;
    void generic_pop_back(Deviant const& deviant) override;
    void generic_pop_front(Deviant const& deviant) override;
    void generic_push_back(Deviant const& deviant, Ref element) override;
    void generic_push_front(Deviant const& deviant, Ref element) override;
    void generic_replace(Deviant const& deviant, int index, Ref element) override;
    int generic_removeAll(Deviant const& deviant, Ref element) override;

private:
    SequenceRef reading(Deviant const& deviant) const override { return {inner_.get(), deviant}; }
    SequenceRef writing(Deviant const& deviant) override { return {inner_.get(), deviant}; }

    /// The inner sequence, if it is a stored property and no further view; otherwise null.
    GenericDeviantSequence* stored() const noexcept;
    void requireSameModel(Deviant const& deviant, Ref const& element) const;
    /// True if inserting the element would change the sequence. Raises if it must not be inserted.
    bool isNew(Deviant const& deviant, Ref const& element) const;
    void link(Deviant const& deviant, Ref const& element);
    /// Links an element that has just been inserted; removes it again if it can't be linked.
    void linkInserted(Deviant const& deviant, Ref const& element);
    void unlink(Deviant const& deviant, Ref const& element);

    Object owner_;
    Generic::SequencePtr inner_;
    IntrospectiveMethods const* methods_;
    unsigned oppositeId_;
    bool oppositeIsSingle_;
};

} // namespace QOB
