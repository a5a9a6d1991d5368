#pragma once

#include "qob/qob/visitor.h"

#include <array>
#include <span>

namespace QOB {

/// Which of a metaclass's two handles is meant.
constexpr char const*
handleName(bool immutable, char const* immutableName, char const* mutableName) noexcept {
    return immutable ? immutableName : mutableName;
}

/// The dotted names of a metaclass's two handles, and the function that returns its identity.
struct HandleNames {
    char const* immutableName;
    char const* mutableName;
    CooperativeVisitor::internal::ClassInfo const& (*classInfo)();
};

/// The names of a metaclass's iterators, then of its sequences.
using SequenceFamily = std::array<char const*, 8>;
/// The same for a data type.
using ValueSequenceFamily = std::array<char const*, 4>;

/// Registers both names of each class for visitors, in the order given.
inline void bindHandleNames(std::span<HandleNames const> classes) {
    for (HandleNames const& each : classes) {
        CooperativeVisitor::internal::BindTagToName(each.immutableName, each.classInfo());
        CooperativeVisitor::internal::BindTagToName(each.mutableName, each.classInfo());
    }
}

} // namespace QOB
