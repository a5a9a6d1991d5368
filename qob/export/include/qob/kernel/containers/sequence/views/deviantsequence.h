#pragma once

#include "qob/kernel/containers/sequence/forwardingsequence.h"
#include "qob/qob/reflection.h"

#include <vector>

namespace QOB {

/// A multi-valued property of an object, in the state of whatever deviant each call passes. Stores
/// no elements: it shows what is there at the call. A write creates the state in its deviant first;
/// one that fails or changes nothing doesn't.
///
/// The states are reached by the reflective functions of the property's class: to read, what
/// getMultiValued gives for the state; to write, what getOnlyMultiValued gives, so that a state may
/// make the container there and then.
class QOB_EXPORT GenericDeviantSequence final : public ForwardingSequence {
public:
    /// Counts the object. Each call says in which deviant it acts; `deviant` only finds the name.
    GenericDeviantSequence(NSInterface::ObjectIntf* object,
                           Deviant const& deviant,
                           IntrospectiveMethods const* methods,
                           unsigned propertyId);
    ~GenericDeviantSequence() override;

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
    char const* generic_getLumvoName(bool immutableSequence,
                                     bool immutableElements,
                                     char const* fallback) const override;

private:
    SequenceRef reading(Deviant const& deviant) const override;
    SequenceRef writing(Deviant const& deviant) override;
    /// Where the kernel counts references: the object's root, for a deviant of another model.
    Deviant own(Deviant const& deviant) const;
    bool isUnique() const noexcept;
    /// True if inserting the element would change nothing. Raises for one that can't be inserted.
    bool refuses(Deviant const& deviant, Ref const& element) const;
    /// Tells the kernel of an object that the property, written in the deviant, refers to from now
    /// on.
    void gain(Deviant const& deviant, Ref const& element) const;
    /// The same of an object that it no longer refers to. Values are of no interest.
    void lose(Deviant const& deviant, Ref const& element) const;
    void loseAll(Deviant const& deviant, std::vector<Ref> const& elements) const;
    void exchange(Deviant const& deviant,
                  NSInterface::ClassObjectIntf* old,
                  NSInterface::ClassObjectIntf* value) const;
    Generic::SmartPtr<NSInterface::ObjectIntf, Generic::ReferenceCounted> object_;
    Deviant deviant_;
    IntrospectiveMethods const* methods_;
    unsigned propertyId_;
};

} // namespace QOB
