#pragma once

namespace Zorvane::metamodel::types::NSImplementation {

/// Creates the package in the meta-registry. Then, outside of any transaction, registers every type
/// that a model can hold with the kernel: the value classes, and the iterators and sequences of all
/// types. If anything raises, everything is undone.
void registerTypes();
/// The reverse; empties the clipboard first and skips what isn't registered. Failures are logged,
/// since the library is being unloaded.
void unregisterTypes() noexcept;

} // namespace Zorvane::metamodel::types::NSImplementation
