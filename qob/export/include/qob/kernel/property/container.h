#pragma once

#include "qob/kernel/property/reference.h"
#include "qob/qob/nsinterface/classobjectintf.h"
#include "qob/qob/object.h"

/// The container of an object, for rules that keep it consistent with the container's contents.
namespace QOB::property {

/// Writes the container and nothing else: the caller has already removed the object from its
/// previous container.
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

/// The same for a caller that has read the current container, which is another one, and has a
/// OneWrite.
inline void replaceContainer(NSInterface::ClassObjectIntf* object,
                             Deviant deviant,
                             ClassObject const& old,
                             ClassObject const& container) {
    using NSInterface::ClassObjectIntf;
    replaceReference<&ClassObjectIntf::setContainerQOB>(object,
                                                        deviant,
                                                        old,
                                                        container,
                                                        ClassObjectIntf::sIntrospectiveMethods,
                                                        ClassObjectIntf::ContainerQOBId);
}

/// How the container is assigned from another state; see assign.h. On a root object the object is
/// also added to the container, to the property that contains it in the source.
struct AssignContainer {
    QOB_EXPORT static void assign(NSInterface::ClassObjectIntf* target,
                                  Deviant deviant,
                                  NSInterface::ClassObjectIntf const* source,
                                  Deviant sourceDeviant);
};

/// Removes the object from every property by which `container` contains it. The caller updates the
/// object's own end.
QOB_EXPORT void
leaveContainer(NSInterface::ClassObjectIntf* object, Deviant deviant, ClassObject const& container);

/// Adds the object to the first list of `container`, in the order of its class's properties, that
/// accepts it, and writes both ends. Raises, before anything changes, if there is no such list.
/// Properties that own a single object are not considered.
QOB_EXPORT void
joinContainer(NSInterface::ClassObjectIntf* object, Deviant deviant, ClassObject const& container);

} // namespace QOB::property
