#pragma once

#include "reading/element_store.h"

#include <optional>
#include <string>
#include <vector>

namespace velum::arxml {

/// What stands in the place of a number: system constants and what is computed with them.
struct Formula {
    std::string text;               ///< As the file writes it, with the constants' names.
    std::vector<Element> constants; ///< The references to them.
    bool isConstant = false;        ///< One constant and nothing else.

    /// "the system constant (N)" or "the formula (2 * N)".
    std::string description() const;
};

/// None if the element has no system constants in it.
std::optional<Formula> formulaOf(Element number);

} // namespace velum::arxml
