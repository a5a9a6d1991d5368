#pragma once

/// The public interface of the library.
#include "qob/qob.h"
#include "velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundation.h"
#include "velum_foundation/zorvane/metamodel/foundation/zorvanemetamodelfoundationintrospection.h"
#include "velum_types/export.h"
#include "velum_types/version.h"
#include "velum_types/zorvane/metamodel/types/initialize.h"
#include "velum_types/zorvane/metamodel/types/nsmetaregistry/zorvanemetamodeltypesmetapackage.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypes.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypescompumethodcategory.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesdatasize.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesfloatingpointkind.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypesintrospection.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypestime.h"
