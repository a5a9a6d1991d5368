#include "describe/metamodel.h"

#include "describe/registry_reader.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <stdexcept>
#include <utility>

namespace velum::describe {

namespace {

/// Whether a name says "type of package", with as much of the package as there is in the name.
bool names(std::string_view name, Type const& type) {
    const std::string dotted = "." + type.package->name + "." + type.name;
    const std::string ending = "." + std::string(name);
    return dotted.size() >= ending.size() &&
           dotted.compare(dotted.size() - ending.size(), ending.size(), ending) == 0;
}

std::string lowered(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) {
        return static_cast<char>(std::tolower(c));
    });
    return lower;
}

/// How many letters must be changed, added or dropped to make one text of the other.
std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> costs(b.size() + 1);
    std::iota(costs.begin(), costs.end(), 0U);
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = costs[0];
        costs[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t changed = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = costs[j + 1];
            costs[j + 1] = std::min({changed, costs[j] + 1, costs[j + 1] + 1});
        }
    }
    return costs.back();
}

} // namespace

std::vector<Type const*> ancestorsOf(Type const& type) {
    std::vector<Type const*> ancestors;
    std::deque<Type const*> pending(type.supers.begin(), type.supers.end());
    while (!pending.empty()) {
        Type const* const next = pending.front();
        pending.pop_front();
        if (std::find(ancestors.begin(), ancestors.end(), next) == ancestors.end()) {
            ancestors.push_back(next);
            pending.insert(pending.end(), next->supers.begin(), next->supers.end());
        }
    }
    return ancestors;
}

std::vector<Property const*> inheritedFrom(Type const& ancestor, Type const& type) {
    std::vector<Type const*> nearer = ancestorsOf(type);
    nearer.push_back(&type);
    const auto isRedefined = [&nearer](Property const* property) {
        return std::any_of(nearer.begin(), nearer.end(), [property](Type const* below) {
            return std::any_of(
                below->properties.begin(), below->properties.end(), [property](auto const& other) {
                    return std::find(other.redefined.begin(), other.redefined.end(), property) !=
                           other.redefined.end();
                });
        });
    };
    std::vector<Property const*> inherited;
    for (Property const& property : ancestor.properties) {
        if (!isRedefined(&property)) {
            inherited.push_back(&property);
        }
    }
    return inherited;
}

Metamodel::Metamodel() : packages_(readRegistry()) {
}

Type const* Metamodel::find(std::string_view name) const {
    for (auto package = packages_.rbegin(); package != packages_.rend(); ++package) {
        for (Type const& type : package->types) {
            if (names(name, type)) {
                return &type;
            }
        }
    }
    return nullptr;
}

std::vector<std::string> Metamodel::namesLike(std::string_view name) const {
    constexpr std::size_t longest = 100; // no name comes near it, and the work stays small
    constexpr std::size_t most = 5;
    const std::string_view last = name.substr(name.rfind('.') + 1);
    if (last.empty() || last.size() > longest) {
        return {};
    }
    const std::string wanted = lowered(last);
    std::vector<std::pair<std::size_t, std::string>> near;
    for (Package const& package : packages_) {
        for (Type const& type : package.types) {
            const std::string candidate = lowered(type.name);
            const std::size_t apart = distance(wanted, candidate);
            const bool isBegun =
                wanted.size() >= 3 && candidate.compare(0, wanted.size(), wanted) == 0;
            if (isBegun || apart <= candidate.size() / 3) {
                near.emplace_back(apart, type.name);
            }
        }
    }
    std::sort(near.begin(), near.end());
    near.erase(std::unique(near.begin(), near.end()), near.end());
    near.resize(std::min(near.size(), most));
    std::vector<std::string> list;
    list.reserve(near.size());
    for (auto& [apart, candidate] : near) {
        list.push_back(std::move(candidate));
    }
    return list;
}

Package const& Metamodel::package(std::string_view name) const {
    for (Package const& package : packages_) {
        if (package.name == name) {
            return package;
        }
    }
    throw std::logic_error("The meta-registry has no package (" + std::string(name) + ").");
}

} // namespace velum::describe
