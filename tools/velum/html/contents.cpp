#include "html/contents.h"

#include "model/objects.h"

#include <algorithm>
#include <cstdint>
#include <tuple>
#include <unordered_set>
#include <utility>

namespace velum::html {

namespace {

constexpr std::size_t nowhere = static_cast<std::size_t>(-1);

} // namespace

bool isBefore(Entry const& a, Entry const& b) {
    return std::tie(a.package, a.name) < std::tie(b.package, b.name);
}

std::string anchorOf(std::string_view address) {
    constexpr std::string_view digits =
        "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    std::uint64_t hash = 0xCBF29CE484222325U; // FNV-1a
    for (const char c : address) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
    }
    std::string anchor;
    for (int i = 0; i < 7; ++i) {
        anchor += digits[hash % digits.size()];
        hash /= digits.size();
    }
    return anchor;
}

Placed placed(QOB::ClassObject const& object, std::string const& address) {
    const std::string own = model::nameOf(object);
    // A name may have a slash in it.
    if (!own.empty() && address.front() == '/' && address.ends_with("/" + own)) {
        return {address.substr(0, address.size() - own.size() - 1), own};
    }
    const std::size_t slash = address.rfind('/', address.find('#'));
    if (slash == std::string::npos || slash + 1 == address.size()) {
        return {{}, own.empty() ? address : own};
    }
    return {address.substr(0, slash), address.substr(slash + 1)};
}

Contents::Contents(QOB::Model const& model, std::vector<Finding> findings)
    : findings_(std::move(findings)) {
    addEntries(model);
    addLinks();
    addFindings();
}

Entry const* Contents::entryOf(QOB::ClassObject const& object) {
    const std::size_t place = object.get() == nullptr ? nowhere : placeOf(object);
    return place == nowhere ? nullptr : &entries_[place];
}

Entry const* Contents::linkTo(QOB::ClassObject const& object) {
    Entry const* const entry = entryOf(object);
    if (entry != nullptr) {
        linked_.push_back(static_cast<std::size_t>(entry - entries_.data()));
    }
    return entry;
}

Entry const* Contents::entryAt(std::string_view path) const {
    while (!path.empty()) {
        if (const auto found = byPath_.find(path); found != byPath_.end()) {
            return &entries_[found->second];
        }
        path = path.substr(0, path.rfind('/') == std::string_view::npos ? 0 : path.rfind('/'));
    }
    return nullptr;
}

void Contents::addEntries(QOB::Model const& model) {
    for (QOB::ClassObject const& object : model::freeObjects(model)) {
        if (addresses_.around(object).get() != nullptr) {
            continue;
        }
        std::string path = addresses_.of(object);
        auto [package, name] = placed(object, path);
        entries_.push_back({object,
                            std::move(path),
                            std::move(package),
                            std::move(name),
                            model::classOf(object),
                            {}});
    }
    std::stable_sort(entries_.begin(), entries_.end(), isBefore);
    std::unordered_set<std::string> anchors;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        Entry& entry = entries_[i];
        entry.anchor = anchorOf(entry.path);
        while (!anchors.insert(entry.anchor).second) {
            entry.anchor += 'x';
        }
        byObject_.emplace(entry.object.get(), i);
        byPath_.emplace(entry.path, i);
    }
}

std::size_t Contents::placeOf(QOB::ClassObject const& object) {
    const auto known = byObject_.find(object.get());
    if (known != byObject_.end()) {
        return known->second;
    }
    const QOB::ClassObject around = addresses_.around(object);
    const std::size_t place = around.get() == nullptr ? nowhere : placeOf(around);
    byObject_.emplace(object.get(), place);
    return place;
}

void Contents::addLinks() {
    for (std::size_t user = 0; user < entries_.size(); ++user) {
        std::vector<QOB::ClassObject> pending{entries_[user].object};
        std::unordered_set<std::size_t> seen{user};
        std::unordered_set<void const*> parts;
        while (!pending.empty()) {
            const QOB::ClassObject object = pending.back();
            pending.pop_back();
            for (QOB::Attribute const& attribute : addresses_.attributes().of(object)) {
                const bool isWay = attribute.isWayToOwner || attribute.isOtherEnd;
                if (isWay || !(attribute.ownsObjects || attribute.isReference)) {
                    continue;
                }
                for (QOB::Object const& value : attribute.valuesOf(object)) {
                    const QOB::ClassObject target(value);
                    if (target.get() == nullptr) {
                        continue;
                    }
                    const bool isPart =
                        attribute.ownsObjects || addresses_.around(target).get() == object.get();
                    if (isPart) {
                        if (parts.insert(target.get()).second) {
                            pending.push_back(target);
                        }
                    } else if (const std::size_t used = placeOf(target);
                               used != nowhere && seen.insert(used).second) {
                        entries_[user].uses.push_back(used);
                        entries_[used].usedBy.push_back(user);
                    }
                }
            }
        }
    }
}

void Contents::addFindings() {
    for (Finding const& finding : findings_) {
        if (Entry const* const entry = entryAt(finding.path)) {
            entries_[static_cast<std::size_t>(entry - entries_.data())].findings.push_back(
                &finding);
        }
    }
}

} // namespace velum::html
