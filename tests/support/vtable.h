#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <type_traits>

/// Looks at tables of virtual operations as the Itanium C++ ABI lays them out, so that a test can
/// hold a class to an order that other libraries rely on. Slots are counted from 0; a virtual
/// destructor takes two, the second of which also frees the object.
namespace VelumTest {

/// Slot of a virtual operation in the table of the class that declares it. Overloaded operations
/// need a cast to the wanted pointer type. Raises std::logic_error for one that is not virtual.
template <class Member>
requires std::is_member_function_pointer_v<Member> std::size_t slotOf(Member member) {
    struct Representation {
        std::uintptr_t pointer;
        std::uintptr_t adjustment;
    };
    static_assert(sizeof(Member) == sizeof(Representation), "not the Itanium C++ ABI");
    Representation representation{};
    std::memcpy(&representation, &member, sizeof(member));
#if defined(__arm__) || defined(__aarch64__)
    const bool isVirtual = (representation.adjustment & 1U) != 0;
    const std::uintptr_t offset = representation.pointer;
#else
    const bool isVirtual = (representation.pointer & 1U) != 0;
    const std::uintptr_t offset = representation.pointer - 1;
#endif
    if (!isVirtual) {
        throw std::logic_error("The operation is not virtual.");
    }
    return offset / sizeof(void*);
}

/// What stands in a slot of an object's table. Equal for two objects if they share the operation.
/// `object` is a pointer to the class (the sub-object) whose table is meant.
template <class Class>
void const* entryAt(Class const* object, std::size_t slot) {
    static_assert(std::is_polymorphic_v<Class>);
    void const* const* table = nullptr;
    std::memcpy(&table, static_cast<void const*>(object), sizeof(table));
    return table[slot];
}

/// The entry that a call of the operation on this object runs.
template <class Class, class Member>
void const* entryOf(Class const* object, Member member) {
    return entryAt(object, slotOf(member));
}

/// Ends and frees a heap object through the slot that should hold its deleting destructor.
template <class Class>
#if defined(__clang__)
__attribute__((no_sanitize("undefined"))) // the call is not by the destructor's own type
#endif
void destroyThrough(Class* object, std::size_t slot) {
    using Destructor = void (*)(void*);
    void const* const entry = entryAt(object, slot);
    Destructor destructor = nullptr;
    std::memcpy(&destructor, &entry, sizeof(destructor));
    destructor(object);
}

} // namespace VelumTest
