#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>

namespace velum::arxml {

/// A place in a file; lines and columns count from 1, columns in characters.
struct Position {
    std::uint32_t line = 0;
    std::uint32_t column = 0;

    friend auto operator<=>(Position const&, Position const&) = default;
};

/// Numbers the files of one import in the order they were read.
using FileId = std::uint32_t;

} // namespace velum::arxml
