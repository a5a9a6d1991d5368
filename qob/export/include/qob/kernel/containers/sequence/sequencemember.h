#pragma once

#include "qob/kernel/immortal.h"

#include <memory>
#include <utility>

namespace QOB {

/// A container as a member of a state: one word. The container is allocated by the first write; a
/// copy of an empty one allocates nothing either.
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

    /// The container; if there is none, a common empty one, which must never be written.
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
