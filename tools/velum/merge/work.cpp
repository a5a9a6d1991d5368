#include "merge/work.h"

#include "diff/contents.h"
#include "diff/printers.h"

#include <utility>

namespace velum::merge {

using QOB::ClassObject;
using Values = std::vector<QOB::Object>;

namespace {

diff::Comparison comparisonOf(Side& left, Side& right) {
    diff::Sides const sides{left.addresses(), right.addresses()};
    return diff::compareModels(left.model(), right.model(), sides, {});
}

} // namespace

Work::Work(QOB::Model const& baseModel,
           QOB::Model const& ourModel,
           QOB::Model const& theirModel,
           Alignment const& aligned,
           ConflictLog& conflicts)
    : base(baseModel),
      ours(ourModel),
      theirs(theirModel),
      alignment(aligned),
      log(conflicts),
      oursDiff(comparisonOf(base, ours)),
      theirsDiff(comparisonOf(base, theirs)),
      ourChanges(oursDiff, alignment.keptKeys),
      theirChanges(theirsDiff, {}),
      copies(theirs, ours),
      removals(base, ours, log),
      count(alignment.count) {
}

std::string Work::text(Side& side, std::string const& key) {
    ClassObject const object = side.find(key);
    return object.get() == nullptr ? "nothing" : diff::partText(object, side.addresses());
}

bool Work::haveSameContents(std::string const& key) {
    std::set<std::string> const none;
    diff::Contents contents(none);
    contents.add(ours.find(key), ours.addresses());
    contents.add(theirs.find(key), theirs.addresses());
    return contents.of(ours.find(key)) == contents.of(theirs.find(key));
}

bool Work::isTheirs(ConflictKind kind, std::string const& key) {
    return log.add({.kind = kind,
                    .path = key,
                    .base = text(base, key),
                    .ours = text(ours, key),
                    .theirs = text(theirs, key)}) == Taken::theirs;
}

bool Work::isRemoved(std::string const& key, std::string const& path, std::string_view part) {
    return !ourChanges.isChanged(path, part) || log.add({.kind = ConflictKind::removed,
                                                         .path = key,
                                                         .base = text(base, key),
                                                         .ours = ourChanges.namesOf(path, part),
                                                         .theirs = "nothing"}) == Taken::theirs;
}

bool Work::isRestored(std::string const& key, std::string const& path, std::string_view part) {
    return log.add({.kind = ConflictKind::removed,
                    .path = key,
                    .base = text(base, key),
                    .ours = "nothing",
                    .theirs = theirChanges.namesOf(path, part)}) == Taken::theirs;
}

void Work::add(std::string const& key) {
    copies.copy(theirs.find(key));
    ++count;
}

void Work::replace(std::string const& key) {
    ClassObject const old = ours.find(key);
    ClassObject const made = copies.copy(theirs.find(key));
    if (old.hasContainerQOB()) {
        ClassObject const owner = old.getContainerQOB();
        QOB::Attribute const& attribute =
            *ours.attribute(owner, ours.addresses().owningProperty(old));
        Values values = attribute.valuesOf(owner);
        for (QOB::Object& value : values) {
            value = ClassObject(value).get() == old.get() ? QOB::Object(made) : value;
        }
        setValues(owner, attribute, values);
    }
    removals.add(old);
    ++count;
}

void Work::setReferences() {
    copies.link([this](ClassObject const& target, ClassObject const& user) {
        return findMissing(target, user);
    });
}

Values Work::translated(Values const& values, ClassObject const& user) {
    return copies.translated(
        values, user, [this](ClassObject const& target, ClassObject const& from) {
            return findMissing(target, from);
        });
}

/// What theirs refers to and ours removed. A whole object can come back.
ClassObject Work::findMissing(ClassObject const& target, ClassObject const& user) {
    std::string const& key = theirs.keyOf(target);
    if (!missing_.insert(key).second) {
        return {};
    }
    bool const isBack = log.add({.kind = ConflictKind::removed,
                                 .path = key,
                                 .base = text(base, key),
                                 .ours = "nothing",
                                 .theirs = "used by " + theirs.keyOf(user)}) == Taken::theirs;
    return isBack && !target.hasContainerQOB() ? copies.copy(target) : ClassObject();
}

} // namespace velum::merge
