#pragma once

namespace velum::commands {

/// What the program ends with.
enum ExitCode { done = 0, inputAtFault = 1, wrongUsage = 2, failed = 3 };

} // namespace velum::commands
