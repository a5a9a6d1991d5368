#pragma once

#include "qob/kernel/immortal.h"

#include <memory>
#include <utility>

namespace QOB {

/// A container as a state holds it: one word, and no container until the first write. A copy of an
/// empty one holds none either.
template <class Container>
class SequenceMember {
public:
    SequenceMember() noexcept = default;
    SequenceMember(SequenceMember const& other) : container_(copyOf(other)) {}
    SequenceMember(SequenceMember&& other) noexcept = default;
    SequenceMember& operator=(SequenceMember other) noexcept {
        std::swap(container_, other.container_);
        return *this;
    }
    ~SequenceMember() = default;

    /// What is held; a common empty container, which must never be written, if there is none.
    Container const& read() const {
        static Immortal<Container> empty;
        return container_ != nullptr ? *container_ : *empty;
    }
    Container& write() {
        if (container_ == nullptr) {
            container_ = std::make_unique<Container>();
        }
        return *container_;
    }

private:
    static std::unique_ptr<Container> copyOf(SequenceMember const& other) {
        return other.container_ == nullptr || other.container_->generic_empty({})
                   ? nullptr
                   : std::make_unique<Container>(*other.container_);
    }

    std::unique_ptr<Container> container_;
};

} // namespace QOB
