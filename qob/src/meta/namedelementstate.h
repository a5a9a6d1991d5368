#pragma once

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/kernel/containers/sequence/sequencemember.h"
#include "qob/kernel/deviant/classobjectstate.h"

namespace QOB::NSImplementation {

/// What a state stores for a named element.
struct NamedElementFields : ClassObjectFields {
    String name = "";
};

/// The operations of a named element on a state: plain access to the fields of `Leaf`, whose
/// interface class is `Intf`.
template <class Leaf, class Intf>
class NamedElementState : public ClassObjectState<Leaf, Intf> {
public:
    bool hasName(Deviant) const override { return true; }
    void removeName(Deviant) override {}
    void setName(Deviant, String const& name) override {
        static_cast<Leaf*>(this)->fields_.name = name;
    }
    String getName(Deviant) const override { return static_cast<Leaf const*>(this)->fields_.name; }
};

/// How a new element begins: nameless, or with a name.
struct Unnamed {
    template <class Handle>
    void operator()(Handle const&) const {}
};
struct Named {
    String const& name;

    template <class Handle>
    void operator()(Handle const& element) const {
        element.setName(name);
    }
};

/// A list of distinct objects in a state.
template <class Element>
class OwnedList {
public:
    /// For reading only.
    Sequence<Element> read(Deviant deviant) const {
        return {const_cast<MultiIndexImpl<Element>*>(&member_.read()), deviant};
    }
    Sequence<Element> write(Deviant deviant) { return {&member_.write(), deviant}; }
    ReferenceStorage const* storage() const { return &member_.read().storage(); }

private:
    SequenceMember<MultiIndexImpl<Element>> member_;
};

} // namespace QOB::NSImplementation
