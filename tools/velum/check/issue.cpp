#include "check/issue.h"

#include <algorithm>

namespace velum::check {

std::vector<Rule> const& rules() {
    static const std::vector<Rule> all = {
        {"axis-order", Severity::error, "The points of an axis do not rise."},
        {"constant-limits",
         Severity::warning,
         "A value lies outside the limits of the type that it initializes."},
        {"empty-range",
         Severity::error,
         "The minimum of a range is above the maximum, or equal to it and excluded."},
        {"encoding-mismatch",
         Severity::error,
         "The encoding or the size of a base type contradicts its native declaration."},
        {"limits-beyond-type",
         Severity::warning,
         "The limits of a type include values that its storage cannot hold."},
        {"literal-beyond-type",
         Severity::error,
         "The value of a literal does not fit into the storage of its enumeration."},
        {"mandatory-property",
         Severity::warning,
         "A property without which an object is incomplete has no value."},
        {"no-coefficients",
         Severity::warning,
         "A computation method that computes gives no coefficients."},
        {"shared-value", Severity::warning, "Two literals of one enumeration have the same value."},
        {"size-mismatch",
         Severity::warning,
         "The number of values is not what the dimensions or the axes need."},
        {"unit-mismatch",
         Severity::warning,
         "A type and its computation method have units of different dimensions."},
        {"void-value", Severity::error, "A type of values has a base type without values."},
        {"zero-factor",
         Severity::error,
         "The factor of a unit, or the slope of a fixed point type or of a linear method, is 0."},
    };
    return all;
}

Rule const* findRule(std::string_view id) {
    const auto found = std::find_if(
        rules().begin(), rules().end(), [id](Rule const& rule) { return rule.id == id; });
    return found == rules().end() ? nullptr : &*found;
}

std::string placeText(Issue const& issue) {
    if (!issue.place) {
        return {};
    }
    return issue.hasLine() ? issue.place->file + ":" + std::to_string(issue.place->position.line) +
                                 ":" + std::to_string(issue.place->position.column)
                           : issue.place->file;
}

} // namespace velum::check
