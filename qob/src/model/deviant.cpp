#include "qob/qob/deviant.h"

#include "model/modelcore.h"
#include "object/describe.h"
#include "qob/qob/assert.h"

namespace QOB {

using internal::DeviantData;
using internal::ModelCore;
using NSInterface::ClassObjectIntf;
using NSInterface::ObjectIntf;

void* const Deviant::InvalidObject = reinterpret_cast<void*>(std::uintptr_t(1));
void* const Deviant::FallbackToRoot = reinterpret_cast<void*>(std::uintptr_t(2));
void* const Deviant::ModelDestroyed = reinterpret_cast<void*>(std::uintptr_t(3));

bool DeviantAssertions::sAssertionsEnabled = true;

bool DeviantAssertions::enableAssertions(bool enabled) noexcept {
    return std::exchange(sAssertionsEnabled, enabled);
}

bool DeviantAssertions::assertWritable(ObjectIntf const* object) const {
    return !sAssertionsEnabled || internal_assertWritable(object);
}

bool DeviantAssertions::internal_assertWritable(ObjectIntf const* object) const {
    internal::DeviantRecord const& r = record();
    QOB_REQUIRE(r.generation == generation_, "object accessed after its deviant has been removed");
    char const* cause = nullptr;
    if ((r.writeGate & internal::Telling) != 0) {
        cause = "its observers are being told of a change and may only read";
    } else if ((r.writeGate & internal::ReadOnly) != 0) {
        cause = "its deviant is read-only";
    } else if ((r.writeGate & internal::UndoEnabled) != 0 &&
               (r.writeGate & internal::InTransaction) == 0) {
        cause = "its deviant has undo enabled and no transaction is open";
    }
    if (cause != nullptr) {
        std::string const subject = internal::describe(object);
        QOB_FAIL("Cannot write %s: %s.", subject.c_str(), cause);
    }
    return true;
}

void DeviantAssertions::assertObjectNotPresentInDeviant(ClassObjectIntf const* object) const {
    std::string const subject = internal::describe(object);
    QOB_FAIL("Cannot access %s: it does not exist in the deviant.", subject.c_str());
}

Deviant Deviant::getRootDeviant() const noexcept {
    internal::DeviantRecord const& r = record();
    if (r.generation != generation_) {
        return {};
    }
    internal::DeviantRecord const& root =
        internal::deviantChunks[r.rootIndex / internal::RecordsPerChunk]
                               [r.rootIndex % internal::RecordsPerChunk];
    return {r.rootIndex, root.generation};
}

Deviant Deviant::inModelOfOther(Deviant root) const noexcept {
    if (!root.isNotNull()) {
        return root; // the object has lost its model
    }
    bool const isRemoved = isNotNull() && !isValid();
    return isRemoved || getRootDeviant() == root ? *this : root;
}

void Deviant::getAllDeviants(std::vector<Deviant>& deviants) const {
    deviants.clear();
    if (isValid()) {
        ModelCore::of(*this).allDeviants(deviants);
    }
}

Deviant::State Deviant::getStateOfObject(ClassObjectIntf const* object) const noexcept {
    return isValid() ? record().data->state(object) : nullptr;
}

void Deviant::setStateOfObject(ClassObjectIntf const* object, State state) const {
    DeviantData::of(*this).setState(object, state);
}

Deviant::State Deviant::getSavedOldStateOfObject(ClassObjectIntf const* object) const noexcept {
    return isWithinTransaction() ? record().data->history().savedOldState(object) : nullptr;
}

Deviant::State Deviant::saveOldStateOfObject(ClassObjectIntf const* object, State state) const {
    return DeviantData::of(*this).history().saveOldState(object, state);
}

void Deviant::addObjectToModel(ClassObjectIntf* object) const {
    ModelCore::of(*this).addObject(object);
}

void Deviant::removeObjectFromModel(ClassObjectIntf* object) const {
    ModelCore::of(*this).removeObject(object);
}

void Deviant::markObjectCreated(ClassObjectIntf const* object) const {
    DeviantData::of(*this).history().markCreated(object);
}

void Deviant::noteReferred(Deviant const& other) const {
    if (isInOtherModel(other)) {
        record().model->noteReferenceElsewhere();
    }
}

bool Deviant::isInOtherModel(Deviant const& other) const noexcept {
    return isValid() && other.isValid() && record().model != other.record().model;
}

} // namespace QOB
