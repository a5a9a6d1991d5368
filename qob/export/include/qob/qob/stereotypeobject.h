#pragma once

#include "qob/kernel/containers/sequence/sequencenames.h"
#include "qob/qob/nsinterface/stereotypeobjectintf.h"
#include "qob/qob/object.h"

#include <utility>

namespace QOB {
class ImmutableStereotypeObject;
class StereotypeObject;
} // namespace QOB

QOB_HANDLES(QOB::NSInterface::StereotypeObjectIntf,
            QOB::ImmutableStereotypeObject,
            QOB::StereotypeObject,
            "qob/export/include/qob/qob/stereotypeobject.h")

namespace QOB {

/// A stereotype as it is applied to one object, for reading.
class ImmutableStereotypeObject
    : public ClassObjectReading<ReadHandle<NSInterface::StereotypeObjectIntf>> {
public:
    using ClassObjectReading::ClassObjectReading;

    bool hasStereotypeName() const { return (*this)->hasStereotypeName(getDeviant()); }
    String getStereotypeName() const { return (*this)->getStereotypeName(getDeviant()); }
    bool hasValue() const { return (*this)->hasValue(getDeviant()); }
    String getValue() const { return (*this)->getValue(getDeviant()); }
};

/// A stereotype as it is applied to one object.
class StereotypeObject : public ClassObjectWriting<WriteHandle<ImmutableStereotypeObject>> {
public:
    using ClassObjectWriting::ClassObjectWriting;

    /// A new stereotype, applied to nothing, in the model and in the deviant of its handle, with
    /// the next free id.
    static QOB_EXPORT StereotypeObject create(Model const& model);
    static QOB_EXPORT StereotypeObject create(Model const& model, String const& name);
    /// With an id that the caller gives.
    static QOB_EXPORT StereotypeObject createWithId(Model const& model, Integer const& id);

    void removeStereotypeName() const { (*this)->removeStereotypeName(getDeviant()); }
    void setStereotypeName(String const& name) const {
        (*this)->setStereotypeName(getDeviant(), name);
    }
    void removeValue() const { (*this)->removeValue(getDeviant()); }
    void setValue(String const& value) const { (*this)->setValue(getDeviant(), value); }
};

/// A stereotype that no library declares, such as a tag.
class DynamicStereotypeObject : public StereotypeObject {
public:
    using StereotypeObject::StereotypeObject;
    DynamicStereotypeObject() noexcept = default;
    explicit DynamicStereotypeObject(StereotypeObject stereotype)
        : StereotypeObject(std::move(stereotype)) {}
};

} // namespace QOB

QOB_SEQUENCE_NAMES(QOB::StereotypeObject, "QOB.", "StereotypeObject")
