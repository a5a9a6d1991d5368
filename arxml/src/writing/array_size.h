#pragma once

#include "writing/element_output.h"

#include <cstddef>
#include <string_view>

namespace velum::arxml {

/// Writes the size of an array: a number, or the formula that stands for a 0.
void writeSize(ElementOutput const& out,
               std::string_view tag,
               types::Matrix const& matrix,
               std::size_t place);

} // namespace velum::arxml
