#include "qob/kernel/deviant/destruction.h"

#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/kernel/deviant/deviations.h"
#include "qob/kernel/property/access.h"
#include "qob/qob/model.h"
#include "qob/qob/stereotypeobject.h"

#include <boost/container/small_vector.hpp>

#include <cstddef>
#include <utility>
#include <vector>

namespace QOB::internal {

using NSInterface::ClassObjectIntf;

/// One phase of destruction over an object and everything that it contains, parts first. The walk
/// calls the phase's operation of each part. Where that ends in `enter`, the part is only put on
/// the stack of the walk.
class EndingWalk {
public:
    enum class Phase : bool { Disconnect, Discard };

    struct Frame {
        DeviationsBase* object;
        PartsOf collect;
        CutLinks cut;
        bool detach;
        std::vector<ClassObject> parts{};
        std::size_t next = 0;
    };

    EndingWalk(EndingWalk const&) = delete;
    EndingWalk& operator=(EndingWalk const&) = delete;

    /// Returns at once for an object that is in a phase already or doesn't exist.
    static void enter(Phase phase, Deviant deviant, Frame frame);

private:
    /// The part that a walk is calling now.
    struct Call {
        EndingWalk* walk;
        ClassObjectIntf const* part;
    };
    class Calling {
    public:
        explicit Calling(Call const& call) noexcept : outer_(current) { current = call; }
        Calling(Calling const&) = delete;
        Calling& operator=(Calling const&) = delete;
        ~Calling() { current = outer_; }

    private:
        Call outer_;
    };

    EndingWalk(Phase phase, Deviant deviant) noexcept : phase_(phase), deviant_(deviant) {}
    /// What is left after a failure ends innermost first: an object keeps its parts.
    ~EndingWalk() {
        while (!frames_.empty()) {
            pop();
        }
    }

    void push(Frame frame) {
        frame.object->isEnding_ = 1;
        frames_.push_back(std::move(frame));
        Frame& last = frames_.back();
        last.parts = last.collect(*last.object, deviant_);
    }
    void pop() {
        frames_.back().object->isEnding_ = 0;
        frames_.pop_back();
    }
    void run();
    void call(ClassObject const& part);
    void finish(Frame const& frame) const;
    void discard(ClassObjectIntf* object, bool detach) const;

    static constinit Call current;

    Phase phase_;
    Deviant deviant_;
    boost::container::small_vector<Frame, 2> frames_;
};

constinit EndingWalk::Call EndingWalk::current{nullptr, nullptr};

void EndingWalk::enter(Phase phase, Deviant deviant, Frame frame) {
    ClassObjectIntf const* const object = frame.object->owner();
    if (frame.object->isEnding_ != 0 || !object->deviant_isValid(deviant)) {
        return;
    }
    if (current.part == object && current.walk->phase_ == phase &&
        current.walk->deviant_ == deviant) {
        current.walk->push(std::move(frame));
        return;
    }
    EndingWalk walk(phase, deviant);
    walk.push(std::move(frame));
    walk.run();
}

void EndingWalk::run() {
    while (!frames_.empty()) {
        Frame& last = frames_.back();
        if (last.next != last.parts.size()) {
            call(last.parts[last.next++]);
        } else {
            finish(last);
            pop();
        }
    }
}

void EndingWalk::call(ClassObject const& part) {
    if (part->getRootDeviant() != deviant_.getRootDeviant()) {
        return; // what a list holds of another model stays there
    }
    Calling const calling({this, part.get()});
    if (phase_ == Phase::Disconnect) {
        part->internal_disconnect(deviant_);
    } else if (part.isValid()) {
        part->internal_discard(deviant_, false);
    }
}

void EndingWalk::finish(Frame const& frame) const {
    ClassObjectIntf* const object = frame.object->owner();
    if (!object->deviant_isValid(deviant_)) {
        return;
    }
    if (phase_ == Phase::Disconnect) {
        frame.cut(*frame.object, deviant_);
    } else {
        discard(object, frame.detach);
    }
}

void EndingWalk::discard(ClassObjectIntf* object, bool detach) const {
    ClassObjectIntf* const state = property::writeState(object, deviant_);
    if (detach) {
        ClassObject const container = state->getContainerQOB(deviant_);
        if (container.isValid()) {
            container->getContaineeQOBsWithoutAssociation(deviant_).removeAll(
                ClassObject(object, deviant_));
            deviant_.removeReferred(container.getDeviant(),
                                    &ClassObjectIntf::sIntrospectiveMethods,
                                    ClassObjectIntf::ContainerQOBId);
        }
    }
    state->setContainerQOB(deviant_, ClassObject());
    if (Model const model = state->getModelQOB(deviant_); model.isValid()) {
        model->internal_removeRootObject(deviant_, object);
    }
    if (object->deviant_isValid(deviant_)) {
        object->internal_destroyDeviation(deviant_);
    }
}

void disconnect(DeviationsBase& object, Deviant deviant, PartsOf parts, CutLinks cut) {
    object.requireOwn(deviant);
    EndingWalk::enter(EndingWalk::Phase::Disconnect, deviant, {&object, parts, cut, false});
}

void discard(DeviationsBase& object, Deviant deviant, bool detach, PartsOf parts) {
    object.requireOwn(deviant);
    EndingWalk::enter(EndingWalk::Phase::Discard, deviant, {&object, parts, nullptr, detach});
}

} // namespace QOB::internal
