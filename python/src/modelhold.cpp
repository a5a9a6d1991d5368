#include "modelhold.h"

namespace velum::python {

namespace {

using Holds = std::unordered_map<QOB::Deviant, ModelHold*>;

/// By root deviant. Never freed: models may outlive every static object.
Holds& holds() {
    static auto& all = *new Holds;
    return all;
}

} // namespace

ModelHold::ModelHold(QOB::Model const& model, bool isOwned)
    : model_(model),
      root_(model.getDeviant().getRootDeviant()),
      thread_(std::this_thread::get_id()),
      isOwned_(isOwned) {
    model_.setDeviant(root_);
    holds().emplace(root_, this);
}

ModelHold::~ModelHold() {
    holds().erase(root_);
}

ModelHold* ModelHold::adopt(QOB::Model const& model) {
    return new ModelHold(model, true);
}

ModelHold* ModelHold::of(QOB::NSInterface::ClassObjectIntf const& object, QOB::Deviant deviant) {
    QOB::Deviant const root = object.getRootDeviant();
    if (auto const found = holds().find(root); found != holds().end()) {
        found->second->retain();
        return found->second;
    }
    QOB::Model const model = object.getModelQOB(deviant);
    if (!model.isValid()) {
        raise(errorType, "The object belongs to no model any more.");
    }
    return new ModelHold(model, false);
}

void ModelHold::failForThread() {
    raise(errorType,
          "The model belongs to another thread. Use a model and its objects in the thread that "
          "made the model.");
}

void ModelHold::destroy() {
    model_.destroy();
    isDestroyed_ = true;
    sources = arxml::Sources();
}

void ModelHold::end() noexcept {
    if (isOwned_ && !isDestroyed_) {
        try {
            model_.destroy();
        } catch (...) { // NOLINT(bugprone-empty-catch): the model stays until the library stops
        }
    }
    delete this;
}

} // namespace velum::python
