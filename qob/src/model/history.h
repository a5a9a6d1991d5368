#pragma once

#include "model/stateslot.h"
#include "qob/qob/nsinterface/classobjectintf.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <memory>
#include <vector>

namespace QOB::internal {

using NSInterface::ClassObjectIntf;
using NSInterface::ObjectIntf;

/// The old state of one object, as a transaction or an undo step keeps it. Owns the state and, by
/// one count, keeps the object alive that alone can free it.
struct SavedState {
    ClassObjectIntf* object = nullptr;
    StateSlot slot;
    /// The object is new in the deviant: the slot is what stood there before, mostly nothing.
    bool created = false;
};

/// Something outside of all states that goes back and forth with them, such as a pointer to a live
/// class.
class StepPart {
public:
    StepPart() = default;
    StepPart(StepPart const&) = delete;
    StepPart& operator=(StepPart const&) = delete;
    virtual ~StepPart() = default;
    /// Swaps what is there now for what was kept.
    virtual void exchange() noexcept = 0;
};

/// Everything that brings a deviant from one point in time to another, in order of first write.
struct Step {
    std::vector<SavedState> states;
    std::vector<std::unique_ptr<StepPart>> parts;

    bool empty() const noexcept { return states.empty() && parts.empty(); }
    /// Frees the states first and lets go of the objects last.
    void release();
};

/// A transaction that has not ended. Transactions on the same deviant join it.
struct OpenTransaction {
    std::uint64_t serial = 0;
    int depth = 1;
    Step record;
    boost::unordered_flat_map<ClassObjectIntf const*, std::size_t> savedIndex;
};

} // namespace QOB::internal
