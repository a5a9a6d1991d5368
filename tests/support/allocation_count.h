#pragma once

#include <cstddef>

namespace VelumTest {

/// How often the program has asked operator new for memory so far. A test looks at the difference
/// around a few statements. Needs allocation_count.cpp in the test program, which replaces
/// operator new.
std::size_t allocationCount() noexcept;
/// How much memory of those requests is in use, by what the allocator gave for them.
std::size_t allocatedBytes() noexcept;

} // namespace VelumTest
