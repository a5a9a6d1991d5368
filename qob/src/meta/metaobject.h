#pragma once

#include "qob/kernel/containers/sequence/multiindex/referencestorage.h"
#include "qob/kernel/deviant/classobjectstate.h"
#include "qob/kernel/deviant/rootobject.h"

#include <vector>

namespace QOB::NSImplementation {

/// The pairs of a root object: its state as each of its interface classes.
template <class Root, class... Level>
class StatePairs : public Root {};

template <class Root, class Level, class... Further>
class StatePairs<Root, Level, Further...> : public StatePairs<Root, Further...> {
public:
    using StatePairs<Root, Further...>::getReadDeviantI;
    using StatePairs<Root, Further...>::getWriteDeviantI;
    Level* getReadDeviantI(Deviant deviant, Level const*) const override {
        return this->readState(deviant);
    }
    Level* getWriteDeviantI(Deviant deviant, Level const*) const override {
        return this->writeState(deviant);
    }
};

/// The root object of one of the kernel's own metaclasses: `State` is the class of its states,
/// `Level...` its interface classes below ClassObject, its own first.
template <class State, class Intf, class... Level>
class MetaObject : public StatePairs<RootObject<Intf, State>,
                                     Intf,
                                     Level...,
                                     NSInterface::ClassObjectIntf,
                                     NSInterface::ObjectIntf> {
public:
    char const* getLumvoName(bool immutable) const override {
        return immutable ? Intf::ImmutableName : Intf::Name;
    }

    void internal_disconnect(Deviant deviant) override {
        QOB::internal::disconnect(*this, deviant, &allPartsOf, [](DeviationsBase&, Deviant) {});
    }
    void internal_discard(Deviant deviant, bool detach) override {
        if (!this->deviant_isValid(deviant)) {
            return;
        }
        if (detach && this->hasContainerQOB(deviant)) {
            this->removeContainerQOB(deviant); // at both ends
        }
        QOB::internal::discard(*this, deviant, detach, &allPartsOf);
    }

private:
    static std::vector<ClassObject> allPartsOf(DeviationsBase& object, Deviant deviant) {
        return static_cast<MetaObject&>(object).contained(deviant);
    }
    std::vector<ClassObject> contained(Deviant deviant) const {
        std::vector<ClassObject> result = this->stereotypes(deviant);
        if constexpr (requires(State const& state) { state.ownedObjects(); }) {
            if (this->deviant_isValid(deviant)) {
                for (ReferenceStorage const* const list :
                     this->readState(deviant)->ownedObjects()) {
                    for (NSInterface::ClassObjectIntf const* const object : *list) {
                        ClassObject part(const_cast<NSInterface::ClassObjectIntf*>(object),
                                         deviant);
                        if (part.isValid()) {
                            result.push_back(std::move(part));
                        }
                    }
                }
            }
        }
        return result;
    }
};

} // namespace QOB::NSImplementation
