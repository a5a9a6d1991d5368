#pragma once

#include "dictionary/catalogue.h"
#include "dictionary/import_context.h"

#include <initializer_list>
#include <vector>

namespace velum::dictionary {

/// Finds what references lead to, and reports those that lead nowhere: as a fault if an object
/// lacks something by it, else as a note.
class References {
public:
    References(const ImportContext& context, const Catalogue& catalogue);

    /// The element that a reference leads to, of one of the wanted kinds. Empty, with the reference
    /// skipped, if there is none; a target of another kind than wanted, or than the reference
    /// itself says, is reported.
    arxml::Element target(arxml::Element reference, std::initializer_list<arxml::NameId> wanted);

    /// Whether the reference leads to something, of whatever kind.
    bool leadsSomewhere(arxml::Element reference) const;

    /// Reports that a reference leads to an element of which no object was made, and skips it.
    void reportNoObject(arxml::Element reference, arxml::Element target) const;

    /// Notes the references that lead nowhere and that no object needs.
    void reportRest();

private:
    static constexpr arxml::PathId nowhere = static_cast<arxml::PathId>(-1);
    static constexpr arxml::PathId refused = static_cast<arxml::PathId>(-2);

    void reportLoose() const;
    bool isAccepted(arxml::Element reference,
                    arxml::Element target,
                    std::initializer_list<arxml::NameId> wanted) const;

    ImportContext context_;
    const Catalogue& catalogue_;
    std::vector<arxml::PathId> paths_; // by element: where it leads if it is a reference
    std::vector<bool> isJudged_;       // by element: its target was looked at and reported on
};

} // namespace velum::dictionary
