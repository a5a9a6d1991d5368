#include "diff/comparison.h"

#include "diff/contents.h"
#include "diff/renamings.h"
#include "model/metaclasses.h"
#include "model/objects.h"
#include "model/values.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <unordered_set>
#include <utility>

namespace velum::diff {

namespace {

using QOB::ClassObject;
using QOB::Difference;
using QOB::DifferenceKind;
using Values = std::vector<QOB::Object>;

/// The objects of one side that have no partner.
struct LoneObjects {
    std::vector<Lone> objects; ///< With a path, contained in nothing.
    std::vector<Lone> parts;
};

class Comparer {
public:
    Comparer(Sides const& sides, Options const& options)
        : sides_(sides), options_(options), contents_(options.ignored) {}

    Comparison compare(QOB::Model const& left, QOB::Model const& right) {
        for (Difference const& difference : QOB::compare(left, right)) {
            add(difference);
        }
        addLoneParts();
        addLoneObjects();
        auto const byPlace = [](Change const& a, Change const& b) { return a.path < b.path; };
        std::stable_sort(result_.changed.begin(), result_.changed.end(), byPlace);
        result_.sameCount =
            countOf(left) - result_.removed.size() - result_.renamed.size() - changedWithPath();
        return std::move(result_);
    }

private:
    void add(Difference const& difference) {
        switch (difference.kind) {
        case DifferenceKind::Existence:
            addLone(difference);
            break;
        case DifferenceKind::Class:
            addChange(difference,
                      {.property = "class",
                       .kind = ChangeKind::metaclass,
                       .oldValues = {classText(difference.left)},
                       .newValues = {classText(difference.right)}});
            break;
        case DifferenceKind::Values:
        case DifferenceKind::Order:
            addValues(difference);
        }
    }

    static QOB::Object classText(ClassObject const& object) {
        return QOB::Object(QOB::String(std::string(model::classOf(object))));
    }

    void addLone(Difference const& difference) {
        bool const isLeft = difference.left.get() != nullptr;
        ClassObject const object = isLeft ? difference.left : difference.right;
        model::Addresses& side = isLeft ? sides_.left : sides_.right;
        LoneObjects& lone = isLeft ? left_ : right_;
        contents_.add(object, side);
        if (object.hasContainerQOB()) {
            ClassObject const owner = object.getContainerQOB();
            lone.parts.push_back({object,
                                  side.place(object, side.outermost(object)),
                                  side.of(owner) + ' ' + side.owningProperty(object)});
        } else if (std::string const path = model::pathOf(object); !path.empty()) {
            lone.objects.push_back({object, path});
        }
    }

    QOB::Attribute const* attributeOf(Difference const& difference) {
        for (QOB::Attribute const& each : sides_.left.attributes().of(difference.left)) {
            if (each.name == difference.property) {
                return &each;
            }
        }
        return nullptr;
    }

    void addValues(Difference const& difference) {
        QOB::Attribute const* const attribute = attributeOf(difference);
        if (attribute == nullptr || !isOwnFact(*attribute)) {
            return;
        }
        bool const isOrder = difference.kind == DifferenceKind::Order;
        if (attribute->ownsObjects && !isOrder) {
            return; // its parts are told one by one
        }
        bool const isOfObjects =
            !difference.leftValues.empty() &&
            model::kindOf(difference.leftValues.front()) == model::ValueKind::reference;
        if (attribute->isMultiValued && !isOfObjects &&
            difference.leftValues.size() == difference.rightValues.size()) {
            addElements(difference);
            return;
        }
        addChange(difference,
                  {.property = difference.property,
                   .kind = isOrder && isOfObjects ? ChangeKind::order : ChangeKind::value,
                   .isMany = attribute->isMultiValued,
                   .oldValues = difference.leftValues,
                   .newValues = difference.rightValues});
    }

    /// Of lists of the same length each place is told by itself.
    void addElements(Difference const& difference) {
        for (std::size_t i = 0; i != difference.leftValues.size(); ++i) {
            QOB::Object const& left = difference.leftValues[i];
            QOB::Object const& right = difference.rightValues[i];
            if (QOB::toText(left) != QOB::toText(right)) {
                addChange(difference,
                          {.property =
                               std::string(difference.property) + '[' + std::to_string(i + 1) + ']',
                           .kind = ChangeKind::value,
                           .oldValues = {left},
                           .newValues = {right}},
                          difference.property);
            }
        }
    }

    void addChange(Difference const& difference, Change change) {
        std::string const property = change.property;
        addChange(difference, std::move(change), property);
    }
    /// Fills in the place, unless the change isn't asked for.
    void addChange(Difference const& difference, Change change, std::string const& property) {
        bool const isLeft = difference.left.get() != nullptr;
        ClassObject const object = isLeft ? difference.left : difference.right;
        model::Addresses& side = isLeft ? sides_.left : sides_.right;
        ClassObject const whole = side.outermost(object);
        if (options_.ignored.contains(property) || isIgnored(object, side) ||
            !(isWanted(whole) || (difference.right.get() != nullptr &&
                                  isWanted(sides_.right.outermost(difference.right))))) {
            return;
        }
        change.path = side.of(whole);
        change.part = side.place(object, whole);
        result_.changed.push_back(std::move(change));
    }

    /// Whether a property on the way to the object is ignored.
    bool isIgnored(ClassObject const& object, model::Addresses& side) const {
        for (ClassObject part = object; part.get() != nullptr; part = side.around(part)) {
            if (options_.ignored.contains(side.owningProperty(part))) {
                return true;
            }
        }
        return false;
    }

    bool isWanted(ClassObject const& object) const {
        return options_.onlyClass == nullptr ||
               model::isKindOf(model::classOf(object), *options_.onlyClass);
    }

    void addLoneParts() {
        std::vector<bool> isLeftMatched(left_.parts.size());
        std::vector<bool> isRightMatched(right_.parts.size());
        for (auto const& [left, right] : matchContents(left_.parts, right_.parts, contents_)) {
            isLeftMatched[left] = true;
            isRightMatched[right] = true;
            addChange({DifferenceKind::Values, left_.parts[left].object, {}},
                      {.property = "Name",
                       .kind = ChangeKind::renamed,
                       .oldValues = {nameText(left_.parts[left].object)},
                       .newValues = {nameText(right_.parts[right].object)}});
        }
        for (std::size_t i = 0; i != left_.parts.size(); ++i) {
            if (!isLeftMatched[i]) {
                ClassObject const& part = left_.parts[i].object;
                addChange({DifferenceKind::Existence, part, {}},
                          {.kind = ChangeKind::removed, .oldValues = {part}});
            }
        }
        for (std::size_t i = 0; i != right_.parts.size(); ++i) {
            if (!isRightMatched[i]) {
                ClassObject const& part = right_.parts[i].object;
                addChange({DifferenceKind::Existence, {}, part},
                          {.kind = ChangeKind::added, .newValues = {part}});
            }
        }
    }

    static QOB::Object nameText(ClassObject const& object) {
        return QOB::Object(QOB::String(model::nameOf(object)));
    }

    void addLoneObjects() {
        auto const byPath = [](Lone const& a, Lone const& b) { return a.path < b.path; };
        for (LoneObjects* const side : {&left_, &right_}) {
            std::erase_if(side->objects, [&](Lone const& each) { return !isWanted(each.object); });
            std::sort(side->objects.begin(), side->objects.end(), byPath);
        }
        std::unordered_set<void const*> matched;
        for (auto const& [left, right] : matchContents(left_.objects, right_.objects, contents_)) {
            Lone const& from = left_.objects[left];
            Lone const& to = right_.objects[right];
            matched.insert(from.object.get());
            matched.insert(to.object.get());
            result_.renamed.push_back({from.path, to.path, classNameOf(from)});
        }
        for (Lone const& each : left_.objects) {
            if (!matched.contains(each.object.get())) {
                result_.removed.push_back({each.path, classNameOf(each)});
            }
        }
        for (Lone const& each : right_.objects) {
            if (!matched.contains(each.object.get())) {
                result_.added.push_back({each.path, classNameOf(each)});
            }
        }
    }

    static std::string classNameOf(Lone const& lone) {
        return std::string(model::classOf(lone.object));
    }

    /// Of the changed objects those that have a path, which begins with a slash.
    std::size_t changedWithPath() const {
        std::unordered_set<std::string_view> paths;
        for (Change const& change : result_.changed) {
            if (change.path.front() == '/') {
                paths.insert(change.path);
            }
        }
        return paths.size();
    }

    /// How many objects with a path there are to compare.
    std::size_t countOf(QOB::Model const& model) const {
        std::size_t count = 0;
        for (ClassObject const object : model.getRootObjects()) {
            if (!object.hasContainerQOB() && object.hasExternalId() && isWanted(object)) {
                ++count;
            }
        }
        return count;
    }

    Sides const& sides_;
    Options const& options_;
    Contents contents_;
    LoneObjects left_;
    LoneObjects right_;
    Comparison result_;
};

} // namespace

bool isOwnFact(QOB::Attribute const& attribute) {
    QOB::ImmutableProperty const& property = attribute.property;
    return property.get() == nullptr ||
           (!property.isReadOnly() && property.isPrivate() != QOB::Boolean(true));
}

std::size_t Comparison::changedCount() const {
    std::size_t count = 0;
    std::string const* last = nullptr;
    for (Change const& change : changed) {
        count += last == nullptr || *last != change.path ? 1 : 0;
        last = &change.path;
    }
    return count;
}

Comparison compareModels(QOB::Model const& left,
                         QOB::Model const& right,
                         Sides const& sides,
                         Options const& options) {
    return Comparer(sides, options).compare(left, right);
}

} // namespace velum::diff
