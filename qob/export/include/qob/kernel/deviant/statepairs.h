#pragma once

#include "qob/kernel/upcast.h"
#include "qob/qob/deviant.h"

namespace QOB {

/// The pairs of a root object: its state in a deviant as each of its interface classes `Level...`.
/// `Root` is a RootObject.
template <class Root, class... Level>
class StatePairs : public Root {};

template <class Root, class Level, class... Further>
class StatePairs<Root, Level, Further...> : public StatePairs<Root, Further...> {
    using Base = StatePairs<Root, Further...>;

public:
    using Base::getReadDeviantI;
    using Base::getWriteDeviantI;
    Level* getReadDeviantI(Deviant deviant, Level const*) const override {
        return upcast<Level>(this->readState(deviant));
    }
    Level* getWriteDeviantI(Deviant deviant, Level const*) const override {
        return upcast<Level>(this->writeState(deviant));
    }
};

} // namespace QOB
