#include "model/modelimpl.h"
#include "object/describe.h"
#include "qob/qob/transaction.h"

#include <algorithm>

namespace QOB::NSImplementation {

using internal::DeviantData;
using internal::ModelCore;
using NSInterface::ClassObjectIntf;

namespace {

/// What one object brings into a merge.
struct Change {
    ClassObject object; // seen in the source
    enum Kind { Assign, BringIn, Destroy } kind;
};

/// What the source changed that concerns the target. An object that the target knows as destroyed
/// stays destroyed; one that neither knows is left out.
std::vector<Change> changesBetween(DeviantData const& source, Deviant target) {
    std::vector<Change> changes;
    DeviantData const& targetData = DeviantData::of(target);
    for (ClassObjectIntf* const object : source.changedObjects()) {
        internal::StateSlot const slot = source.slotOf(object);
        bool const present = object->deviant_isValid(target);
        ClassObject const handle(object, source.self());
        if (isRealState(slot.state)) {
            if (present) {
                changes.push_back({handle, Change::Assign});
            } else if (!targetData.knowsAsDestroyed(object)) {
                changes.push_back({handle, Change::BringIn});
            }
        } else if (slot.destroyedHere && present) {
            changes.push_back({handle, Change::Destroy});
        }
    }
    return changes;
}

bool hasKind(std::vector<Change> const& changes, ClassObjectIntf const* object, Change::Kind kind) {
    return std::any_of(changes.begin(), changes.end(), [&](Change const& change) {
        return change.kind == kind && change.object.get() == object;
    });
}

/// Raises if an object would come in under an id that another one has in the target.
void requireOwnIds(ModelCore const& core, std::vector<Change> const& changes, Deviant target) {
    for (Change const& change : changes) {
        Integer const id = change.object->getObjectId(target);
        if (change.kind != Change::BringIn || !id.isValid()) {
            continue;
        }
        core.ids().forEachWith(id, [&](ClassObjectIntf* other) {
            if (other != change.object.get() &&
                (other->deviant_isValid(target) ? !hasKind(changes, other, Change::Destroy)
                                                : hasKind(changes, other, Change::BringIn))) {
                QOB_FAIL("Cannot merge %s: its id belongs to %s there. Bind one of the two to "
                         "another id.",
                         internal::describe(change.object.get()).c_str(),
                         internal::describe(other).c_str());
            }
        });
    }
}

} // namespace

void ModelImpl::mergeDeviant(Deviant deviant, Deviant source) {
    own(deviant);
    DeviantData const& sourceData = own(source);
    QOB_REQUIRE(deviant != source, "A deviant cannot be merged into itself.");
    QOB_REQUIRE(!source.isWithinTransaction(),
                "A deviant with an open transaction cannot be merged.");
    std::vector<Change> const changes = changesBetween(sourceData, deviant);
    requireOwnIds(*core_, changes, deviant);
    Transaction transaction(Model(this, deviant));
    deviant.assertWritable(this); // the assignments below would skip what can't be written
    ReferenceStorage const& rootObjects = readState(source)->fields_.rootObjects.storage();
    for (Change const& change : changes) {
        if (change.kind == Change::BringIn) {
            deviant.markObjectCreated(change.object.get());
            castObject<ClassObjectIntf>(change.object->internal_createDeviation(deviant))
                ->setModelQOB(deviant, Model(this, deviant));
            if (rootObjects.contains(change.object.get())) { // a factory is none
                internal_addRootObject(deviant, change.object.get());
            }
        }
    }
    auto const assign = [&](Change const& change) {
        if (change.kind != Change::Destroy) {
            change.object->internal_deviationAssign(
                deviant, change.object->internal_getDeviation(source), source);
        }
    };
    std::for_each(changes.begin(), changes.end(), assign);
    // Once more for what was written: an object that changed places within its container may have
    // been taken out of the old place after it had come into the new one.
    for (Change const& change : changes) {
        if (deviant.getSavedOldStateOfObject(change.object.get()) != nullptr) {
            assign(change);
        }
    }
    for (Change const& change : changes) {
        if (change.kind == Change::Destroy) {
            change.object->destroy(deviant);
        }
    }
    transaction.commit();
}

} // namespace QOB::NSImplementation
