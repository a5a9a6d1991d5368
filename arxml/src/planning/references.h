#pragma once

#include "planning/catalogue.h"
#include "planning/import_context.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace velum::arxml {

/// Finds what references lead to, and reports those that lead nowhere: as a fault if an object
/// lacks something by it, else as a note.
class References {
public:
    References(ImportContext const& context, Catalogue const& catalogue);

    /// The element that a reference leads to, of one of the wanted kinds. Empty, with the reference
    /// skipped, if there is none; a target of another kind than wanted, or than the reference
    /// itself says, is reported.
    Element target(Element reference, std::initializer_list<NameId> wanted);

    /// The path that a reference asks for, also if nothing is there.
    std::string pathFor(Element reference) const;

    /// Whether the reference leads to something, of whatever kind.
    bool leadsSomewhere(Element reference) const;

    /// Reports that a reference leads to an element of which no object was made, and skips it.
    void reportNoObject(Element reference, Element target) const;

    /// Notes the references that lead nowhere and that no object needs.
    void reportRest();

private:
    static constexpr PathId nowhere = static_cast<PathId>(-1);
    static constexpr PathId refused = static_cast<PathId>(-2);

    void reportLoose() const;
    bool isAccepted(Element reference, Element target, std::initializer_list<NameId> wanted) const;

    ImportContext context_;
    Catalogue const& catalogue_;
    std::vector<PathId> paths_;  // by element: where it leads if it is a reference
    std::vector<bool> isJudged_; // by element: its target was looked at and reported on
};

} // namespace velum::arxml
