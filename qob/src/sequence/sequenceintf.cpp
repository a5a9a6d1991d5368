#include "qob/kernel/containers/sequence/sequenceintf.h"

#include "qob/kernel/containers/sequence/sequenceproxy.h"
#include "qob/kernel/deviant/onewrite.h"

#include <vector>

namespace QOB {
namespace Generic {

IteratorIntf::~IteratorIntf() = default;
SequenceIntf::~SequenceIntf() = default;

bool SequenceIntf::generic_empty(Deviant const& deviant) const {
    return generic_size(deviant) == 0;
}

namespace {

std::vector<Ref> elementsOf(SequenceIntf const& sequence, Deviant const& deviant) {
    int const size = sequence.generic_size(deviant);
    std::vector<Ref> elements;
    elements.reserve(static_cast<std::size_t>(size));
    IteratorPtr const position = sequence.generic_begin(deviant);
    for (int i = 0; i < size; ++i) {
        elements.push_back(position->generic_value(deviant));
        position->generic_next(deviant);
    }
    return elements;
}

void refill(SequenceIntf& sequence, Deviant const& deviant, std::vector<Ref> const& elements) {
    sequence.generic_clear(deviant);
    for (Ref const& element : elements) {
        sequence.generic_push_back(deviant, element);
    }
}

} // namespace

int SequenceIntf::generic_removeAll(Deviant const& deviant, Ref element) {
    int removed = 0;
    IteratorPtr position = generic_begin(deviant);
    while (!position->generic_sameAs(generic_end(deviant).get())) {
        if (sameElement(position->generic_value(deviant), element)) {
            position = generic_erase(deviant, position.get());
            ++removed;
        } else {
            position->generic_next(deviant);
        }
    }
    return removed;
}

bool SequenceIntf::specialized_equal(Deviant const&,
                                     SequenceIntf const*,
                                     Deviant const&,
                                     bool&) const {
    return false;
}

bool SequenceIntf::specialized_assign(Deviant const&, SequenceIntf const*, Deviant const&, bool&) {
    return false;
}

bool SequenceIntf::generic_equal(Deviant const& deviant,
                                 SequenceIntf const* other,
                                 Deviant const& otherDeviant) const {
    bool handled = false;
    bool const result = specialized_equal(deviant, other, otherDeviant, handled);
    if (handled) {
        return result;
    }
    int const size = generic_size(deviant);
    if (other == nullptr || other->generic_size(otherDeviant) != size) {
        return false;
    }
    IteratorPtr const here = generic_begin(deviant);
    IteratorPtr const there = other->generic_begin(otherDeviant);
    for (int i = 0; i < size; ++i) {
        if (!sameElement(here->generic_value(deviant), there->generic_value(otherDeviant))) {
            return false;
        }
        here->generic_next(deviant);
        there->generic_next(otherDeviant);
    }
    return true;
}

void SequenceIntf::generic_assign(Deviant const& deviant,
                                  SequenceIntf const* other,
                                  Deviant const& otherDeviant) {
    bool handled = false;
    specialized_assign(deviant, other, otherDeviant, handled);
    if (handled || generic_equal(deviant, other, otherDeviant)) {
        return;
    }
    QOB_REQUIRE(other != nullptr, "A null sequence can't be assigned from.");
    internal::OneWrite const write;
    // Taken first: what is cleared may be what the other one shows.
    std::vector<Ref> const elements = elementsOf(*other, otherDeviant);
    if (auto const* const view = dynamic_cast<SequenceProxy const*>(this)) {
        for (Ref const& element : elements) {
            view->checkInsertable(deviant, element);
        }
    }
    std::vector<Ref> const before = elementsOf(*this, deviant);
    try {
        refill(*this, deviant, elements);
    } catch (...) {
        refill(*this, deviant, before);
        throw;
    }
}

} // namespace Generic

namespace {

void raiseCount(int& count) {
    internal::requireCount(count);
    ++count;
}

/// True if the last reference went.
bool lowerCount(int& count) {
    --count;
    internal::requireCount(count);
    return count == 0;
}

} // namespace

void IteratorProxy::incRef() const {
    raiseCount(referenceCount_);
}
void IteratorProxy::decRef() const {
    if (lowerCount(referenceCount_)) {
        delete this;
    }
}
int IteratorProxy::numRef() const {
    return referenceCount_;
}

void SequenceProxy::checkInsertable(Deviant const&, Generic::Ref const&) const {
}
void SequenceProxy::checkInsertableInto(Generic::SequenceIntf const* inner,
                                        Deviant const& deviant,
                                        Generic::Ref const& element) {
    if (auto const* const view = dynamic_cast<SequenceProxy const*>(inner)) {
        view->checkInsertable(deviant, element);
    } else if (element.equalFn == nullptr) {
        inner->generic_contains(deviant, element); // raises for another class and for null
    }
}

void SequenceProxy::incRef() const {
    raiseCount(referenceCount_);
}
void SequenceProxy::decRef() const {
    if (lowerCount(referenceCount_)) {
        delete this;
    }
}
int SequenceProxy::numRef() const {
    return referenceCount_;
}

} // namespace QOB
