#include "model/observers.h"

#include "model/changes.h"
#include "model/modelcore.h"
#include "nshandmaintained/propertyindex.h"
#include "qob/kernel/deviant/onewrite.h"
#include "qob/kernel/factory/create.h"
#include "qob/qob/assert.h"
#include "qob/qob/attributes.h"

#include <algorithm>
#include <utility>

namespace QOB {

using internal::DeviantData;
using internal::ModelCore;

// Observer -------------------------------------------------------------------------------------

Observer::~Observer() {
    stop();
}

void Observer::observe(Model const& model) {
    QOB_REQUIRE(list_ == nullptr, "The observer observes a model already; stop it first.");
    DeviantData& deviant = DeviantData::of(internal::accessedDeviant(model));
    QOB_REQUIRE(deviant.history().depth() == 0,
                "An observer can't begin while a transaction is open in the deviant.");
    deviant.needObservers();
    deviant.observers()->add(*this);
    list_ = deviant.observers();
}

void Observer::stop() noexcept {
    if (auto const list = std::move(list_)) {
        list_ = nullptr;
        list->remove(*this);
    }
}

bool Observer::isObserving() const noexcept {
    return list_ != nullptr;
}

void Observer::ended() noexcept {
}

namespace internal {

int observedDeviants = 0;

// ObserverList ---------------------------------------------------------------------------------

ObserverList::ObserverList(DeviantData& deviant) noexcept : deviant_(&deviant) {
}
ObserverList::~ObserverList() = default;

void ObserverList::noteCount(std::size_t count) noexcept {
    bool const was = !empty();
    count_ = count;
    if (was == !empty()) {
        return;
    }
    observedDeviants += was ? -1 : 1;
    deviant_->setGate(Observed, !was);
    deviant_->model().noteObservers();
}

void ObserverList::add(Observer& observer) {
    observers_.push_back(&observer);
    noteCount(count_ + 1);
}

void ObserverList::remove(Observer& observer) noexcept {
    auto const found = std::find(observers_.begin(), observers_.end(), &observer);
    if (found == observers_.end()) {
        return;
    }
    if (tellings_ != 0) {
        *found = nullptr;
    } else {
        observers_.erase(found);
    }
    if (deviant_ != nullptr) {
        noteCount(count_ - 1);
    }
}

void ObserverList::tell(Changes const& changes, std::exception_ptr& raised) {
    ++tellings_;
    // Others may begin to observe meanwhile. NOLINTNEXTLINE(modernize-loop-convert)
    for (std::size_t i = 0, size = observers_.size(); i != size; ++i) {
        if (observers_[i] == nullptr) {
            continue;
        }
        try {
            observers_[i]->changed(changes);
        } catch (...) {
            if (!raised) {
                raised = std::current_exception();
            }
        }
    }
    if (--tellings_ == 0) {
        std::erase(observers_, nullptr);
    }
}

void ObserverList::end() noexcept {
    if (!empty()) {
        --observedDeviants;
    }
    deviant_ = nullptr;
    count_ = 0;
    ++tellings_; // for those that an observer ends
    for (Observer*& observer : observers_) {
        if (Observer* const each = std::exchange(observer, nullptr)) {
            std::shared_ptr<ObserverList> const keep = std::move(each->list_);
            each->list_ = nullptr;
            each->ended();
        }
    }
}

std::vector<Attribute> const& ObserverList::attributesOf(ClassObject const& object) {
    if (attributes_ == nullptr || generation_ != PropertyIndex::generation()) {
        generation_ = PropertyIndex::generation();
        attributes_ = std::make_unique<Attributes>();
    }
    return attributes_->of(object);
}

// Telling --------------------------------------------------------------------------------------

namespace {

/// While it exists, the model can only be read.
class WhileTelling {
public:
    explicit WhileTelling(ModelCore& model) : model_(model), was_(isOn()) { set(true); }
    WhileTelling(WhileTelling const&) = delete;
    WhileTelling& operator=(WhileTelling const&) = delete;
    ~WhileTelling() { set(was_); }

private:
    bool isOn() const { return model_.rootData().hasGate(Telling); }
    void set(bool on) {
        model_.rootData().setGate(Telling, on);
        model_.forEachBranch([on](DeviantData& branch) { branch.setGate(Telling, on); });
    }

    ModelCore& model_;
    bool was_;
};

ObjectIntf* realOrNull(ObjectIntf* state) {
    return isRealState(state) ? state : nullptr;
}

ObjectIntf* shownIn(DeviantData const& deviant, ClassObjectIntf* object) {
    return realOrNull(ModelCore::deviationsOf(object).seenIn(deviant.self()));
}

/// What an old state of a branch showed, if that leads to the root.
ObjectIntf* shownBefore(DeviantData const& deviant, SavedState const& saved) {
    ObjectIntf* const state = saved.slot.state;
    bool const readsRoot = state == nullptr || state == Deviant::FallbackToRoot;
    return realOrNull(readsRoot && !deviant.isRoot() && !saved.created
                          ? ModelCore::deviationsOf(saved.object).rootBaseline(deviant.self())
                          : state);
}

/// What the observers of the deviant know of the object: they aren't told yet what an open
/// transaction, or the write that is going on, has changed. Null if they don't know it.
ObjectIntf* knownIn(DeviantData const& deviant, ClassObjectIntf* object) {
    ObjectIntf* const saved = deviant.oldState(object);
    return saved != nullptr ? shownBefore(deviant, {object, {saved, false}, false})
                            : shownIn(deviant, object);
}

/// Whether what the root has changed is seen in the branch.
bool readsRoot(DeviantData const& branch, ClassObjectIntf const* object) {
    ObjectIntf* const state = branch.state(object);
    return state == nullptr || state == Deviant::FallbackToRoot;
}

/// `collect` adds what there is to tell.
template <class Collect>
void tellOf(DeviantData& deviant, std::exception_ptr& raised, Collect const& collect) {
    if (!deviant.hasObservers()) {
        return;
    }
    try {
        std::shared_ptr<ObserverList> const observers = deviant.observers();
        ChangeCollector collector(deviant, *observers);
        collect(collector);
        if (Changes const& changes = collector.take(); !changes.empty()) {
            observers->tell(changes, raised);
        }
    } catch (...) { // of the comparison
        if (!raised) {
            raised = std::current_exception();
        }
    }
}

} // namespace

std::exception_ptr tellObservers(DeviantData& deviant, std::vector<SavedState> const& before) {
    std::exception_ptr raised;
    if (!deviant.hasGate(Observed) || before.empty()) {
        return raised;
    }
    WhileTelling const telling(deviant.model());
    tellOf(deviant, raised, [&](ChangeCollector& changes) {
        for (SavedState const& saved : before) {
            changes.add(saved.object, shownBefore(deviant, saved), shownIn(deviant, saved.object));
        }
    });
    if (!deviant.isRoot()) {
        return raised;
    }
    deviant.model().forEachBranch([&](DeviantData& branch) {
        tellOf(branch, raised, [&](ChangeCollector& changes) {
            for (SavedState const& saved : before) {
                if (readsRoot(branch, saved.object)) {
                    changes.add(
                        saved.object, realOrNull(saved.slot.state), shownIn(branch, saved.object));
                }
            }
        });
    });
    return raised;
}

void tellObserversOfId(DeviantData& root, ClassObjectIntf* object, Integer before) {
    if (!root.hasGate(Observed) || object->getObjectId(root.self()) == before) {
        return;
    }
    std::exception_ptr raised;
    {
        WhileTelling const telling(root.model());
        auto const tell = [&](DeviantData& deviant) {
            if (ObjectIntf* const state = knownIn(deviant, object)) {
                tellOf(deviant, raised, [&](ChangeCollector& changes) {
                    changes.addId(object, state, before);
                });
            }
        };
        tell(root);
        root.model().forEachBranch(tell);
    }
    if (raised) {
        std::rethrow_exception(raised);
    }
}

// Writes ---------------------------------------------------------------------------------------

namespace {

/// How many rules that write are going on.
int writeDepth = 0;
/// Of exceptions, when the outermost one began.
int exceptionsBefore = 0;

std::vector<DeviantData*>& writtenDeviants() {
    static std::vector<DeviantData*> deviants;
    return deviants;
}

} // namespace

void noteWrite(DeviantData& deviant) {
    writtenDeviants().push_back(&deviant);
}

void forgetWrite(DeviantData& deviant) noexcept {
    std::erase(writtenDeviants(), &deviant);
}

void beginWrite() noexcept {
    if (writeDepth++ == 0) {
        exceptionsBefore = std::uncaught_exceptions();
    }
}

void endWrite() {
    if (--writeDepth != 0) {
        return;
    }
    bool const hasFailed = std::uncaught_exceptions() > exceptionsBefore;
    std::exception_ptr raised;
    while (!writtenDeviants().empty()) {
        DeviantData& deviant = *writtenDeviants().front();
        forgetWrite(deviant);
        std::exception_ptr const first = deviant.tellWrite();
        raised = raised ? raised : first;
    }
    if (raised && !hasFailed) {
        std::rethrow_exception(raised);
    }
}

WithoutObservers::WithoutObservers(Deviant deviant) {
    if (observedDeviants != 0 && deviant.isObserved()) {
        deviant_ = &DeviantData::of(deviant);
        deviant_->setGate(Observed, false);
    }
}

WithoutObservers::~WithoutObservers() {
    if (deviant_ != nullptr) {
        deviant_->setGate(Observed, true);
    }
}

} // namespace internal
} // namespace QOB
