#pragma once

#include "qob/kernel/deviant/deviations.h"
#include "qob/qob/deviant.h"
#include "qob/qob/integer.h"
#include "qob/qob/nsinterface/classobjectintf.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <memory>
#include <unordered_map>
#include <vector>

namespace QOB {

/// The private door between the deviant's word and the kernel's records.
struct DeviantAccess {
    static std::uint32_t index(Deviant deviant) noexcept { return deviant.index_; }
    static internal::DeviantRecord& record(Deviant deviant) noexcept { return deviant.record(); }
    static Deviant make(std::uint32_t index, std::uint32_t generation) noexcept {
        return {index, generation};
    }
};

namespace internal {

using NSInterface::ClassObjectIntf;
using NSInterface::ObjectIntf;

/// What a deviant holds for one object.
struct StateSlot {
    ObjectIntf* state = nullptr;
    /// The object was destroyed here, as opposed to never having been seen here.
    bool destroyedHere = false;
};

/// The old state of one object, as a transaction or an undo step keeps it. Owns the state and, by
/// one count, keeps the object alive that alone can free it.
struct SavedState {
    ClassObjectIntf* object = nullptr;
    StateSlot slot;
    /// The object is new in the deviant: the slot is what stood there before, mostly nothing.
    bool created = false;
};

/// Something outside of all states that goes back and forth with them, such as a pointer to a live
/// class.
class StepPart {
public:
    StepPart() = default;
    StepPart(StepPart const&) = delete;
    StepPart& operator=(StepPart const&) = delete;
    virtual ~StepPart() = default;
    /// Swaps what is there now for what was kept.
    virtual void exchange() noexcept = 0;
};

/// Everything that brings a deviant from one point in time to another, in order of first write.
struct Step {
    std::vector<SavedState> states;
    std::vector<std::unique_ptr<StepPart>> parts;

    bool empty() const noexcept { return states.empty() && parts.empty(); }
    /// Frees the states first and lets go of the objects last.
    void release();
};

/// A transaction that has not ended. Transactions on the same deviant join it.
struct OpenTransaction {
    std::uint64_t serial = 0;
    int depth = 1;
    Step record;
    boost::unordered_flat_map<ClassObjectIntf const*, std::size_t> savedIndex;
};

/// The long part of a deviant: its states (in a branch), its open transaction and its undo stacks.
class DeviantData {
public:
    DeviantData(ModelCore& model, Deviant self) : model_(model), self_(self) {}
    DeviantData(DeviantData const&) = delete;
    DeviantData& operator=(DeviantData const&) = delete;

    static DeviantData& of(Deviant deviant);

    ModelCore& model() const noexcept { return model_; }
    Deviant self() const noexcept { return self_; }
    bool isRoot() const noexcept;

    ObjectIntf* state(ClassObjectIntf const* object) const noexcept;
    void setState(ClassObjectIntf const* object, ObjectIntf* state);
    /// Frees what a branch holds for an object that is about to die.
    void forgetObject(ClassObjectIntf* object);
    /// The objects with an entry in this deviant, in the order in which they entered the model.
    std::vector<ClassObjectIntf*> changedObjects() const;
    /// What this deviant holds for the object as it stands, in the root too.
    StateSlot slotOf(ClassObjectIntf const* object) const;
    /// Whether the object is gone from this deviant because it was destroyed, here or in the root
    /// that a branch reads; as opposed to one that this deviant has never seen.
    bool knowsAsDestroyed(ClassObjectIntf const* object) const;
    /// Whether taking something back, or undoing that, may show the object here again.
    bool mayComeBack(ClassObjectIntf const* object) const;

    ObjectIntf* savedOldState(ClassObjectIntf const* object) const noexcept;
    ObjectIntf* saveOldState(ClassObjectIntf const* object, ObjectIntf* state);
    void markCreated(ClassObjectIntf const* object);
    /// Goes with the open transaction; without one, what is about to change is final.
    void keep(std::unique_ptr<StepPart> part);
    /// Forgets what was kept so, in steps too: the library that it lies in is going.
    void forgetParts() noexcept;
    /// Takes back what the open transaction recorded since it created the object.
    void forgetCreation(ClassObjectIntf const* object);

    /// Begins a transaction or joins the open one; returns its serial number.
    std::uint64_t begin();
    int depth() const noexcept { return open_ != nullptr ? open_->depth : 0; }
    bool isOpen(std::uint64_t serial) const noexcept {
        return open_ != nullptr && open_->serial == serial;
    }
    /// Ends one level; the outermost makes the changes final.
    void commit();
    /// Takes everything back, whatever the depth.
    void rollback() noexcept;

    void setGate(WriteGate bit, bool on) noexcept;
    bool hasGate(WriteGate bit) const noexcept;
    void setUndoEnabled(bool enabled);
    bool undo() { return travel(undo_, redo_); }
    bool redo() { return travel(redo_, undo_); }
    /// The root is about to leave behind what branches without a state of their own have been
    /// reading: a step that would bring this branch back to reading it there gets a copy.
    template <class Copy>
    void keepForUndo(ClassObjectIntf const* object, Copy const& copy) {
        if (auto const found = stepsToRoot_.find(object); found != stepsToRoot_.end()) {
            undo_[found->second.step].states[found->second.position].slot.state = copy();
            stepsToRoot_.erase(found);
        }
    }

    /// Drops the open transaction and the undo stacks without restoring anything.
    void dropRecords();
    /// Frees all states of a branch.
    void dropStates();

private:
    friend class ModelCore;

    /// Where an undo step keeps the old state of an object.
    struct Place {
        std::size_t step = 0;
        std::size_t position = 0;
    };

    bool travel(std::vector<Step>& from, std::vector<Step>& to);
    /// Enters or takes out what the last undo step leads back to the root.
    void enterStepsToRoot();
    void dropStepsToRoot();
    void exchange(SavedState& saved);
    void protectReaders(SavedState const& saved);
    void restore(SavedState& saved) noexcept;
    void closeTransaction() noexcept;

    ModelCore& model_;
    Deviant self_;
    DeviantData* previous_ = nullptr;
    DeviantData* next_ = nullptr;
    boost::unordered_flat_map<ClassObjectIntf const*, StateSlot> states_;
    std::unique_ptr<OpenTransaction> open_;
    std::vector<Step> undo_;
    std::vector<Step> redo_;
    /// Of a branch: the objects that undoing makes it read in the root again, one step for each.
    boost::unordered_flat_map<ClassObjectIntf const*, Place> stepsToRoot_;
};

/// The kernel's half of a model: its deviants, its objects in order of entry, its id index. Owned
/// by the model object; every living model is in one list, so that what is left can be ended when
/// the library stops.
class ModelCore {
public:
    /// `model` is the model object itself, held by one count until the model ends.
    explicit ModelCore(ClassObjectIntf* model);
    ModelCore(ModelCore const&) = delete;
    ModelCore& operator=(ModelCore const&) = delete;
    ~ModelCore();

    /// The living model of a valid deviant.
    static ModelCore& of(Deviant deviant);
    static DeviationsBase& deviationsOf(ClassObjectIntf const* object);
    /// Ends every model that is left but `kept`.
    static void endAll(ClassObjectIntf const* kept) noexcept;

    ClassObjectIntf* model() const noexcept { return model_; }
    Deviant root() const noexcept { return root_->self(); }
    bool hasBranches() const noexcept { return root_->next_ != nullptr; }
    template <class Function>
    void forEachBranch(Function function) {
        for (DeviantData* data = root_->next_; data != nullptr; data = data->next_) {
            function(*data);
        }
    }

    Deviant createBranch();
    /// Rolls back what is open there, frees the states, ends the deviant.
    void removeBranch(Deviant branch);
    void allDeviants(std::vector<Deviant>& deviants) const;

    /// Raises for an object of another model: nothing of one is entered here.
    DeviationsBase& requireOwn(ClassObjectIntf const* object) const;

    void addObject(ClassObjectIntf* object);
    void removeObject(ClassObjectIntf* object);
    /// Living objects in order of entry.
    template <class Function>
    void forEachObject(Function function) const {
        for (ClassObjectIntf* const object : objects_) {
            if (object != nullptr) {
                function(object);
            }
        }
    }
    std::size_t objectCount() const noexcept { return objects_.size() - freeSlots_; }

    /// An id that no object has: the next one above all others, and once the largest possible id
    /// was used, one that is free.
    Integer allocateId();
    /// Enters an object under an id. Raises, with nothing changed, if another object has it in the
    /// deviant or in any other one where both exist.
    void bindId(Deviant deviant, ClassObjectIntf* object, Integer id);
    /// Takes an object out of the index of ids.
    void forgetId(ClassObjectIntf* object);
    /// The object with the id that exists in the deviant, or null.
    ClassObjectIntf* findId(Deviant deviant, Integer id) const;
    /// Calls `function` with each object under the id, whatever deviant it exists in.
    template <class Function>
    void forEachWithId(int id, Function function) const {
        if (ClassObjectIntf* const first = firstWithId(id); first != nullptr) {
            function(first);
        }
        if (!sharedIds_.empty()) {
            auto const [first, last] = sharedIds_.equal_range(id);
            for (auto entry = first; entry != last; ++entry) {
                function(entry->second);
            }
        }
    }

    /// Whether an object of the model may refer to another model.
    bool mayReferElsewhere() const noexcept { return mayReferElsewhere_; }
    void noteReferenceElsewhere() noexcept { mayReferElsewhere_ = true; }

    /// In every deviant.
    void forgetParts() noexcept;

    /// Ends the model: every object is marked, every state and record freed, every deviant gone.
    void end();

private:
    DeviantData& makeDeviant();
    void retireDeviant(DeviantData& data);
    /// Whether an object that has an id would share a deviant with one that gets it in `deviant`.
    bool meets(ClassObjectIntf const* owner, ClassObjectIntf const* object, Deviant deviant) const;
    bool isIdInUse(int id) const;
    /// The first object under an id, or null.
    ClassObjectIntf* firstWithId(int id) const;
    /// The place of an id in the index, made if need be.
    ClassObjectIntf*& placeOfId(int id);
    void compactObjects();

    ClassObjectIntf* model_;
    DeviantData* root_ = nullptr;
    DeviantData* last_ = nullptr;
    ModelCore* previousModel_ = nullptr;
    ModelCore* nextModel_ = nullptr;

    std::vector<ClassObjectIntf*> objects_;
    std::size_t freeSlots_ = 0;
    /// An id leads to one object but for undone creations and the like, which share it. Ids that
    /// the model hands out follow each other and are found by position, all others by hash.
    std::vector<ClassObjectIntf*> denseIds_;
    boost::unordered_flat_map<int, ClassObjectIntf*> sparseIds_;
    std::unordered_multimap<int, ClassObjectIntf*> sharedIds_;
    /// The largest id that was ever used.
    int highestId_ = 0;
    /// The last id that was found free, once there is none above the largest.
    int lastFreeId_ = 0;
    bool mayReferElsewhere_ = false;
};

/// "the object (<type>, id <id>)", or "the model" for null.
std::string describe(ObjectIntf const* object);

} // namespace internal
} // namespace QOB
