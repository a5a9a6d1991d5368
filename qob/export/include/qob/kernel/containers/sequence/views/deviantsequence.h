#pragma once

#include "qob/kernel/containers/sequence/forwardingsequence.h"
#include "qob/qob/introspection.h"

#include <vector>

namespace QOB {

/// A multi-valued property of an object, in the state of the deviant that each call passes. Stores
/// no elements: it shows the current contents. A write first creates the state in its deviant,
/// unless it fails or changes nothing.
///
/// The states are accessed by the reflective functions of the property's class: getMultiValued for
/// reading, getOnlyMultiValued for writing, so that a state can create its container on demand.
class QOB_EXPORT GenericDeviantSequence final : public ForwardingSequence {
public:
    /// Keeps the object alive. Each call passes the deviant in which it acts; `deviant` is only
    /// used to find the name.
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

    /// Appends an element that isn't there yet; returns whether it was appended. `mustExist` raises
    /// for an object that doesn't exist in the deviant.
    bool appendNew(Deviant const& deviant, Ref const& element, bool mustExist);
    /// Remove the first or last element and return it. Raise if there is none.
    Ref takeFirst(Deviant const& deviant);
    Ref takeLast(Deviant const& deviant);

    char const* generic_getLumvoName(bool immutableSequence,
                                     bool immutableElements,
                                     char const* fallback) const override;

private:
    SequenceRef reading(Deviant const& deviant) const override;
    SequenceRef writing(Deviant const& deviant) override;
    /// The deviant in which the kernel counts references: for a deviant of another model, the
    /// object's root.
    Deviant own(Deviant const& deviant) const;
    bool isUnique() const noexcept;
    /// Whether the element is there. Raises for one of another class.
    bool has(Deviant const& deviant, Ref const& element) const;
    /// True if inserting the element would change nothing. Raises if it can't be inserted.
    bool refuses(Deviant const& deviant, Ref const& element) const;
    /// Informs the kernel that the property, written in the deviant, now refers to the object.
    bool isAtHome(Deviant const& deviant, Ref const& element) const;
    void gain(Deviant const& deviant, Ref const& element) const;
    /// The same for an object that it no longer refers to. Does nothing for values.
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
