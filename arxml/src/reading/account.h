#pragma once

#include "reading/element_store.h"

#include <cstdint>
#include <optional>
#include <vector>
#include <velum_arxml/findings/reason.h>

namespace velum::arxml {

/// What becomes of each element of a store: consumed, or skipped for a reason.
///
/// Importers mark what they take and what they refuse. What is left follows by one rule: an element
/// around a consumed one is consumed too, as the way to it; any other shares the reason of the
/// element around it, or has no property in an object, or no class where there is no object.
class Account {
public:
    explicit Account(ElementStore const& store) : store_(store), fates_(store.size(), open) {}

    /// Empty elements are ignored. What was skipped before is consumed now, but not the other way.
    void consume(Element element);
    void skip(Element element, Reason reason);

    /// The reason that the element itself was marked with; none if it was not.
    std::optional<Reason> markedReason(Element element) const;

    /// The whole tree shares the fate of another one with equal content, element by element.
    void shareFate(Element tree, Element twin) { twins_.push_back({tree, twin}); }

    /// Decides what is left; to be called once, when all is marked.
    void settle();

    /// Of a settled account: why the element was skipped; none if it was consumed.
    std::optional<Reason> reason(ElementStore::Index index) const;

private:
    static constexpr std::uint8_t open = 0;
    static constexpr std::uint8_t consumed = 1;
    static constexpr std::uint8_t skipped = 2; // and above: the reason is added

    struct Twins {
        Element tree;
        Element twin;
    };

    ElementStore const& store_;
    std::vector<std::uint8_t> fates_; // by element
    std::vector<Twins> twins_;
};

} // namespace velum::arxml
