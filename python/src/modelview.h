#pragma once

#include "modelhold.h"

#include <qob/qob.h>

namespace velum::python {

/// A model as seen in its root deviant: velum.Model.
struct ModelView {
    HoldRef hold;
    QOB::Deviant deviant;

    /// The handle to work with. Raises in another thread; the library raises for a model that has
    /// ended and for a branch that was removed.
    QOB::Model handle() const {
        hold->requireThread();
        return hold->model().inDeviant(deviant);
    }
};

/// The same as seen in a branch: velum.Branch.
struct BranchView : ModelView {};

void addModels(py::module_& module);

/// velum.Model or velum.Branch.
py::object wrapModel(HoldRef hold, QOB::Deviant deviant);

/// The view that a value is. Raises TypeError, with what was to be done with it, for another value.
ModelView const& viewOf(py::handle value, char const* purpose);

} // namespace velum::python
