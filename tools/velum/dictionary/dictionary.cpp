#include "dictionary/dictionary.h"

namespace velum::dictionary {

namespace types = Zorvane::metamodel::types;

Dictionary::Dictionary() {
    types::initialize(); // harmless when repeated
    model_ = types::NSInterface::FactoryIntf::createNewModel();
    model_.setUndoEnabled(true);
}

Dictionary::~Dictionary() {
    model_.destroy();
}

} // namespace velum::dictionary
