#pragma once

#include "qob/kernel/property/reference.h"
#include "qob/qob/nsinterface/classobjectintf.h"
#include "qob/qob/object.h"

/// The container of an object, for rules that keep it in step with what the container holds.
namespace QOB::property {

/// Writes the container and nothing else: whoever calls it has taken the object out of what
/// contained it before.
inline void setContainerAlone(NSInterface::ClassObjectIntf* object,
                              Deviant deviant,
                              ClassObject const& container) {
    using NSInterface::ClassObjectIntf;
    setOnlyReference<&ClassObjectIntf::getContainerQOB, &ClassObjectIntf::setContainerQOB>(
        object,
        deviant,
        container,
        ClassObjectIntf::sIntrospectiveMethods,
        ClassObjectIntf::ContainerQOBId);
}

/// How the container is brought to what another state holds; see assign.h. On a root object the
/// container holds the object afterwards, by the property by which the source's container does.
struct AssignContainer {
    QOB_EXPORT static void assign(NSInterface::ClassObjectIntf* target,
                                  Deviant deviant,
                                  NSInterface::ClassObjectIntf const* source,
                                  Deviant sourceDeviant);
};

/// Takes the object out of every property by which `container` contains it. The object's own end
/// is left to the caller.
QOB_EXPORT void
leaveContainer(NSInterface::ClassObjectIntf* object, Deviant deviant, ClassObject const& container);

/// Puts the object into the first list of `container`, in the order of the properties of its class,
/// that takes it in: both ends are written. Raises, before anything changes, if there is no such
/// list; a property that owns a single object is left to those who set it.
QOB_EXPORT void
joinContainer(NSInterface::ClassObjectIntf* object, Deviant deviant, ClassObject const& container);

} // namespace QOB::property
