#pragma once

#include "propertyindex.h"
#include "qob/qob/deviant.h"

#include <memory>

/// What root objects of live classes and properties hold for the whole process, beside their
/// states: the records that they are bound to. `Root` is a RootObject.
namespace QOB {

template <class Root>
class BoundClass : public Root {
    using PropertyIndex = internal::PropertyIndex;

public:
    void internal_bind(ClassBinding const& binding) override {
        binding_ = binding;
        ++PropertyIndex::generation();
    }
    ClassBinding internal_binding() const override { return binding_; }
    PropertyIndex const& internal_propertyIndex() const override {
        if (index_ == nullptr || generation_ != PropertyIndex::generation()) {
            index_ = std::make_unique<PropertyIndex>(binding_);
            generation_ = PropertyIndex::generation();
        }
        return *index_;
    }

private:
    ClassBinding binding_;
    mutable std::unique_ptr<PropertyIndex> index_; // made at the first need
    mutable unsigned generation_ = 0;
};

template <class Root>
class BoundProperty : public Root {
public:
    void internal_bind(PropertyBinding const& binding) override { binding_ = binding; }
    PropertyBinding internal_binding() const override { return binding_; }

private:
    PropertyBinding binding_;
};

} // namespace QOB
