#pragma once

#include "model/deviantdata.h"
#include "model/idindex.h"
#include "qob/kernel/deviant/deviations.h"
#include "qob/qob/integer.h"
#include "qob/qob/nsinterface/classobjectintf.h"

#include <vector>

namespace QOB::internal {

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
    /// Null for what is no root object.
    static DeviationsBase* findDeviations(ClassObjectIntf const* object) noexcept {
        RootPart const* const part = rootPartOf(object);
        return part != nullptr ? static_cast<DeviationsBase*>(const_cast<RootPart*>(part))
                               : findDeviationsOfPart(object);
    }
    /// Raises for what is no root object.
    static DeviationsBase& deviationsOf(ClassObjectIntf const* object) {
        if (DeviationsBase* const deviations = findDeviations(object)) {
            return *deviations;
        }
        failNoRootObject();
    }
    /// Ends every model that is left but `kept`.
    static void endAll(ClassObjectIntf const* kept) noexcept;

    ClassObjectIntf* model() const noexcept { return model_; }
    Deviant root() const noexcept { return root_->self(); }
    bool hasBranches() const noexcept { return root_->next_ != nullptr; }
    DeviantData& rootData() noexcept { return *root_; }
    template <class Function>
    void forEachBranch(Function function) {
        for (DeviantData* data = root_->next_; data != nullptr; data = data->next_) {
            function(*data);
        }
    }

    /// Ends at the branch for which the function returns true.
    template <class Function>
    void forEachBranchUntil(Function function) {
        for (DeviantData* data = root_->next_; data != nullptr; data = data->next_) {
            if (function(*data)) {
                return;
            }
        }
    }

    Deviant createBranch();
    /// Rolls back what is open there, frees the states, ends the deviant.
    void removeBranch(Deviant branch);
    void allDeviants(std::vector<Deviant>& deviants) const;

    /// Raises for an object of another model: nothing of one is entered here.
    DeviationsBase& requireOwn(ClassObjectIntf const* object) const;

    void addObject(ClassObjectIntf* object);
    /// The same for an object that has just been made, which belongs to no model yet.
    void enterObject(ClassObjectIntf* object);
    void removeObject(ClassObjectIntf* object);
    /// The place of an object in the order of entry.
    static std::uint32_t placeOf(ClassObjectIntf const* object) {
        return deviationsOf(object).slot_;
    }
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

    IdIndex& ids() noexcept { return ids_; }
    IdIndex const& ids() const noexcept { return ids_; }
    /// Enters an object under an id. Raises, with nothing changed, if another object has it in the
    /// deviant or in any other one where both exist.
    void bindId(Deviant deviant, ClassObjectIntf* object, Integer id);
    /// The same for an object that has just been made, which has no id yet.
    void bindFirstId(Deviant deviant, ClassObjectIntf* object, Integer id);
    /// Takes an object out of the index of ids.
    void forgetId(ClassObjectIntf* object);

    /// Whether an object of the model may refer to another model.
    bool mayReferElsewhere() const noexcept { return mayReferElsewhere_; }
    void noteReferenceElsewhere() noexcept { mayReferElsewhere_ = true; }

    /// In every deviant.
    void forgetParts() noexcept;
    /// Records the writes of the root while any deviant has observers: branches read there.
    void noteObservers() noexcept;

    /// Ends the model: every object is marked, every state and record freed, every deviant gone.
    void end();

private:
    /// For the second base of an object.
    static DeviationsBase* findDeviationsOfPart(ClassObjectIntf const* object) noexcept;
    [[noreturn]] static void failNoRootObject();
    DeviantData& makeDeviant();
    void retireDeviant(DeviantData& data);
    /// Whether an object that has an id would share a deviant with one that gets it in `deviant`.
    bool meets(ClassObjectIntf const* owner, ClassObjectIntf const* object, Deviant deviant) const;
    void requireFreeId(Deviant deviant, ClassObjectIntf const* object, int id) const;
    void compactObjects();

    ClassObjectIntf* model_;
    DeviantData* root_ = nullptr;
    DeviantData* last_ = nullptr;
    ModelCore* previousModel_ = nullptr;
    ModelCore* nextModel_ = nullptr;

    std::vector<ClassObjectIntf*> objects_;
    std::size_t freeSlots_ = 0;
    IdIndex ids_;
    bool mayReferElsewhere_ = false;
};

} // namespace QOB::internal
