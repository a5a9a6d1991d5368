#include "qob/kernel/property/reflective.h"
#include "qob/qob/model.h"

namespace QOB::NSInterface {

namespace {

struct ClassObjectDescription {
    using Interface = ClassObjectIntf;
    static constexpr char const* name = ClassObjectIntf::Name;
    using Properties =
        reflective::List<reflective::Single<ClassObjectIntf::ModelQOBId,
                                            &ClassObjectIntf::getModelQOB,
                                            &ClassObjectIntf::hasModelQOB,
                                            &ClassObjectIntf::setModelQOB,
                                            &ClassObjectIntf::removeModelQOB,
                                            &ClassObjectIntf::setOnlyModelQOB,
                                            &ClassObjectIntf::removeOnlyModelQOB>,
                         reflective::Single<ClassObjectIntf::ContainerQOBId,
                                            &ClassObjectIntf::getContainerQOB,
                                            &ClassObjectIntf::hasContainerQOB,
                                            &ClassObjectIntf::setContainerQOB,
                                            &ClassObjectIntf::removeContainerQOB,
                                            &ClassObjectIntf::setOnlyContainerQOB,
                                            &ClassObjectIntf::removeOnlyContainerQOB>>;
};

} // namespace

constinit IntrospectiveMethods ClassObjectIntf::sIntrospectiveMethods =
    reflective::methodsOf<ClassObjectDescription>();

} // namespace QOB::NSInterface
