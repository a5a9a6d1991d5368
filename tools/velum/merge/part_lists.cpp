#include "merge/part_lists.h"

#include "model/objects.h"

#include <algorithm>
#include <unordered_set>

namespace velum::merge {

using QOB::ClassObject;
using Values = std::vector<QOB::Object>;
using Keys = std::vector<std::string>;

namespace {

/// The place of a part in the object at a path.
std::string partOf(std::string const& key, std::string const& path) {
    return key.substr(std::min(path.size() + 1, key.size()));
}

std::string namesOf(Side& side, Keys const& keys) {
    std::string all;
    for (std::string const& key : keys) {
        std::string const name = model::nameOf(side.find(key));
        all += (all.empty() ? "" : ", ") + (name.empty() ? key : name);
    }
    return all;
}

} // namespace

void PartLists::add(diff::Change const& change) {
    std::string const key = keyOf(change.path, change.part);
    if (change.kind == diff::ChangeKind::order) {
        lists_.insert({change.path, key, change.property});
        return;
    }
    Side& side = change.kind == diff::ChangeKind::added ? work_.theirs : work_.base;
    addListOf(side, side.find(key), change.path);
}

void PartLists::addListOf(Side& side, ClassObject const& part, std::string const& path) {
    std::string const owner = side.keyOf(side.addresses().around(part));
    if (!isGone(path, owner)) {
        lists_.insert({path, owner, side.addresses().owningProperty(part)});
    }
}

bool PartLists::isGone(std::string const& path, std::string const& key) {
    if (work_.ours.find(key).get() != nullptr) {
        return false;
    }
    Side& base = work_.base;
    ClassObject missing = base.find(key);
    for (ClassObject outer = missing;
         outer.get() != nullptr && work_.ours.find(base.keyOf(outer)).get() == nullptr;
         outer = base.addresses().around(outer)) {
        missing = outer;
    }
    std::string const outermost = base.keyOf(missing);
    if (missing_.insert(outermost).second &&
        work_.isRestored(outermost, path, partOf(outermost, path))) {
        restored_.insert(outermost);
        addListOf(base, missing, path);
    }
    return true;
}

void PartLists::merge() {
    for (List const& list : lists_) {
        mergeList(list);
    }
}

void PartLists::mergeList(List const& list) {
    auto const partsIn = [&list](Side& side) {
        return side.partsOf(side.find(list.owner), list.property);
    };
    ListVersions versions{partsIn(work_.base), partsIn(work_.ours), partsIn(work_.theirs)};
    std::erase_if(versions.theirs, [this](std::string const& key) {
        return work_.alignment.leftKeys.contains(key);
    });
    settle(list, versions);
    MergedList merged = mergeLists(versions);
    if (merged.isAmbiguous &&
        work_.log.add({.kind = ConflictKind::order,
                       .path = list.owner,
                       .property = list.property,
                       .base = namesOf(work_.base, versions.base),
                       .ours = namesOf(work_.ours, versions.ours),
                       .theirs = namesOf(work_.theirs, versions.theirs)}) == Taken::theirs) {
        merged = mergeLists(versions, true);
    }
    setParts(list, merged.names);
}

/// Decides about the parts that one side removed and the other one changed, and about those that
/// both added.
void PartLists::settle(List const& list, ListVersions& versions) {
    std::unordered_set<std::string> const inBase(versions.base.begin(), versions.base.end());
    std::unordered_set<std::string> const inOurs(versions.ours.begin(), versions.ours.end());
    std::unordered_set<std::string> const inTheirs(versions.theirs.begin(), versions.theirs.end());
    for (std::string const& key : versions.base) {
        bool const isRemoved = inOurs.contains(key) && !inTheirs.contains(key);
        if (restored_.contains(key) ||
            (isRemoved && !work_.isRemoved(key, list.path, partOf(key, list.path)))) {
            versions.kept.insert(key);
        }
    }
    for (std::string const& key : versions.theirs) {
        if (!inBase.contains(key) && inOurs.contains(key) && !work_.haveSameContents(key) &&
            work_.isTheirs(ConflictKind::added, key)) {
            work_.replace(key);
        }
    }
}

/// Gives the list of ours these parts: those that it has, and copies of the others.
void PartLists::setParts(List const& list, Keys const& keys) {
    ClassObject const owner = work_.ours.find(list.owner);
    QOB::Attribute const* const attribute = work_.ours.attribute(owner, list.property);
    Values const before = attribute->valuesOf(owner);
    std::unordered_set<void const*> gone;
    for (QOB::Object const& value : before) {
        gone.insert(ClassObject(value).get());
    }
    Values after;
    bool isSame = before.size() == keys.size();
    for (std::string const& key : keys) {
        ClassObject part = work_.ours.find(key);
        if (gone.erase(part.get()) == 0) {
            work_.add(key);
            part = work_.ours.find(key);
        }
        isSame = isSame && ClassObject(before[after.size()]).get() == part.get();
        after.emplace_back(part);
    }
    if (isSame) {
        return;
    }
    setValues(owner, *attribute, after);
    for (QOB::Object const& value : before) {
        if (gone.contains(ClassObject(value).get())) {
            work_.removals.add(ClassObject(value));
            ++work_.count;
        }
    }
}

} // namespace velum::merge
