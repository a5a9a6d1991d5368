#include "model/addresses.h"

#include "model/objects.h"

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

QOB::ClassObject outermost(QOB::ClassObject const& object) {
    QOB::ClassObject around = object;
    while (around.hasContainerQOB()) {
        around = around.getContainerQOB();
    }
    return around;
}

std::string Addresses::of(QOB::ClassObject const& object) {
    std::string own = pathOf(object);
    if (!own.empty()) {
        return own;
    }
    QOB::ClassObject around = object;
    std::string base;
    while (around.hasContainerQOB() && base.empty()) {
        around = around.getContainerQOB();
        base = pathOf(around);
    }
    if (base.empty()) {
        base = nameOfPathless(around);
    }
    std::string const inside = place(object, around);
    return inside.empty() ? base : base + '#' + inside;
}

std::string Addresses::place(QOB::ClassObject const& object, QOB::ClassObject const& within) {
    std::string text;
    for (QOB::ClassObject part = object; part.get() != within.get() && part.hasContainerQOB();
         part = part.getContainerQOB()) {
        std::string const& step = stepOf(part).text;
        text = text.empty() ? step : step + '/' + text;
    }
    return text;
}

std::string const& Addresses::owningProperty(QOB::ClassObject const& object) {
    static std::string const none;
    return object.hasContainerQOB() ? stepOf(object).property : none;
}

Addresses::Step const& Addresses::stepOf(QOB::ClassObject const& object) {
    if (!steps_.contains(object.get())) {
        addSteps(object.getContainerQOB());
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
    return pathless_[object.get()];
}

} // namespace velum::model
