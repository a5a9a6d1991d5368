#pragma once

#include "model/modelcore.h"
#include "propertyindex.h"
#include "qob/kernel/deviant/countedpointer.h"

#include <memory>
#include <utility>

namespace QOB::internal {

/// What a constant table or a flag beside it held before a change: it comes back with a rollback or
/// an undo of the transaction that the change was made in.
template <class Value>
class KeptValue final : public StepPart {
public:
    explicit KeptValue(Value& place) : place_(place), value_(place) {}
    void exchange() noexcept override {
        std::swap(place_, value_);
        ++PropertyIndex::generation();
    }

private:
    Value& place_;
    Value value_;
};

/// The same for what a live class is bound to.
class KeptBinding final : public StepPart {
public:
    explicit KeptBinding(NSInterface::ClassIntf* meta)
        : meta_(meta), binding_(meta->internal_binding()) {}
    void exchange() noexcept override {
        ClassBinding const present = meta_.get()->internal_binding();
        meta_.get()->internal_bind(binding_);
        binding_ = present;
    }

private:
    CountedPointer<NSInterface::ClassIntf> meta_;
    ClassBinding binding_;
};

/// To be called before the value changes.
template <class Value>
void keepValue(Deviant deviant, Value& place) {
    DeviantData::of(deviant).history().keep(std::make_unique<KeptValue<Value>>(place));
}

} // namespace QOB::internal
