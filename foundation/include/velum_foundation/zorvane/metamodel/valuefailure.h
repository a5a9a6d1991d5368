#pragma once

namespace Zorvane::metamodel {

/// The text of a failed check in a value class that has no message of its own.
inline constexpr char const* InternalFailure =
    "Internal assertion without a message detected in FTL generated code! Please fix me asap";

} // namespace Zorvane::metamodel
