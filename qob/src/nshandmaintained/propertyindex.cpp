#include "propertyindex.h"

#include <boost/container_hash/hash.hpp>

#include <cstdint>
#include <cstring>

namespace QOB::internal {

namespace {

/// A stored property by which an object owns any number of others.
bool isOwnedList(MetaPropertyDescription const& property) noexcept {
    constexpr unsigned asked = PropertyComposite | PropertyMultiValued | PropertyDerived;
    return (property.flags & asked) == (PropertyComposite | PropertyMultiValued);
}

} // namespace

IntrospectiveMethods const* recordAt(PackageFunction package, unsigned classIndex) noexcept {
    if (package == nullptr) {
        return nullptr;
    }
    PackageIntrospectiveMethods const* const table = package();
    return table != nullptr && classIndex < table->count ? table->classes[classIndex] : nullptr;
}

NSInterface::ClassIntf* classAt(PackageFunction package, unsigned classIndex) noexcept {
    IntrospectiveMethods const* const record = recordAt(package, classIndex);
    return record != nullptr ? castObject<NSInterface::ClassIntf>(record->meta) : nullptr;
}

namespace {

/// A single value can't stand in the place of a list: what is redefined shows other values too.
bool haveSameArity(PropertyBinding const& a, PropertyBinding const& b) noexcept {
    auto const isMultiValued = [](PropertyBinding const& binding) {
        bool const isKnown = binding.methods != nullptr && binding.methods->properties != nullptr;
        MetaPropertyDescription const* const property =
            isKnown ? binding.methods->properties[binding.id] : nullptr;
        return property != nullptr && (property->flags & PropertyMultiValued) != 0;
    };
    return isMultiValued(a) == isMultiValued(b);
}

} // namespace

std::size_t PropertyIndex::Hash::operator()(PropertyBinding const& binding) const noexcept {
    std::size_t seed = 0;
    boost::hash_combine(seed, binding.methods);
    boost::hash_combine(seed, binding.id);
    return seed;
}

// Names of properties differ at their ends or in their length: two words are enough.
std::size_t PropertyIndex::Hash::operator()(std::string_view name) const noexcept {
    constexpr std::uint64_t odd = 0x9E37'79B9'7F4A'7C15;
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
    if (name.size() >= sizeof begin) {
        std::memcpy(&begin, name.data(), sizeof begin);
        std::memcpy(&end, name.data() + name.size() - sizeof end, sizeof end);
    } else {
        for (char const letter : name) {
            begin = begin << 8U | static_cast<unsigned char>(letter);
        }
    }
    std::uint64_t hash = (begin ^ (end + name.size()) * odd) * odd;
    hash = (hash ^ hash >> 32U) * odd;
    return hash ^ hash >> 29U;
}

unsigned& PropertyIndex::generation() noexcept {
    static unsigned current = 0;
    return current;
}

PropertyIndex::PropertyIndex(ClassBinding const& binding) {
    collect(binding);
}

PropertyBinding PropertyIndex::inPlaceOf(PropertyBinding const& property) const noexcept {
    auto const found = byProperty_.find(property);
    return found != byProperty_.end() ? found->second : property;
}

// A class comes before its supers, so that what it declares and redefines is there first.
void PropertyIndex::collect(ClassBinding const& binding) {
    if (binding.methods == nullptr || !kinds_.emplace(binding.methods).second) {
        return;
    }
    for (unsigned id = 1; id <= binding.propertyCount; ++id) {
        MetaPropertyDescription const* const property = binding.methods->properties[id];
        if (property == nullptr) {
            continue;
        }
        PropertyBinding const self{binding.methods, id};
        PropertyBinding const substitute = inPlaceOf(self);
        byProperty_.emplace(self, substitute);
        byName_.emplace(property->name, substitute);
        if (substitute == self && isOwnedList(*property)) {
            ownedLists_.push_back(self);
        }
        for (unsigned i = 0; i != property->redefinedCount; ++i) {
            PropertyReference const& reference = property->redefined[i];
            PropertyBinding const redefined{recordAt(reference.package, reference.classIndex),
                                            reference.propertyId};
            if (haveSameArity(redefined, self)) {
                byProperty_.emplace(redefined, substitute);
            }
        }
    }
    for (SuperReference const* super = binding.methods->supers;
         super != nullptr && super->package != nullptr;
         ++super) {
        if (auto const* const meta = classAt(super->package, super->classIndex)) {
            collect(meta->internal_binding());
        }
    }
}

PropertyBinding const* PropertyIndex::find(std::string_view name) const noexcept {
    auto const found = byName_.find(name);
    return found != byName_.end() ? &found->second : nullptr;
}

PropertyBinding const* PropertyIndex::find(PropertyBinding const& property) const noexcept {
    auto const found = byProperty_.find(property);
    return found != byProperty_.end() ? &found->second : nullptr;
}

bool PropertyIndex::isKindOf(IntrospectiveMethods const* methods) const noexcept {
    return kinds_.contains(methods);
}

} // namespace QOB::internal
