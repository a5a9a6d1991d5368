#pragma once

#include "qob/kernel/containers/sequence/sequenceproxy.h"
#include "qob/kernel/containers/sequence/sequenceref.h"

namespace QOB {

/// A view that forwards each operation to another sequence, which a subclass looks up for each
/// call. Iterators are those of the other sequence.
class QOB_EXPORT ForwardingSequence : public SequenceProxy {
protected:
    using Ref = Generic::Ref;
    using IteratorIntf = Generic::IteratorIntf;
    using IteratorPtr = Generic::IteratorPtr;
    using SequenceRef = Generic::SequenceRef;

    /// The sequence to read, never null.
    virtual SequenceRef reading(Deviant const& deviant) const = 0;
    /// The sequence to write, never null.
    virtual SequenceRef writing(Deviant const& deviant) = 0;

public:
    void checkInsertable(Deviant const& deviant, Ref const& element) const override;

    Ref generic_at(Deviant const& deviant, int index) const override;
    Ref generic_front(Deviant const& deviant) const override;
    Ref generic_back(Deviant const& deviant) const override;
    IteratorPtr generic_begin(Deviant const& deviant) const override;
    IteratorPtr generic_end(Deviant const& deviant) const override;
    void generic_clear(Deviant const& deviant) override;
    int generic_size(Deviant const& deviant) const override;
    bool generic_empty(Deviant const& deviant) const override;
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
    bool generic_contains(Deviant const& deviant, Ref element) const override;
    char const* generic_getLumvoName(bool immutableSequence,
                                     bool immutableElements,
                                     char const* fallback) const override;
    int generic_removeAll(Deviant const& deviant, Ref element) override;
};

/// A free-standing container, which its handles keep alive.
template <class Container>
class OwnedSequence final : public ForwardingSequence {
public:
    char const* generic_getLumvoName(bool immutableSequence,
                                     bool immutableElements,
                                     char const* fallback) const override {
        return container_.generic_getLumvoName(immutableSequence, immutableElements, fallback);
    }
    bool specialized_equal(Deviant const& deviant,
                           SequenceIntf const* other,
                           Deviant const& otherDeviant,
                           bool& handled) const override {
        return container_.specialized_equal(deviant, other, otherDeviant, handled);
    }

private:
    SequenceRef reading(Deviant const& deviant) const override {
        return {const_cast<Container*>(&container_), deviant};
    }
    SequenceRef writing(Deviant const& deviant) override { return {&container_, deviant}; }

    Container container_;
};

} // namespace QOB
