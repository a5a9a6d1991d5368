#pragma once

namespace Zorvane::metamodel::types::NSImplementation {

/// Makes the metamodel package with the elements of the six value classes and enters the classes
/// in the kernel's registry of type infos and in its factory of value objects. Raises
/// QOB::Exception if a name is taken; unregisterValueTypes then takes back what was done.
void registerValueTypes();
/// The reverse; nothing happens to what is not there. What fails is logged: the library is ending.
void unregisterValueTypes() noexcept;

} // namespace Zorvane::metamodel::types::NSImplementation
