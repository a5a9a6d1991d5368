#pragma once

#include "qob/qob/nsinterface/modelintf.h"
#include "qob/qob/object.h"

#include <vector>

namespace QOB {
class ImmutableModel;
class Model;
} // namespace QOB

QOB_HANDLES(QOB::NSInterface::ModelIntf,
            QOB::ImmutableModel,
            QOB::Model,
            "qob/export/include/qob/qob/model.h")

namespace QOB {

/// A model, seen in one of its deviants, for reading.
class ImmutableModel : public ClassObjectReading<ReadHandle<NSInterface::ModelIntf>> {
public:
    using ClassObjectReading::ClassObjectReading;

    ClassObject findObject(Integer id) const { return (*this)->findObject(getDeviant(), id); }
    ImmutableSequence<ImmutableClassObject> getRootObjectsWithoutAssociation() const {
        return (*this)->getRootObjectsWithoutAssociation(getDeviant());
    }
    inline std::vector<class Model> getReferredModels() const;
};

/// A model, seen in one of its deviants. Operations act on the handle's deviant; only destroy()
/// ends the model in all of them, after which every access to its objects raises.
class Model : public ClassObjectWriting<WriteHandle<ImmutableModel>> {
public:
    using ClassObjectWriting::ClassObjectWriting;

    Deviant createDeviant() const { return (*this)->createDeviant(getDeviant()); }
    void removeDeviant(Deviant branch) const { (*this)->removeDeviant(getDeviant(), branch); }
    void mergeDeviant(Deviant source) const { (*this)->mergeDeviant(getDeviant(), source); }

    void setUndoEnabled(bool enabled) const { (*this)->setUndoEnabled(getDeviant(), enabled); }
    bool undo() const { return (*this)->undo(getDeviant()); }
    bool redo() const { return (*this)->redo(getDeviant()); }
    void setReadOnly(bool readOnly) const { (*this)->setReadOnly(getDeviant(), readOnly); }

    Sequence<ClassObject> getRootObjects() const { return (*this)->getRootObjects(getDeviant()); }
    Sequence<ClassObject> getRootObjectsWithoutAssociation() const {
        return (*this)->getRootObjectsWithoutAssociation(getDeviant());
    }
    Integer allocateObjectId() const { return (*this)->allocateObjectId(getDeviant()); }
    void bindObjectId(ClassObject const& object, Integer id) const {
        (*this)->bindObjectId(getDeviant(), object, id);
    }
    void internal_addRootObject(NSInterface::ClassObjectIntf* object) const {
        (*this)->internal_addRootObject(getDeviant(), object);
    }
    void internal_removeRootObject(NSInterface::ClassObjectIntf* object) const {
        (*this)->internal_removeRootObject(getDeviant(), object);
    }
};

inline std::vector<Model> ImmutableModel::getReferredModels() const {
    return (*this)->getReferredModels(getDeviant());
}

template <class Base>
Model ClassObjectReading<Base>::getModelQOB() const {
    return (*this)->getModelQOB(this->getDeviant());
}
template <class Base>
Model ClassObjectReading<Base>::getRootModel() const {
    return (*this)->getRootModel(this->getDeviant());
}

} // namespace QOB

// Behind the handle, which it names.
#include "qob/qob/nsinterface/factoryintf.h" // IWYU pragma: export
