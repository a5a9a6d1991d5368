#pragma once

#include "qob/qob/nsinterface/modelintf.h"
#include "qob/qob/object.h"

#include <vector>

namespace QOB {

/// A model, seen in one of its deviants, for reading.
class ImmutableModel : public RefBase<NSInterface::ModelIntf*> {
public:
    ImmutableModel() noexcept = default;
    ImmutableModel(NSInterface::ModelIntf const* model, Deviant deviant)
        : RefBase(model, deviant) {}
    /// Empty if the object is no model.
    explicit ImmutableModel(ImmutableObject const& object)
        : RefBase(castObject<NSInterface::ModelIntf>(object.get()), object.getDeviant()) {}

    NSInterface::ModelIntf const* get() const noexcept { return RefBase::get(); }
    NSInterface::ModelIntf const* operator->() const { return access(__FILE__, __LINE__); }
    operator ImmutableObject() const { return {get(), getDeviant()}; }
    operator ImmutableClassObject() const { return {get(), getDeviant()}; }

    bool hasUri() const { return (*this)->hasUri(getDeviant()); }
    String getUri() const { return (*this)->getUri(getDeviant()); }
    ClassObject findObject(Integer id) const { return (*this)->findObject(getDeviant(), id); }
    inline std::vector<class Model> getReferredModels() const;
};

/// A model, seen in one of its deviants. Operations act on the handle's deviant.
class Model : public ImmutableModel {
public:
    Model() noexcept = default;
    Model(NSInterface::ModelIntf* model, Deviant deviant) : ImmutableModel(model, deviant) {}
    explicit Model(Object const& object) : ImmutableModel(object) {}

    NSInterface::ModelIntf* get() const noexcept { return RefBase::get(); }
    NSInterface::ModelIntf* operator->() const { return access(__FILE__, __LINE__); }
    operator Object() const { return {get(), getDeviant()}; }
    operator ClassObject() const { return {get(), getDeviant()}; }

    /// The same model seen in another of its deviants.
    Model inDeviant(Deviant deviant) const { return {access(__FILE__, __LINE__), deviant}; }

    Deviant createDeviant() const { return (*this)->createDeviant(getDeviant()); }
    void removeDeviant(Deviant branch) const { (*this)->removeDeviant(getDeviant(), branch); }
    void mergeDeviant(Deviant source) const { (*this)->mergeDeviant(getDeviant(), source); }

    void setUndoEnabled(bool enabled) const { (*this)->setUndoEnabled(getDeviant(), enabled); }
    bool undo() const { return (*this)->undo(getDeviant()); }
    bool redo() const { return (*this)->redo(getDeviant()); }
    void setReadOnly(bool readOnly) const { (*this)->setReadOnly(getDeviant(), readOnly); }

    void setUri(String const& uri) const { (*this)->setUri(getDeviant(), uri); }
    Integer allocateObjectId() const { return (*this)->allocateObjectId(getDeviant()); }
    void bindObjectId(ClassObject const& object, Integer id) const {
        (*this)->bindObjectId(getDeviant(), object, id);
    }

    /// Ends the model, in all deviants: every later access to its objects raises.
    void destroy() const { (*this)->destroy(getDeviant()); }
};

inline std::vector<Model> ImmutableModel::getReferredModels() const {
    return (*this)->getReferredModels(getDeviant());
}

inline Model ImmutableClassObject::getModelQOB() const {
    return (*this)->getModelQOB(getDeviant());
}

} // namespace QOB

template <>
struct std::hash<QOB::Model> : QOB::HandleHash<QOB::Model> {};
template <>
struct std::hash<QOB::ImmutableModel> : QOB::HandleHash<QOB::ImmutableModel> {};
