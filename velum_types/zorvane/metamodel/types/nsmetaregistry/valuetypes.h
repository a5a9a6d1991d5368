#pragma once

namespace Zorvane::metamodel::types::NSImplementation {

/// Enters the six value classes in the kernel's registry of type infos and in its factory of value
/// objects. If one is refused the earlier ones stay: unregisterValueTypes takes out what is there.
void registerValueTypes();
/// The reverse; nothing happens if they are not there.
void unregisterValueTypes() noexcept;

} // namespace Zorvane::metamodel::types::NSImplementation
