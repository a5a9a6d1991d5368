#pragma once

#include "qob/kernel/containers/sequence/sequenceproxy.h"
#include "qob/kernel/containers/sequence/sequenceref.h"

#include <utility>
#include <vector>

namespace QOB::combined_sequence_internal {

/// Several sequences, one after the other, as one sequence for reading. The only possible write is
/// generic_removeAll, which goes to the part that contains the element; every other write raises
/// QOB::Exception.
class QOB_EXPORT GenericCombinedSequence final : public SequenceProxy {
    using Ref = Generic::Ref;
    using IteratorIntf = Generic::IteratorIntf;
    using IteratorPtr = Generic::IteratorPtr;

public:
    GenericCombinedSequence();
    ~GenericCombinedSequence() override;

    void reserve(unsigned parts) { parts_.reserve(parts); }
    /// Keeps the part alive; it must not be null.
    void append(Generic::SequencePtr part) { parts_.push_back(std::move(part)); }

    std::vector<Generic::SequencePtr> const& parts() const noexcept { return parts_; }

    Ref generic_at(Deviant const& deviant, int index) const override;
    Ref generic_front(Deviant const& deviant) const override;
    Ref generic_back(Deviant const& deviant) const override;
    IteratorPtr generic_begin(Deviant const& deviant) const override;
    IteratorPtr generic_end(Deviant const& deviant) const override;
    void generic_clear(Deviant const& deviant) override;
    int generic_size(Deviant const& deviant) const override;
    bool generic_empty(Deviant const& deviant) const override;
    IteratorPtr
    generic_insert(Deviant const& deviant, IteratorIntf const* position, Ref element) override;
    void generic_insert(Deviant const& deviant, int index, Ref element) override;
    void generic_erase(Deviant const& deviant, int index) override;
    IteratorPtr generic_erase(Deviant const& deviant,
                              IteratorIntf const* first,
                              IteratorIntf const* last) override;
    IteratorPtr generic_erase(Deviant const& deviant, IteratorIntf const* position) override;
    void generic_pop_back(Deviant const& deviant) override;
    void generic_pop_front(Deviant const& deviant) override;
    void generic_push_back(Deviant const& deviant, Ref element) override;
    void generic_push_front(Deviant const& deviant, Ref element) override;
    void generic_replace(Deviant const& deviant, int index, Ref element) override;
    bool generic_contains(Deviant const& deviant, Ref element) const override;
    char const* generic_getLumvoName(bool immutableSequence,
                                     bool immutableElements,
                                     char const* fallback) const override;
    int generic_removeAll(Deviant const& deviant, Ref element) override;

private:
    class Iterator;

    std::vector<Generic::SequencePtr> parts_;
};

} // namespace QOB::combined_sequence_internal
