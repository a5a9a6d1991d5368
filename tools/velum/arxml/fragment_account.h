#pragma once

#include "arxml/fragment.h"
#include "report/tally.h"

#include <vector>

namespace velum::arxml {

/// An element of a fragment that outlives it.
struct Mention {
    NameId name;
    report::Place place;
};

/// Accounts for the elements of one fragment: some are held by what the fragment becomes, all
/// others are skipped.
class FragmentAccount {
public:
    explicit FragmentAccount(const Fragment& fragment)
        : fragment_(fragment), isHeld_(fragment.size(), false) {}

    /// `Fragment::none` is ignored.
    void hold(Fragment::Index element);

    /// Consumes what is held and skips the rest.
    void settle(report::Tally& tally, report::Reason rest) const;

    /// What is held and the rest, for a decision that has to wait.
    struct Deferred {
        std::vector<Mention> held;
        std::vector<Mention> rest;

        /// Like those of the account, later.
        void settle(report::Tally& tally, report::Reason restReason) const;
        void skipAll(report::Tally& tally, report::Reason reason) const;
    };
    Deferred defer() const;

    /// Skips everything.
    void skipAll(report::Tally& tally, report::Reason reason) const;

private:
    report::Place placeOf(Fragment::Index element) const {
        return {fragment_.position(element), fragment_.path(element)};
    }

    const Fragment& fragment_;
    std::vector<bool> isHeld_;
};

} // namespace velum::arxml
