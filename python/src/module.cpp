#include "classes.h"
#include "kinds.h"
#include "list.h"
#include "modelview.h"
#include "observation.h"
#include "quantity.h"
#include "tool.h"

#include <velum_types/zorvane/metamodel/types/initialize.h>

// A function of the module that pybind11 declares: NOLINTNEXTLINE
PYBIND11_MODULE(_core, module) {
    namespace python = velum::python;

    module.doc() = "The compiled half of velum. Use the package velum.";
    Zorvane::metamodel::types::initialize();
    python::addErrors(module);
    python::addHandles(module);
    python::addProperties(module);
    python::addLists(module);
    python::addModels(module);
    python::addQuantities(module);
    python::addClasses(module);
    python::addKinds(module);
    python::addObservations(module);
    python::addTool(module);
}
