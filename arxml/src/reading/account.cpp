#include "reading/account.h"

namespace velum::arxml {

void Account::consume(Element element) {
    if (element) {
        fates_[element.index()] = consumed;
    }
}

void Account::skip(Element element, Reason reason) {
    if (element && fates_[element.index()] != consumed) {
        fates_[element.index()] =
            static_cast<std::uint8_t>(skipped + static_cast<unsigned>(reason));
    }
}

std::optional<Reason> Account::markedReason(Element element) const {
    if (!element || fates_[element.index()] < skipped) {
        return std::nullopt;
    }
    return static_cast<Reason>(fates_[element.index()] - skipped);
}

void Account::settle() {
    for (ElementStore::Index i = store_.size(); i-- > 0;) {
        const Element parent = store_.at(i).parent();
        if (fates_[i] == consumed && parent && fates_[parent.index()] == open) {
            fates_[parent.index()] = consumed;
        }
    }
    for (ElementStore::Index i = 0; i < store_.size(); ++i) {
        if (fates_[i] != open) {
            continue;
        }
        const Element parent = store_.at(i).parent();
        const std::uint8_t above = parent ? fates_[parent.index()] : open;
        fates_[i] = above >= skipped
                        ? above
                        : static_cast<std::uint8_t>(
                              skipped + static_cast<unsigned>(above == consumed ? Reason::noProperty
                                                                                : Reason::noClass));
    }
    for (Twins const& twins : twins_) {
        for (ElementStore::Index i = twins.tree.index(); i < twins.tree.end(); ++i) {
            fates_[i] = fates_[twins.twin.index() + (i - twins.tree.index())];
        }
    }
}

std::optional<Reason> Account::reason(ElementStore::Index index) const {
    if (fates_[index] == consumed) {
        return std::nullopt;
    }
    return static_cast<Reason>(fates_[index] - skipped);
}

} // namespace velum::arxml
