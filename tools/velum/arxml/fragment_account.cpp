#include "arxml/fragment_account.h"

namespace velum::arxml {

void FragmentAccount::hold(Fragment::Index element) {
    if (element != Fragment::none) {
        isHeld_[element] = true;
    }
}

void FragmentAccount::settle(report::Tally& tally, report::Reason rest) const {
    defer().settle(tally, rest);
}

void FragmentAccount::skipAll(report::Tally& tally, report::Reason reason) const {
    defer().skipAll(tally, reason);
}

FragmentAccount::Deferred FragmentAccount::defer() const {
    Deferred deferred;
    for (Fragment::Index element = 0; element < fragment_.size(); ++element) {
        (isHeld_[element] ? deferred.held : deferred.rest)
            .push_back({fragment_.name(element), placeOf(element)});
    }
    return deferred;
}

void FragmentAccount::Deferred::settle(report::Tally& tally, report::Reason restReason) const {
    for (const Mention& mention : held) {
        tally.consume(mention.name);
    }
    for (const Mention& mention : rest) {
        tally.skip(mention.name, restReason, mention.place);
    }
}

void FragmentAccount::Deferred::skipAll(report::Tally& tally, report::Reason reason) const {
    for (const Mention& mention : held) {
        tally.skip(mention.name, reason, mention.place);
    }
    for (const Mention& mention : rest) {
        tally.skip(mention.name, reason, mention.place);
    }
}

} // namespace velum::arxml
