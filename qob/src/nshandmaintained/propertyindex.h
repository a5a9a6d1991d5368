#pragma once

#include "qob/qob/nsinterface/classintf.h"
#include "qob/qob/nsinterface/propertyintf.h"

#include <boost/unordered/unordered_flat_map.hpp>
#include <boost/unordered/unordered_flat_set.hpp>

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

namespace QOB::internal {

/// Where the values of a class's properties are found, its own and the inherited ones, by name and
/// by the record and the id of whoever asks. A redefined property leads to the one that stands in
/// its place. Made of the constant tables of all classes on the way up that are bound.
class PropertyIndex {
public:
    explicit PropertyIndex(ClassBinding const& binding);

    /// Null for a property that the class doesn't have.
    PropertyBinding const* find(std::string_view name) const noexcept;
    PropertyBinding const* find(PropertyBinding const& property) const noexcept;
    /// The lists by which an object owns others, each in its place: those of the class first, then
    /// those of its supers.
    std::vector<PropertyBinding> const& ownedLists() const noexcept { return ownedLists_; }
    /// Whether the class is the one of the record or has it among its supers.
    bool isKindOf(IntrospectiveMethods const* methods) const noexcept;

    /// Grows with each change of what classes there are: an index made before must be made anew.
    static unsigned& generation() noexcept;

private:
    struct Hash {
        using is_avalanching = void;
        std::size_t operator()(PropertyBinding const& binding) const noexcept;
        std::size_t operator()(std::string_view name) const noexcept;
    };

    void collect(ClassBinding const& binding);
    PropertyBinding inPlaceOf(PropertyBinding const& property) const noexcept;

    boost::unordered_flat_map<std::string_view, PropertyBinding, Hash> byName_;
    /// By each property its substitute, mostly itself.
    boost::unordered_flat_map<PropertyBinding, PropertyBinding, Hash> byProperty_;
    std::vector<PropertyBinding> ownedLists_;
    boost::unordered_flat_set<IntrospectiveMethods const*> kinds_;
};

/// The live class of one entry of a package's table; null if there is none.
NSInterface::ClassIntf* classAt(PackageFunction package, unsigned classIndex) noexcept;
/// The record of one entry; null if there is none.
IntrospectiveMethods const* recordAt(PackageFunction package, unsigned classIndex) noexcept;

} // namespace QOB::internal
