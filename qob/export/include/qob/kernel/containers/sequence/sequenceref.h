#pragma once

#include "qob/kernel/containers/sequence/sequenceintf.h"
#include "qob/kernel/containers/sequence/smartptr.h"

#include <utility>

namespace QOB::Generic {

/// A counted sequence whose element type isn't known, as views and filters keep it.
using SequencePtr = SmartPtr<SequenceIntf, ReferenceCounted>;

/// The handle of a sequence whose element type isn't known: a counted sequence and the deviant in
/// which to see it. May be null; every operation on a null one raises QOB::Exception. The
/// operations are those of SequenceIntf in the handle's deviant.
class SequenceRef {
public:
    SequenceRef() noexcept = default;
    SequenceRef(SequenceIntf* sequence, Deviant deviant) : sequence_(sequence), deviant_(deviant) {}

    bool isNull() const noexcept { return sequence_.get() == nullptr; }
    explicit operator bool() const noexcept { return !isNull(); }

    /// The sequence, kept alive by the handle; null if the handle is null.
    SequenceIntf* get() const noexcept { return sequence_.get(); }
    SequencePtr const& pointer() const noexcept { return sequence_; }
    Deviant getDeviant() const noexcept { return deviant_; }
    void setDeviant(Deviant deviant) noexcept { deviant_ = deviant; }

    /// The sequence, after the check that there is one.
    SequenceIntf* access() const {
        QOB_REQUIRE_IN("qob/export/include/qob/kernel/containers/sequence/sequenceref.h",
                       sequence_.get() != nullptr,
                       "Cannot access NULL sequence. Use MakeSequence to create sequences.See "
                       "testSequenceCreation in qob/kernel/unittest/sequence_tests.");
        return sequence_.get();
    }

    Ref generic_at(int index) const { return access()->generic_at(deviant_, index); }
    Ref generic_front() const { return access()->generic_front(deviant_); }
    Ref generic_back() const { return access()->generic_back(deviant_); }
    IteratorPtr generic_begin() const { return access()->generic_begin(deviant_); }
    IteratorPtr generic_end() const { return access()->generic_end(deviant_); }
    void generic_clear() const { access()->generic_clear(deviant_); }
    int generic_size() const { return access()->generic_size(deviant_); }
    bool generic_empty() const { return access()->generic_empty(deviant_); }
    IteratorPtr generic_insert(IteratorIntf const* position, Ref element) const {
        return access()->generic_insert(deviant_, position, std::move(element));
    }
    void generic_insert(int index, Ref element) const {
        access()->generic_insert(deviant_, index, std::move(element));
    }
    void generic_erase(int index) const { access()->generic_erase(deviant_, index); }
    IteratorPtr generic_erase(IteratorIntf const* first, IteratorIntf const* last) const {
        return access()->generic_erase(deviant_, first, last);
    }
    IteratorPtr generic_erase(IteratorIntf const* position) const {
        return access()->generic_erase(deviant_, position);
    }
    void generic_pop_back() const { access()->generic_pop_back(deviant_); }
    void generic_pop_front() const { access()->generic_pop_front(deviant_); }
    void generic_push_back(Ref element) const {
        access()->generic_push_back(deviant_, std::move(element));
    }
    void generic_push_front(Ref element) const {
        access()->generic_push_front(deviant_, std::move(element));
    }
    void generic_replace(int index, Ref element) const {
        access()->generic_replace(deviant_, index, std::move(element));
    }
    bool generic_contains(Ref element) const {
        return access()->generic_contains(deviant_, std::move(element));
    }
    int generic_removeAll(Ref element) const {
        return access()->generic_removeAll(deviant_, std::move(element));
    }
    char const* generic_getLumvoName(bool immutableSequence,
                                     bool immutableElements,
                                     char const* fallback) const {
        return access()->generic_getLumvoName(immutableSequence, immutableElements, fallback);
    }
    void generic_assign(SequenceRef const& other) const {
        access()->generic_assign(deviant_, other.access(), other.deviant_);
    }
    bool generic_equal(SequenceRef const& other) const {
        return access()->generic_equal(deviant_, other.access(), other.deviant_);
    }

private:
    SequencePtr sequence_;
    Deviant deviant_;
};

} // namespace QOB::Generic
