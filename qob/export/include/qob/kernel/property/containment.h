#pragma once

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/kernel/containers/sequence/views/associationsequence.h"
#include "qob/kernel/containers/sequence/views/propertytosequenceproxy.h"
#include "qob/kernel/deviant/rootobject.h"
#include "qob/kernel/property/otherend.h"
#include "qob/kernel/upcast.h"
#include "qob/qob/object.h"

#include <utility>
#include <vector>

/// The contents and the links of an object, as lists of properties, from which the views of
/// contained objects and the phases of destruction are made. `Impl` is the root object, `State` its
/// state in one deviant; a getter on the state reads the field.
namespace QOB::property {

/// The stereotypes applied to the object.
struct OwnsStereotypes {
    template <class Impl>
    static void collect(Impl* object, Deviant deviant, std::vector<ClassObject>& found) {
        if (object->readState(deviant)->hasAppliedStereotypeInstances(deviant)) {
            QOB::internal::appendStereotypeInstances(object->classObject(), deviant, found);
        }
    }
    template <class Impl>
    static auto view(Impl* object, Deviant deviant) {
        return object->getAppliedStereotypeInstances(deviant);
    }
    template <class Impl>
    static auto viewAlone(Impl* object, Deviant deviant) {
        return object->getAppliedStereotypeInstancesWithoutAssociation(deviant);
    }
};

/// A collection whose elements the object owns.
template <auto GetMany, auto GetOnlyMany>
struct OwnsMany {
    template <class Impl>
    static void collect(Impl* object, Deviant deviant, std::vector<ClassObject>& found) {
        auto const elements = (receiverOf<GetMany>(object->readState(deviant))->*GetMany)(deviant);
        for (int i = 0, size = elements.size(); i < size; ++i) {
            if (ClassObject element(elements.at(i)); element.isValid()) {
                found.push_back(std::move(element));
            }
        }
    }
    template <class Impl>
    static auto view(Impl* object, Deviant deviant) {
        return (receiverOf<GetMany>(object)->*GetMany)(deviant);
    }
    template <class Impl>
    static auto viewAlone(Impl* object, Deviant deviant) {
        return (receiverOf<GetOnlyMany>(object)->*GetOnlyMany)(deviant);
    }
};

/// A single object that the object owns; property `Id` of the class that `Methods` describes.
template <IntrospectiveMethods const& Methods, unsigned Id, auto Get>
struct OwnsOne {
    template <class Impl>
    static void collect(Impl* object, Deviant deviant, std::vector<ClassObject>& found) {
        auto const value = (receiverOf<Get>(object->readState(deviant))->*Get)(deviant);
        if (value.isValid()) {
            found.push_back(ClassObject(value));
        }
    }
    template <class Impl>
    static auto view(Impl* object, Deviant deviant) {
        auto const alone = viewAlone(object, deviant);
        return decltype(viewAlone(object, deviant))(
            new GenericAssociationSequence(Object(object->classObject(), deviant),
                                           alone.pointer(),
                                           &NSInterface::ClassObjectIntf::sIntrospectiveMethods,
                                           NSInterface::ClassObjectIntf::ContainerQOBId,
                                           true),
            deviant);
    }
    template <class Impl>
    static auto viewAlone(Impl* object, Deviant deviant) {
        using Value = decltype((receiverOf<Get>(object)->*Get)(deviant));
        return Sequence<Value>(
            new GenericPropertyToSequenceProxy(ImmutableClassObject(object->classObject(), deviant),
                                               &Methods,
                                               Id,
                                               GenericPropertyToSequenceProxy::OneEnd),
            deviant);
    }
};

/// All properties by which an object contains others.
template <class... Part>
struct Parts {
    template <class Impl>
    static std::vector<ClassObject> collect([[maybe_unused]] Impl* object,
                                            [[maybe_unused]] Deviant deviant) {
        std::vector<ClassObject> found;
        (Part::collect(object, deviant, found), ...);
        return found;
    }

    /// All contained objects, property by property; writes update the other end.
    template <class Element, class Impl>
    static Sequence<Element> view([[maybe_unused]] Impl* object, Deviant deviant) {
        return joined<Element>(deviant, Part::view(object, deviant)...);
    }
    template <class Element, class Impl>
    static Sequence<Element> viewAlone([[maybe_unused]] Impl const* object, Deviant deviant) {
        return joined<Element>(deviant, Part::viewAlone(const_cast<Impl*>(object), deviant)...);
    }

private:
    template <class Element>
    static Sequence<Element> joined(Deviant deviant) {
        return SequenceCombination<Element>(deviant, 0);
    }
    template <class Element, class Only>
    static Sequence<Element> joined(Deviant, Only const& only) {
        return only;
    }
    template <class Element, class... Sequences>
    static Sequence<Element> joined(Deviant deviant, Sequences const&... sequences) {
        SequenceCombination<Element> all(deviant, sizeof...(Sequences));
        (all.add(sequences), ...);
        return all;
    }
};

/// A reference without an other end: only the kernel's record of it is removed.
template <IntrospectiveMethods const& Methods, unsigned Id, auto Get>
struct RefersToOne {
    template <class Impl, class State>
    static void cut(Impl*, State* state, Deviant deviant) {
        auto const value = (receiverOf<Get>(state)->*Get)(deviant);
        if (value.isValid()) {
            deviant.removeReferred(value.getDeviant(), &Methods, Id);
        }
    }
};

template <IntrospectiveMethods const& Methods, unsigned Id, auto GetMany>
struct RefersToMany {
    template <class Impl, class State>
    static void cut(Impl*, State* state, Deviant deviant) {
        auto const values = (receiverOf<GetMany>(state)->*GetMany)(deviant);
        for (int i = 0, size = values.size(); i < size; ++i) {
            deviant.removeReferred(values.at(i).getDeviant(), &Methods, Id);
        }
    }
};

/// A reference whose value refers back to the object by the other end `End`.
template <IntrospectiveMethods const& Methods, unsigned Id, auto Get, auto Set, class End>
struct LinkedToOne {
    template <class Impl, class State>
    static void cut(Impl* object, State* state, Deviant deviant) {
        auto const value = (receiverOf<Get>(state)->*Get)(deviant);
        if (value.isValid()) {
            End::remove(value, deviant, receiverOf<Get>(object));
            deviant.removeReferred(value.getDeviant(), &Methods, Id);
            (receiverOf<Set>(state)->*Set)(deviant, decltype(value)());
        }
    }
};

/// A collection whose elements refer to the object; `RemoveOnly` removes that reference.
template <auto GetMany, auto RemoveOnly>
struct LinkedToMany {
    template <class Impl, class State>
    static void cut(Impl*, State* state, Deviant deviant) {
        auto const values = (receiverOf<GetMany>(state)->*GetMany)(deviant);
        for (int i = 0, size = values.size(); i < size; ++i) {
            if (auto const value = values.at(i); value.isValid()) {
                (value.get()->*RemoveOnly)(deviant);
            }
        }
    }
};

/// All links of a class.
template <class... Link>
struct Links {
    template <class Impl, class State>
    static void cut([[maybe_unused]] Impl* object,
                    [[maybe_unused]] State* state,
                    [[maybe_unused]] Deviant deviant) {
        (Link::cut(object, state, deviant), ...);
    }
};

/// First phase of destruction.
template <class Contained, class Linked, class Impl>
void disconnect(Impl* object, Deviant deviant) {
    QOB::internal::disconnect(
        *object,
        deviant,
        [](DeviationsBase& self, Deviant d) {
            auto* const impl = static_cast<Impl*>(&self);
            impl->writeState(d);
            return Contained::collect(impl, d);
        },
        [](DeviationsBase& self, Deviant d) {
            auto* const impl = static_cast<Impl*>(&self);
            Linked::cut(impl, impl->writeState(d), d);
        });
}

/// Second phase of destruction: the contents end first, then the object.
template <class Contained, class Impl>
void discard(Impl* object, Deviant deviant, bool detach) {
    QOB::internal::discard(*object, deviant, detach, [](DeviationsBase& self, Deviant d) {
        return Contained::collect(static_cast<Impl*>(&self), d);
    });
}

} // namespace QOB::property
