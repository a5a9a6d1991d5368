#pragma once

#include <qob/qob.h>

namespace velum::model {

/// The data types of an import, held in a model of the library in which every step can be undone.
/// Owns the model and ends it.
class Dictionary {
public:
    Dictionary();
    ~Dictionary();
    Dictionary(Dictionary const&) = delete;
    Dictionary& operator=(Dictionary const&) = delete;

    QOB::Model const& model() const { return model_; }

private:
    QOB::Model model_;
};

} // namespace velum::model
