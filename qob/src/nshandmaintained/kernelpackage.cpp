#include "kernelpackage.h"

#include "qob/qob/nsmetaregistry/qobmetapackage.h"
#include "values/valuetext.h"

namespace QOB::internal {

namespace {

template <class Value>
void describe(NSInterface::DataTypeIntf* element) {
    describeOwnType(Value::getTypeName().c_str(), {element, element->getRootDeviant()});
}

} // namespace

void createKernelPackage() {
    NSImplementation::staticInitializeQOBMeta();
    describe<Boolean>(NSImplementation::staticGetBooleanMeta());
    describe<String>(NSImplementation::staticGetStringMeta());
    describe<Real>(NSImplementation::staticGetRealMeta());
    describe<Integer>(NSImplementation::staticGetIntegerMeta());
}

void forgetKernelPackage() noexcept {
    NSImplementation::staticForgetQOBMetaPackage();
}

} // namespace QOB::internal
