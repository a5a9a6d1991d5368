#include "classes.h"
#include "kinds.h"
#include "list.h"
#include "modelview.h"
#include "quantity.h"
#include "tool.h"

#include <velum_types/zorvane/metamodel/types/initialize.h>

// A function of the module that pybind11 declares: NOLINTNEXTLINE
PYBIND11_MODULE(_core, module) {
    using namespace velum::python;

    module.doc() = "The compiled half of velum. Use the package velum.";
    Zorvane::metamodel::types::initialize();
    addErrors(module);
    addHandles(module);
    addProperties(module);
    addLists(module);
    addModels(module);
    addQuantities(module);
    addClasses(module);
    addKinds(module);
    addTool(module);
}
