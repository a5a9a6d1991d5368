#include "findings/tally.h"

#include <algorithm>
#include <numeric>

namespace velum::arxml {

std::uint64_t& Tally::slot(Counts& counts, NameId name) {
    if (name >= counts.size()) {
        counts.resize(std::size_t{name} + 1);
    }
    return counts[name];
}

std::uint64_t Tally::at(Counts const& counts, NameId name) {
    return name < counts.size() ? counts[name] : 0;
}

void Tally::skip(NameId name, Reason reason, Spot const& spot) {
    Skip& skip = skips_[{name, reason}];
    if (skip.count == 0 || spot.position < skip.first.position) {
        skip.first = spot;
    }
    ++skip.count;
}

std::uint64_t Tally::met() const {
    return std::accumulate(met_.begin(), met_.end(), std::uint64_t{0});
}

std::uint64_t Tally::consumed() const {
    return std::accumulate(consumed_.begin(), consumed_.end(), std::uint64_t{0});
}

std::uint64_t Tally::skipped() const {
    std::uint64_t sum = 0;
    for (auto const& [key, skip] : skips_) {
        sum += skip.count;
    }
    return sum;
}

bool Tally::isBalanced() const {
    Counts accounted = consumed_;
    for (auto const& [key, skip] : skips_) {
        slot(accounted, key.first) += skip.count;
    }
    accounted.resize(std::max(accounted.size(), met_.size()));
    Counts met = met_;
    met.resize(accounted.size());
    return accounted == met;
}

} // namespace velum::arxml
