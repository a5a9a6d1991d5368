#pragma once

#include "failure.h"

#include <optional>
#include <qob/qob.h>
#include <thread>
#include <unordered_map>
#include <utility>
#include <velum_arxml/reading/sources.h>

namespace velum::python {

/// A model as Python holds it. Whatever in Python shows the model or an object of it counts here;
/// the last one ends a model that Python made. A model that Python found, because an object of it
/// is referred to, is left alone.
///
/// A model is used by the thread that made it. Counting down is allowed to every thread: the
/// interpreter's lock is held by whoever does.
class ModelHold {
public:
    /// What can be switched in a deviant; the library can't be asked for it.
    struct Switches {
        bool isUndoEnabled = false;
        bool isReadOnly = false;
    };

    ModelHold(ModelHold const&) = delete;
    ModelHold& operator=(ModelHold const&) = delete;

    /// Of a model that Python has made, with the count of the caller.
    static ModelHold* adopt(QOB::Model const& model);
    /// Of the model of an object, with the count of the caller. Raises for an object that has none.
    static ModelHold* of(QOB::NSInterface::ClassObjectIntf const& object, QOB::Deviant deviant);

    void retain() noexcept { ++count_; }
    void release() noexcept {
        if (--count_ == 0) {
            end();
        }
    }

    bool isHere() const noexcept { return std::this_thread::get_id() == thread_; }
    /// Raises velum.Error in a thread that is not the model's.
    void requireThread() const {
        if (!isHere()) {
            failForThread();
        }
    }

    QOB::Model const& model() const noexcept { return model_; }
    QOB::Deviant root() const noexcept { return root_; }
    bool isDestroyed() const noexcept { return isDestroyed_; }
    /// Ends the model now.
    void destroy();

    Switches& switchesOf(QOB::Deviant deviant) { return switches_[deviant]; }
    /// The elements of the files that were read into the model, if they were kept.
    arxml::Sources sources{};

private:
    ModelHold(QOB::Model const& model, bool isOwned);
    ~ModelHold();
    void end() noexcept;
    [[noreturn]] static void failForThread();

    QOB::Model model_;
    QOB::Deviant root_;
    std::thread::id thread_;
    Py_ssize_t count_ = 1;
    bool isOwned_;
    bool isDestroyed_ = false;
    std::unordered_map<QOB::Deviant, Switches> switches_;
};

/// One count on a hold.
class HoldRef {
public:
    /// Takes over a count.
    explicit HoldRef(ModelHold* counted) noexcept : hold_(counted) {}
    static HoldRef share(ModelHold* hold) noexcept {
        hold->retain();
        return HoldRef(hold);
    }
    HoldRef(HoldRef const& other) noexcept : HoldRef(share(other.hold_)) {}
    HoldRef(HoldRef&& other) noexcept : hold_(std::exchange(other.hold_, nullptr)) {}
    HoldRef& operator=(HoldRef other) noexcept {
        std::swap(hold_, other.hold_);
        return *this;
    }
    ~HoldRef() {
        if (hold_ != nullptr) {
            hold_->release();
        }
    }

    ModelHold* get() const noexcept { return hold_; }
    ModelHold* operator->() const noexcept { return hold_; }
    ModelHold& operator*() const noexcept { return *hold_; }

private:
    ModelHold* hold_;
};

} // namespace velum::python
