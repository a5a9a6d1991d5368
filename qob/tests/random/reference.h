#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// What a model with deviants, transactions and undo must do, in plain maps and full copies,
/// without a thought for speed. Things are numbers; thing 0 is the model itself with its list of
/// things.
namespace reference {

using Thing = int;
constexpr Thing ModelItself = 0;
constexpr Thing None = -1;
/// Things of other models: the last one of `FarCount`, each in a model of its own, and those above.
constexpr int FarCount = 3;
constexpr Thing FirstFar = -1 - FarCount;
inline bool isFar(Thing thing) {
    return thing < None;
}

/// All that one thing is in one deviant.
struct Values {
    int number = 0;
    Thing link = None;
    std::vector<Thing> list; ///< of the model: its things in order of creation

    friend bool operator==(Values const&, Values const&) = default;
};

/// What a deviant holds for a thing.
struct Slot {
    enum Kind { Nothing, Fallback, Invalid, Real } kind = Nothing;
    Values values;
    bool destroyedHere = false;

    bool readsRoot() const { return kind == Nothing || kind == Fallback; }
};

/// What a transaction or a step keeps of a thing.
struct Saved {
    Thing thing = 0;
    Slot slot;
    bool created = false;
};
using Step = std::vector<Saved>;

class Deviant {
public:
    bool isRoot = false;
    bool alive = true;
    bool undoEnabled = false;
    int depth = 0; ///< of open transactions; 0 if there is none
    std::map<Thing, Slot> slots;
    Step open; ///< in order of first write
    std::vector<Step> undo;
    std::vector<Step> redo;

    Saved* saved(Thing thing) {
        for (Saved& entry : open) {
            if (entry.thing == thing) {
                return &entry;
            }
        }
        return nullptr;
    }
};

class Model {
public:
    std::vector<Deviant> deviants; ///< the root first, then in order of creation
    Thing lastThing = ModelItself;
    std::vector<int> ids{0};                       ///< of each thing
    bool farExists[FarCount] = {true, true, true}; ///< in its own model

    Model() {
        deviants.emplace_back().isRoot = true;
        deviants[0].slots[ModelItself].kind = Slot::Real;
    }

    Deviant& at(int d) { return deviants[static_cast<std::size_t>(d)]; }

    Slot baseline(Thing thing) {
        Deviant& root = deviants[0];
        if (Saved const* const saved = root.saved(thing)) {
            Slot invalid;
            invalid.kind = Slot::Invalid;
            return saved->created ? invalid : saved->slot;
        }
        return root.slots[thing];
    }

    Slot seen(int d, Thing thing) {
        Slot const& slot = at(d).slots[thing];
        return !at(d).isRoot && slot.readsRoot() ? baseline(thing) : slot;
    }

    bool exists(int d, Thing thing) {
        return isFar(thing) ? farExists[thing - FirstFar] : seen(d, thing).kind == Slot::Real;
    }
    Values read(int d, Thing thing) { return seen(d, thing).values; }
    bool writable(int d) { return !at(d).undoEnabled || at(d).depth > 0; }

    /// The values that a write changes.
    Values& write(int d, Thing thing) {
        Deviant& deviant = at(d);
        Slot const old = deviant.slots[thing];
        Slot& slot = deviant.slots[thing];
        if (old.kind != Slot::Real) {
            slot = baseline(thing);
        }
        if (deviant.depth > 0 && deviant.saved(thing) == nullptr) {
            Slot toSave = old;
            if (toSave.kind == Slot::Nothing) {
                toSave.kind = Slot::Fallback;
            }
            deviant.open.push_back({thing, toSave, false});
        }
        return slot.values;
    }

    /// Whether a new thing may have the id: no other one has it in a deviant that will know both.
    bool isFree(int d, int id) {
        for (Thing other = 1; other <= lastThing; ++other) {
            for (int e = 0; ids[static_cast<std::size_t>(other)] == id && e < count(); ++e) {
                bool const seesNew = e == d || (d == 0 && at(0).depth == 0);
                if (at(e).alive && seesNew &&
                    (exists(e, other) || (e != d && mayComeBack(e, other)))) {
                    return false;
                }
            }
        }
        return true;
    }

    Thing create(int d, int id, int number) {
        Thing const thing = ++lastThing;
        ids.push_back(id);
        bringIn(d, thing, true);
        if (number != 0) { // the default is there already
            write(d, thing).number = number;
        }
        return thing;
    }

    void bringIn(int d, Thing thing, bool listed) {
        Deviant& deviant = at(d);
        if (deviant.depth > 0 && deviant.saved(thing) == nullptr) {
            Slot before = deviant.slots[thing];
            if (!deviant.isRoot && before.readsRoot()) {
                before.kind = Slot::Invalid; // without it, whatever the root has by then
            }
            deviant.open.push_back({thing, before, true});
        }
        deviant.slots[thing] = Slot{Slot::Real, Values(), false};
        if (!listed) {
            return;
        }
        // Where a branch still reads the root's list, that may have the thing already.
        if (std::vector<Thing>& list = write(d, ModelItself).list; !contains(list, thing)) {
            list.push_back(thing);
        }
    }

    void setNumber(int d, Thing thing, int number) {
        if (read(d, thing).number != number) {
            write(d, thing).number = number;
        }
    }

    void setLink(int d, Thing thing, Thing link) {
        if (link == None || !exists(d, link)) {
            if (read(d, thing).link != None) {
                write(d, thing).link = None;
            }
        } else if (read(d, thing).link != link) {
            write(d, thing).link = link;
        }
    }

    void destroy(int d, Thing thing) {
        if (!exists(d, thing)) {
            return;
        }
        write(d, thing);
        std::vector<Thing> const list = read(d, ModelItself).list;
        if (std::find(list.begin(), list.end(), thing) != list.end()) {
            std::erase(write(d, ModelItself).list, thing);
        }
        at(d).slots[thing] = Slot{Slot::Invalid, Values(), true};
    }

    int branch() {
        deviants.emplace_back();
        return static_cast<int>(deviants.size()) - 1;
    }

    void remove(int d) {
        at(d) = Deviant();
        at(d).alive = false;
    }

    void begin(int d) { ++at(d).depth; }

    void commit(int d) {
        Deviant& deviant = at(d);
        if (--deviant.depth > 0) {
            return;
        }
        if (deviant.isRoot) {
            ++deviant.depth; // still open while the readers are protected
            for (Saved const& saved : Step(deviant.open)) {
                protectReaders(saved.thing);
            }
            --deviant.depth;
        }
        Step step = std::move(deviant.open);
        deviant.open.clear();
        if (deviant.undoEnabled && !step.empty()) {
            deviant.redo.clear();
            deviant.undo.push_back(std::move(step));
        }
    }

    void rollback(int d) {
        Deviant& deviant = at(d);
        deviant.depth = 0;
        for (Saved const& saved : deviant.open) {
            deviant.slots[saved.thing] = saved.slot;
        }
        deviant.open.clear();
    }

    void setUndoEnabled(int d, bool enabled) {
        at(d).undoEnabled = enabled;
        if (!enabled) {
            at(d).undo.clear();
            at(d).redo.clear();
        }
    }

    bool undo(int d) { return travel(d, at(d).undo, at(d).redo); }
    bool redo(int d) { return travel(d, at(d).redo, at(d).undo); }

    /// False, with nothing changed, if two things would share an id.
    bool merge(int target, int source) {
        std::vector<Thing> assigned;
        std::vector<Thing> broughtIn;
        std::vector<Thing> destroyed;
        for (Thing thing = 1; thing <= lastThing; ++thing) {
            Slot const& slot = at(source).slots[thing];
            if (slot.kind == Slot::Real) {
                if (exists(target, thing)) {
                    assigned.push_back(thing);
                } else if (!knowsAsDestroyed(target, thing)) {
                    broughtIn.push_back(thing);
                    assigned.push_back(thing);
                }
            } else if (slot.kind == Slot::Invalid && slot.destroyedHere && exists(target, thing)) {
                destroyed.push_back(thing);
            }
        }
        std::multiset<int> there;
        for (Thing thing = 1; thing <= lastThing; ++thing) {
            if (contains(broughtIn, thing) ||
                (exists(target, thing) && !contains(destroyed, thing))) {
                there.insert(ids[static_cast<std::size_t>(thing)]);
            }
        }
        for (Thing const thing : broughtIn) {
            if (there.count(ids[static_cast<std::size_t>(thing)]) != 1) {
                return false;
            }
        }
        begin(target);
        for (Thing const thing : broughtIn) {
            bringIn(target, thing, contains(read(source, ModelItself).list, thing));
        }
        for (Thing const thing : assigned) {
            Values const values = at(source).slots[thing].values;
            setNumber(target, thing, values.number);
            setLink(target, thing, values.link);
        }
        for (Thing const thing : destroyed) {
            destroy(target, thing);
        }
        commit(target);
        return true;
    }

    /// Of the other models, those with a thing that is referred to.
    std::set<Thing> referred(int d) {
        std::set<Thing> found;
        for (Thing thing = 1; thing <= lastThing; ++thing) {
            if (Thing const link = exists(d, thing) ? read(d, thing).link : None;
                isFar(link) && exists(d, link)) {
                found.insert(link);
            }
        }
        return found;
    }

private:
    int count() const { return static_cast<int>(deviants.size()); }
    static bool contains(std::vector<Thing> const& things, Thing thing) {
        return std::find(things.begin(), things.end(), thing) != things.end();
    }

    bool knowsAsDestroyed(int d, Thing thing) {
        Slot const& slot = at(d).slots[thing];
        if (at(d).isRoot || !slot.readsRoot()) {
            return slot.kind == Slot::Invalid && (at(d).isRoot || slot.destroyedHere);
        }
        return at(0).slots[thing].kind == Slot::Invalid && at(0).saved(thing) == nullptr;
    }

    /// Whether undo, redo or rollback may show the thing again.
    bool mayComeBack(int d, Thing thing) {
        auto const leadsBack = [thing](Step const& step) {
            return std::any_of(step.begin(), step.end(), [thing](Saved const& saved) {
                return saved.thing == thing &&
                       (saved.slot.kind == Slot::Real || saved.slot.kind == Slot::Fallback);
            });
        };
        Deviant const& deviant = at(d);
        return leadsBack(deviant.open) ||
               std::any_of(deviant.undo.begin(), deviant.undo.end(), leadsBack) ||
               std::any_of(deviant.redo.begin(), deviant.redo.end(), leadsBack);
    }

    /// What the root's commit leaves to the branches; it ends at one that could go back to the
    /// root.
    void protectReaders(Thing thing) {
        Slot base = baseline(thing);
        base.destroyedHere = false;
        if (base.kind == Slot::Nothing) {
            return;
        }
        for (Deviant& deviant : deviants) {
            for (Step& step : deviant.undo) {
                for (Saved& saved : step) {
                    if (saved.thing == thing && saved.slot.kind == Slot::Fallback) {
                        saved.slot = base;
                    }
                }
            }
        }
        for (Deviant& deviant : deviants) {
            if (deviant.isRoot || !deviant.alive) {
                continue;
            }
            Saved* const saved = deviant.depth > 0 ? deviant.saved(thing) : nullptr;
            if (saved != nullptr && !saved->created && saved->slot.kind == Slot::Fallback) {
                saved->slot = base;
                return;
            }
            if (deviant.slots[thing].readsRoot()) {
                deviant.slots[thing] = base;
            }
        }
    }

    bool travel(int d, std::vector<Step>& from, std::vector<Step>& to) {
        if (from.empty()) {
            return false;
        }
        Step step = from.back();
        from.pop_back();
        Deviant& deviant = at(d);
        if (deviant.isRoot) {
            for (Saved const& saved : step) {
                if (deviant.slots[saved.thing].kind != Slot::Nothing) {
                    protectReaders(saved.thing);
                    continue;
                }
                for (Deviant& other : deviants) {
                    if (!other.isRoot && other.alive &&
                        other.slots[saved.thing].kind == Slot::Nothing) {
                        other.slots[saved.thing].kind = Slot::Invalid;
                    }
                }
            }
        }
        for (Saved& saved : step) {
            std::swap(deviant.slots[saved.thing], saved.slot);
        }
        to.push_back(step);
        return true;
    }
};

} // namespace reference
