#include "qob/kernel/containers/sequence/views/filteredsequence.h"

namespace QOB::filtered_sequence_internal {

using Generic::IteratorIntf;
using Generic::IteratorPtr;
using Generic::Ref;

/// A position of the inner sequence whose element is converted.
class GenericFilteredSequence::Iterator final : public IteratorProxy {
public:
    Iterator(IteratorPtr inner, GenericFilter const& filter) noexcept
        : inner_(std::move(inner)), filter_(filter) {}

    IteratorIntf const* inner() const noexcept { return inner_.get(); }

    Ref generic_value(Deviant const& deviant) const override {
        return filter_.convert(inner_->generic_value(deviant));
    }
    void generic_next(Deviant const& deviant) override { inner_->generic_next(deviant); }
    void generic_prev(Deviant const& deviant) override { inner_->generic_prev(deviant); }
    IteratorPtr generic_clone() const override {
        return std::make_unique<Iterator>(inner_->generic_clone(), filter_);
    }
    bool generic_sameAs(IteratorIntf const* other) const override {
        auto const* const same = dynamic_cast<Iterator const*>(other);
        return same != nullptr && inner_->generic_sameAs(same->inner());
    }

private:
    IteratorPtr inner_;
    GenericFilter filter_;
};

GenericFilteredSequence::GenericFilteredSequence(Generic::SequencePtr inner,
                                                 GenericFilter const& filter)
    : inner_(std::move(inner)), filter_(filter) {
}

GenericFilteredSequence::~GenericFilteredSequence() = default;

/// Objects are shown as they stand: the inner iterator serves as it is.
IteratorPtr GenericFilteredSequence::wrap(IteratorPtr position) const {
    if (filter_.isIdentity()) {
        return position;
    }
    return std::make_unique<Iterator>(std::move(position), filter_);
}

IteratorIntf const* GenericFilteredSequence::unwrap(IteratorIntf const* position) const {
    if (filter_.isIdentity()) {
        return position;
    }
    auto const* const own = dynamic_cast<Iterator const*>(position);
    internal::checkPlace(own != nullptr);
    return own->inner();
}

void GenericFilteredSequence::checkInsertable(Deviant const& deviant, Ref const& element) const {
    checkInsertableInto(inner_.get(), deviant, filter_.convertBack(element));
}

/// Also raises in a deviant in which the inner sequence can't be read.
bool GenericFilteredSequence::canHold(Deviant const& deviant, Ref const& converted) const {
    return converted.data != nullptr || inner_->generic_size(deviant) < 0;
}

Ref GenericFilteredSequence::generic_at(Deviant const& deviant, int index) const {
    return filter_.convert(inner_->generic_at(deviant, index));
}
Ref GenericFilteredSequence::generic_front(Deviant const& deviant) const {
    return filter_.convert(inner_->generic_front(deviant));
}
Ref GenericFilteredSequence::generic_back(Deviant const& deviant) const {
    return filter_.convert(inner_->generic_back(deviant));
}
IteratorPtr GenericFilteredSequence::generic_begin(Deviant const& deviant) const {
    return wrap(inner_->generic_begin(deviant));
}
IteratorPtr GenericFilteredSequence::generic_end(Deviant const& deviant) const {
    return wrap(inner_->generic_end(deviant));
}
void GenericFilteredSequence::generic_clear(Deviant const& deviant) {
    inner_->generic_clear(deviant);
}
int GenericFilteredSequence::generic_size(Deviant const& deviant) const {
    return inner_->generic_size(deviant);
}
bool GenericFilteredSequence::generic_empty(Deviant const& deviant) const {
    return inner_->generic_empty(deviant);
}
IteratorPtr GenericFilteredSequence::generic_insert(Deviant const& deviant,
                                                    IteratorIntf const* position,
                                                    Ref element) {
    return wrap(
        inner_->generic_insert(deviant, unwrap(position), filter_.convertBack(std::move(element))));
}
void GenericFilteredSequence::generic_insert(Deviant const& deviant, int index, Ref element) {
    inner_->generic_insert(deviant, index, filter_.convertBack(std::move(element)));
}
void GenericFilteredSequence::generic_erase(Deviant const& deviant, int index) {
    inner_->generic_erase(deviant, index);
}
IteratorPtr GenericFilteredSequence::generic_erase(Deviant const& deviant,
                                                   IteratorIntf const* first,
                                                   IteratorIntf const* last) {
    return wrap(inner_->generic_erase(deviant, unwrap(first), unwrap(last)));
}
IteratorPtr GenericFilteredSequence::generic_erase(Deviant const& deviant,
                                                   IteratorIntf const* position) {
    return wrap(inner_->generic_erase(deviant, unwrap(position)));
}
void GenericFilteredSequence::generic_pop_back(Deviant const& deviant) {
    inner_->generic_pop_back(deviant);
}
void GenericFilteredSequence::generic_pop_front(Deviant const& deviant) {
    inner_->generic_pop_front(deviant);
}
void GenericFilteredSequence::generic_push_back(Deviant const& deviant, Ref element) {
    inner_->generic_push_back(deviant, filter_.convertBack(std::move(element)));
}
void GenericFilteredSequence::generic_push_front(Deviant const& deviant, Ref element) {
    inner_->generic_push_front(deviant, filter_.convertBack(std::move(element)));
}
void GenericFilteredSequence::generic_replace(Deviant const& deviant, int index, Ref element) {
    inner_->generic_replace(deviant, index, filter_.convertBack(std::move(element)));
}
bool GenericFilteredSequence::generic_contains(Deviant const& deviant, Ref element) const {
    Ref converted = filter_.convertBack(std::move(element));
    return canHold(deviant, converted) && inner_->generic_contains(deviant, std::move(converted));
}
char const* GenericFilteredSequence::generic_getLumvoName(bool, bool, char const* fallback) const {
    return fallback;
}
int GenericFilteredSequence::generic_removeAll(Deviant const& deviant, Ref element) {
    Ref converted = filter_.convertBack(std::move(element));
    return canHold(deviant, converted) ? inner_->generic_removeAll(deviant, std::move(converted))
                                       : 0;
}

} // namespace QOB::filtered_sequence_internal
