#pragma once

/// Everything public of the library.
#include "qob/qob.h"
#include "velum_types/export.h"
#include "velum_types/version.h"
#include "velum_types/zorvane/metamodel/types/initialize.h"
#include "velum_types/zorvane/metamodel/types/zorvanemetamodeltypes.h"
