#include "merge/merge.h"

#include "diff/printers.h"
#include "merge/part_lists.h"
#include "model/values.h"

#include <algorithm>
#include <set>
#include <utility>

namespace velum::merge {

namespace {

using diff::Change;
using diff::ChangeKind;
using QOB::ClassObject;
using Values = std::vector<QOB::Object>;

/// A view of a model in a deviant of its own.
class Branch {
public:
    explicit Branch(QOB::Model const& model)
        : model_(model), view_(model.inDeviant(model.createDeviant())) {}
    ~Branch() { model_.removeDeviant(view_.getDeviant()); }
    Branch(Branch const&) = delete;
    Branch& operator=(Branch const&) = delete;
    Branch(Branch&&) = delete;
    Branch& operator=(Branch&&) = delete;

    QOB::Model const& view() const { return view_; }
    void merge() const { model_.mergeDeviant(view_.getDeviant()); }

private:
    QOB::Model model_;
    QOB::Model view_;
};

/// Makes the changes of theirs in ours. All names are aligned.
class Merger {
public:
    explicit Merger(Work& work) : work_(work), lists_(work) {}

    void merge() {
        takeRemoved();
        takeAdded();
        for (Change const& change : work_.theirsDiff.changed) {
            takeChanged(change);
        }
        lists_.merge();
        work_.setReferences();
        for (Change const* const change : values_) {
            takeValue(*change);
        }
        work_.setReferences();
        work_.count -= work_.removals.finish();
    }

private:
    void takeRemoved() {
        std::vector<std::string> paths;
        for (diff::Single const& each : work_.theirsDiff.removed) {
            paths.push_back(each.path);
        }
        for (diff::Renaming const& each : work_.theirsDiff.renamed) { // the new name is taken
            paths.push_back(each.from);
        }
        for (std::string const& path : paths) {
            ClassObject const object = work_.ours.find(path);
            if (object.get() != nullptr && work_.isRemoved(path, path, {})) {
                work_.removals.add(object);
                ++work_.count;
            }
        }
    }

    void takeAdded() {
        std::vector<std::string> paths;
        for (diff::Single const& each : work_.theirsDiff.added) {
            paths.push_back(each.path);
        }
        for (diff::Renaming const& each : work_.theirsDiff.renamed) {
            paths.push_back(each.to);
        }
        for (std::string const& path : paths) {
            bool const isThere = work_.ours.find(path).get() != nullptr;
            if (work_.alignment.leftKeys.contains(path)) {
                continue;
            }
            if (!isThere) {
                work_.add(path);
            } else if (!work_.haveSameContents(path) && work_.isTheirs(ConflictKind::added, path)) {
                work_.replace(path);
            }
        }
    }

    void takeChanged(Change const& change) {
        if (settled_.contains(change.path)) {
            return;
        }
        std::string const& path = change.path;
        std::string const key = keyOf(path, change.part);
        bool const isClass = change.kind == ChangeKind::metaclass;
        if (work_.ours.find(path).get() == nullptr) {
            settled_.insert(path);
            if (work_.isRestored(path, path, {})) {
                work_.add(path);
            }
        } else if ((isClass && change.part.empty()) || work_.ourChanges.hasOtherClass(path, {})) {
            settled_.insert(path);
            takeClass(path, path, {});
        } else if (isOfParts(change)) {
            lists_.add(change);
        } else if (!lists_.isGone(path, key)) {
            if (isClass || work_.ourChanges.hasOtherClass(path, change.part)) {
                takeClass(key, path, change.part);
            } else {
                values_.push_back(&change);
            }
        }
    }

    void takeClass(std::string const& key, std::string const& path, std::string_view part) {
        if (!work_.ourChanges.isChanged(path, part) ||
            (!work_.haveSameContents(key) && work_.isTheirs(ConflictKind::metaclass, key))) {
            work_.replace(key);
        }
    }

    bool isOfParts(Change const& change) {
        if (change.kind != ChangeKind::order) {
            return change.kind != ChangeKind::value && change.kind != ChangeKind::metaclass;
        }
        ClassObject const owner = work_.base.find(keyOf(change.path, change.part));
        QOB::Attribute const* const attribute = work_.base.attribute(owner, change.property);
        return attribute != nullptr && attribute->ownsObjects;
    }

    void takeValue(Change const& change) {
        std::string const key = keyOf(change.path, change.part);
        ClassObject const theirs = work_.theirs.find(key);
        ClassObject const ours = work_.ours.find(key);
        std::string const list(listName(change.property));
        QOB::Attribute const* const attribute = work_.ours.attribute(ours, list);
        Values const theirValues = work_.theirs.valuesOf(theirs, list);
        Values const ourValues = attribute->valuesOf(ours);
        if (work_.ourChanges.isChanged(change)) {
            auto const text = [](Values const& values, Side& side) {
                return diff::valuesText(values, side.addresses());
            };
            ClassObject const base = work_.base.find(key);
            if (textsOf(ourValues, work_.ours) == textsOf(theirValues, work_.theirs) ||
                work_.log.add({.kind = change.kind == ChangeKind::order ? ConflictKind::order
                                                                        : ConflictKind::value,
                               .path = key,
                               .property = change.property,
                               .base = text(work_.base.valuesOf(base, list), work_.base),
                               .ours = text(ourValues, work_.ours),
                               .theirs = text(theirValues, work_.theirs)}) != Taken::theirs) {
                return;
            }
        }
        ++work_.count;
        if (attribute->reader != nullptr) {
            copyNotes(theirs, ours);
            return;
        }
        Values values = work_.translated(theirValues, theirs);
        if (list.size() != change.property.size() && values.size() == ourValues.size()) {
            values = withElement(change.property, values, ourValues);
        }
        setValues(ours, *attribute, values);
        copyHidden(theirs, ours);
        if (values.empty() && !attribute->valuesOf(ours).empty()) {
            replaceFilled(change);
        }
    }

    /// A mandatory property can't be cleared again: only a new object has none of its values.
    void replaceFilled(Change const& change) {
        std::string const key = keyOf(change.path, change.part);
        if (!work_.ourChanges.isChanged(change.path, change.part) ||
            work_.isTheirs(ConflictKind::value, key)) {
            work_.replace(key);
        }
    }

    static std::vector<std::string> textsOf(Values const& values, Side& side) {
        std::vector<std::string> texts;
        for (QOB::Object const& value : values) {
            texts.push_back(model::textOf(value, side.addresses()));
        }
        return texts;
    }

    /// Our list with their value at the one place that the change is about: "V[4]".
    static Values withElement(std::string const& property, Values const& theirs, Values ours) {
        std::size_t const place = std::stoul(property.substr(property.find('[') + 1)) - 1;
        ours.at(place) = theirs.at(place);
        return ours;
    }

    /// Private properties follow those that a user sees, and no change names them.
    void copyHidden(ClassObject const& theirs, ClassObject const& ours) {
        for (QOB::Attribute const& each : work_.theirs.addresses().attributes().of(theirs)) {
            if (each.reader == nullptr && !diff::isOwnFact(each) && !each.property.isReadOnly()) {
                setValues(ours, each, each.valuesOf(theirs));
            }
        }
    }

    Work& work_;
    PartLists lists_;
    std::vector<Change const*> values_;
    std::set<std::string> settled_; ///< Objects about which all is decided.
};

} // namespace

bool Outcome::isMerged() const {
    return std::none_of(conflicts.begin(), conflicts.end(), [](Conflict const& each) {
        return each.taken == Taken::neither;
    });
}

Outcome mergeModels(QOB::Model const& base,
                    QOB::Model const& ours,
                    QOB::Model const& theirs,
                    Resolutions const& resolutions) {
    Branch const ofBase(base);
    Branch const ofOurs(ours);
    Branch const ofTheirs(theirs);
    ConflictLog log(resolutions);
    Alignment const alignment = alignNames(ofBase.view(), ofOurs.view(), ofTheirs.view(), log);
    Outcome outcome;
    {
        Work work(ofBase.view(), ofOurs.view(), ofTheirs.view(), alignment, log);
        Merger(work).merge();
        outcome.changeCount = work.count;
    }
    outcome.conflicts = log.take();
    if (outcome.isMerged()) {
        ofOurs.merge();
    }
    return outcome;
}

} // namespace velum::merge
