#pragma once

namespace Zorvane::metamodel {

/// What a value class says where a caller broke a rule that has no words of its own.
inline constexpr char const* InternalFailure =
    "Internal assertion without a message detected in FTL generated code! Please fix me asap";

} // namespace Zorvane::metamodel
