#include "model/addresses.h"

#include "model/objects.h"

#include <algorithm>
#include <functional>

namespace velum::model {

namespace {

/// A name as part of a place, where "/" and "[" have a meaning.
std::string escaped(std::string_view name) {
    constexpr std::string_view special = "~/[";
    std::string text;
    for (char const c : name) {
        std::size_t const found = special.find(c);
        if (found == std::string_view::npos) {
            text += c;
        } else {
            text += '~' + std::to_string(found);
        }
    }
    return text;
}

bool isOlder(QOB::ClassObject const& a, QOB::ClassObject const& b) {
    int const aId = a.getObjectId();
    int const bId = b.getObjectId();
    return aId != bId ? aId < bId : std::less<>()(a.get(), b.get());
}

/// Whether objects contain each other and this one is where the way outwards is taken to end: the
/// oldest of them.
bool closesCircle(QOB::ClassObject const& object) {
    bool isOldest = true;
    void const* mark = nullptr; // of a circle further out
    std::size_t steps = 0;
    for (QOB::ClassObject outer = object.getContainerQOB(); outer.get() != object.get();
         outer = outer.getContainerQOB()) {
        if (!outer.hasContainerQOB() || outer.get() == mark) {
            return false;
        }
        isOldest = isOldest && isOlder(object, outer);
        ++steps;
        mark = (steps & (steps - 1)) == 0 ? outer.get() : mark;
    }
    return isOldest;
}

/// Numbers the names that several objects share, and the empty ones.
class Numbers {
public:
    void count(std::string const& name) { ++total_[name]; }
    std::string textOf(std::string const& name) {
        bool const isAlone = !name.empty() && total_[name] == 1;
        return isAlone ? std::string() : '[' + std::to_string(++used_[name]) + ']';
    }

private:
    std::unordered_map<std::string, int> total_;
    std::unordered_map<std::string, int> used_;
};

} // namespace

std::string Addresses::of(QOB::ClassObject const& object) {
    std::string base = pathOf(object);
    QOB::ClassObject outer = object;
    while (base.empty()) {
        QOB::ClassObject const next = around(outer);
        if (next.get() == nullptr) {
            base = nameOfPathless(outer);
        } else {
            outer = next;
            base = pathOf(outer);
        }
    }
    std::string const inside = place(object, outer);
    return inside.empty() ? base : base + '#' + inside;
}

QOB::ClassObject Addresses::containerOf(QOB::ClassObject const& object) {
    return object.hasContainerQOB() && !closesCircle(object) ? object.getContainerQOB()
                                                             : QOB::ClassObject();
}

bool Addresses::isPart(QOB::Attribute const& attribute,
                       QOB::ClassObject const& value,
                       QOB::ClassObject const& owner) {
    return attribute.ownsObjects && containerOf(value).get() == owner.get();
}

QOB::ClassObject Addresses::around(QOB::ClassObject const& object) {
    if (object.hasContainerQOB()) {
        return containerOf(object);
    }
    if (object.hasExternalId() || !nameOf(object).empty()) {
        return {};
    }
    findUsers(object.getModelQOB());
    auto const found = users_.find(object.get());
    return found != users_.end() ? found->second : QOB::ClassObject();
}

QOB::ClassObject Addresses::outermost(QOB::ClassObject const& object) {
    QOB::ClassObject outer = object;
    for (QOB::ClassObject next = around(outer); next.get() != nullptr; next = around(outer)) {
        outer = next;
    }
    return outer;
}

std::string Addresses::place(QOB::ClassObject const& object, QOB::ClassObject const& within) {
    std::string text;
    for (QOB::ClassObject part = object;
         part.get() != within.get() && around(part).get() != nullptr;
         part = around(part)) {
        text.insert(0, text.empty() ? "" : "/").insert(0, stepOf(part).text);
    }
    return text;
}

std::string const& Addresses::owningProperty(QOB::ClassObject const& object) {
    static std::string const none;
    return around(object).get() != nullptr ? stepOf(object).property : none;
}

// Goes from the objects with a path or a name to what they contain and refer to, so that no two
// objects belong to each other.
void Addresses::findUsers(QOB::Model const& model) {
    if (areUsersFound_) {
        return;
    }
    areUsersFound_ = true;
    std::vector<QOB::ClassObject> pending = freeObjects(model);
    std::erase_if(pending, [](QOB::ClassObject const& each) {
        return !each.hasExternalId() && nameOf(each).empty();
    });
    std::reverse(pending.begin(), pending.end());
    std::vector<QOB::ClassObject> reached;
    while (!pending.empty()) {
        QOB::ClassObject const user = pending.back();
        pending.pop_back();
        reached.clear();
        addUses(user, reached);
        pending.insert(pending.end(), reached.rbegin(), reached.rend());
    }
}

void Addresses::addUses(QOB::ClassObject const& user, std::vector<QOB::ClassObject>& reached) {
    for (QOB::Attribute const& attribute : attributes_.of(user)) {
        bool const isWay = attribute.isWayToOwner || attribute.isOtherEnd;
        if (isWay || !(attribute.ownsObjects || attribute.isReference)) {
            continue;
        }
        int place = 0;
        for (QOB::Object const& value : attribute.valuesOf(user)) {
            QOB::ClassObject const target(value);
            ++place;
            if (isPart(attribute, target, user)) {
                reached.push_back(target);
            } else if (target.isValid() && !target.hasExternalId() && !target.hasContainerQOB() &&
                       nameOf(target).empty() && users_.emplace(target.get(), user).second) {
                std::string const property(attribute.name);
                std::string const number = '[' + std::to_string(place) + ']';
                steps_.emplace(
                    target.get(),
                    Step{property, attribute.isMultiValued ? property + number : property});
                reached.push_back(target);
            }
        }
    }
}

Addresses::Step const& Addresses::stepOf(QOB::ClassObject const& object) {
    if (!steps_.contains(object.get())) {
        addSteps(around(object));
    }
    // What no property owns stands in its container by class.
    return steps_.emplace(object.get(), Step{{}, std::string(classOf(object))}).first->second;
}

void Addresses::addSteps(QOB::ClassObject const& owner) {
    for (QOB::Attribute const& attribute : attributes_.of(owner)) {
        if (!attribute.ownsObjects) {
            continue;
        }
        std::string const property(attribute.name);
        std::vector<QOB::Object> const values = attribute.valuesOf(owner);
        Numbers numbers;
        for (QOB::Object const& value : values) {
            numbers.count(nameOf(QOB::ClassObject(value)));
        }
        for (QOB::Object const& value : values) {
            QOB::ClassObject const part(value);
            std::string text = property;
            if (attribute.isMultiValued) {
                std::string const name = nameOf(part);
                text += (name.empty() ? "" : "/" + escaped(name)) + numbers.textOf(name);
            }
            steps_.emplace(part.get(), Step{property, std::move(text)});
        }
    }
}

std::string const& Addresses::nameOfPathless(QOB::ClassObject const& object) {
    if (!pathless_.contains(object.get())) {
        std::vector<QOB::ClassObject> all = freeObjects(object.getModelQOB());
        std::erase_if(all, [](QOB::ClassObject const& each) { return !pathOf(each).empty(); });
        Numbers numbers;
        auto const nameIn = [](QOB::ClassObject const& each) {
            std::string const name = nameOf(each);
            return '#' + std::string(classOf(each)) + (name.empty() ? "" : "/" + escaped(name));
        };
        for (QOB::ClassObject const& each : all) {
            numbers.count(nameIn(each));
        }
        for (QOB::ClassObject const& each : all) {
            std::string const name = nameIn(each);
            pathless_.emplace(each.get(), name + numbers.textOf(name));
        }
    }
    // What contains itself isn't free.
    return pathless_
        .try_emplace(object.get(),
                     '#' + std::string(classOf(object)) + "[circle " +
                         std::to_string(pathless_.size()) + ']')
        .first->second;
}

} // namespace velum::model
