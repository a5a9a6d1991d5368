#pragma once

#include "updating/renaming.h"
#include "updating/written_elements.h"

#include <optional>
#include <qob/qob/attributes.h>
#include <qob/qob/compare.h>
#include <string>
#include <vector>

namespace velum::arxml {

/// One line of text for a difference.
std::string lineOf(QOB::Difference const& difference);

/// Compares what a reader makes of a changed document with the model that it was changed for.
class Verification {
public:
    /// The elements and the renamings are referred to. Objects may still have the external ids that
    /// they had before the renamings.
    Verification(WrittenElements const& wanted, Renamings const& renamings)
        : wanted_(wanted), renamings_(renamings) {}

    struct Mismatch {
        std::string path; ///< of the element
        std::string what; ///< The path, or a difference of its objects that no element tells.
    };

    /// The first one of the elements at these paths that isn't as the model has it; none if all
    /// are.
    std::optional<Mismatch> mismatch(QOB::Model const& got, std::vector<std::string> const& paths);

private:
    std::string hiddenDifference(WrittenElements const& got, std::string const& path);
    bool isMirror(QOB::Difference const& difference);
    bool areSame(WrittenElements const& got, QOB::Difference const& difference) const;
    bool isNamedAfterPart(QOB::ClassObject const& got, QOB::ClassObject const& wanted) const;
    bool areOneObject(WrittenElements const& got, QOB::Object const& a, QOB::Object const& b) const;
    std::string idAfter(std::string const& id) const;

    WrittenElements const& wanted_;
    Renamings const& renamings_;
    QOB::Attributes attributes_;
};

} // namespace velum::arxml
