#pragma once

#include "model/modelcore.h"
#include "qob/kernel/containers/sequence/multiindex/multiindeximpl.h"
#include "qob/kernel/deviant/classobjectstate.h"
#include "qob/kernel/deviant/rootobject.h"
#include "qob/kernel/deviant/statepairs.h"
#include "qob/qob/nsinterface/modelintf.h"

#include <memory>

namespace QOB::NSImplementation {

/// What a model is in one deviant.
class ModelDeviantImpl final : public ClassObjectState<ModelDeviantImpl, NSInterface::ModelIntf> {
public:
    struct Fields : ClassObjectFields {
        String uri;
        /// The model's objects in order of creation; each is counted.
        MultiIndexImpl<ClassObject> rootObjects;
        /// What lies in the model itself.
        MultiIndexImpl<ClassObject> containees;
    };

    bool hasUri(Deviant) const override { return fields_.uri.isValid(); }
    void removeUri(Deviant) override { fields_.uri = String(); }
    void setUri(Deviant, String const& uri) override { fields_.uri = uri; }
    String getUri(Deviant) const override { return fields_.uri; }
    Sequence<ClassObject> getRootObjects(Deviant deviant) override {
        return {&fields_.rootObjects, deviant};
    }
    Sequence<ClassObject> getRootObjectsWithoutAssociation(Deviant deviant) const override {
        return {const_cast<MultiIndexImpl<ClassObject>*>(&fields_.rootObjects), deviant};
    }
    Sequence<ClassObject> getContaineeQOBs(Deviant deviant) override {
        return {&fields_.containees, deviant};
    }
    Sequence<ClassObject> getContaineeQOBsWithoutAssociation(Deviant deviant) const override {
        return {const_cast<MultiIndexImpl<ClassObject>*>(&fields_.containees), deviant};
    }
    void internal_addRootObject(Deviant, NSInterface::ClassObjectIntf* object) override {
        fields_.rootObjects.storage().push_back(object);
    }
    void internal_removeRootObject(Deviant, NSInterface::ClassObjectIntf* object) override {
        fields_.rootObjects.storage().erase(object);
    }

    Fields fields_;
};

/// The model object; owns the kernel's half of the model until it ends.
class ModelImpl final : public StatePairs<RootObject<NSInterface::ModelIntf, ModelDeviantImpl>,
                                          NSInterface::ModelIntf,
                                          NSInterface::ClassObjectIntf,
                                          NSInterface::ObjectIntf> {
    using ClassObjectIntf = NSInterface::ClassObjectIntf;
    using ModelIntf = NSInterface::ModelIntf;

public:
    ModelImpl();
    ~ModelImpl() override;

    char const* getLumvoName(bool immutable) const override;
    /// Ends the model in all deviants.
    void destroy(Deviant deviant) override;

    Integer allocateObjectId(Deviant deviant) override;
    void bindObjectId(Deviant deviant, ClassObject object, Integer id) override;
    ClassObject findObject(Deviant deviant, Integer id) const override;
    Deviant createDeviant(Deviant deviant) override;
    void removeDeviant(Deviant deviant, Deviant branch) override;
    void mergeDeviant(Deviant deviant, Deviant source) override;
    void setUndoEnabled(Deviant deviant, bool enabled) override;
    bool undo(Deviant deviant) override;
    bool redo(Deviant deviant) override;
    void setReadOnly(Deviant deviant, bool readOnly) override;
    std::vector<Model> getReferredModels(Deviant deviant) const override;
    void internal_addRootObject(Deviant deviant, ClassObjectIntf* object) override;
    void internal_removeRootObject(Deviant deviant, ClassObjectIntf* object) override;

    /// The same as internal_addRootObject for an object that has just been made.
    void listNewObject(Deviant deviant, ClassObjectIntf* object);

private:
    /// The long part of a deviant of this model. Raises for a dead model, for a deviant that is
    /// gone and for one of another model.
    internal::DeviantData& own(Deviant deviant) const;

    std::unique_ptr<internal::ModelCore> core_;
};

} // namespace QOB::NSImplementation
