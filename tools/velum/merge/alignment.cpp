#include "merge/alignment.h"

#include "diff/comparison.h"
#include "merge/side.h"
#include "model/objects.h"
#include "model/values.h"

#include <map>
#include <utility>
#include <velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundationnamedelement.h>

namespace velum::merge {

namespace {

using QOB::ClassObject;

/// Gives objects of one side other names and paths.
class Renamer {
public:
    explicit Renamer(QOB::Model const& model) : side_(model) {
        for (ClassObject const& object : allObjects(model)) {
            if (std::string const path = model::pathOf(object); !path.empty()) {
                byPath_.emplace(path, object);
            }
        }
    }

    Side& side() { return side_; }

    /// The path of what is below the object follows.
    void rename(ClassObject const& object, std::string const& name, std::string const& path) {
        Zorvane::metamodel::foundation::NamedElement(object).setName(QOB::String(name));
        std::string const old = model::pathOf(object);
        if (old.empty()) {
            return;
        }
        object.setExternalId(QOB::String(path));
        std::string const folder = old + '/';
        for (auto each = byPath_.lower_bound(folder);
             each != byPath_.end() && each->first.compare(0, folder.size(), folder) == 0;
             ++each) {
            each->second.setExternalId(QOB::String(path + each->first.substr(old.size())));
        }
    }

private:
    Side side_;
    std::multimap<std::string, ClassObject> byPath_;
};

/// The new name of something: of an object its path, of a part its name alone.
struct NewName {
    bool isPart;
    std::string text;

    friend bool operator==(NewName const&, NewName const&) = default;
};

class Aligner {
public:
    Aligner(QOB::Model const& base,
            QOB::Model const& ours,
            QOB::Model const& theirs,
            ConflictLog& log)
        : base_(base), ours_(ours), theirs_(theirs), log_(log) {}

    Alignment align() {
        auto const ofOurs = namesFrom(ours_);
        auto const ofTheirs = namesFrom(theirs_);
        for (auto const& [key, name] : ofTheirs) {
            auto const found = ofOurs.find(key);
            if (found == ofOurs.end()) {
                takeTheirs(key, name);
            } else {
                takeBoth(key, found->second, name);
            }
        }
        for (auto const& [key, name] : ofOurs) {
            if (!ofTheirs.contains(key)) {
                takeOurs(key, name);
            }
        }
        return std::move(result_);
    }

private:
    using NewNames = std::map<std::string, NewName>;

    NewNames namesFrom(Renamer& changed) {
        diff::Sides const sides{base_.side().addresses(), changed.side().addresses()};
        diff::Comparison const comparison =
            diff::compareModels(base_.side().model(), changed.side().model(), sides, {});
        NewNames names;
        for (diff::Renaming const& each : comparison.renamed) {
            names.emplace(each.from, NewName{false, each.to});
        }
        for (diff::Change const& each : comparison.changed) {
            if (each.kind == diff::ChangeKind::renamed) {
                std::string const name(QOB::String(each.newValues.front()));
                names.emplace(keyOf(each.path, each.part), NewName{true, name});
            }
        }
        return names;
    }

    /// What has the new name of an object of the base on another side; empty if nothing has.
    ClassObject findNamed(Renamer& in, std::string const& key, NewName const& name) {
        if (!name.isPart) {
            return in.side().find(name.text);
        }
        ClassObject const part = base_.side().find(key);
        ClassObject const owner = base_.side().addresses().around(part);
        std::string const& property = base_.side().addresses().owningProperty(part);
        ClassObject const there = in.side().find(base_.side().keyOf(owner));
        for (QOB::Object const& value : in.side().valuesOf(there, property)) {
            if (model::nameOf(ClassObject(value)) == name.text) {
                return ClassObject(value);
            }
        }
        return {};
    }

    static void rename(Renamer& in, ClassObject const& object, NewName const& name) {
        if (!name.isPart) {
            in.rename(object, name.text.substr(name.text.rfind('/') + 1), name.text);
            return;
        }
        std::string const path = model::pathOf(object);
        in.rename(object, name.text, path.substr(0, path.rfind('/') + 1) + name.text);
    }

    void renameBase(std::string const& key, NewName const& name) {
        rename(base_, base_.side().find(key), name);
    }

    std::string nameInBase(std::string const& key, NewName const& like) {
        ClassObject const object = base_.side().find(key);
        return like.isPart ? model::nameOf(object) : model::pathOf(object);
    }

    void takeBoth(std::string const& key, NewName const& ours, NewName const& theirs) {
        if (ours == theirs) {
            renameBase(key, ours);
            return;
        }
        ClassObject const inOurs = findNamed(ours_, key, ours);
        ClassObject const inTheirs = findNamed(theirs_, key, theirs);
        bool const isTheirs = log_.add({.kind = ConflictKind::renamed,
                                        .path = key,
                                        .property = "Name",
                                        .base = nameInBase(key, ours),
                                        .ours = ours.text,
                                        .theirs = theirs.text}) == Taken::theirs;
        if (isTheirs) {
            rename(ours_, inOurs, theirs);
            ++result_.count;
        } else {
            rename(theirs_, inTheirs, ours);
        }
        renameBase(key, isTheirs ? theirs : ours);
    }

    void takeTheirs(std::string const& key, NewName const& name) {
        ClassObject const inOurs = ours_.side().find(key);
        if (inOurs.get() != nullptr) {
            if (findNamed(ours_, key, name).get() == nullptr) {
                rename(ours_, inOurs, name);
                renameBase(key, name);
                ++result_.count;
            }
            return;
        }
        ClassObject const inTheirs = findNamed(theirs_, key, name);
        if (log_.add({.kind = ConflictKind::removed,
                      .path = key,
                      .base = nameInBase(key, name),
                      .ours = "nothing",
                      .theirs = "renamed to " + name.text}) != Taken::theirs) {
            result_.leftKeys.insert(theirs_.side().keyOf(inTheirs));
        }
    }

    void takeOurs(std::string const& key, NewName const& name) {
        ClassObject const inTheirs = theirs_.side().find(key);
        if (inTheirs.get() == nullptr) {
            ClassObject const inOurs = findNamed(ours_, key, name);
            result_.keptKeys.insert(ours_.side().keyOf(inOurs));
            renameBase(key, name);
        } else if (findNamed(theirs_, key, name).get() == nullptr) {
            rename(theirs_, inTheirs, name);
            renameBase(key, name);
        }
    }

    Renamer base_;
    Renamer ours_;
    Renamer theirs_;
    ConflictLog& log_;
    Alignment result_;
};

} // namespace

Alignment alignNames(QOB::Model const& base,
                     QOB::Model const& ours,
                     QOB::Model const& theirs,
                     ConflictLog& log) {
    return Aligner(base, ours, theirs, log).align();
}

} // namespace velum::merge
