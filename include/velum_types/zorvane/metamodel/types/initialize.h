#pragma once

#include "qob/qob/factoryobject.h"
#include "qob/qob/model.h"
#include "qob/qob/package.h"
#include "velum_types/export.h"

namespace Zorvane::metamodel::types {

/// Starts the kernel and registers this package with it. Call it from one thread, before any model
/// is created. Later calls do nothing. Always returns true. If starting raises, everything is
/// undone, the exception is passed on, and the next call tries again.
VELUM_TYPES_EXPORT bool initialize();

/// Entry points for a host that loads the library by name.
struct TypesConfiguration {
    /// A new factory in the model, in the deviant of the model's handle.
    QOB::FactoryObject (*createFactory)(QOB::Model model);
    /// The package of the whole product's metamodel, as seen in the model.
    QOB::Package (*getMetaModel)(QOB::Model model);
    /// A new model under a URI of its own.
    QOB::Model (*createModel)();
};

} // namespace Zorvane::metamodel::types

/// Fills the record and returns it; does nothing else.
extern "C" VELUM_TYPES_EXPORT Zorvane::metamodel::types::TypesConfiguration*
Zorvane_metamodel_types_getConfiguration(
    Zorvane::metamodel::types::TypesConfiguration* configuration);
