#pragma once

namespace velum::arxml {

/// Stands for the standard input where a file is expected.
inline constexpr char standardInput[] = "-";

} // namespace velum::arxml
