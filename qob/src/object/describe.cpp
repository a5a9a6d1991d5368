#include "object/describe.h"

#include "qob/qob/exception.h"
#include "qob/qob/nsinterface/classobjectintf.h"
#include "qob/qob/visitor.h"

namespace QOB::internal {

std::string describe(NSInterface::ObjectIntf const* object) {
    if (object == nullptr) {
        return "the model";
    }
    std::string text = "the object (";
    try {
        text += object->getLumvoName(false);
    } catch (Exception const&) {
        text += "a type without a name";
    }
    if (auto const* classObject = castObject<NSInterface::ClassObjectIntf>(object)) {
        if (Integer const id = classObject->getObjectId(Deviant()); id.isValid() && id != -1) {
            text += ", id " + std::string(id.toString());
        }
    }
    return text + ")";
}

} // namespace QOB::internal
