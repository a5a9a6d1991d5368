#pragma once

#include "qob/qob/observer.h"

namespace QOB::internal {

class DeviantData;
class ObserverList;

/// Compares the states of objects before and after a change, as a deviant shows them.
class ChangeCollector {
public:
    ChangeCollector(DeviantData& deviant, ObserverList& observers);

    /// Null stands for the state of an object that isn't there.
    void add(NSInterface::ClassObjectIntf* object,
             NSInterface::ObjectIntf* before,
             NSInterface::ObjectIntf* after);
    void addId(NSInterface::ClassObjectIntf* object,
               NSInterface::ObjectIntf* state,
               Integer const& before);
    Changes const& take();

private:
    ObjectChange changeOf(NSInterface::ClassObjectIntf* object,
                          NSInterface::ObjectIntf* before,
                          NSInterface::ObjectIntf* after) const;
    void compareStates(ObjectChange& change);

    Deviant deviant_;
    ObserverList& observers_;
    Changes changes_;
};

} // namespace QOB::internal
