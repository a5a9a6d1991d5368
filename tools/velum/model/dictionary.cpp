#include "model/dictionary.h"

#include <velum_types/zorvane/metamodel/types/initialize.h>
#include <velum_types/zorvane/metamodel/types/zorvanemetamodeltypesfactory.h>

namespace velum::model {

namespace types = Zorvane::metamodel::types;

Dictionary::Dictionary() {
    types::initialize(); // harmless when repeated
    model_ = types::NSInterface::FactoryIntf::createNewModel();
    model_.setUndoEnabled(true);
}

Dictionary::~Dictionary() {
    model_.destroy();
}

} // namespace velum::model
