#pragma once

#include "qob/kernel/containers/sequence/sequenceproxy.h"
#include "qob/qob/introspection.h"
#include "qob/qob/object.h"

namespace QOB {

/// A single-valued property whose value is an object, as a sequence of at most one element.
/// Inserting sets the value, erasing removes it. A value that doesn't exist in the deviant is not
/// shown.
class QOB_EXPORT GenericPropertyToSequenceProxy final : public SequenceProxy {
    using Ref = Generic::Ref;
    using IteratorIntf = Generic::IteratorIntf;
    using IteratorPtr = Generic::IteratorPtr;

public:
    /// Which ends a write updates. OneEnd changes the property alone, for use inside a view that
    /// updates both ends; BothEnds runs the property's own update of the other end.
    enum Ends : int { OneEnd = 0, BothEnds = 1 };

    /// The view keeps its object alive.
    GenericPropertyToSequenceProxy(ImmutableClassObject object,
                                   IntrospectiveMethods const* methods,
                                   unsigned propertyId,
                                   int ends);
    ~GenericPropertyToSequenceProxy() override;

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

private:
    class Iterator;

    /// The value; empty if there is none.
    ClassObject value(Deviant const& deviant) const;
    void set(Deviant const& deviant, Ref const& element);
    void remove(Deviant const& deviant);
    NSInterface::ObjectIntf* object() const noexcept;

    ImmutableClassObject object_;
    IntrospectiveMethods const* methods_;
    unsigned propertyId_;
    int ends_;
};

} // namespace QOB
