#pragma once

#include "qob/kernel/containers/sequence/forwardingsequence.h"
#include "qob/qob/object.h"
#include "qob/qob/reflection.h"

namespace QOB {

/// A sequence that is one end of an association: each element that a write adds gets the owner at
/// its own end, each that a write takes out loses it. The other end is written one-ended, so that
/// the two don't call each other. Reads pass on to the inner sequence.
///
/// An element of another model, and one that doesn't exist in the deviant, raises QOB::Exception
/// before anything has changed. If an element's own end can't be written, the list becomes what it
/// was and the failure is passed on.
class QOB_EXPORT GenericAssociationSequence final : public ForwardingSequence {
public:
    /// `methods` and `oppositeId` name the property at the elements; `oppositeIsSingle` tells
    /// whether it holds one owner or many. The view counts owner and inner sequence.
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

    /// True if an insertion of the element would change the sequence. Raises for one that must not
    /// be inserted.
    bool isNew(Deviant const& deviant, Ref const& element) const;
    void link(Deviant const& deviant, Ref const& element);
    /// Links an element that has just been inserted; takes it out again if it can't be linked.
    void linkInserted(Deviant const& deviant, Ref const& element);
    void unlink(Deviant const& deviant, Ref const& element);

    Object owner_;
    Generic::SequencePtr inner_;
    IntrospectiveMethods const* methods_;
    unsigned oppositeId_;
    bool oppositeIsSingle_;
};

} // namespace QOB
