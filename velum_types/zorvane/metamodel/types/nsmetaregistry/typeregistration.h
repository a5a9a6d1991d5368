#pragma once

namespace Zorvane::metamodel::types::NSImplementation {

/// Makes the package live in the meta-registry and then, outside of any transaction, enters every
/// type that a model can hold in the kernel's registry of type infos: the value classes, and the
/// iterators and sequences of all types. What raises leaves nothing behind.
void registerTypes();
/// The reverse, once the clipboard is empty; nothing happens to what is not there. What fails is
/// logged: the library is ending.
void unregisterTypes() noexcept;

} // namespace Zorvane::metamodel::types::NSImplementation
