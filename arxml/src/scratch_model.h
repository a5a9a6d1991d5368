#pragma once

#include <string>
#include <vector>
#include <velum_arxml/read.h>
#include <velum_types/types.h>

namespace velum::arxml {

/// A model that files are read into for a while.
class ScratchModel {
public:
    explicit ScratchModel(std::vector<std::string> const& files)
        : model_(Zorvane::metamodel::types::NSInterface::FactoryIntf::createNewModel()) {
        try {
            read(files, model_);
        } catch (...) {
            model_.destroy();
            throw;
        }
    }
    ~ScratchModel() { model_.destroy(); }
    ScratchModel(ScratchModel const&) = delete;
    ScratchModel& operator=(ScratchModel const&) = delete;
    ScratchModel(ScratchModel&&) = delete;
    ScratchModel& operator=(ScratchModel&&) = delete;

    QOB::Model const& model() const { return model_; }

private:
    QOB::Model model_;
};

} // namespace velum::arxml
