#pragma once

#include "qob/qob/nsinterface/classobjectintf.h"
#include "qob/qob/referencecounting.h"

#include <utility>
#include <vector>

namespace QOB::internal {

inline ReferenceCountingIntf const* counted(NSInterface::ClassObjectIntf const* object) noexcept {
    return object;
}

/// Keeps a group of objects alive while their states are freed.
class KeepAlive {
public:
    explicit KeepAlive(std::vector<NSInterface::ClassObjectIntf*> objects)
        : objects_(std::move(objects)) {
        for (NSInterface::ClassObjectIntf* const object : objects_) {
            retain(counted(object));
        }
    }
    KeepAlive(KeepAlive const&) = delete;
    KeepAlive& operator=(KeepAlive const&) = delete;
    ~KeepAlive() {
        for (NSInterface::ClassObjectIntf* const object : objects_) {
            release(counted(object));
        }
    }
    std::vector<NSInterface::ClassObjectIntf*> const& objects() const noexcept { return objects_; }

private:
    std::vector<NSInterface::ClassObjectIntf*> objects_;
};

} // namespace QOB::internal
